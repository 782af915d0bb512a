// SPDX-License-Identifier: Apache-2.0
#include "prog/line/trust.h"

#include <algorithm>
#include <cmath>

namespace LineProg {

namespace {

constexpr double kTrusted = 1e-10;  // violation, relative to the sizes of a constraint's terms

double reducedCost(const Node<double>& root, int32_t var) {
  return root.tableau.has(var) ? root.tableau.objectiveRow[var] : 0;
}

// The objective is c.x = constant + sum of reduced costs * variables, the slacks b - a.x among them, for every x: what
// the tableau holds must give back each c.
bool reducedCostsHold(const LineProblem& problem, const Node<double>& root) {
  std::vector<double> rest = problem.objective, size(rest.size());
  for (std::size_t j = 0; j < rest.size(); ++j) {
    size[j] = std::max(1.0, std::abs(rest[j]));
    if (root.tableau.has(static_cast<int>(j)))
      rest[j] -= root.tableau.objectiveRow[j];
    else
      rest[j] = 0;
  }
  for (std::size_t i = 0; i < root.slacks.size(); ++i) {
    const EquVar& row = problem.constraints[i];
    double cost = reducedCost(root, root.slacks[i]);
    if (row.relation == kEqual) cost -= reducedCost(root, root.slacks[i] + 1);
    for (const auto& [var, coefficient] : row.coefs) {
      rest[var] += cost * coefficient;
      size[var] += std::abs(cost * coefficient);
    }
  }
  for (std::size_t j = 0; j < rest.size(); ++j)
    if (!(std::abs(rest[j]) <= kTrusted * size[j])) return false;
  return true;
}

}  // namespace

bool trusted(const LineProblem& problem, const Node<double>& root, bool hasWhole) {
  if (!root.solved) return root.tableau.rows.empty() || hasWhole;
  for (const EquVar& row : problem.constraints) {
    double sum = -row.constCoef, size = std::abs(row.constCoef);
    for (const auto& [var, coefficient] : row.coefs) {
      sum += coefficient * root.solution[var];
      size += std::abs(coefficient * root.solution[var]);
    }
    if (!((row.relation == kEqual ? std::abs(sum) : sum) <= kTrusted * std::max(1.0, size))) return false;
  }
  return hasWhole || reducedCostsHold(problem, root);
}

}  // namespace LineProg
