// SPDX-License-Identifier: Apache-2.0
#include "statistics/normality.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "frame/numbers.h"
#include "statistics/descriptive.h"
#include "statistics/families.h"
#include "statistics/goodness.h"
#include "statistics/order.h"
#include "statistics/stat_fun.h"

namespace Statistics {
namespace {

constexpr uint8_t kNormalCode = 52;
constexpr std::size_t kFewestValues = 3;

StatFun besideOwnNormal(std::span<const double> x) {
  StatFun fun(x);
  const double params[] = {calcMean(x), calcDeviation(x)};
  fun.setParam(params);
  return fun;
}

double polynomial(double x, std::initializer_list<double> ascendingCoefficients) {
  double value = 0;
  for (auto c = std::rbegin(ascendingCoefficients); c != std::rend(ascendingCoefficients); ++c) value = value * x + *c;
  return value;
}

// The upper half of the weights, smallest first; the lower half has the other sign.
std::vector<double> weights(std::size_t n, bool exactScores) {
  const std::size_t half = n / 2;
  std::vector<double> m(half);  // normal scores by Blom's formula, of which the last is the largest
  double squares = 0;
  for (std::size_t i = 0; i < half; ++i) {
    const auto rank = static_cast<double>(half - 1 - i);  // from below, so that small probabilities keep their digits
    m[i] = -normalQuantile((rank + 0.625) / (static_cast<double>(n) + 0.25));
    squares += 2 * m[i] * m[i];
  }
  const double length = std::sqrt(squares);
  std::vector<double> a(half);
  for (std::size_t i = 0; i < half; ++i) a[i] = m[i] / length;
  if (exactScores) return a;
  if (n == 3) return {std::numbers::sqrt2 / 2};

  const double u = 1 / std::sqrt(static_cast<double>(n));
  const std::size_t fitted = n > 5 ? 2 : 1;  // the outermost weights are polynomials in u
  double rest = squares, share = 1;
  const auto fit = [&](std::size_t i, double correction) {
    a[i] += correction;
    rest -= 2 * m[i] * m[i];
    share -= 2 * a[i] * a[i];
  };
  fit(half - 1, polynomial(u, {0, 0.221157, -0.147981, -2.071190, 4.434685, -2.706056}));
  if (fitted == 2) fit(half - 2, polynomial(u, {0, 0.042981, -0.293762, -1.752461, 5.682633, -3.582633}));
  const double scale = std::sqrt(rest / share);
  for (std::size_t i = 0; i + fitted < half; ++i) a[i] = m[i] / scale;
  return a;
}

// W against its law: Royston, Applied Statistics 44 (1995) 547; for the exact scores Royston, ibid. 42 (1993) 185.
ShapiroWilk judged(double w, std::size_t count, bool exactScores) {
  if (count == 3) {
    const double p = 6 / std::numbers::pi * (std::asin(std::sqrt(w)) - std::asin(std::sqrt(0.75)));
    return {w, std::max(p, 0.0), kNaN, kNaN};
  }
  const auto n = static_cast<double>(count);
  const double x = std::log(n);
  double transformed = std::log1p(-w);
  double mean, deviation;
  if (exactScores) {
    const double v = std::log(x);
    mean = -1.2725 + 1.0521 * (v - x);
    deviation = 1.0308 - 0.26758 * (v + 2 / x);
  } else if (count <= 11) {
    const double gamma = polynomial(n, {-2.273, 0.459});
    mean = polynomial(n, {0.5440, -0.39978, 0.025054, -0.0006714});
    deviation = std::exp(polynomial(n, {1.3822, -0.77857, 0.062767, -0.0020322}));
    if (transformed >= gamma) return {w, 1e-99, mean, deviation};
    transformed = -std::log(gamma - transformed);
  } else {
    mean = polynomial(x, {-1.5861, -0.31082, -0.083751, 0.0038915});
    deviation = std::exp(polynomial(x, {-0.4803, -0.082676, 0.0030302}));
  }
  return {w, normalCDF((mean - transformed) / deviation), mean, deviation};
}

}  // namespace

double normTestByKolmogorovSmirnov(std::span<const double> x) { return besideOwnNormal(x).testByKS(kNormalCode); }

double normTestByAndersonDarling(std::span<const double> x) { return besideOwnNormal(x).testByAD(kNormalCode); }

double normTestByJarqueBera(std::span<const double> x) {
  const CentralSums sums(x);
  if (x.empty() || sums.second < 1e-15) return 0;
  const auto n = static_cast<double>(x.size());
  const double variance = sums.second / n;
  const double skewness = sums.third / n / (variance * std::sqrt(variance));
  const double excess = n * sums.fourth / (sums.second * sums.second) - 3;
  // KEPT: n/6 is cut to an integer; expected: n/6 (kept.csv: JarqueBera_sixth)
  const auto sixth = static_cast<double>(x.size() / 6);
  return std::exp(-(skewness * skewness + excess * excess / 4) * sixth / 2);
}

double twoTestByKolmogorovSmirnov(std::span<const double> x, std::span<const double> y) {
  if (x.size() < kFewestValues || y.size() < kFewestValues) return 0;
  const std::vector<double> a = sorted(x), b = sorted(y);
  if (std::isnan(a.back()) || std::isnan(b.back())) return kNaN;
  const auto na = static_cast<double>(a.size()), nb = static_cast<double>(b.size());
  double distance = 0;
  for (auto i = a.begin(), j = b.begin(); i != a.end() && j != b.end();) {
    const double here = std::min(*i, *j);  // both step over equal values at once
    while (i != a.end() && *i == here) ++i;
    while (j != b.end() && *j == here) ++j;
    distance =
        std::max(distance, std::abs(static_cast<double>(i - a.begin()) / na - static_cast<double>(j - b.begin()) / nb));
  }
  return kolmogorovTail(std::floor(na * nb / (na + nb)), distance);
}

ShapiroWilk normTestByShapiroWilk(std::span<const double> x, bool exactScores) {
  const std::vector<double> values = sorted(x);
  const std::size_t n = values.size();
  const double spread = CentralSums(values).second;
  if (spread < 1e-32) return {0, 0, kNaN, kNaN};  // all values are one
  const std::vector<double> a = weights(n, exactScores);
  double sum = 0;
  for (std::size_t i = 0; i < a.size(); ++i) sum += a[i] * (values[n - a.size() + i] - values[a.size() - 1 - i]);
  return judged(std::min(sum * sum / spread, 1.0), n, exactScores);
}

}  // namespace Statistics
