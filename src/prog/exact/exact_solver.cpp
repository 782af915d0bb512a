// SPDX-License-Identifier: Apache-2.0
#include "prog/exact/exact_solver.h"

#include <algorithm>
#include <cmath>

#include "prog/exact/exact_branching.h"

namespace LineProg {

namespace {

// The earlier basis and the logical variables of the rows that have come since.
void extend(Basis& basis, const BoundedProblem& problem) {
  for (int i = static_cast<int>(basis.basic.size()); i < problem.rows; ++i) {
    basis.basic.push_back(problem.columns + i);
    basis.place.push_back(Place::basic);
  }
}

}  // namespace

Status ExactSolver::solve(const LineProblem& problem, std::vector<double>& solution) {
  const BoundedProblem bounded(problem);
  for (int var = 0; var < bounded.total(); ++var)
    if (bounded.lower[var] > bounded.upper[var]) return Status::failed;
  RevisedSimplex<double> fast(bounded);
  if (!last.place.empty()) {
    extend(last, bounded);
    fast.load(last);
  }
  Status status = fast.solve();
  last = fast.basis();

  RevisedSimplex<long double> careful(bounded);
  if (std::ranges::all_of(problem.allVars, [](const BaseVar& var) { return var.varKind == kReal; })) {
    careful.load(last);
  } else {
    ExactBranching branching(problem, bounded, fast);
    // An unbounded relaxation tells nothing of a problem without an integer point.
    if (status == Status::unbounded && !branching.hasPoint()) return Status::failed;
    if (status != Status::optimal) return status;
    if (!branching.search(careful)) return Status::failed;
  }
  status = careful.solve();
  if (status != Status::optimal) return status;
  solution.resize(problem.allVars.size());
  for (std::size_t j = 0; j < solution.size(); ++j) {
    const double value = static_cast<double>(careful.value(static_cast<int>(j))) * bounded.scale[j];
    solution[j] = problem.allVars[j].varKind == kReal ? std::max(0.0, value) : std::round(value);
  }
  return status;
}

}  // namespace LineProg
