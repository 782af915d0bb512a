// SPDX-License-Identifier: Apache-2.0
#include "prog/line_prog_solver.h"

#include <algorithm>
#include <cmath>

namespace LineProg {

namespace {

constexpr double kSmallTerm = 1e-15;
constexpr double kCheckTolerance = 1e-8;
constexpr double kInfeasible = 1e-9;       // what Phase one may leave, and the same
constexpr double kInfeasiblePart = 1e-11;  // relative to the infeasibility that it began with
constexpr uint8_t kNoBoundRow = 255;
constexpr int32_t kPreparedUpper = 90000000;
constexpr int32_t kIntegerUpper = 900000000;

}  // namespace

void LineProgSolver::setVarCount(std::span<const uint8_t> kinds) {
  *this = LineProgSolver();
  allVars.resize(kinds.size());
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    allVars[i].index = static_cast<int32_t>(i);
    allVars[i].varKind = kinds[i];
    if (kinds[i] > kBinary) spoilt = true;
  }
  rowNumber = static_cast<int32_t>(kinds.size());
}

void LineProgSolver::setMaxExpress(std::span<const int32_t> indices, std::span<const double> coefs) {
  objective.clear();
  sparseObjective.clear();
  for (std::size_t k = 0; k < std::min(indices.size(), coefs.size()); ++k)
    if (!(std::abs(coefs[k]) <= kSmallTerm)) sparseObjective.push_back({coefs[k], indices[k]});
}

void LineProgSolver::addConstraint(std::span<const int32_t> indices, std::span<const double> coefs, uint8_t relation,
                                   double rhs) {
  EquVar row;
  if (!std::isfinite(rhs) || relation > kEqual) spoilt = true;
  for (std::size_t k = 0; k < std::min(indices.size(), coefs.size()); ++k) {
    if (std::abs(coefs[k]) <= kSmallTerm) continue;
    if (!std::isfinite(coefs[k]) || indices[k] < 0 || static_cast<std::size_t>(indices[k]) >= allVars.size())
      spoilt = true;
    row.coefs.push_back({indices[k], coefs[k]});
  }
  if (spoilt || row.coefs.empty()) return;
  std::stable_sort(row.coefs.begin(), row.coefs.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<std::pair<int32_t, double>> merged;
  for (const auto& term : row.coefs) {
    if (!merged.empty() && merged.back().first == term.first)
      merged.back().second += term.second;
    else
      merged.push_back(term);
  }
  std::erase_if(merged, [](const auto& term) { return std::abs(term.second) <= kSmallTerm; });
  if (merged.empty()) return;
  // At least: stored with its signs reversed.
  const double sign = relation == kAtLeast ? -1 : 1;
  for (auto& term : merged) term.second *= sign;
  row.coefs = std::move(merged);
  row.relation = relation == kEqual ? kEqual : kAtMost;
  row.constCoef = sign * rhs;
  constraints.push_back(std::move(row));
}

double LineProgSolver::objectiveOf(std::span<const double> x) const {
  double value = 0;
  for (std::size_t i = 0; i < x.size(); ++i) value += objective[i] * x[i];
  return value;
}

double LineProgSolver::maxValue() const { return solved ? objectiveOf(solution) : -1e300; }

bool LineProgSolver::prepare() {
  if (spoilt) return false;
  if (objective.empty()) {
    if (sparseObjective.empty() || allVars.empty()) return false;
    std::vector<double> dense(allVars.size(), 0.0);
    for (const auto& [coefficient, var] : sparseObjective) {
      if (var < 0 || static_cast<std::size_t>(var) >= allVars.size() || !std::isfinite(coefficient)) return false;
      dense[var] += coefficient;
    }
    objective = std::move(dense);
  }
  if (objective.size() != allVars.size()) return false;
  root.bounds.clear();
  standing = 0;
  std::vector<uint8_t> stands(allVars.size(), 0);
  for (const EquVar& row : constraints)
    for (const auto& [var, coefficient] : row.coefs) stands[var] = 1;
  root.solution.assign(allVars.size(), 0.0);
  root.origin.assign(allVars.size(), 0.0);
  for (std::size_t i = 0; i < allVars.size(); ++i) {
    const BaseVar& var = allVars[i];
    if (var.index != static_cast<int32_t>(i)) return false;
    if (var.varKind == kBinary) root.bounds[var.index] = {0, 1};
    if (var.varKind == kInteger) root.bounds[var.index] = {0, kPreparedUpper};
    if (stands[i]) {
      ++standing;
      if (!root.tableau.has(var.index)) root.tableau.addColumn(var.index);
    } else if (var.varKind == kBinary) {
      root.solution[i] = objective[i] > 0 ? 1 : 0;
    } else if (objective[i] > 0) {
      return false;  // KEPT: unbounded, but told as a failure (0) where 2 would be expected (kept.csv: Solve_noRow)
    }
  }
  return true;
}

// Rows of the constraints that are not in the tableau yet; an equality is a pair of inequalities. A problem that was
// solved before takes them in terms of the basis that the earlier solve left.
void LineProgSolver::addRows() {
  for (; entered < constraints.size(); ++entered) {
    const EquVar& row = constraints[entered];
    Tableau::Terms terms(row.coefs.begin(), row.coefs.end());
    for (auto& term : terms) term.second = -term.second;
    root.tableau.addRow(rowNumber++, row.constCoef, terms);
    if (row.relation != kEqual) continue;
    for (auto& term : terms) term.second = -term.second;
    root.tableau.addRow(rowNumber++, -row.constCoef, terms);
  }
}

void LineProgSolver::setUp() {
  addRows();
  for (BaseVar& var : allVars) {
    if (!root.tableau.has(var.index) || var.varKind == kReal) continue;
    if (var.varKind == kBinary) {
      root.bounds[var.index] = {0, 1};
      if (var.state == kNoBoundRow) {
        root.upperRows[var.index] = rowNumber;
        root.tableau.addRow(rowNumber++, 1.0, {{var.index, -1.0}});
      }
      var.state = 0;
    } else {
      // KEPT: ten times the bound that the preparation wrote, one of the two would do (kept.csv: Bounds_integer)
      root.bounds[var.index] = {0, kIntegerUpper};
    }
  }
  Tableau::Terms terms;
  for (const BaseVar& var : allVars)
    if (root.tableau.has(var.index)) terms.push_back({var.index, objective[var.index]});
  root.tableau.setObjective(0, terms);
}

bool LineProgSolver::solve() {
  solved = false;
  status = kFailed;
  root.solved = false;
  root.status = kFailed;
  if (!prepare()) return false;
  if (standing == 0) {
    root.solved = true;
    root.status = kOptimal;
  } else {
    setUp();
    const bool whole = std::any_of(allVars.begin(), allVars.end(), [&](const BaseVar& var) {
      return var.varKind != kReal && root.tableau.has(var.index);
    });
    if (whole)
      branchAndBound(root, -1e300, true);
    else if (phases(root))
      readOut(root);
  }
  // Numbers beyond the range of doubles leave no solution.
  if (root.solved &&
      !std::all_of(root.solution.begin(), root.solution.end(), [](double x) { return std::isfinite(x); })) {
    root.solved = false;
    root.status = kFailed;
  }
  solved = root.solved;
  status = root.status;
  solution = root.solution;
  return status == kOptimal;
}

bool LineProgSolver::phases(Node& node) const {
  node.solved = false;
  node.status = kFailed;
  return phaseOne(node) && phaseTwo(node);
}

bool LineProgSolver::phaseOne(Node& node) const {
  Tableau& tableau = node.tableau;
  int worst = Tableau::kNone;
  for (std::size_t i = 0; i < tableau.rows.size(); ++i) {
    const double value = tableau.rows[i].value;
    if (value >= 0) continue;
    if (worst == Tableau::kNone || value < tableau.rows[worst].value ||
        (value == tableau.rows[worst].value && tableau.rows[i].var < tableau.rows[worst].var))
      worst = static_cast<int>(i);
  }
  if (worst == Tableau::kNone) return true;
  const double tolerance = std::max(kInfeasible, kInfeasiblePart * -tableau.rows[worst].value);

  const double savedValue = tableau.objectiveValue;
  const std::vector<double> saved = tableau.objectiveRow;
  const int artificial = tableau.variableCount();
  const int slot = tableau.addArtificial(artificial);
  tableau.setObjective(0, {{artificial, -1.0}});
  std::vector<double> column(tableau.rows.size(), 1.0);
  tableau.pivot(worst, slot, column);
  if (!phaseTwo(node) || !(tableau.valueOf(artificial) <= tolerance)) {
    node.status = kFailed;
    return false;
  }
  tableau.removeArtificial(artificial);
  Tableau::Terms terms;
  for (std::size_t var = 0; var < saved.size(); ++var)
    if (saved[var] != 0) terms.push_back({static_cast<int>(var), saved[var]});
  tableau.setObjective(savedValue, terms);
  return true;
}

bool LineProgSolver::phaseTwo(Node& node) const {
  Tableau& tableau = node.tableau;
  node.status = kOptimal;
  if (tableau.rows.empty()) {
    if (tableau.entering(std::vector<uint8_t>(tableau.columnVar.size(), 0)) != Tableau::kNone) node.status = kUnbounded;
    return node.status == kOptimal;
  }
  // KEPT: a loop that runs out hands over the solution in hand as an optimum (kept.csv: PhaseTwo_cap)
  const std::size_t cap = standing + tableau.rows.size();
  std::vector<double> column;
  for (std::size_t turn = 0; turn < cap; ++turn) {
    Tableau::Pivot pivot;
    const int answer = choose(node, pivot, column);
    if (answer == 1) return true;
    if (answer != 3) {
      node.status = static_cast<Status>(answer);
      return false;
    }
    tableau.pivot(pivot.row, pivot.column, column);
  }
  return true;
}

int LineProgSolver::choose(const Node& node, Tableau::Pivot& pivot, std::vector<double>& column) const {
  std::vector<uint8_t> struck(node.tableau.columnVar.size(), 0);
  for (bool first = true;; first = false) {
    pivot.column = node.tableau.entering(struck);
    if (pivot.column == Tableau::kNone) return first ? 1 : 2 * static_cast<int>(holds(node, kCheckTolerance));
    pivot.row = node.tableau.leaving(pivot.column, column);
    if (pivot.row != Tableau::kNone) return 3;
    struck[pivot.column] = 1;
  }
}

bool LineProgSolver::holds(const Node& node, double tolerance) const {
  for (const EquVar& row : constraints) {
    double sum = -row.constCoef;
    for (const auto& [var, coefficient] : row.coefs)
      sum += coefficient * (node.tableau.valueOf(var) + node.origin[var]);
    if (!(row.relation == kEqual ? std::abs(sum) <= tolerance : sum <= tolerance)) return false;
  }
  return true;
}

void LineProgSolver::readOut(Node& node) const {
  for (const BaseVar& var : allVars) {
    if (!node.tableau.has(var.index)) continue;
    const double value = node.tableau.valueOf(var.index) + node.origin[var.index];
    // KEPT: an integer variable is rounded even where it is fractional in this relaxation, so that the bound of the
    // branching is the rounded point's value instead of the relaxation's (kept.csv: Bound_rounded)
    node.solution[var.index] = var.varKind == kReal ? value : std::round(value);
  }
  node.solved = true;
}

}  // namespace LineProg
