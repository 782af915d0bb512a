// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "frame/function_ref.h"

/// Quadrature of functions of one variable by adaptive three-point Gauss-Legendre panels. For a > b the value is minus
/// the integral from b to a. Failures are values: NaN from the integrand gives NaN, a panel above 1e10 in size 1e+300.
namespace Integral {

using Integrand = FunctionRef<double(double)>;

inline constexpr double kTolerance = 2.220446049250313e-16;
inline constexpr double kBlowUp = 1e+300;

/// h (8/9 f(a+h) + 5/9 (f(a + (1-sqrt(3/5)) h) + f(a + (1+sqrt(3/5)) h))), h = (b-a)/2: exact up to degree 5.
double integralPanel3(Integrand f, double a, double b);

/// Adaptive integral: an interval is split until the two halves agree with the whole to `tolerance`, the list of
/// intervals holds more than `maxIntervals` entries, or the interval is under 1e-8 wide.
double integralAdaptive(Integrand f, double a, double b, int32_t maxIntervals, double tolerance = kTolerance);

/// The same without the tests for NaN and size, and with <= for the tolerance.
double integralAdaptiveRaw(Integrand f, double a, double b, int32_t maxIntervals, double tolerance = kTolerance);

/// Finite and infinite limits. maxIntervals 0 means 1000000; -1 chooses 16 to 128 by the width of a finite range. It
/// has no influence on infinite ranges. A NaN limit gives NaN.
double integralByRange(Integrand f, double a, double b, int32_t maxIntervals);

double integralInf(Integrand f);               ///< over the real line
double integralPosInf(Integrand f, double a);  ///< from a to infinity
double integralNegInf(Integrand f, double b);  ///< from minus infinity to b

}  // namespace Integral
