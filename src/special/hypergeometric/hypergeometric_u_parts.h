// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <optional>

namespace SpecialFunction {

/// value exp(logarithm), for values outside the range of doubles.
struct Scaled {
  double value, logarithm;
  double plain() const {
    if (value == 0 || std::isnan(value)) return value;
    const double direct = value * std::exp(logarithm);
    if (direct != 0 && std::isfinite(direct) && std::abs(logarithm) < 700) return direct;
    return std::copysign(std::exp(std::log(std::abs(value)) + logarithm), value);
  }
};

/// U(a, b, x), x > 0, by its recurrence in a, from values where a and a-b+1 are positive. Stable unless it passes into
/// the region that hypergeometric_u.cpp keeps out. Nothing for x below 1e-4 and where it would take long.
std::optional<Scaled> hypergeometricUByRecurrence(double a, double b, double x);

/// U(a, b, x) = gamma(1-b)/gamma(1+a-b) M(a, b, x) + gamma(b-1)/gamma(a) x^(1-b) M(1+a-b, 2-b, x), x > 0, b no integer,
/// in floats of as many bits as the two parts cancel. Nothing where that is beyond reach: x above 5000, a or b above a
/// million in size, more than 32768 bits.
std::optional<Scaled> hypergeometricUByMoreBits(double a, double b, double x);

}  // namespace SpecialFunction
