// SPDX-License-Identifier: Apache-2.0
#include "pdf/fit_range.h"

#include <vector>

#include "frame/numbers.h"
#include "numeric/line_equation.h"
#include "pdf/formula.h"
#include "special/special_function.h"

namespace PDF {
namespace {

/// Coefficients of target_i = first * column_i + second, by least squares.
struct Line {
  double first = kNaN, second = kNaN;
};

/// Fits a line to `column(x, F)` and `target(x, F)` over the sample.
template <class Column, class Target>
Line fitLine(const Sample& s, Column&& column, Target&& target) {
  const std::size_t n = s.x.size();
  if (n == 0) return {};
  std::vector<double> design(2 * n), right(n), solution;
  for (std::size_t i = 0; i < n; ++i) {
    design[2 * i] = column(s.x[i], s.cdf[i]);
    design[2 * i + 1] = 1;
    right[i] = target(s.x[i], s.cdf[i]);
  }
  const int rows = static_cast<int>(n);
  if (!LineEqu::solveLineEqu(design, rows, 2, right, rows, 1, solution) || solution.size() < 2) return {};
  return {solution[0], solution[1]};
}

// The point and the share as a column or a target.
constexpr auto point = [](double x, double) { return x; };
constexpr auto share = [](double, double F) { return F; };

/// max and min that keep a NaN of the first argument.
double atLeast(double v, double bound) { return v < bound ? bound : v; }
double atMost(double v, double bound) { return v > bound ? bound : v; }

}  // namespace

void QuantileStart::apply(const FitRange& range) const {
  for (std::size_t i = 0; i < count; ++i) {
    const double v = value[i];
    range.start[i] = v;
    range.lower[i] = v > 10 ? 0.6 * v : v < -10 ? 1.4 * v : -16;
    range.upper[i] = v > 10 ? 1.4 * v : v < -10 ? 0.6 * v : 16;
  }
  if (positive < 0) return;
  const auto p = static_cast<std::size_t>(positive);
  range.lower[p] = atLeast(range.lower[p], floor);
  if (floor > 0) {
    range.upper[p] = atLeast(range.upper[p], leastUpper);
    range.start[p] = atLeast(range.start[p], floor);
  }
}

QuantileStart quantileArcSin(const Sample& s) {
  const Line line = fitLine(s, point, [](double, double F) { return (std::sin(pi * (F - 0.5)) + 1) / 2; });
  return {.value = {atLeast(line.first, 0.01), line.second}, .positive = 0};
}

QuantileStart quantileCosine(const Sample& s) {
  // sin t = 2F - 1 with t = a (x - b)
  const Line line = fitLine(s, point, [](double, double F) {
    const double t = std::asin(2 * F - 1);
    return atMost(atLeast(t, -pi / 2), pi / 2);
  });
  return {.value = {line.first < 0.001 ? kNaN : line.first, -line.second / line.first}, .positive = 0};
}

QuantileStart quantileExponential(const Sample& s) {
  // ln(1 - F) = -a (x - b)
  const Line line = fitLine(s, point, [](double, double F) { return std::log(std::min(1 - F, 0.999)); });
  QuantileStart result{.value = {-line.first, -line.second / line.first}, .positive = 0};
  // KEPT: a failed line passes as a = 1, b = x1; expected: the table row (kept.csv: Exponential_line)
  if (!result.finite()) result.value = {1, s.x1};
  result.value[0] = atLeast(result.value[0], 0.01);
  return result;
}

QuantileStart quantileGumbel(const Sample& s) {
  // x = a + b ln(-ln(1 - F))
  const Line line = fitLine(
      s, [](double, double F) { return std::log(std::max(-std::log(std::max(1 - F, 0.0001)), 0.0001)); }, point);
  return {.value = {line.second, atLeast(line.first, 0)}, .positive = 1};
}

QuantileStart quantileHalfLogistic(const Sample& s) {
  // x - a = ln(2/(1 - F) - 1): the only unknown is the mean of the difference
  double sum = 0;
  for (std::size_t i = 0; i < s.x.size(); ++i)
    sum += s.x[i] - std::log(std::max(2 / std::max(1 - s.cdf[i], 0.0001) - 1, 0.0001));
  return {.value = {sum / static_cast<double>(s.x.size()), 0}, .count = 1};
}

QuantileStart quantileHalfNormal(const Sample& s) {
  // erf(a (x - b)/sqrt(pi)) = F
  const Line line = fitLine(s, point, [](double, double F) {
    return F < 0.9999 ? kSqrtPi * SpecialFunction::calcInvErf(F) : 4.876133813766493;
  });
  return {.value = {line.first, -line.second / line.first}, .positive = 0};
}

QuantileStart quantileInverseRayleigh(const Sample& s) {
  // sqrt(-ln F) = b/(x - a), so s x = a s + b
  const auto root = [](double, double F) { return std::sqrt(std::abs(std::log(F))); };
  const Line line = fitLine(s, root, [&root](double x, double F) { return root(x, F) * x; });
  return {.value = {line.first, atLeast(line.second, 0.01)}, .positive = 1};
}

QuantileStart quantileLevy(const Sample& s) {
  // erfc(sqrt(b/(2(x - a)))) = F, so v x = a v + b
  const auto root = [](double, double F) {
    return 2 * square(F < 0.9999 ? SpecialFunction::calcInvErf(1 - F) : 8.8622692777e-5);
  };
  const Line line = fitLine(s, root, [&root](double x, double F) { return root(x, F) * x; });
  return {.value = {line.first, atLeast(line.second, 0.01)}, .positive = 1};
}

QuantileStart quantileNormal(const Sample& s) {
  const Line line = fitLine(
      s, [](double, double F) { return kSqrt2 * SpecialFunction::calcInvErf(2 * F - 1); }, point);
  return {.value = {line.second, line.first}, .positive = 1, .floor = 0.1, .leastUpper = 10};
}

QuantileStart quantileSigmod(const Sample& s) {
  // tan(F pi/2) = exp(a (x - b))
  const Line line = fitLine(s, point, [](double, double F) { return std::log(std::max(std::tan(F * pi / 2), 0.001)); });
  return {.value = {atLeast(line.first, 0.01), -line.second / line.first}, .positive = 0};
}

QuantileStart quantileUniform(const Sample& s) {
  const Line line = fitLine(s, point, share);
  const double a = -line.second / line.first;
  return {.value = {a, 1 / line.first + a}};
}

}  // namespace PDF
