// SPDX-License-Identifier: Apache-2.0
// Branch and bound of the linear programmes, depth first on copies of the tableau.
#include <cmath>
#include <vector>

#include "prog/line/line_prog_solver.h"

namespace LineProg {

namespace {

constexpr double kIntegral = 1e-12;

bool fractional(double x) { return std::abs(x - std::round(x)) > kIntegral; }

}  // namespace

// The variable on one side of the bound. It is basic, as it is fractional. A lower bound moves its origin there; an
// upper bound is a row, the distance to it, and a lower one yet moves that row's origin. Either way a row is out of
// bounds, and Phase one brings the variable back onto the bound.
template <class Real>
void LineProgSolver::addBound(Node<Real>& node, int32_t var, bool upper, double bound) const {
  auto& [low, high] = node.bounds.at(var);
  Tableau<Real>& tableau = node.tableau;
  if (!upper) {
    low = static_cast<int32_t>(bound);
    tableau.shift(var, bound - node.origin[var]);
    node.origin[var] = bound;
    return;
  }
  const auto row = node.upperRows.find(var);
  if (row != node.upperRows.end() && tableau.isBasic(row->second)) {
    tableau.shift(row->second, high - bound);
  } else {
    node.upperRows[var] = tableau.variableCount();
    tableau.addRow(tableau.variableCount(), bound - node.origin[var], {{var, Real(-1)}});
  }
  high = static_cast<int32_t>(bound);
}

// Solves the node's relaxation. The variable to branch on; -1 when there is nothing to branch: the node is integral and
// solved, or it is not solved, being infeasible, unbounded or worse than the limit.
template <class Real>
int32_t LineProgSolver::relax(Node<Real>& node, double limit) const {
  if (!phases(node)) return -1;
  readOut(node);
  const auto give = [&node](Status status) {
    node.solved = false;
    node.status = status;
    return -1;
  };
  if (limit > objectiveOf(node.solution)) return give(kFailed);
  int32_t branch = -1;
  for (const BaseVar& var : allVars) {
    if (var.varKind == kReal || !node.tableau.isBasic(var.index)) continue;
    if (!fractional(node.tableau.valueOf(var.index) + node.origin[var.index])) continue;
    if (var.minValue == 0) return give(kFailed);
    if (branch < 0 || (var.varKind == kBinary && allVars[branch].varKind != kBinary)) branch = var.index;
  }
  return branch;
}

// Lower side first. The upper sides wait on a stack of their own, not on the thread's: the depth has no limit. A node
// with one side alone goes on without a copy. The root keeps the tableau that its relaxation left.
template <class Real>
void LineProgSolver::branchAndBound(Node<Real>& root) const {
  struct Waiting {
    Node<Real> node;
    int32_t var;
    double bound;
  };
  std::vector<Waiting> waiting;
  double limit = -1e300;
  bool found = false;
  std::vector<double> best;
  int32_t branch = relax(root, limit);
  if (branch < 0) return;
  const auto visit = [&](Node<Real>& node) {
    const int32_t next = relax(node, limit);
    if (next >= 0 || !node.solved) return next;
    limit = objectiveOf(node.solution);
    best = node.solution;
    found = true;
    return next;
  };
  for (Node<Real> node = root;;) {
    while (branch >= 0) {
      const auto [low, high] = node.bounds.at(branch);
      const double floor = std::floor(node.tableau.valueOf(branch) + node.origin[branch]);
      const bool below = high > floor && floor >= low, above = high >= floor + 1 && floor + 1 > low;
      if (!below && !above) break;
      if (below && above) waiting.push_back({node, branch, floor + 1});
      addBound(node, branch, below, below ? floor : floor + 1);
      branch = visit(node);
    }
    if (waiting.empty()) break;
    node = std::move(waiting.back().node);
    addBound(node, waiting.back().var, false, waiting.back().bound);
    waiting.pop_back();
    branch = visit(node);
  }
  root.solved = found;
  root.status = found ? kOptimal : kFailed;
  if (found) root.solution = std::move(best);
}

template void LineProgSolver::branchAndBound(Node<double>&) const;
template void LineProgSolver::branchAndBound(Node<long double>&) const;

}  // namespace LineProg
