// SPDX-License-Identifier: Apache-2.0
#include "prog/line/line_prog_solver.h"

#include <algorithm>
#include <cmath>

#include "prog/line/branching.h"
#include "prog/line/trust.h"

namespace LineProg {

void LineProgSolver::setVarCount(std::span<const uint8_t> kinds) {
  const bool flag = isExact;
  *this = LineProgSolver();
  problem = LineProblem(kinds);
  isExact = flag;
}

void LineProgSolver::setExact(bool flag) {
  if (flag == isExact) return;
  isExact = flag;
  isCareful = false;
  fast = {};
  careful = {};
  exact = {};
}

double LineProgSolver::maxValue() const { return solved ? problem.objectiveOf(solution) : -1e300; }

// True when integer variables took part.
template <class Real>
bool LineProgSolver::run(Node<Real>& root) const {
  const Simplex<Real> simplex(problem);
  root.solved = false;
  root.status = Status::failed;
  if (!simplex.setUp(root)) return false;
  if (root.standing == 0) {
    root.solved = true;
    root.status = Status::optimal;
    return false;
  }
  const bool whole = simplex.hasWhole(root);
  const Tableau<Real> before = root.tableau;
  if (whole)
    Branching<Real>(simplex).run(root);
  else if (simplex.phases(root))
    simplex.readOut(root);
  // A first phase that fails leaves its artificial variable behind, with which the rows could be met.
  if (root.status == Status::failed) root.tableau = before;
  // Numbers beyond the range of doubles leave no solution.
  if (root.solved && !std::ranges::all_of(root.solution, [](double x) { return std::isfinite(x); })) {
    root.solved = false;
    root.status = Status::failed;
  }
  return whole;
}

template <class Real>
void LineProgSolver::take(const Node<Real>& root) {
  solved = root.solved;
  status = root.status;
  solution = root.solution;
}

// Doubles first. When their rounding, in a chain of pivots on small coefficients, has led astray, the same steps run in
// long doubles, whose rounding errors stay below the least coefficient that counts.
bool LineProgSolver::solve() {
  solved = false;
  status = Status::failed;
  if (!problem.prepareObjective()) return false;
  if (isExact) {
    status = exact.solve(problem, solution);
    solved = status == Status::optimal;
    return solved;
  }
  if (!isCareful) {
    const bool whole = run(fast);
    isCareful = !trusted(problem, fast, whole);
    if (!isCareful) take(fast);
  }
  if (isCareful) {
    run(careful);
    take(careful);
  }
  return status == Status::optimal;
}

}  // namespace LineProg
