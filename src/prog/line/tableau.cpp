// SPDX-License-Identifier: Apache-2.0
#include "prog/line/tableau.h"

#include <algorithm>
#include <cmath>

namespace LineProg {

namespace {

constexpr double kSmallEntry = 1e-32;  // no gain, no value

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
    for (Row& row : rows) row.widen();
  }
  columnVar[slot] = var;
  enter(var, ~slot);
}

template <class Real>
void Tableau<Real>::addRow(int var, Real constant, const Terms& terms) {
  Row row;
  // Substitution fills an array; a fresh problem, all of whose variables are nonbasic, needs none.
  if (std::none_of(terms.begin(), terms.end(), [&](const auto& term) { return isBasic(term.first); })) {
    Terms slots = terms;
    for (auto& term : slots) term.first = columnOf(term.first);
    row = Row(var, constant, slots);
  } else {
    row.var = var;
    row.value = constant;
    row.makeDense(columnVar.size());
    for (const auto& [other, coefficient] : terms) {
      if (!isBasic(other)) {
        row.add(columnOf(other), coefficient);
      } else {
        const Row& basic = rows[place(other)];
        row.value = cancellingSum(row.value, coefficient * basic.value);
        row.addScaled(coefficient, basic, kNone, columnVar.size(), spare);
      }
    }
  }
  row.trim(columnVar.size());
  enter(var, static_cast<int>(rows.size()));
  rows.push_back(std::move(row));
}

template <class Real>
void Tableau<Real>::addToObjective(Real factor, int var) {
  if (!isBasic(var)) {
    objectiveRow[var] = cancellingSum(objectiveRow[var], factor);
    return;
  }
  const Row& row = rows[place(var)];
  objectiveValue += factor * row.value;
  row.each([&](int slot, Real coefficient) {
    Real& entry = objectiveRow[columnVar[slot]];
    entry = cancellingSum(entry, factor * coefficient);
  });
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
  column.resize(rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) column[i] = rows[i].coefficient(slot);
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

template <class Real>
void Tableau<Real>::pivot(int r, int slot, const std::vector<Real>& column) {
  Row& solved = rows[r];
  const int leavingVar = solved.var, enteringVar = columnVar[slot];
  solved.solveFor(slot, 1 / column[r]);
  solved.var = enteringVar;
  columnVar[slot] = leavingVar;
  places[enteringVar] = r;
  places[leavingVar] = ~slot;

  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (static_cast<int>(i) == r || column[i] == 0) continue;
    rows[i].value = cancellingSum(rows[i].value, column[i] * solved.value);
    rows[i].addScaled(column[i], solved, slot, columnVar.size(), spare);
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
  for (Row& row : rows) row.set(slot, 1);
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

// Makes a basic variable of value 0 nonbasic. False when its row says 0 = 0; the row is dropped then.
template <class Real>
bool Tableau<Real>::pivotOut(int var) {
  const int r = place(var);
  rows[r].value = 0;
  int best = kNone;
  Real largest = 0;
  rows[r].each([&](int slot, Real coefficient) {
    if (!(std::abs(coefficient) > largest)) return;
    largest = std::abs(coefficient);
    best = slot;
  });
  if (best != kNone) {
    std::vector<Real> column;
    gather(best, column);
    pivot(r, best, column);
    return true;
  }
  if (r + 1 != static_cast<int>(rows.size())) {
    rows[r] = std::move(rows.back());
    places[rows[r].var] = r;
  }
  rows.pop_back();
  return false;
}

template <class Real>
void Tableau<Real>::removeArtificial(int var) {
  if (!isBasic(var) || pivotOut(var)) {
    const int slot = columnOf(var);
    for (Row& row : rows) row.erase(slot);
    columnVar[slot] = kNone;
  }
  forget(var);
}

template class Tableau<double>;
template class Tableau<long double>;

}  // namespace LineProg
