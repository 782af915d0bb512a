// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

namespace Filter {

// Filters that go from value to value. out may be in.

void hardLimit(std::span<const double> in, double* out, double limit, double centre);
void limitAmp(std::span<const double> in, double* out, double limit);

/// x = a x + b z, P = a^2 P + q, then the correction by z with the gain P h/(h^2 P + r).
struct ScalarKalman {
  double a, b, h, q, r;
};
void kalman(std::span<const double> in, double* out, const ScalarKalman& model);

/// The cubic with given values and slopes at two points, continued by straight lines.
struct LineEnd {
  double x, y, slope;
};
void lineBetween(LineEnd left, LineEnd right, std::span<const double> x, double* y);

/// Least squares of a local polynomial on a window around every step-th point, used for the points up to the next.
void localFits(std::span<const double> in, double* out, int32_t width, int32_t degree, int32_t step);

}  // namespace Filter
