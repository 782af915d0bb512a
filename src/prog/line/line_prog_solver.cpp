// SPDX-License-Identifier: Apache-2.0
#include "prog/line/line_prog_solver.h"

#include <algorithm>
#include <cmath>

namespace LineProg {

namespace {

constexpr double kSmallTerm = 1e-15;
constexpr double kCheckTolerance = 1e-8;
constexpr double kTrusted = 1e-10;         // violation, relative to the sizes of a constraint's terms
constexpr double kInfeasible = 1e-9;       // what Phase one may leave, and the same
constexpr double kInfeasiblePart = 1e-11;  // relative to the infeasibility that it began with
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
  fast.rowNumber = exact.rowNumber = static_cast<int32_t>(kinds.size());
}

void LineProgSolver::setMaxExpress(std::span<const int32_t> indices, std::span<const double> coefs) {
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
  if (!std::all_of(merged.begin(), merged.end(), [](const auto& term) { return std::isfinite(term.second); })) {
    spoilt = true;  // a sum beyond the range of doubles
    return;
  }
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

bool LineProgSolver::prepareObjective() {
  if (spoilt) return false;
  if (sparseObjective.empty() || allVars.empty()) return false;
  objective.assign(allVars.size(), 0.0);
  for (const auto& [coefficient, var] : sparseObjective) {
    if (var < 0 || static_cast<std::size_t>(var) >= allVars.size()) return false;
    objective[var] += coefficient;
    if (!std::isfinite(objective[var])) return false;
  }
  return true;
}

template <class Real>
bool LineProgSolver::prepare(Node<Real>& root) {
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
template <class Real>
void LineProgSolver::addRows(Node<Real>& root) const {
  for (; root.entered < constraints.size(); ++root.entered) {
    const EquVar& row = constraints[root.entered];
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
void LineProgSolver::setUp(Node<Real>& root) const {
  addRows(root);
  for (const BaseVar& var : allVars) {
    if (!root.tableau.has(var.index) || var.varKind == kReal) continue;
    if (var.varKind == kBinary) {
      root.bounds[var.index] = {0, 1};
      if (!root.upperRows.contains(var.index)) {
        root.upperRows[var.index] = root.rowNumber;
        root.tableau.addRow(root.rowNumber++, 1, {{var.index, Real(-1)}});
      }
    } else {
      // KEPT: ten times the bound that the preparation wrote, one of the two would do (kept.csv: Bounds_integer)
      root.bounds[var.index] = {0, kIntegerUpper};
    }
  }
  typename Tableau<Real>::Terms terms;
  for (const BaseVar& var : allVars)
    if (root.tableau.has(var.index)) terms.push_back({var.index, static_cast<Real>(objective[var.index])});
  root.tableau.setObjective(0, terms);
}

template <class Real>
void LineProgSolver::run(Node<Real>& root) {
  root.solved = false;
  root.status = kFailed;
  if (!prepare(root)) return;
  if (standing == 0) {
    root.solved = true;
    root.status = kOptimal;
    return;
  }
  setUp(root);
  const Tableau<Real> before = root.tableau;
  if (hasWhole(root))
    branchAndBound(root);
  else if (phases(root))
    readOut(root);
  // A first phase that fails leaves its artificial variable behind, with which the rows could be met.
  if (root.status == kFailed) root.tableau = before;
  // Numbers beyond the range of doubles leave no solution.
  if (root.solved &&
      !std::all_of(root.solution.begin(), root.solution.end(), [](double x) { return std::isfinite(x); })) {
    root.solved = false;
    root.status = kFailed;
  }
}

template <class Real>
bool LineProgSolver::hasWhole(const Node<Real>& root) const {
  return std::any_of(allVars.begin(), allVars.end(),
                     [&](const BaseVar& var) { return var.varKind != kReal && root.tableau.has(var.index); });
}

// Whether a run in doubles stands: its point keeps the constraints as well as their data let it. A real problem that
// ended without a point is looked at again, as rounding may have taken it there; a search over whole numbers, where
// most nodes end so, is not.
bool LineProgSolver::trusted(const Node<double>& root) const {
  if (!root.solved) return root.tableau.rows.empty() || hasWhole(root);
  for (const EquVar& row : constraints) {
    double sum = -row.constCoef, size = std::abs(row.constCoef);
    for (const auto& [var, coefficient] : row.coefs) {
      sum += coefficient * root.solution[var];
      size += std::abs(coefficient * root.solution[var]);
    }
    if (!((row.relation == kEqual ? std::abs(sum) : sum) <= kTrusted * std::max(1.0, size))) return false;
  }
  return hasWhole(root) || reducedCostsHold(root);
}

// The objective is c.x = constant + sum of reduced costs * variables, the slacks b - a.x among them, for every x: what
// the tableau holds must give back each c.
bool LineProgSolver::reducedCostsHold(const Node<double>& root) const {
  std::vector<double> rest = objective, size(objective.size());
  for (std::size_t j = 0; j < rest.size(); ++j) {
    size[j] = std::max(1.0, std::abs(rest[j]));
    if (root.tableau.has(static_cast<int>(j)))
      rest[j] -= root.tableau.objectiveRow[j];
    else
      rest[j] = 0;
  }
  for (std::size_t i = 0; i < root.slacks.size(); ++i) {
    const EquVar& row = constraints[i];
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

double LineProgSolver::reducedCost(const Node<double>& root, int32_t var) {
  return root.tableau.has(var) ? root.tableau.objectiveRow[var] : 0;
}

// Doubles first. When their rounding, in a chain of pivots on small coefficients, has led astray, the same steps run in
// long doubles, whose rounding errors stay below the least coefficient that counts.
bool LineProgSolver::solve() {
  solved = false;
  status = kFailed;
  if (!prepareObjective()) return false;
  if (!isExact) {
    run(fast);
    isExact = !trusted(fast);
  }
  if (isExact) run(exact);
  solved = isExact ? exact.solved : fast.solved;
  status = isExact ? exact.status : fast.status;
  solution = isExact ? exact.solution : fast.solution;
  return status == kOptimal;
}

template <class Real>
bool LineProgSolver::phases(Node<Real>& node) const {
  node.solved = false;
  node.status = kFailed;
  return phaseOne(node) && phaseTwo(node);
}

template <class Real>
bool LineProgSolver::phaseOne(Node<Real>& node) const {
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
    node.status = kFailed;
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
bool LineProgSolver::phaseTwo(Node<Real>& node) const {
  Tableau<Real>& tableau = node.tableau;
  node.status = kOptimal;
  if (tableau.rows.empty()) {
    if (tableau.entering(std::vector<uint8_t>(tableau.columnVar.size(), 0)) != Tableau<Real>::kNone)
      node.status = kUnbounded;
    return node.status == kOptimal;
  }
  // KEPT: a loop that runs out hands over the solution in hand as an optimum (kept.csv: PhaseTwo_cap)
  const std::size_t cap = standing + tableau.rows.size();
  std::vector<Real> column;
  for (std::size_t turn = 0; turn < cap; ++turn) {
    typename Tableau<Real>::Pivot pivot;
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

template <class Real>
int LineProgSolver::choose(const Node<Real>& node, typename Tableau<Real>::Pivot& pivot,
                           std::vector<Real>& column) const {
  std::vector<uint8_t> struck(node.tableau.columnVar.size(), 0);
  for (bool first = true;; first = false) {
    pivot.column = node.tableau.entering(struck);
    if (pivot.column == Tableau<Real>::kNone) return first ? 1 : 2 * static_cast<int>(holds(node, kCheckTolerance));
    pivot.row = node.tableau.leaving(pivot.column, column);
    if (pivot.row != Tableau<Real>::kNone) return 3;
    struck[pivot.column] = 1;
  }
}

template <class Real>
bool LineProgSolver::holds(const Node<Real>& node, double tolerance) const {
  for (const EquVar& row : constraints) {
    double sum = -row.constCoef;
    for (const auto& [var, coefficient] : row.coefs)
      sum += coefficient * (node.tableau.valueOf(var) + node.origin[var]);
    if (!(row.relation == kEqual ? std::abs(sum) <= tolerance : sum <= tolerance)) return false;
  }
  return true;
}

template <class Real>
void LineProgSolver::readOut(Node<Real>& node) const {
  for (const BaseVar& var : allVars) {
    if (!node.tableau.has(var.index)) continue;
    const double value = node.tableau.valueOf(var.index) + node.origin[var.index];
    // KEPT: an integer variable is rounded even where it is fractional in this relaxation, so that the bound of the
    // branching is the rounded point's value instead of the relaxation's (kept.csv: Bound_rounded)
    node.solution[var.index] = var.varKind == kReal ? value : std::round(value);
  }
  node.solved = true;
}

template bool LineProgSolver::phases(Node<double>&) const;
template bool LineProgSolver::phases(Node<long double>&) const;
template void LineProgSolver::readOut(Node<double>&) const;
template void LineProgSolver::readOut(Node<long double>&) const;

}  // namespace LineProg
