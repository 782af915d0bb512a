// SPDX-License-Identifier: Apache-2.0
// Branch and bound of the linear programmes, depth first on copies of the tableau.
#include <cmath>

#include "prog/line_prog_solver.h"

namespace LineProg {

namespace {

constexpr double kIntegral = 1e-12;

bool fractional(double x) { return std::abs(x - std::round(x)) > kIntegral; }

}  // namespace

// The variable on one side of the bound. It is basic, as it is fractional. A lower bound moves its origin there; an
// upper bound is a row, the distance to it, and a lower one yet moves that row's origin. Either way a row is out of
// bounds, and Phase one brings the variable back onto the bound.
template <class Real>
bool LineProgSolver::addBound(Node<Real>& node, int32_t var, bool upper, double bound) const {
  auto& [low, high] = node.bounds.at(var);
  if (upper ? bound < low : bound > high) return false;
  Tableau<Real>& tableau = node.tableau;
  if (!upper) {
    low = static_cast<int32_t>(bound);
    tableau.shift(var, bound - node.origin[var]);
    node.origin[var] = bound;
    return true;
  }
  const auto row = node.upperRows.find(var);
  if (row != node.upperRows.end() && tableau.isBasic(row->second)) {
    tableau.shift(row->second, high - bound);
  } else {
    node.upperRows[var] = tableau.variableCount();
    tableau.addRow(tableau.variableCount(), bound - node.origin[var], {{var, Real(-1)}});
  }
  high = static_cast<int32_t>(bound);
  return true;
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

// The last branch goes on in the node itself, without a copy and without recursion; `keep` leaves the node's tableau as
// its relaxation left it.
template <class Real>
void LineProgSolver::branchAndBound(Node<Real>& node, double limit, bool keep) const {
  bool found = false;
  std::vector<double> best;
  const auto attempt = [&](int32_t var, bool upper, double bound) {
    Node<Real> child = node;
    if (!addBound(child, var, upper, bound)) return;
    branchAndBound(child, limit, false);
    if (!child.solved) return;
    limit = objectiveOf(child.solution);
    best = std::move(child.solution);
    found = true;
  };
  for (bool first = true;; first = false) {
    const int32_t branch = relax(node, limit);
    if (branch < 0) {
      if (!first && !node.solved) node.status = kFailed;
      break;
    }
    node.solved = false;
    node.status = kFailed;
    const auto [low, high] = node.bounds.at(branch);
    const double floor = std::floor(node.tableau.valueOf(branch) + node.origin[branch]);
    if (high > floor && floor >= low) attempt(branch, true, floor);
    if (!(high >= floor + 1 && floor + 1 > low)) break;
    if (keep) {
      attempt(branch, false, floor + 1);
      break;
    }
    if (!addBound(node, branch, false, floor + 1)) break;
  }
  if (node.solved || !found) return;
  node.solution = std::move(best);
  node.solved = true;
  node.status = kOptimal;
}

template void LineProgSolver::branchAndBound(Node<double>&, double, bool) const;
template void LineProgSolver::branchAndBound(Node<long double>&, double, bool) const;

}  // namespace LineProg
