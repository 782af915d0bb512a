// SPDX-License-Identifier: Apache-2.0
// E_(a,b)(x) = sum of x^k/gamma(ak+b) and phi(a, b, x) = sum of x^k/(k! gamma(ak+b)).
#include <algorithm>
#include <cmath>
#include <complex>
#include <limits>
#include <optional>
#include <vector>

#include "frame/numbers.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

using Complex = std::complex<double>;

struct PairSum {
  double value, largest;  // the sum and its largest term
};

// Pairs of terms, at most 1024, until a pair is far below 1e-14 of the sum.
// KEPT: 2048 terms at most; expected: as many as small orders need (kept.csv: MittagLeffler_cap)
PairSum seriesOfPairs(double a, double b, double x) {
  const double logarithm = std::log(std::abs(x));
  double power = 1, sum = 0, largest = 0, last = kInfinity;
  const auto term = [&](int k) {
    const double order = a * k + b;
    double value;
    if (order < 170 && std::abs(power) < 1e290 && std::abs(power) > 1e-290)
      value = power / standardGamma(order);
    else
      value = std::exp(k * logarithm - calcLngamma(order)) * (x < 0 && k % 2 == 1 ? -1 : 1);
    power *= x;
    largest = std::max(largest, std::abs(value));
    return value;
  };
  for (int pair = 0; pair < 1024; ++pair) {
    const double even = term(2 * pair), odd = term(2 * pair + 1), size = std::max(std::abs(even), std::abs(odd));
    sum += even + odd;
    // Not while the terms still grow.
    if (size <= 1e-16 * std::abs(sum) && size <= last && pair > 0) break;
    if (!std::isfinite(sum)) break;
    last = size;
  }
  return {sum, largest};
}

// For x < 0 where the series cancels: (1/(2 pi i)) integral of exp(s) s^(a-b)/(s^a - x) ds over a parabola around the
// negative axis, which is a vertical line in v = sqrt(s) (Weideman and Trefethen, Math. Comp. 76, 2007; Garrappa, SIAM
// J. Numer. Anal. 53, 2015). Poles right of the line enter by their residues exp(s) s^(1-b)/a.
std::optional<double> byContour(double a, double b, double x) {
  if (a > 100 || b > 150) return std::nullopt;
  const double radius = std::pow(-x, 1 / a);
  std::vector<double> walls{0.0};
  for (int j = 0; (2 * j + 1) / a < 1; ++j) walls.push_back(std::sqrt(radius) * std::cos(pi * (2 * j + 1) / a / 2));
  std::sort(walls.begin(), walls.end());
  const double wish = std::sqrt(std::max(1.5, b - 1));
  double line = 0, distance = 0, least = kInfinity;
  for (std::size_t i = 0; i < walls.size(); ++i) {
    const bool last = i + 1 == walls.size();
    const double low = walls[i], width = last ? kInfinity : walls[i + 1] - low;
    const double c = last ? std::max(wish, low + 0.7) : std::clamp(wish, low + 0.4 * width, low + 0.6 * width);
    const double d = std::min({c - low, last ? 1.5 : low + width - c, 1.5});
    const double cost = std::abs(c * c - wish * wish) + 0.1 / d;
    if (d > 0.01 && cost < least) {
      least = cost;
      line = c;
      distance = d;
    }
  }
  if (!(least < 30)) return std::nullopt;
  const double step = 2 * pi * distance / (42 + 2 * line * distance + distance * distance);
  const double end = std::sqrt(line * line + 45);
  double sum = 0;
  for (int k = 0; k * step <= end; ++k) {
    const Complex v(line, k * step), logarithm = std::log(v);
    const Complex value = std::exp(v * v + (2 * (a - b) + 1) * logarithm) / (std::exp(2 * a * logarithm) - x);
    sum += k == 0 ? value.real() / 2 : value.real();
  }
  double result = sum * step * 2 / pi;
  for (int j = 0; (2 * j + 1) / a < 1; ++j) {
    const Complex pole = std::polar(radius, pi * (2 * j + 1) / a);
    if (std::sqrt(radius) * std::cos(pi * (2 * j + 1) / a / 2) < line) continue;
    result += 2 / a * (std::exp(pole + (1 - b) * std::log(pole))).real();
  }
  return result;
}

double negativeSide(double a, double b, double x) {
  if (a == 1 && b == 1) return std::exp(x);  // far below the parts of any sum
  const PairSum series = seriesOfPairs(a, b, x);
  if (std::isfinite(series.value) && series.largest <= 100 * std::abs(series.value)) return series.value;
  if (std::isinf(x)) return 0;
  return byContour(a, b, x).value_or(series.value);
}

}  // namespace

double calcMittagLeffler(double a, double b, double x) {
  if (!(a >= kEpsilon && b >= kEpsilon) || std::isnan(x)) return kNaN;
  if (std::isinf(a) || std::isinf(b)) return std::isinf(b) ? 0 : 1 / standardGamma(b);
  if (x < 0) return negativeSide(a, b, x);
  if (x <= 3.98) return seriesOfPairs(a, b, x).value;
  if (std::isinf(x)) return kInfinity;
  // The largest term is that of k = x^(1/a)/a. Where the pairs reach it, the halving below would only double it.
  if (std::log(x) < a * std::log(1500 * a)) return seriesOfPairs(a, b, x).value;
  // E_a(x) = (E_(a/2)(sqrt x) + E_(a/2)(-sqrt x))/2.
  const double root = std::sqrt(x), upper = calcMittagLeffler(a / 2, b, root);
  if (!std::isfinite(upper)) return upper;
  return (upper + negativeSide(a / 2, b, -root)) / 2;
}

double calcWrightBessel(double a, double b, double x) {
  // KEPT: |x|; expected: 1/gamma(b) (kept.csv: WrightBessel_zero)
  if (std::abs(x) < 1e-32) return std::abs(x);
  if (!(a >= 0 && b >= 0 && x >= -8)) return kNaN;
  if (std::isinf(x)) return kInfinity;
  // In long double: for x < 0 the terms cancel up to exp(16).
  const long double logarithm = std::log(std::abs(static_cast<long double>(x)));
  long double sum = 0, previous = 1, factorial = 0;  // log k!
  for (int k = 0; k < 10000; ++k) {
    if (k > 0) factorial += std::log(static_cast<long double>(k));
    const long double order = static_cast<long double>(a) * k + b;
    int sign = 0;
    const long double size = order == 0 ? 0 : std::exp(k * logarithm - factorial - ::lgammal_r(order, &sign));
    sum += x < 0 && k % 2 == 1 ? -size : size;
    const long double limit = 1e-16L * std::abs(sum) / (x < 0 ? 1000 : 1);
    if (k > 1 && size <= limit && previous <= limit) break;
    if (!std::isfinite(sum) || sum > std::numeric_limits<double>::max()) return kInfinity;
    previous = size;
  }
  return static_cast<double>(sum);
}

}  // namespace SpecialFunction
