// SPDX-License-Identifier: Apache-2.0
#include "special/gamma/incomplete_gamma_kernel.h"

#include <algorithm>
#include <cmath>

#include "frame/numbers.h"
#include "special/special_function.h"

namespace SpecialFunction::Kernel {
namespace {

constexpr int kMaxRounds = 1000000;

// x^a exp(-x)/gamma(a+1). From a = 20 on by Stirling's series, written in x/a so that nothing large cancels
// (Temme 1979): exp(-a (mu - log(1+mu)))/sqrt(2 pi a), mu = (x-a)/a.
double weight(double a, double x) {
  if (a < 20 && x < 700) return std::pow(x, a) * std::exp(-x) / standardGamma(a + 1);
  if (a < 20) return std::exp(a * std::log(x) - x) / standardGamma(a + 1);
  const double mu = (x - a) / a, r = 1 / (a * a);
  const double rest = (1.0 / 12 + r * (-1.0 / 360 + r * (1.0 / 1260 - r / 1680))) / a;
  // Far from the peak the logarithm of x/a is the better form.
  const double phi = std::abs(mu) < 0.5 ? mu - std::log1p(mu) : mu - std::log(x / a);
  return std::exp(-a * phi - rest) / std::sqrt(2 * pi * a);
}

// sum of x^k/((a+1)...(a+k)), k = 0, 1, ...
double ascendingSum(double a, double x) {
  double term = 1, sum = 1;
  for (int k = 1; k < kMaxRounds; ++k) {
    term *= x / (a + k);
    sum += term;
    if (term <= sum * (kEpsilon / 8)) break;
  }
  return sum;
}

// UG(a, x) exp(x) x^-a by the even part of Legendre's continued fraction, as convergents A/B (no division in the loop).
double legendreFraction(double a, double x) {
  double b = x + 1 - a;
  double a0 = 0, b0 = 1, a1 = 1, b1 = b, value = a1 / b1;
  for (int k = 1; k < kMaxRounds; ++k) {
    const double c = k * (a - k);
    b += 2;
    const double a2 = b * a1 + c * a0, b2 = b * b1 + c * b0;
    a0 = a1;
    b0 = b1;
    a1 = a2;
    b1 = b2;
    if (std::abs(a1) > 1e200 || std::abs(b1) > 1e200) {
      a0 *= 1e-200;
      b0 *= 1e-200;
      a1 *= 1e-200;
      b1 *= 1e-200;
    }
    const double next = a1 / b1;
    if (std::abs(next - value) <= std::abs(next) * kEpsilon) return next;
    value = next;
  }
  return value;
}

// log(gamma(1+a)), |a| <= 1/4, relatively right at a = 0: -gamma a + sum (-1)^k zeta(k)/k a^k.
double lngamma1p(double a) {
  static constexpr double kZetaOverK[] = {
      // zeta(k)/k, k = 2..24
      0.8224670334241132,  0.40068563438653143, 0.27058080842778454, 0.20738555102867398, 0.16955717699740818,
      0.14404989676884611, 0.12550966952474304, 0.11133426586956469, 0.10009945751278180, 0.09095401714582904,
      0.08335384054610900, 0.07693251641135219, 0.07143294629536133, 0.06666870588242047, 0.06250095514121304,
      0.05882397865868458, 0.05555576762740361, 0.05263167937961667, 0.05000004769810169, 0.04761907033014265,
      0.04545455629320467, 0.04347826605304026, 0.04166666915034122};
  double sum = 0;
  for (int k = 22; k >= 0; --k) sum = (k % 2 == 0 ? kZetaOverK[k] : -kZetaOverK[k]) + a * sum;
  return a * (-0.5772156649015329 + a * sum);
}

// Q for 0 < a < 1 and small x without the subtraction from 1: with u = x^a/gamma(1+a),
// Q = (1-u) + u a sum_{k>=1} -(-x)^k/(k! (a+k)).
double smallQ(double a, double x) {
  const double logarithm = a * std::log(x) - (a <= 0.25 ? lngamma1p(a) : std::log(standardGamma(1 + a)));
  double term = 1, sum = 0;
  for (int k = 1; k < 200; ++k) {
    term *= -x / k;
    const double add = term / (a + k);
    sum += add;
    if (std::abs(add) <= std::abs(sum) * (kEpsilon / 8)) break;
  }
  return -std::expm1(logarithm) - std::exp(logarithm) * a * sum;
}

// ratio * gamma(a), through the logarithm where gamma(a) overflows.
double timesGamma(double a, double ratio) {
  if (ratio == 0) return 0;
  if (const double full = standardGamma(a); std::isfinite(full)) return full * ratio;
  return std::exp(calcLngamma(a) + std::log(ratio));
}

}  // namespace

Regularised regularisedGamma(double a, double x) {
  if (x == 0) return {0, 1};
  if (!std::isfinite(a)) return {a - a, a - a};
  if (std::isinf(x)) return {1, 0};
  if (x < 1.1 && a < 1) {
    if (a > 0.5 && x < 0.3) {
      const double p = std::min(1.0, weight(a, x) * ascendingSum(a, x));
      return {p, 1 - p};
    }
    const double q = smallQ(a, x);
    return {q < 0.9 ? 1 - q : weight(a, x) * ascendingSum(a, x), q};
  }
  if (x < a + 1) {
    const double p = std::min(1.0, weight(a, x) * ascendingSum(a, x));
    return {p, 1 - p};
  }
  const double scale = weight(a, x);
  const double q = scale == 0 ? 0 : std::min(1.0, scale * a * legendreFraction(a, x));
  return {1 - q, q};
}

double lowerGammaSeries(double a, double x) {
  double term = 1, sum = 1 / a;
  for (int k = 1; k < kMaxRounds; ++k) {
    term *= -x / k;
    const double add = term / (a + k);
    sum += add;
    if (k > std::abs(x) && k > -a && std::abs(add) <= std::abs(sum) * (kEpsilon / 8)) break;
  }
  return std::pow(x, a) * sum;
}

double lowerGammaByPower(double a, double x) { return std::pow(x, a) * (std::exp(-x) * ascendingSum(a, x)) / a; }

double upperGamma(double a, double x) {
  if (a > 0) return timesGamma(a, regularisedGamma(a, x).q);
  if (x > 1 || a < -30) {
    const double scale = std::pow(x, a) * std::exp(-x);
    return scale == 0 ? 0 : scale * legendreFraction(a, x);
  }
  // Downwards from (0, 1]: UG(a, x) = (UG(a+1, x) - x^a exp(-x))/a. The power dominates, so nothing cancels.
  const double steps = std::ceil(-a);
  double order = a + steps;
  double value = standardGamma(order) * regularisedGamma(order, x).q;
  for (double k = steps; k > 0; k -= 1) {
    order = a + (k - 1);
    value = (value - std::pow(x, order) * std::exp(-x)) / order;
  }
  return value;
}

}  // namespace SpecialFunction::Kernel
