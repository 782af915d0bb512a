// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>

namespace SpecialFunction {

/// sin(pi x), exact 0 at the integers.
inline double sinPi(double x) {
  const double turn = std::fmod(std::abs(x), 2.0), sign = x < 0 ? -1.0 : 1.0;
  const double folded = turn > 1.5 ? turn - 2 : turn > 0.5 ? 1 - turn : turn;
  return folded == 0 ? 0.0 : sign * std::sin(3.141592653589793 * folded);
}

/// cos(pi x), exact 0 at the half-integers.
inline double cosPi(double x) { return sinPi(0.5 - std::fmod(std::abs(x), 2.0)); }

inline bool isWhole(double x) { return x == std::floor(x); }
inline bool nearInteger(double x, double tolerance) { return std::abs(std::round(x) - x) < tolerance; }
inline bool isOdd(double whole) { return std::fmod(whole, 2.0) != 0; }

}  // namespace SpecialFunction
