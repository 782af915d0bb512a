// SPDX-License-Identifier: Apache-2.0
// Cylindrical and spherical Bessel functions: the standard library's, and beside them what it does not take (negative
// order, negative x) or does not get right (bessel_expansion.h).
#include <cmath>

#include "frame/numbers.h"
#include "special/bessel/bessel_standard.h"
#include "special/elementary/turn.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kTiny = 1e-300;

double turningWidth(double nu) { return 8 * std::cbrt(nu); }

bool nearInteger(double nu) {
  const double distance = std::abs(nu - std::round(nu));
  return distance > kEpsilon && distance < 1e-3;
}

// log of the leading term gamma(nu) (2/x)^nu of -pi Y, which is below the whole for x < nu.
double logLeading(double nu, double x) { return calcLngamma(nu) + nu * (std::log(2.0) - std::log(x)); }

// The expansions that stand in for the standard library's J and Y, from order 0 and x = 1e-300 on.
bool needsDebyeJY(double nu, double x) {
  if (x > 1000) return nu * nu > 2 * x && std::abs(nu - x) > turningWidth(nu);
  return nu > 100 && nu > x + turningWidth(nu);
}
bool isTransition(double nu, double x) { return x > 1000 && nu * nu > 2 * x; }
BesselPair transition(double nu, double x) { return x > 1e6 ? besselJYTransition(nu, x) : besselJYSteed(nu, x); }

double positiveJ(double nu, double x) {
  if (x == 0) return nu == 0 ? 1.0 : 0.0;
  if (std::isinf(x) || std::isinf(nu)) return std::isinf(x) && std::isinf(nu) ? kNaN : 0.0;
  if (x < kTiny) return besselJYTiny(nu, x).first;
  if (needsDebyeJY(nu, x)) return besselJYDebye(nu, x).first;
  if (isTransition(nu, x)) return transition(nu, x).first;
  return besselJStandard(nu, x);
}

double positiveY(double nu, double x) {
  if (x == 0) return -kInfinity;
  if (std::isinf(x) || std::isinf(nu)) return !std::isinf(nu) ? 0.0 : std::isinf(x) ? kNaN : -kInfinity;
  if (nu > 1 && x < nu && logLeading(nu, x) > 711) return -kInfinity;
  if (x < kTiny) return besselJYTiny(nu, x).second;
  if (needsDebyeJY(nu, x)) return besselJYDebye(nu, x).second;
  if (isTransition(nu, x)) return transition(nu, x).second;
  if (x < 2 && nearInteger(nu)) return besselYNearInteger(nu, x);
  return besselYStandard(nu, x);
}

double positiveI(double nu, double x) {
  if (x == 0) return nu == 0 ? 1.0 : 0.0;
  if (std::isinf(x) || std::isinf(nu)) return !std::isinf(nu) ? kInfinity : std::isinf(x) ? kNaN : 0.0;
  if (x < kTiny) return besselIKTiny(nu, x).first;
  if (nu >= 30) return besselIKDebye(nu, x).first;
  if (x > 700) return besselIKHankel(nu, x).first;
  return besselIStandard(nu, x);
}

double positiveK(double nu, double x) {
  if (x == 0) return kInfinity;
  if (std::isinf(x) || std::isinf(nu)) return !std::isinf(nu) ? 0.0 : std::isinf(x) ? kNaN : kInfinity;
  if (x < kTiny) return besselIKTiny(nu, x).second;
  if (nu >= 30) return besselIKDebye(nu, x).second;
  if (x > 700) return besselIKHankel(nu, x).second;
  if (x < 2 && nearInteger(nu)) return besselKNearInteger(nu, x);
  return besselKStandard(nu, x);
}

}  // namespace

// Reflection: DLMF 10.2.3, 10.4.6, 10.27.2; x < 0: 10.11.1, 10.34.1.
double calcBesselJ(double nu, double x) {
  if (std::isnan(nu) || std::isnan(x)) return kNaN;
  if (x < 0) return isWhole(nu) ? (isOdd(nu) ? -1.0 : 1.0) * calcBesselJ(nu, -x) : kNaN;
  if (nu >= 0) return positiveJ(nu, x);
  const double cosine = cosPi(nu), sine = sinPi(-nu);
  return (cosine == 0 ? 0.0 : cosine * positiveJ(-nu, x)) - (sine == 0 ? 0.0 : sine * positiveY(-nu, x));
}

double calcBesselY(double nu, double x) {
  if (std::isnan(nu) || std::isnan(x) || x < 0) return kNaN;
  if (nu >= 0) return positiveY(nu, x);
  const double cosine = cosPi(nu), sine = sinPi(-nu);
  return (sine == 0 ? 0.0 : sine * positiveJ(-nu, x)) + (cosine == 0 ? 0.0 : cosine * positiveY(-nu, x));
}

double calcBesselI(double nu, double x) {
  if (std::isnan(nu) || std::isnan(x)) return kNaN;
  if (x < 0) return isWhole(nu) ? (isOdd(nu) ? -1.0 : 1.0) * calcBesselI(nu, -x) : kNaN;
  if (nu >= 0) return positiveI(nu, x);
  const double sine = sinPi(-nu);
  return positiveI(-nu, x) + (sine == 0 ? 0.0 : 2 / pi * sine * positiveK(-nu, x));
}

double calcBesselK(double nu, double x) {
  if (std::isnan(nu) || std::isnan(x) || x < 0) return kNaN;
  return positiveK(std::abs(nu), x);
}

// j of order -n-1 is (-1)^(n+1) y_n (DLMF 10.47.15).
double calcSphericalBesselJ(double n, double x) {
  if (std::isnan(n) || std::isnan(x)) return kNaN;
  if (x < 0) return isWhole(n) ? (isOdd(n) ? -1.0 : 1.0) * calcSphericalBesselJ(n, -x) : kNaN;
  if (n < 0 && isWhole(n)) return (isOdd(n) ? -1.0 : 1.0) * calcSphericalBesselY(-n - 1, x);
  if (x == 0 && n >= 0) return n == 0 ? 1.0 : 0.0;
  // The leading term, where J itself may be too small for a double.
  if (x < 1e-8 && n >= 0)
    return n > 150 ? 0.0 : std::pow(x, n) / std::exp2(n + 1) * std::sqrt(pi) / standardGamma(n + 1.5);
  return calcBesselJ(n + 0.5, x) * (std::sqrt(pi / 2) / std::sqrt(x));
}

double calcSphericalBesselY(double n, double x) {
  if (std::isnan(n) || std::isnan(x)) return kNaN;
  if (x < 0) return isWhole(n) ? (isOdd(n) ? 1.0 : -1.0) * calcSphericalBesselY(n, -x) : kNaN;
  if (n < 0 && isWhole(n)) return (isOdd(n) ? 1.0 : -1.0) * calcSphericalBesselJ(-n - 1, x);
  if (x < 1e-8 && n >= 0)
    return n > 150 ? -kInfinity : -std::pow(x, -n - 1) * std::exp2(n) / std::sqrt(pi) * standardGamma(n + 0.5);
  return calcBesselY(n + 0.5, x) * (std::sqrt(pi / 2) / std::sqrt(x));
}

}  // namespace SpecialFunction
