// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>

#include "frame/numbers.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

double clamped(double x, double upper) { return !(x >= kEpsilon) ? kEpsilon : std::min(x, upper); }

// Newton on lgamma(x) = target in (0, 1.1], with the derivative's series psi(1+x) - 1/x. NaN when it did not settle.
double onThePositiveAxis(double target) {
  double x = 0.5, best = x, least = kInfinity;
  for (int round = 0; round < 32; ++round) {
    const double d = calcLngamma(x) - target;
    if (std::abs(d) < least) {
      least = std::abs(d);
      best = x;
    }
    if (least <= 1e-15) break;
    const double slope =
        -1 / x - 0.5772156649015329 +
        x * (1.6449340668482264 + x * (-1.2020569031595942 + x * (1.0823232337111381 - x * 1.03692775514337)));
    x = clamped(x - d / slope, 1.1);
  }
  return least < 1e-15 ? best : kNaN;
}

// gamma(-x) = y through the reflection: gamma(x) sin(pi x) x = -pi/y, x in (0, 1). NaN when it did not settle.
double byReflection(double y) {
  double x = 0.8, best = x, least = kInfinity;
  for (int round = 0; round < 64; ++round) {
    const double g = std::tgamma(x) * std::sin(pi * x) * x + pi / y;
    if (std::abs(g) < least) {
      least = std::abs(g);
      best = x;
    }
    if (least <= kEpsilon) break;
    const double slope =
        (((x * 2.6159823902882624 + 0.5278206786181074) * x - 6.181505193416012) * x - 3.626752984783207) * x + pi;
    x = clamped(x - g / slope, 0.99999);
  }
  return least < 1e-15 ? -best : kNaN;
}

}  // namespace

double calcInvGamma(double y) {
  if (std::isnan(y)) return kNaN;
  if (y > 0.99)
    if (const double x = onThePositiveAxis(std::log(y)); !std::isnan(x)) return x;
  if (y < -3.55)
    if (const double x = byReflection(y); !std::isnan(x)) return x;

  double low = 0, high = 0;
  if (y >= 9999) {
    low = 0;
    high = 0.011;
  } else if (y >= 99) {
    low = 0.0001;
    high = 0.011;
  } else if (y >= 9.5) {
    low = 0.01;
    high = 0.101;
  } else if (y >= 0.886) {
    low = 0.1;
    high = 1.4616321449683622;
  } else if (y >= 0.00932459448263) {
    low = -5.999;
    high = -5.66716240187093;
  } else {
    if (y > kEpsilon) {
      low = -9.99999;
      high = -9.70267249633728;
    } else {
      if (y >= -0.05277963958732) return kNaN;
      low = -4.65323780042973;
      high = -5;
    }
    for (int round = 0; round < 56 && std::abs(high - low) > 1e-15; ++round) {
      const double middle = (low + high) / 2, d = std::tgamma(middle) - y;
      if (std::abs(d) < 1e-15) return middle;
      (d > 0 ? low : high) = middle;
    }
  }
  const double target = std::log(y);
  for (int round = 0; round < 56; ++round) {
    if (std::abs(high - low) <= 1e-15) return low;
    const double middle = (low + high) / 2, d = calcLngamma(middle) - target;
    if (std::abs(d) < 1e-15) return middle;
    (d > 0 ? low : high) = middle;
  }
  return low;
}

}  // namespace SpecialFunction
