// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

#include "pdf/quick_math.h"
#include "special/gamma/ln_gamma.h"

/// What several formulas of the distributions share.
namespace PDF {

using std::numbers::pi;

constexpr double kSqrt2 = 1.4142135623730951;
constexpr double kSqrtPi = 1.772453850905516;
constexpr double kTwoOverPi = 0.6366197723675814;
constexpr double kDeadBand = 2.220446049250313e-16;

constexpr double square(double x) { return x * x; }
constexpr double cube(double x) { return x * x * x; }

/// ln |gamma(x)|
inline double lnGamma(double x) { return SpecialFunction::lnGamma(x).value; }

/// A product, or exp(logarithm()) where it came to 0 or is no finite number, as one of its factors left the range.
/// Where the logarithm is NaN, a parameter outside its range, the product stays.
template <class Logarithm>
double orByLogarithm(double product, const Logarithm& logarithm) {
  if (product != 0 && std::isfinite(product)) [[likely]]
    return product;
  const double l = logarithm();
  return std::isnan(l) ? product : std::exp(l);
}

/// -1, 0 or 1 with 0 in the dead band.
constexpr double signWithDeadBand(double d) { return d > kDeadBand ? 1.0 : d < -kDeadBand ? -1.0 : 0.0; }

/// Round half away from zero to a 32-bit integer; what does not fit, and NaN, becomes the lowest one.
inline int32_t roundToInt(double x) {
  const double r = std::round(x);
  return r >= -2147483648.0 && r <= 2147483647.0 ? static_cast<int32_t>(r) : std::numeric_limits<int32_t>::min();
}

}  // namespace PDF
