// SPDX-License-Identifier: Apache-2.0
// Tricomi's U(a, b, x) and Whittaker's functions.
//
// U = pi/sin(pi b) (M(a, b, x)/(gamma(1+a-b) gamma(b)) - x^(1-b) M(1+a-b, 2-b, x)/(gamma(a) gamma(2-b))) as it stands
// loses exp(x) and 1/sin(pi b) to cancellation, so it serves for small x only. Elsewhere U is the minimal solution of
// its recurrence in a (Temme, Numer. Math. 41, 1983), or its asymptotic series.
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

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

bool isPole(double x) { return x < -0.1 && std::abs(std::round(x) - x) < 1e-15; }
double inverseGamma(double x) { return isPole(x) || x == 0 ? 0 : 1 / std::tgamma(x); }

// x^-a sum (a)_n (a-b+1)_n/n! (-x)^-n (DLMF 13.7.3).
std::optional<double> asymptoticSum(double a, double b, double x) {
  double term = 1, sum = 1, last = 1;
  for (int n = 0; n < 10000; ++n) {
    term *= -(a + n) * (a - b + 1 + n) / ((n + 1) * x);
    sum += term;
    const double size = std::abs(term);
    if (size <= kEps / 8 * std::abs(sum)) return sum;
    if (!(size < last * 1.0000001) || size > 1e3) return std::nullopt;
    last = size;
  }
  return std::nullopt;
}

// U(a, b, x) x^a and U(a+1, b, x) x^a, a > 0, a-b+1 > 0, backwards from index `start`. With w_n = (a)_n U(a+n, b, x):
// w_(n-1) = ((2a+2n+x-b) w_n - (a+n-b+1) w_(n+1))/(a+n-1), and sum of (a-b+1)_n/n! w_n = x^-a. In long double: w
// changes slowly, and each rounding counts n times.
std::pair<double, double> backward(double a, double b, double x, int start) {
  long double next = 0, now = 1e-250L, weight = 1, sum = now;
  for (int n = start; n > 0; --n) {
    const long double before =
        ((static_cast<long double>(2 * a + 2.0 * n) + x - b) * now - (static_cast<long double>(a) + n - b + 1) * next) /
        (static_cast<long double>(a) + n - 1);
    next = now;
    now = before;
    weight *= n / (static_cast<long double>(a) - b + n);
    sum += weight * now;
    if (now > 1e200 || sum > 1e200) {
      next *= 1e-200;
      now *= 1e-200;
      sum *= 1e-200;
    }
    if (weight > 1e100) {
      weight *= 1e-100;
      sum *= 1e-100;
    } else if (weight < 1e-100) {
      weight *= 1e100;
      sum *= 1e100;
    }
  }
  const long double scale = weight / sum;
  return {static_cast<double>(now * scale), static_cast<double>(next * scale / a)};
}

constexpr int kMostSteps = 2000000;
constexpr double kMostDown = 20000;

std::optional<Scaled> byRecurrence(double a, double b, double x) {
  double down = std::max(0.0, std::ceil(std::max(-a, b - a - 1) + 0.25));
  if (!(down <= kMostDown) || 200 / x > kMostSteps) return std::nullopt;
  const double top = a + down;
  int start = 40 + static_cast<int>(130 / x);  // the rest is about exp(-4 sqrt(start x))
  auto value = backward(top, b, x, start);
  for (;;) {
    start *= 2;
    if (start > kMostSteps) return std::nullopt;
    const auto finer = backward(top, b, x, start);
    const bool same = std::abs(finer.first - value.first) <= 64 * kEps * std::abs(finer.first);
    value = finer;
    if (same || std::isnan(finer.first)) break;
  }
  Scaled result{value.first, -top * std::log(x)};
  double above = value.second;
  // U(a-1) = (2a+x-b) U(a) - a(a-b+1) U(a+1).
  for (double order = top; down > 0; --down, order -= 1) {
    const double below = (2 * order + x - b) * result.value - order * (order - b + 1) * above;
    above = result.value;
    result.value = below;
    const double size = std::abs(below);
    if (size > 1e100) {
      result.value *= 1e-100;
      above *= 1e-100;
      result.logarithm += 100 * std::log(10.0);
    }
  }
  return result;
}

// The two series. Without `force` nothing when their difference has lost digits.
std::optional<double> byTwoSeries(double a, double b, double x, bool force) {
  const double first = calcHypergeometric1F1(a, b, x), second = calcHypergeometric1F1(1 + a - b, 2 - b, x);
  if (std::isnan(first) || std::isnan(second)) return kNaN;
  const double left = first * inverseGamma(1 + a - b) * inverseGamma(b);
  const double factor = inverseGamma(a) * inverseGamma(2 - b);
  const double right = factor == 0 ? 0 : std::pow(x, 1 - b) * second * factor;
  const double difference = left - right;
  if (!force && !(std::abs(difference) > 0.005 * std::max(std::abs(left), std::abs(right)))) return std::nullopt;
  const double whole = std::round(b);
  if (std::abs(b) < 1e15)  // sin(pi b) without the rounding of pi b
    return difference * kPi / std::sin(kPi * (b - whole)) * (std::fmod(whole, 2.0) == 0 ? 1 : -1);
  return difference * kPi / std::sin(guardAngle(b * kPi));
}

// U(a, 1, x) for small x: -1/gamma(a) sum (a)_k/k!^2 x^k (log x + psi(a+k) - 2 psi(k+1)) (DLMF 13.2.9).
double logarithmic(double a, double x) {
  double term = 1, sum = 0;
  for (int k = 0; k < 200; ++k) {
    if (k > 0) term *= (a + k - 1) * x / (static_cast<double>(k) * k);
    sum += term * (std::log(x) + calcDigamma(a + k) - 2 * calcDigamma(k + 1.0));
    if (std::abs(term) < kEps / 100) break;
  }
  return -sum * inverseGamma(a);
}

Scaled tricomi(double a, double b, double x) {
  if (std::isnan(a) || std::isnan(b) || std::isnan(x)) return {kNaN, 0};
  // KEPT: NaN at integer b but 1, where one of the two series has a pole (kept.csv: HypergeometricU_integer)
  const bool whole = std::abs(std::round(b) - b) < 1e-15;
  if (whole && std::round(b) != 1) return {kNaN, 0};
  if (!std::isfinite(a) || !std::isfinite(b)) return {kNaN, 0};
  if (a == 0) return {1, 0};
  const bool polynomial = isPole(a);
  if (x <= 0) {
    if (x == 0 && b < 1 && !polynomial) return {std::tgamma(1 - b) * inverseGamma(1 + a - b), 0};
    if (x == 0 && !polynomial) return {isPole(1 + a - b) ? kNaN : kInf, 0};
    if (!polynomial || a < -10000) return {kNaN, 0};
    double rising = 1;  // (-1)^n (b)_n M(-n, b, x)
    for (double k = 0; k < -std::round(a); k += 1) rising *= -(b + k);
    return {rising * calcHypergeometric1F1(std::round(a), b, x), 0};
  }
  if (std::isinf(x)) return {a > 0 ? 0 : kInf, 0};
  if (x > 20 || polynomial)
    if (const auto sum = asymptoticSum(a, b, x)) return {*sum, -a * std::log(x)};
  if (x < 0.05 && std::abs(a) * x < 1 && std::abs(a) < 100 && whole && !polynomial) return {logarithmic(a, x), 0};
  // Left of the turning point in a the difference of the series keeps its digits, and the recurrence does not.
  const bool goesFarDown = std::max(-a, b - a - 1) > 6 && x < 60;
  if ((x < 4 || goesFarDown) && std::abs(b) < 70 && std::abs(a) < 100 && std::abs(std::round(b) - b) > 0.002)
    if (const auto value = byTwoSeries(a, b, x, x < 0.001)) return {*value, 0};
  if (const auto value = byRecurrence(a, b, x)) return *value;
  return {byTwoSeries(a, b, x, true).value_or(kNaN), 0};
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
