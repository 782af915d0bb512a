// SPDX-License-Identifier: Apache-2.0
// Branch and bound of the linear programmes, depth first on copies of the tableau.
#include <cmath>
#include <utility>

#include "prog/line_prog_solver.h"

namespace LineProg {

namespace {

constexpr double kIntegral = 1e-12;

bool fractional(double x) { return std::abs(x - std::round(x)) > kIntegral; }

}  // namespace

// The variable on one side of the bound. It is basic, as it is fractional. An upper bound is one more row, the distance
// to it; a lower bound moves the variable's origin there. Either way its row is out of bounds, and Phase one brings the
// variable back onto the bound.
bool LineProgSolver::addBound(Node& node, int32_t var, bool upper, double bound) const {
  auto& [low, high] = node.bounds.at(var);
  if (upper ? bound < low : bound > high) return false;
  if (upper) {
    high = static_cast<int32_t>(bound);
    node.tableau.addRow(node.tableau.variableCount(), bound - node.origin[var], {{var, -1.0}});
  } else {
    low = static_cast<int32_t>(bound);
    node.tableau.shift(var, bound - node.origin[var]);
    node.origin[var] = bound;
  }
  return true;
}

// `keep` leaves the node's tableau as its relaxation left it; otherwise the last branch may take it over.
void LineProgSolver::branchAndBound(Node& node, double limit, bool keep) const {
  if (!phases(node)) return;
  readOut(node);
  const double value = objectiveOf(node.solution);
  if (limit > value) {
    node.solved = false;
    node.status = kFailed;
    return;
  }
  int32_t branch = -1;
  for (const BaseVar& var : allVars) {
    if (var.varKind == kReal || !node.tableau.isBasic(var.index)) continue;
    if (!fractional(node.tableau.valueOf(var.index) + node.origin[var.index])) continue;
    if (var.minValue == 0) {
      node.solved = false;
      node.status = kFailed;
      return;
    }
    if (branch < 0 || (var.varKind == kBinary && allVars[branch].varKind != kBinary)) branch = var.index;
  }
  if (branch < 0) return;

  node.solved = false;
  const auto [low, high] = node.bounds.at(branch);
  const double floor = std::floor(node.tableau.valueOf(branch) + node.origin[branch]);
  const auto attempt = [&](Node& child, bool upper, double bound) {
    if (!addBound(child, branch, upper, bound)) return;
    branchAndBound(child, limit, false);
    if (!child.solved) return;
    limit = objectiveOf(child.solution);
    node.solution = child.solution;
    node.solved = true;
  };
  if (high > floor && floor >= low) {
    Node child = node;
    attempt(child, true, floor);
  }
  if (high >= floor + 1 && floor + 1 > low) {
    Node child = keep ? node : std::move(node);
    node.solution = child.solution;
    attempt(child, false, floor + 1);
  }
  node.status = node.solved ? kOptimal : kFailed;
}

}  // namespace LineProg
