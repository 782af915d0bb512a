// SPDX-License-Identifier: Apache-2.0
// Branch and bound of the quadratic programmes, depth first over OSQP's relaxations.
#include <algorithm>
#include <cmath>

#include "prog/quad/quad_prog_solver.h"

namespace QuadProg {

namespace {

constexpr double kWhole = 1e-14;

}  // namespace

struct QuadProgSolver::WorkData_t {
  std::vector<std::size_t> whole;  ///< unknowns that must be integers
  std::size_t firstBound = 0;      ///< row of the bounds of the first unknown
  double best = 1e300;
  std::vector<double> bestX;
};

ResType_E QuadProgSolver::solveIntProg(BoxedProblem& problem, std::vector<double>& x) const {
  WorkData_t work;
  work.firstBound = constraints.size();
  for (std::size_t p = 0; p < order.size(); ++p)
    if (tempVars[order[p]]->varKind != kReal) work.whole.push_back(p);
  visit(problem, work, x);
  if (work.bestX.empty()) return kNoInteger;
  x = work.bestX;
  return kSolved;
}

// x solves the relaxation whose bounds stand in the problem's l and u. Each branch narrows the interval of one unknown,
// so the depth is bounded by the widths.
void QuadProgSolver::visit(BoxedProblem& problem, WorkData_t& work, std::vector<double> x) const {
  // OSQP meets a bound up to its tolerance; the unknown is at the bound then.
  for (std::size_t p : work.whole) {
    const std::size_t row = work.firstBound + p;
    x[p] = std::clamp(x[p], problem.l[row], problem.u[row]);
  }
  const auto fractional = std::find_if(work.whole.begin(), work.whole.end(),
                                       [&](std::size_t p) { return std::abs(x[p] - std::round(x[p])) > kWhole; });
  if (fractional == work.whole.end()) {
    for (std::size_t p : work.whole) x[p] = std::round(x[p]);
    const double value = evaluate(x);
    if (value < work.best) {
      work.best = value;
      work.bestX = std::move(x);
    }
    return;
  }
  const std::size_t p = *fractional, row = work.firstBound + p;
  const double low = problem.l[row], high = problem.u[row], floor = std::floor(x[p]);
  const auto child = [&](double from, double to) {
    problem.l[row] = from;
    problem.u[row] = to;
    std::vector<double> y;
    // KEPT: a child is dropped by its value of the whole expression, while OSQP has minimised the one with a fourth of
    // the quadratic part: the best point may be lost with it (kept.csv: IntProg_bound)
    if (solveByOsqp(problem, y) == kSolved && !(evaluate(y) > work.best)) visit(problem, work, std::move(y));
  };
  // The nearer side first: it tends to give a good value early.
  if (x[p] - floor <= 0.5) {
    child(low, floor);
    child(floor + 1, high);
  } else {
    child(floor + 1, high);
    child(low, floor);
  }
  problem.l[row] = low;
  problem.u[row] = high;
}

}  // namespace QuadProg
