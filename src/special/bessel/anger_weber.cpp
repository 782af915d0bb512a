// SPDX-License-Identifier: Apache-2.0
// Anger's J and Weber's E (DLMF 11.10).
#include <cmath>

#include "frame/numbers.h"
#include "numeric/integral.h"
#include "special/bessel/exponential_sum.h"
#include "special/elementary/turn.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr int32_t kIntervals = 1000000;
// Beyond it the quadrature over [0, pi] takes up to a second, until it meets its limit of intervals.
constexpr double kQuadratureReach = 24;

double quadratureJ(double nu, double x) {
  return Integral::integralAdaptive([=](double t) { return std::cos(guardAngle(nu * t - x * std::sin(t))); }, 0, pi,
                                    kIntervals) /
         pi;
}
double quadratureE(double nu, double x) {
  return Integral::integralAdaptive([=](double t) { return std::sin(guardAngle(nu * t - x * std::sin(t))); }, 0, pi,
                                    kIntervals) /
         pi;
}

// The same integrals over another path, nu >= 0, x >= 0, not both small (DLMF 11.10.4, 11.10.5, 10.9.7).
double farJ(double nu, double x) {
  const double sine = sinPi(nu);
  const double rest =
      sine == 0 ? 0.0
                : integralOfExponential(1 / (nu + x), 0.0625, [=](double t) { return -nu * t - x * std::sinh(t); });
  return calcBesselJ(nu, x) + sine / pi * rest;
}

// nu > x: the end points of [0, pi] alone count (DLMF 11.10.8-11.10.11 with the gamma functions reflected), as far as
// the terms fall below the last digit before they grow again.
bool endpointSum(double nu, double x, double first, double& sum) {
  double term = 1;
  sum = 1;
  for (double j = first; j < nu - 2; j += 2) {
    const double step = (x / (nu - j)) * (x / (nu + j));
    if (step >= 1) return false;
    term *= step;
    sum += term;
    if (term < kEpsilon / 16 * sum) return true;
  }
  return false;
}

double farE(double nu, double x) {
  if (nu > x) {
    double even = 0, odd = 0;
    if (!endpointSum(nu, x, 2, even) || !endpointSum(nu, x, 3, odd)) return quadratureE(nu, x);
    const double sine = sinPi(std::fmod(nu, 4.0) / 2), cosine = cosPi(std::fmod(nu, 4.0) / 2);
    return 2 / pi * (sine * sine / nu * even + cosine * cosine * (x / (nu - 1) / (nu + 1)) * odd);
  }
  const double cosine = cosPi(nu), gap = x - nu;
  const double scale = std::fmin(1 / std::cbrt(x), gap > 0 ? 1 / gap : 1.0);
  // exp(nu t - x sinh t) with nu t - x sinh t = -(x - nu) t - x (sinh t - t), which must not cancel.
  const auto excess = [](double t) {
    return t > 0.5 ? std::sinh(t) - t
                   : t * t * t / 6 * (1 + t * t / 20 * (1 + t * t / 42 * (1 + t * t / 72 * (1 + t * t / 110))));
  };
  const double rising = integralOfExponential(scale, 0.0625, [=](double t) { return -gap * t - x * excess(t); });
  const double falling =
      integralOfExponential(1 / (nu + x), 0.0625, [=](double t) { return -nu * t - x * std::sinh(t); });
  return -calcBesselY(nu, x) - (rising + cosine * falling) / pi;
}

bool inReach(double nu, double x) { return std::abs(nu) + std::abs(x) <= kQuadratureReach; }
bool notFinite(double nu, double x) { return !std::isfinite(nu) || !std::isfinite(x); }

}  // namespace

double calcAngerJ(double nu, double x) {
  if (notFinite(nu, x)) return kNaN;
  if (std::abs(nu - std::round(nu)) < 1e-15) return calcBesselJ(std::round(nu), x);
  if (inReach(nu, x)) return quadratureJ(nu, x);
  if (x < 0) return calcAngerJ(-nu, -x);
  if (nu >= 0) return farJ(nu, x);
  return cosPi(nu) * farJ(-nu, x) - sinPi(nu) * farE(-nu, x);  // DLMF 11.10.13
}

double calcWeberE(double nu, double x) {
  if (notFinite(nu, x)) return kNaN;
  if (inReach(nu, x)) return quadratureE(nu, x);
  if (x < 0) return -calcWeberE(-nu, -x);
  if (nu >= 0) return farE(nu, x);
  return cosPi(nu) * farE(-nu, x) + sinPi(nu) * farJ(-nu, x);  // DLMF 11.10.12
}

}  // namespace SpecialFunction
