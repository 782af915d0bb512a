// SPDX-License-Identifier: Apache-2.0
#include "prog/line/simplex.h"

#include <algorithm>
#include <cmath>

namespace LineProg {

namespace {

constexpr double kCheckTolerance = 1e-8;
constexpr double kInfeasible = 1e-9;       // what Phase one may leave, and the same
constexpr double kInfeasiblePart = 1e-11;  // relative to the infeasibility that it began with
constexpr int32_t kPreparedUpper = 90000000;
constexpr int32_t kIntegerUpper = 900000000;

}  // namespace

template <class Real>
bool Simplex<Real>::prepare(Node<Real>& root) const {
  const std::vector<BaseVar>& allVars = problem.allVars;
  const std::vector<uint8_t> stands = problem.standing();
  root.bounds.clear();
  root.standing = 0;
  root.solution.assign(allVars.size(), 0.0);
  root.origin.assign(allVars.size(), 0.0);
  for (std::size_t i = 0; i < allVars.size(); ++i) {
    const BaseVar& var = allVars[i];
    if (var.index != static_cast<int32_t>(i)) return false;
    if (var.varKind == kBinary) root.bounds[var.index] = {0, 1};
    if (var.varKind == kInteger) root.bounds[var.index] = {0, kPreparedUpper};
    if (stands[i]) {
      ++root.standing;
      if (!root.tableau.has(var.index)) root.tableau.addColumn(var.index);
    } else if (var.varKind == kBinary) {
      root.solution[i] = problem.objective[i] > 0 ? 1 : 0;
    } else if (problem.objective[i] > 0) {
      return false;  // KEPT: unbounded, but told as a failure, 0; expected: 2 (kept.csv: Solve_noRow)
    }
  }
  return true;
}

// Rows of the constraints that are not in the tableau yet; an equality is a pair of inequalities. A problem that was
// solved before takes them in terms of the basis that the earlier solve left.
template <class Real>
void Simplex<Real>::addRows(Node<Real>& root) const {
  for (; root.entered < problem.constraints.size(); ++root.entered) {
    const EquVar& row = problem.constraints[root.entered];
    typename Tableau<Real>::Terms terms(row.coefs.begin(), row.coefs.end());
    for (auto& term : terms) term.second = -term.second;
    root.slacks.push_back(root.rowNumber);
    root.tableau.addRow(root.rowNumber++, row.constCoef, terms);
    if (row.relation != kEqual) continue;
    for (auto& term : terms) term.second = -term.second;
    root.tableau.addRow(root.rowNumber++, -row.constCoef, terms);
  }
}

template <class Real>
void Simplex<Real>::addBounds(Node<Real>& root) const {
  for (const BaseVar& var : problem.allVars) {
    if (!root.tableau.has(var.index) || var.varKind == kReal) continue;
    if (var.varKind == kInteger) {
      // KEPT: ten times the bound that the preparation wrote; expected: the same (kept.csv: Bounds_integer)
      root.bounds[var.index] = {0, kIntegerUpper};
    } else {
      root.bounds[var.index] = {0, 1};
      if (root.upperRows.contains(var.index)) continue;
      root.upperRows[var.index] = root.rowNumber;
      root.tableau.addRow(root.rowNumber++, 1, {{var.index, Real(-1)}});
    }
  }
}

template <class Real>
bool Simplex<Real>::setUp(Node<Real>& root) const {
  if (root.rowNumber == 0) root.rowNumber = static_cast<int32_t>(problem.allVars.size());
  if (!prepare(root)) return false;
  if (root.standing == 0) return true;
  addRows(root);
  addBounds(root);
  typename Tableau<Real>::Terms terms;
  for (const BaseVar& var : problem.allVars)
    if (root.tableau.has(var.index)) terms.push_back({var.index, static_cast<Real>(problem.objective[var.index])});
  root.tableau.setObjective(0, terms);
  return true;
}

template <class Real>
bool Simplex<Real>::hasWhole(const Node<Real>& root) const {
  return std::any_of(problem.allVars.begin(), problem.allVars.end(),
                     [&](const BaseVar& var) { return var.varKind != kReal && root.tableau.has(var.index); });
}

template <class Real>
bool Simplex<Real>::phases(Node<Real>& node) const {
  node.solved = false;
  node.status = Status::failed;
  return phaseOne(node) && phaseTwo(node);
}

template <class Real>
bool Simplex<Real>::phaseOne(Node<Real>& node) const {
  Tableau<Real>& tableau = node.tableau;
  int worst = Tableau<Real>::kNone;
  for (std::size_t i = 0; i < tableau.rows.size(); ++i) {
    const Real value = tableau.rows[i].value;
    if (value >= 0) continue;
    if (worst == Tableau<Real>::kNone || value < tableau.rows[worst].value ||
        (value == tableau.rows[worst].value && tableau.rows[i].var < tableau.rows[worst].var))
      worst = static_cast<int>(i);
  }
  if (worst == Tableau<Real>::kNone) return true;
  const double tolerance = std::max(kInfeasible, kInfeasiblePart * -static_cast<double>(tableau.rows[worst].value));

  const Real savedValue = tableau.objectiveValue;
  const std::vector<Real> saved = tableau.objectiveRow;
  const int artificial = tableau.variableCount();
  const int slot = tableau.addArtificial(artificial);
  tableau.setObjective(0, {{artificial, Real(-1)}});
  std::vector<Real> column(tableau.rows.size(), 1.0);
  tableau.pivot(worst, slot, column);
  if (!phaseTwo(node) || !(tableau.valueOf(artificial) <= tolerance)) {
    node.status = Status::failed;
    return false;
  }
  tableau.removeArtificial(artificial);
  typename Tableau<Real>::Terms terms;
  for (std::size_t var = 0; var < saved.size(); ++var)
    if (saved[var] != 0) terms.push_back({static_cast<int>(var), saved[var]});
  tableau.setObjective(savedValue, terms);
  return true;
}

template <class Real>
bool Simplex<Real>::phaseTwo(Node<Real>& node) const {
  Tableau<Real>& tableau = node.tableau;
  node.status = Status::optimal;
  if (tableau.rows.empty()) {
    const std::vector<uint8_t> none(tableau.columnVar.size(), 0);
    if (tableau.entering(none) != Tableau<Real>::kNone) node.status = Status::unbounded;
    return node.status == Status::optimal;
  }
  // KEPT: a loop that runs out hands over the solution in hand as an optimum; expected: pivots up to the optimum
  // (kept.csv: PhaseTwo_cap)
  const std::size_t cap = node.standing + tableau.rows.size();
  std::vector<Real> column;
  for (std::size_t turn = 0; turn < cap; ++turn) {
    typename Tableau<Real>::Pivot pivot;
    switch (choose(node, pivot, column)) {
      case PivotChoice::optimal:
        return true;
      case PivotChoice::failed:
        node.status = Status::failed;
        return false;
      case PivotChoice::unbounded:
        node.status = Status::unbounded;
        return false;
      case PivotChoice::pivot:
        tableau.pivot(pivot.row, pivot.column, column);
    }
  }
  return true;
}

template <class Real>
PivotChoice Simplex<Real>::choose(const Node<Real>& node, typename Tableau<Real>::Pivot& pivot,
                                  std::vector<Real>& column) const {
  std::vector<uint8_t> struck(node.tableau.columnVar.size(), 0);
  for (bool first = true;; first = false) {
    pivot.column = node.tableau.entering(struck);
    if (pivot.column == Tableau<Real>::kNone) {
      if (first) return PivotChoice::optimal;
      return holds(node) ? PivotChoice::unbounded : PivotChoice::failed;
    }
    pivot.row = node.tableau.leaving(pivot.column, column);
    if (pivot.row != Tableau<Real>::kNone) return PivotChoice::pivot;
    struck[pivot.column] = 1;
  }
}

template <class Real>
bool Simplex<Real>::holds(const Node<Real>& node) const {
  for (const EquVar& row : problem.constraints) {
    double sum = -row.constCoef;
    for (const auto& [var, coefficient] : row.coefs)
      sum += coefficient * (node.tableau.valueOf(var) + node.origin[var]);
    if (!((row.relation == kEqual ? std::abs(sum) : sum) <= kCheckTolerance)) return false;
  }
  return true;
}

template <class Real>
void Simplex<Real>::readOut(Node<Real>& node) const {
  for (const BaseVar& var : problem.allVars) {
    if (!node.tableau.has(var.index)) continue;
    const double value = node.tableau.valueOf(var.index) + node.origin[var.index];
    // KEPT: integer variables are rounded before the branch is bounded; expected: the value of the relaxation
    // (kept.csv: Bound_rounded)
    node.solution[var.index] = var.varKind == kReal ? value : std::round(value);
  }
  node.solved = true;
}

template class Simplex<double>;
template class Simplex<long double>;

}  // namespace LineProg
