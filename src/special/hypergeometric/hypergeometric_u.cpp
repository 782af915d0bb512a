// SPDX-License-Identifier: Apache-2.0
// Tricomi's U(a, b, x) and Whittaker's functions.
//
// U = pi/sin(pi b) (M(a, b, x)/(gamma(1+a-b) gamma(b)) - x^(1-b) M(1+a-b, 2-b, x)/(gamma(a) gamma(2-b))) as it stands
// loses exp(x) and 1/sin(pi b) to cancellation, so in doubles it serves for small x only. Elsewhere U is its asymptotic
// series, or the minimal solution of its recurrence in a (Temme, Numer. Math. 41, 1983) where that is stable, or the
// two series in more bits.
#include <algorithm>
#include <cmath>
#include <optional>

#include "frame/numbers.h"
#include "special/hypergeometric/hypergeometric_u_parts.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

bool isPole(double x) { return x < -0.1 && std::abs(std::round(x) - x) < 1e-15; }
double inverseGamma(double x) { return isPole(x) || x == 0 ? 0 : 1 / standardGamma(x); }

// x^-a sum (a)_n (a-b+1)_n/n! (-x)^-n (DLMF 13.7.3).
std::optional<double> asymptoticSum(double a, double b, double x) {
  double term = 1, sum = 1, last = 1;
  for (int n = 0; n < 10000; ++n) {
    term *= -(a + n) * (a - b + 1 + n) / ((n + 1) * x);
    sum += term;
    const double size = std::abs(term);
    if (size <= kEpsilon / 8 * std::abs(sum)) return sum;
    if (!(size < last * 1.0000001) || size > 1e3) return std::nullopt;
    last = size;
  }
  return std::nullopt;
}

// Left of the turning point in a the recurrence is not stable: for b < -x below a = (b-x)/2, where the solution with
// the sign of the other root takes over. b > 1 by U(a, b, x) = x^(1-b) U(1+a-b, 2-b, x).
bool recurrenceIsStable(double a, double b, double x) {
  if (b > 1) return recurrenceIsStable(1 + a - b, 2 - b, x);
  return !(b < -x && a < (b - x) / 2);
}

// The two series in doubles; nothing when their difference has lost digits or a part its range.
std::optional<double> byTwoSeries(double a, double b, double x) {
  const double first = calcHypergeometric1F1(a, b, x), second = calcHypergeometric1F1(1 + a - b, 2 - b, x);
  const double left = first * inverseGamma(1 + a - b) * inverseGamma(b);
  const double factor = inverseGamma(a) * inverseGamma(2 - b);
  const double right = factor == 0 ? 0 : std::pow(x, 1 - b) * second * factor;
  const double difference = left - right, size = std::max(std::abs(left), std::abs(right));
  if (!(std::abs(difference) > 0.005 * size && size > 1e-280)) return std::nullopt;
  const double whole = std::round(b);  // sin(pi b) without the rounding of pi b
  return difference * pi / std::sin(pi * (b - whole)) * (std::fmod(whole, 2.0) == 0 ? 1 : -1);
}

// U(a, 1, x) for small x: -1/gamma(a) sum (a)_k/k!^2 x^k (log x + psi(a+k) - 2 psi(k+1)) (DLMF 13.2.9).
double logarithmic(double a, double x) {
  double term = 1, sum = 0;
  for (int k = 0; k < 200; ++k) {
    if (k > 0) term *= (a + k - 1) * x / (static_cast<double>(k) * k);
    sum += term * (std::log(x) + calcDigamma(a + k) - 2 * calcDigamma(k + 1.0));
    if (std::abs(term) < kEpsilon / 100) break;
  }
  return -sum * inverseGamma(a);
}

Scaled tricomi(double a, double b, double x) {
  if (std::isnan(a) || std::isnan(b) || std::isnan(x)) return {kNaN, 0};
  // KEPT: NaN at integer b but 1, a pole of one of the two series; expected: the limit (kept.csv:
  // HypergeometricU_integer)
  const bool whole = std::abs(std::round(b) - b) < 1e-15;
  if (whole && std::round(b) != 1) return {kNaN, 0};
  if (!std::isfinite(a) || !std::isfinite(b)) return {kNaN, 0};
  if (a == 0) return {1, 0};
  const bool polynomial = isPole(a);
  if (x <= 0) {
    if (x == 0 && b < 1 && !polynomial) return {standardGamma(1 - b) * inverseGamma(1 + a - b), 0};
    if (x == 0 && !polynomial) return {isPole(1 + a - b) ? kNaN : kInfinity, 0};
    if (!polynomial || a < -10000) return {kNaN, 0};
    double rising = 1;  // (-1)^n (b)_n M(-n, b, x)
    for (double k = 0; k < -std::round(a); k += 1) rising *= -(b + k);
    return {rising * calcHypergeometric1F1(std::round(a), b, x), 0};
  }
  if (std::isinf(x)) return {a > 0 ? 0 : kInfinity, 0};
  if (x > 20 || polynomial)
    if (const auto sum = asymptoticSum(a, b, x)) return {*sum, -a * std::log(x)};
  if (x < 0.05 && std::abs(a) * x < 1 && std::abs(a) < 100 && whole && !polynomial) return {logarithmic(a, x), 0};
  const bool stable = recurrenceIsStable(a, b, x);
  const bool goesFarDown = std::max(-a, b - a - 1) > 6 && x < 60;
  if ((x < 4 || goesFarDown) && std::abs(b) < 70 && std::abs(a) < 100 && std::abs(std::round(b) - b) > 0.002)
    if (const auto value = byTwoSeries(a, b, x)) return {*value, 0};
  if (stable)
    if (const auto value = hypergeometricUByRecurrence(a, b, x)) return *value;
  if (!whole)
    if (const auto value = hypergeometricUByMoreBits(polynomial ? std::round(a) : a, b, x)) return *value;
  return {kNaN, 0};
}

}  // namespace

double calcHypergeometricU(double a, double b, double x) { return tricomi(a, b, x).plain(); }

double calcWhittakerM(double k, double m, double x) {
  const double b = 2 * m + 1, power = m + 0.5;
  if (x > 200) {  // Kummer's transform: the series at x leaves the range before the product does
    const double sum = calcHypergeometric1F1(power + k, b, -x);
    return Scaled{sum, power * std::log(x) + x / 2}.plain();
  }
  const double sum = calcHypergeometric1F1(power - k, b, x);
  const double value = std::pow(x, power) * std::exp(-x / 2) * sum;
  if (!(x > 0) || (value != 0 && std::isfinite(value))) return value;
  return Scaled{sum, power * std::log(x) - x / 2}.plain();
}

double calcWhittakerW(double k, double m, double x) {
  const double power = m + 0.5;
  Scaled u = tricomi(power - k, 2 * m + 1, x);
  if (!(x > 0)) return std::pow(x, power) * std::exp(-x / 2) * u.plain();
  if (std::isinf(x)) return std::isnan(u.value) ? kNaN : 0;
  if (std::isinf(u.value)) return u.value;
  u.logarithm += power * std::log(x) - x / 2;
  return u.plain();
}

}  // namespace SpecialFunction
