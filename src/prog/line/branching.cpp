// SPDX-License-Identifier: Apache-2.0
#include "prog/line/branching.h"

#include <cmath>

namespace LineProg {

namespace {

constexpr double kIntegral = 1e-12;

}  // namespace

// The variable on one side of the bound. It is basic, as it is fractional. A lower bound moves its origin there; an
// upper bound is a row, the distance to it, and a lower one yet moves that row's origin. Either way a row is out of
// bounds, and Phase one brings the variable back onto the bound.
template <class Real>
void Branching<Real>::addBound(Node<Real>& node, int32_t var, bool upper, double bound) const {
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

// Solves the node's relaxation. The variable to branch on; none when there is nothing to branch: the node is integral
// and solved, or it is not solved, being infeasible, unbounded or worse than the limit.
template <class Real>
int32_t Branching<Real>::relax(Node<Real>& node) const {
  if (!simplex.phases(node)) return kNone;
  simplex.readOut(node);
  const auto give = [&node](Status status) {
    node.solved = false;
    node.status = status;
    return kNone;
  };
  if (limit > problem.objectiveOf(node.solution)) return give(Status::failed);
  int32_t branch = kNone;
  for (const BaseVar& var : problem.allVars) {
    if (var.varKind == kReal || !node.tableau.isBasic(var.index)) continue;
    const double value = node.tableau.valueOf(var.index) + node.origin[var.index];
    if (!(std::abs(value - std::round(value)) > kIntegral)) continue;
    if (var.minValue == 0) return give(Status::failed);
    if (branch < 0 || (var.varKind == kBinary && problem.allVars[branch].varKind != kBinary)) branch = var.index;
  }
  return branch;
}

template <class Real>
int32_t Branching<Real>::visit(Node<Real>& node) {
  const int32_t next = relax(node);
  if (next < 0 && node.solved) {
    limit = problem.objectiveOf(node.solution);
    best = node.solution;
  }
  return next;
}

// Lower side first. The upper sides wait on a stack of their own, not on the thread's: the depth has no limit. A node
// with one side alone goes on without a copy.
template <class Real>
void Branching<Real>::search(const Node<Real>& root, int32_t branch) {
  struct Waiting {
    Node<Real> node;
    int32_t var;
    double bound;
  };
  std::vector<Waiting> waiting;
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
    if (waiting.empty()) return;
    node = std::move(waiting.back().node);
    addBound(node, waiting.back().var, false, waiting.back().bound);
    waiting.pop_back();
    branch = visit(node);
  }
}

template <class Real>
void Branching<Real>::run(Node<Real>& root) {
  const int32_t branch = relax(root);
  if (branch < 0) return;
  search(root, branch);
  root.solved = !best.empty();
  root.status = root.solved ? Status::optimal : Status::failed;
  if (root.solved) root.solution = std::move(best);
}

template class Branching<double>;
template class Branching<long double>;

}  // namespace LineProg
