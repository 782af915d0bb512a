// SPDX-License-Identifier: Apache-2.0
#include "prog/line/line_prog_dense.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "numeric/line_equation.h"
#include "prog/line/line_prog_solver.h"

namespace LineProg {

namespace {

constexpr double kSmall = 1e-15;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

double dot(std::span<const double> a, std::span<const double> b) {
  double sum = 0;
  for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) sum += a[i] * b[i];
  return sum;
}

double leastSquares(const DenseProblem& problem, std::span<double> x) {
  const int rows = static_cast<int>(problem.beq.size()), cols = static_cast<int>(problem.n);
  std::vector<double> found;
  if (rows == 0 || cols == 0 || !LineEqu::solveLineEqu(problem.Aeq, rows, cols, problem.beq, rows, 1, found))
    return kNaN;
  if (!std::all_of(found.begin(), found.end(), [](double v) { return std::isfinite(v); })) return kNaN;
  std::copy_n(found.begin(), x.size(), x.begin());
  return dot(problem.c, found);
}

}  // namespace

bool allSmall(std::span<const double> values) {
  return std::all_of(values.begin(), values.end(), [](double v) { return std::abs(v) <= kSmall; });
}

double solveDense(const DenseProblem& problem, std::span<double> x) {
  // KEPT: without an inequality, or without an objective, the bounds x >= 0 and the maximum are forgotten: the least
  // squares solution of the equalities is the answer (kept.csv: Solve2_leastSquares)
  if (allSmall(problem.c) || allSmall(problem.A)) return leastSquares(problem, x);
  const std::size_t n = problem.n;
  LineProgSolver solver;
  solver.setVarCount(std::vector<uint8_t>(n, kReal));
  std::vector<int32_t> all(n);
  for (std::size_t i = 0; i < n; ++i) all[i] = static_cast<int32_t>(i);
  solver.setMaxExpress(all, problem.c);
  for (std::size_t i = 0; i < problem.b.size(); ++i)
    solver.addConstraint(all, problem.A.subspan(i * n, n), kAtMost, problem.b[i]);
  for (std::size_t i = 0; i < problem.beq.size(); ++i)
    solver.addConstraint(all, problem.Aeq.subspan(i * n, n), kEqual, problem.beq[i]);
  if (!solver.solve()) return kNaN;
  std::copy_n(solver.values().begin(), x.size(), x.begin());
  return solver.maxValue();
}

namespace {

constexpr int kSweeps = 128;
constexpr double kNoCoefficient = 1e-16;
constexpr double kNoLimit = 1e100;
constexpr double kNearWhole = 1e-14;
constexpr double kGain = 0.001;

// What the constraint leaves for term k; above kNoLimit, or NaN, when the other terms have no limit.
double leftFor(const BoundedSum& sum, int32_t k) {
  double left = sum.rhs;
  for (int32_t j = 0; j < sum.n; ++j) {
    if (j == k) continue;
    const double a = sum.coefs[j];
    left -= a * (a > 0 ? sum.lower : sum.upper)[sum.indices[j]];
    if (!(left <= kNoLimit)) break;
  }
  return left;
}

bool tighten(const BoundedSum& sum, int32_t k) {
  const double a = sum.coefs[k], left = leftFor(sum, k);
  if (!(left <= kNoLimit)) return false;
  double x = left / a;
  const uint8_t kind = sum.kinds[sum.indices[k]];
  const bool whole = std::abs(x - std::round(x)) <= kNearWhole;
  if (whole) x = std::round(x);
  if (a < 0) {
    if (!whole && kind == kBinary) x = x < 0 ? 0 : 1;
    if (!whole && kind == kInteger) x = std::ceil(x);
    double& lower = sum.lower[sum.indices[k]];
    if (!(x > lower + kGain)) return false;
    lower = x;
  } else {
    if (!whole && kind == kBinary) x = x > 1 ? 1 : 0;
    if (!whole && kind == kInteger) x = std::floor(x);
    double& upper = sum.upper[sum.indices[k]];
    if (!(upper > x + kGain)) return false;
    upper = x;
  }
  return true;
}

}  // namespace

bool resetMaxMin(const BoundedSum& sum) {
  if (sum.n <= 0 || std::any_of(sum.indices, sum.indices + sum.n, [](int32_t index) { return index < 0; }))
    return false;
  bool any = false;
  for (int sweep = 0; sweep < kSweeps; ++sweep) {
    bool changed = false;
    for (int32_t k = 0; k < sum.n; ++k)
      if (std::abs(sum.coefs[k]) >= kNoCoefficient && tighten(sum, k)) changed = true;
    if (!changed) break;
    any = true;
  }
  return any;
}

}  // namespace LineProg
