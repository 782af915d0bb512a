// SPDX-License-Identifier: Apache-2.0
#include "prog/exact/elimination.h"

#include <algorithm>
#include <cmath>

namespace LineProg {

namespace {

constexpr double kThreshold = 0.1;  // of the row's greatest entry
constexpr double kSingular = 1e-11;
constexpr int kCandidates = 4;

}  // namespace

void CountLists::put(int item, int count) {
  links[item] = {head[count], -1, count};
  if (head[count] >= 0) links[head[count]].before = item;
  head[count] = item;
}

void CountLists::take(int item) {
  const Link link = links[item];
  if (link.count < 0) return;
  (link.before >= 0 ? links[link.before].next : head[link.count]) = link.next;
  if (link.next >= 0) links[link.next].before = link.before;
  links[item].count = -1;
}

template <class Real>
void Elimination<Real>::start(int newSize) {
  size = newSize;
  const auto count = static_cast<std::size_t>(size);
  rows.resize(std::max(rows.size(), count));
  columns.resize(std::max(columns.size(), count));
  for (std::size_t i = 0; i < count; ++i) {
    rows[i].clear();
    columns[i].clear();
  }
  rowGreatest.assign(count, -1);
  place.assign(count, -1);
}

template <class Real>
void Elimination<Real>::add(int row, int column, Real value) {
  rows[row].push_back({column, value});
  columns[column].push_back(row);
}

template <class Real>
void Elimination<Real>::ready() {
  byRowCount.clear(size, size);
  byColumnCount.clear(size, size);
  for (int i = 0; i < size; ++i) {
    if (!rows[i].empty()) byRowCount.put(i, static_cast<int>(rows[i].size()));
    if (!columns[i].empty()) byColumnCount.put(i, static_cast<int>(columns[i].size()));
  }
}

template <class Real>
Real Elimination<Real>::greatest(int row) {
  Real& most = rowGreatest[row];
  if (most < 0) {
    most = 0;
    for (const Term& term : rows[row]) most = std::max(most, std::abs(term.second));
  }
  return most;
}

template <class Real>
auto Elimination<Real>::choose() -> Pivot {
  Pivot best;
  long least = -1;
  int seen = 0;
  const auto offer = [&](int row, int column, Real value) {
    const Real most = greatest(row);
    if (!(std::abs(value) >= kThreshold * most) || !(std::abs(value) > kSingular)) return;
    const long fill = static_cast<long>(rows[row].size() - 1) * static_cast<long>(columns[column].size() - 1);
    if (least >= 0 && fill >= least) return;
    least = fill;
    best = {row, column, value};
  };
  for (int count = 1; count <= size; ++count) {
    const long bound = static_cast<long>(count - 1) * (count - 1);
    for (int column = byColumnCount.first(count); column >= 0; column = byColumnCount.after(column)) {
      for (const int row : columns[column]) {
        const auto term = std::ranges::find(rows[row], column, &Term::first);
        offer(row, column, term->second);
      }
      if (least >= 0 && (least <= bound || ++seen >= kCandidates)) return best;
    }
    for (int row = byRowCount.first(count); row >= 0; row = byRowCount.after(row)) {
      for (const auto& [column, value] : rows[row]) offer(row, column, value);
      if (least >= 0 && (least <= bound || ++seen >= kCandidates)) return best;
    }
  }
  return best;
}

// Takes a row's entry out of the row; the column is left to the caller.
template <class Real>
Real Elimination<Real>::takeOut(int row, int column) {
  const auto term = std::ranges::find(rows[row], column, &Term::first);
  const Real value = term->second;
  *term = rows[row].back();
  rows[row].pop_back();
  return value;
}

template <class Real>
void Elimination<Real>::subtract(int row, Real factor, const std::vector<Term>& pivotRow) {
  std::vector<Term>& terms = rows[row];
  for (std::size_t k = 0; k < terms.size(); ++k) place[terms[k].first] = static_cast<int>(k);
  for (const auto& [column, value] : pivotRow) {
    if (place[column] >= 0) {
      terms[place[column]].second -= factor * value;
    } else {
      terms.push_back({column, -factor * value});
      columns[column].push_back(row);
    }
  }
  for (const Term& term : terms) place[term.first] = -1;
  rowGreatest[row] = -1;
}

template <class Real>
void Elimination<Real>::eliminate(const Pivot& pivot, std::vector<Triple<Real>>& multipliers) {
  takeOut(pivot.row, pivot.column);
  const std::vector<Term>& pivotRow = rows[pivot.row];
  byRowCount.take(pivot.row);
  byColumnCount.take(pivot.column);
  for (const auto& [column, value] : pivotRow) {
    byColumnCount.take(column);
    std::vector<int>& standing = columns[column];
    *std::ranges::find(standing, pivot.row) = standing.back();
    standing.pop_back();
  }
  for (const int row : columns[pivot.column]) {
    if (row == pivot.row) continue;
    const Real factor = takeOut(row, pivot.column) / pivot.value;
    multipliers.push_back({row, pivot.row, factor});
    byRowCount.take(row);
    subtract(row, factor, pivotRow);
    byRowCount.put(row, static_cast<int>(rows[row].size()));
  }
  columns[pivot.column].clear();
  for (const auto& [column, value] : pivotRow) byColumnCount.put(column, static_cast<int>(columns[column].size()));
}

template class Elimination<double>;
template class Elimination<long double>;

}  // namespace LineProg
