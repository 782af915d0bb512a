// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <vector>

namespace Integral {

/// Running integrals of samples at equal distances: element i is the integral from sample 0 to sample i, element 0 is
/// 0. A curve of two samples is a straight line by every rule.
std::vector<double> runningTrapezoid(std::span<const double> values, double step);

/// Simpson's rule at even samples. At an odd one the last interval is that of the parabola through its two samples and
/// the next one, or the one before them at the end of the curve: exact for polynomials of degree 2 at each sample.
std::vector<double> runningSimpson(std::span<const double> values, double step);

/// The integral of the natural cubic spline through the samples.
std::vector<double> runningSpline(std::span<const double> values, double step);

/// The rule by number: 0 trapezoid, 1 Simpson, any other the spline.
std::vector<double> runningIntegral(std::span<const double> values, double step, int rule);

}  // namespace Integral
