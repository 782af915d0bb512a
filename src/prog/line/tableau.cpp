// SPDX-License-Identifier: Apache-2.0
#include "prog/line/tableau.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kSmallCoefficient = 1e-15;  // erased from the tableau
constexpr double kSmallEntry = 1e-32;        // no gain, no value
// A sum of opposite terms that leaves less than this part of them is what rounding left of 0. Without it a column that
// has no gain would look as if it had one, and an optimum like an unbounded problem.
constexpr double kCancelled = 1e-12;
constexpr int kAlwaysDense = 64;  // columns; from there on a row turns dense when a quarter is filled

template <class Real>
Real sum(Real a, Real b) {
  const Real s = a + b;
  return std::abs(s) < kCancelled * std::abs(b) ? 0 : s;
}

template <class Real>
Real coefficientSum(Real a, Real b) {
  const Real s = a + b, part = static_cast<Real>(kCancelled) * std::abs(b), least = kSmallCoefficient;
  return std::abs(s) < (part > least ? part : least) ? 0 : s;
}

}  // namespace

template <class Real>
void Tableau<Real>::enter(int var, int where) {
  if (var >= variableCount()) {
    places.resize(static_cast<std::size_t>(var) + 1, kAbsent);
    objectiveRow.resize(places.size(), 0.0);
  }
  places[var] = where;
}

template <class Real>
void Tableau<Real>::addColumn(int var) {
  int slot = static_cast<int>(std::find(columnVar.begin(), columnVar.end(), kNone) - columnVar.begin());
  if (slot == columnCount()) {
    columnVar.push_back(kNone);
    for (Row& row : rows)
      if (row.dense) row.coef.push_back(0.0);
  }
  columnVar[slot] = var;
  enter(var, ~slot);
}

template <class Real>
void Tableau<Real>::makeDense(Row& row) const {
  std::vector<Real> all(columnVar.size(), 0.0);
  for (std::size_t k = 0; k < row.at.size(); ++k) all[row.at[k]] = row.coef[k];
  row.coef = std::move(all);
  row.at.clear();
  row.at.shrink_to_fit();
  row.dense = true;
}

template <class Real>
void Tableau<Real>::trim(Row& row) const {
  if (!row.dense && (columnCount() <= kAlwaysDense || row.at.size() * 4 > columnVar.size())) makeDense(row);
}

template <class Real>
void Tableau<Real>::addRow(int var, Real constant, const Terms& terms) {
  Row row;
  row.var = var;
  row.value = constant;
  // Substitution fills an array; a fresh problem, all of whose variables are nonbasic, needs none.
  const bool fresh = std::none_of(terms.begin(), terms.end(), [&](const auto& term) { return isBasic(term.first); });
  if (fresh) {
    for (const auto& [other, coefficient] : terms) row.at.push_back(columnOf(other));
    std::sort(row.at.begin(), row.at.end());
    row.coef.assign(row.at.size(), 0.0);
    for (const auto& [other, coefficient] : terms)
      row.coef[std::lower_bound(row.at.begin(), row.at.end(), columnOf(other)) - row.at.begin()] += coefficient;
  } else {
    makeDense(row);
    for (const auto& [other, coefficient] : terms) {
      if (!isBasic(other)) {
        row.coef[columnOf(other)] = coefficientSum(row.coef[columnOf(other)], coefficient);
      } else {
        const Row& basic = rows[place(other)];
        row.value = sum(row.value, coefficient * basic.value);
        addScaled(row, coefficient, basic, kNone);
      }
    }
  }
  trim(row);
  enter(var, static_cast<int>(rows.size()));
  rows.push_back(std::move(row));
}

template <class Real>
void Tableau<Real>::addToObjective(Real factor, int var) {
  if (!isBasic(var)) {
    objectiveRow[var] = sum(objectiveRow[var], factor);
    return;
  }
  const Row& row = rows[place(var)];
  objectiveValue += factor * row.value;
  if (row.dense) {
    for (int slot = 0; slot < columnCount(); ++slot)
      if (row.coef[slot] != 0)
        objectiveRow[columnVar[slot]] = sum(objectiveRow[columnVar[slot]], factor * row.coef[slot]);
  } else {
    for (std::size_t k = 0; k < row.at.size(); ++k)
      objectiveRow[columnVar[row.at[k]]] = sum(objectiveRow[columnVar[row.at[k]]], factor * row.coef[k]);
  }
}

template <class Real>
void Tableau<Real>::setObjective(Real constant, const Terms& terms) {
  objectiveValue = constant;
  objectiveRow.assign(places.size(), 0.0);
  for (const auto& [var, coefficient] : terms)
    if (std::abs(coefficient) > kSmallCoefficient) addToObjective(coefficient, var);
}

template <class Real>
int Tableau<Real>::entering(const std::vector<uint8_t>& struck) const {
  int best = kNone;
  Real greatest = kSmallEntry;
  for (int slot = 0; slot < columnCount(); ++slot) {
    const int var = columnVar[slot];
    if (var == kNone || struck[slot]) continue;
    const Real entry = objectiveRow[var];
    if (entry > greatest || (entry == greatest && best != kNone && var < columnVar[best])) {
      greatest = entry;
      best = slot;
    }
  }
  return best;
}

template <class Real>
void Tableau<Real>::gather(int slot, std::vector<Real>& column) const {
  column.assign(rows.size(), 0.0);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const Row& row = rows[i];
    if (row.dense) {
      column[i] = row.coef[slot];
      continue;
    }
    const auto found = std::lower_bound(row.at.begin(), row.at.end(), slot);
    if (found != row.at.end() && *found == slot) column[i] = row.coef[found - row.at.begin()];
  }
}

template <class Real>
int Tableau<Real>::leaving(int slot, std::vector<Real>& column) const {
  gather(slot, column);
  int best = kNone;
  Real smallest = 0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (!(column[i] < -kSmallCoefficient)) continue;
    const Real ratio = rows[i].value / -column[i];
    if (best == kNone || ratio < smallest || (ratio == smallest && rows[i].var < rows[best].var)) {
      smallest = ratio;
      best = static_cast<int>(i);
    }
  }
  if (best == kNone || !(smallest < kSmallEntry && rows[best].value < kSmallEntry)) return best;
  // A degenerate step: of the rows at 0 the one of most negative coefficient.
  best = kNone;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (!(column[i] < -kSmallCoefficient && rows[i].value < kSmallEntry)) continue;
    if (best == kNone || column[i] < column[best] || (column[i] == column[best] && rows[i].var < rows[best].var))
      best = static_cast<int>(i);
  }
  return best;
}

// row += factor * pivotRow, where column `slot` of the row, kept out of it by the caller, takes factor times the pivot
// row's entry alone.
template <class Real>
void Tableau<Real>::addScaled(Row& row, Real factor, const Row& pivotRow, int slot) {
  if (!row.dense && pivotRow.dense) makeDense(row);
  if (row.dense) {
    if (slot != kNone) row.coef[slot] = 0;
    Real* to = row.coef.data();
    const Real* from = pivotRow.coef.data();
    if (pivotRow.dense) {
      const std::size_t n = row.coef.size();
      for (std::size_t j = 0; j < n; ++j) to[j] = coefficientSum(to[j], factor * from[j]);
    } else {
      for (std::size_t k = 0; k < pivotRow.at.size(); ++k)
        to[pivotRow.at[k]] = coefficientSum(to[pivotRow.at[k]], factor * from[k]);
    }
    return;
  }
  spareAt.clear();
  spareCoef.clear();
  std::size_t a = 0, b = 0;
  const auto put = [this](int at, Real coefficient) {
    if (coefficient == 0) return;
    spareAt.push_back(at);
    spareCoef.push_back(coefficient);
  };
  while (a < row.at.size() || b < pivotRow.at.size()) {
    if (b == pivotRow.at.size() || (a < row.at.size() && row.at[a] < pivotRow.at[b])) {
      if (row.at[a] != slot) put(row.at[a], row.coef[a]);
      ++a;
    } else {
      const bool both = a < row.at.size() && row.at[a] == pivotRow.at[b];
      const Real old = both && row.at[a] != slot ? row.coef[a] : 0;
      put(pivotRow.at[b], coefficientSum(old, factor * pivotRow.coef[b]));
      a += both;
      ++b;
    }
  }
  row.at.swap(spareAt);
  row.coef.swap(spareCoef);
  trim(row);
}

template <class Real>
void Tableau<Real>::pivot(int r, int slot, const std::vector<Real>& column) {
  Row& solved = rows[r];
  const int leavingVar = solved.var, enteringVar = columnVar[slot];
  const Real inverse = 1 / column[r];
  // Solved for the entering variable; the leaving one takes its column.
  solved.value *= -inverse;
  if (solved.value == 0) solved.value = 0;  // no negative zero
  for (Real& coefficient : solved.coef) coefficient *= -inverse;
  const std::size_t at =
      solved.dense
          ? static_cast<std::size_t>(slot)
          : static_cast<std::size_t>(std::lower_bound(solved.at.begin(), solved.at.end(), slot) - solved.at.begin());
  solved.coef[at] = inverse;

  solved.var = enteringVar;
  columnVar[slot] = leavingVar;
  places[enteringVar] = r;
  places[leavingVar] = ~slot;

  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (static_cast<int>(i) == r || column[i] == 0) continue;
    rows[i].value = sum(rows[i].value, column[i] * solved.value);
    addScaled(rows[i], column[i], solved, slot);
  }
  const Real entry = objectiveRow[enteringVar];
  objectiveRow[enteringVar] = 0;
  objectiveRow[leavingVar] = 0;
  if (entry != 0) addToObjective(entry, enteringVar);
}

template <class Real>
int Tableau<Real>::addArtificial(int var) {
  addColumn(var);
  const int slot = columnOf(var);
  for (Row& row : rows) {
    if (row.dense) {
      row.coef[slot] = 1;
    } else {
      const auto place = std::lower_bound(row.at.begin(), row.at.end(), slot);
      row.coef.insert(row.coef.begin() + (place - row.at.begin()), 1.0);
      row.at.insert(place, slot);
    }
  }
  return slot;
}

// The last number is free again, so that long chains of branches do not pile up numbers.
template <class Real>
void Tableau<Real>::forget(int var) {
  places[var] = kAbsent;
  objectiveRow[var] = 0;
  if (var + 1 != variableCount()) return;
  places.pop_back();
  objectiveRow.pop_back();
}

template <class Real>
void Tableau<Real>::removeArtificial(int var) {
  if (isBasic(var)) {
    const int r = place(var);
    rows[r].value = 0;
    int best = kNone;
    Real largest = 0;
    for (std::size_t k = 0; k < rows[r].coef.size(); ++k) {
      if (!(std::abs(rows[r].coef[k]) > largest)) continue;
      largest = std::abs(rows[r].coef[k]);
      best = rows[r].dense ? static_cast<int>(k) : rows[r].at[k];
    }
    if (best == kNone) {  // a row that says 0 = 0
      if (r + 1 != static_cast<int>(rows.size())) {
        rows[r] = std::move(rows.back());
        places[rows[r].var] = r;
      }
      rows.pop_back();
      forget(var);
      return;
    }
    std::vector<Real> column;
    gather(best, column);
    pivot(r, best, column);
  }
  const int slot = columnOf(var);
  for (Row& row : rows) {
    if (row.dense) {
      row.coef[slot] = 0;
      continue;
    }
    const auto found = std::lower_bound(row.at.begin(), row.at.end(), slot);
    if (found == row.at.end() || *found != slot) continue;
    row.coef.erase(row.coef.begin() + (found - row.at.begin()));
    row.at.erase(found);
  }
  columnVar[slot] = kNone;
  forget(var);
}

template class Tableau<double>;
template class Tableau<long double>;
