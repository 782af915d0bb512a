// SPDX-License-Identifier: Apache-2.0
#include "prog/line/line_prog_dense.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "frame/numbers.h"
#include "numeric/line_equation.h"
#include "prog/line/line_prog_solver.h"

namespace LineProg {

namespace {

constexpr double kSmall = 1e-15;

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
  // KEPT: without an inequality, or without an objective, least squares of the equalities; expected: a maximum in x >=
  // 0 (kept.csv: Solve2_leastSquares)
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

}  // namespace LineProg
