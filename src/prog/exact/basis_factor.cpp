// SPDX-License-Identifier: Apache-2.0
#include "prog/exact/basis_factor.h"

#include <algorithm>
#include <cmath>

namespace LineProg {

namespace {

constexpr double kSmallPivot = 1e-11;
constexpr std::size_t kMostExchanges = 100;
constexpr std::size_t kWork = 3;  // exchanges may hold this many times the entries of the factors

}  // namespace

template <class Real>
void BasisFactor<Real>::settle(int row, int column, Real pivot) {
  rowOf[column] = row;
  placeOf[row] = column;
  pivots[row] = pivot;
  order.push_back(row);
}

// Columns with one entry in the rows left, then rows with one entry in the columns left, are pivots without fill. Most
// of a basis goes this way.
template <class Real>
void BasisFactor<Real>::peel(const BoundedProblem& problem, const std::vector<int>& basic) {
  const int m = problem.rows;
  std::vector<Triple<Real>>& all = upper;
  all.clear();
  for (int k = 0; k < m; ++k) {
    if (basic[k] >= problem.columns)
      all.push_back({basic[k] - problem.columns, k, 1});
    else
      for (const auto& [row, value] : problem.byColumn[basic[k]]) all.push_back({row, k, static_cast<Real>(value)});
  }
  groupByColumn<Real>(all, m, columns);
  groupByRow<Real>(all, m, rows);
  lower.clear();
  upper.clear();

  std::vector<int> count(m), single;
  const auto fewest = [&](const Grouped<Real>& groups, const std::vector<int>& across, const std::vector<int>& done) {
    single.clear();
    for (int k = 0; k < m; ++k) {
      count[k] = 0;
      if (done[k] >= 0) continue;
      for (const auto& entry : groups[k]) count[k] += across[entry.at] < 0;
      if (count[k] == 1) single.push_back(k);
    }
  };
  fewest(columns, placeOf, rowOf);
  while (!single.empty()) {
    const int column = single.back();
    single.pop_back();
    for (const auto& [row, value] : columns[column]) {
      if (placeOf[row] >= 0 || !(std::abs(value) > kSmallPivot)) continue;
      settle(row, column, value);
      for (const auto& [other, coefficient] : rows[row]) {
        if (rowOf[other] >= 0) continue;
        upper.push_back({row, other, coefficient});
        if (--count[other] == 1) single.push_back(other);
      }
      break;
    }
  }
  fewest(rows, rowOf, placeOf);
  while (!single.empty()) {
    const int row = single.back();
    single.pop_back();
    for (const auto& [column, value] : rows[row]) {
      if (rowOf[column] >= 0 || !(std::abs(value) > kSmallPivot)) continue;
      settle(row, column, value);
      for (const auto& [other, coefficient] : columns[column]) {
        if (placeOf[other] >= 0) continue;
        lower.push_back({other, row, coefficient / value});
        if (--count[other] == 1) single.push_back(other);
      }
      break;
    }
  }
}

template <class Real>
void BasisFactor<Real>::eliminate() {
  const int m = static_cast<int>(rowOf.size());
  kernel.start(m);
  for (int k = 0; k < m; ++k) {
    if (rowOf[k] >= 0) continue;
    for (const auto& [row, value] : columns[k])
      if (placeOf[row] < 0) kernel.add(row, k, value);
  }
  kernel.ready();
  while (static_cast<int>(order.size()) < m) {
    const auto pivot = kernel.choose();
    if (pivot.row < 0) return;
    kernel.eliminate(pivot, lower);
    settle(pivot.row, pivot.column, pivot.value);
    for (const auto& [column, value] : kernel.row(pivot.row)) upper.push_back({pivot.row, column, value});
  }
}

template <class Real>
void BasisFactor<Real>::factor(const BoundedProblem& problem, std::vector<int>& basic) {
  const int m = problem.rows;
  exchanges.clear();
  exchanged.clear();
  order.clear();
  pivots.assign(m, 1);
  rowOf.assign(m, -1);
  placeOf.assign(m, -1);
  peel(problem, basic);
  if (static_cast<int>(order.size()) < m) eliminate();

  // Columns that are left depend on the others.
  std::erase_if(upper, [this](const auto& entry) { return rowOf[entry.column] < 0; });
  std::vector<int> sorted(m);
  for (int row = 0; row < m; ++row) {
    sorted[row] = placeOf[row] >= 0 ? basic[placeOf[row]] : problem.columns + row;
    if (placeOf[row] < 0) order.push_back(row);
  }
  basic.swap(sorted);
  for (auto& entry : upper) entry.column = rowOf[entry.column];
  groupByRow<Real>(lower, m, lowerByRow);
  groupByColumn<Real>(lower, m, lowerByColumn);
  groupByRow<Real>(upper, m, upperByRow);
  groupByColumn<Real>(upper, m, upperByColumn);
}

template <class Real>
void BasisFactor<Real>::forward(std::vector<Real>& v) const {
  for (const int row : order) {
    const Real value = v[row];
    if (value == 0) continue;
    for (const auto& [at, factor] : lowerByColumn[row]) v[at] -= factor * value;
  }
  for (std::size_t k = order.size(); k-- > 0;) {
    const int row = order[k];
    if (v[row] == 0) continue;
    const Real value = v[row] /= pivots[row];
    for (const auto& [at, factor] : upperByColumn[row]) v[at] -= factor * value;
  }
  std::size_t begin = 0;
  for (const auto& [row, pivot, end] : exchanges) {
    if (v[row] != 0) {
      const Real value = v[row] /= pivot;
      for (std::size_t k = begin; k < end; ++k) v[exchanged[k].at] -= exchanged[k].value * value;
    }
    begin = end;
  }
}

template <class Real>
void BasisFactor<Real>::backward(std::vector<Real>& v) const {
  for (std::size_t e = exchanges.size(); e-- > 0;) {
    Real sum = v[exchanges[e].row];
    for (std::size_t k = e == 0 ? 0 : exchanges[e - 1].end; k < exchanges[e].end; ++k)
      sum -= exchanged[k].value * v[exchanged[k].at];
    v[exchanges[e].row] = sum / exchanges[e].pivot;
  }
  for (const int row : order) {
    if (v[row] == 0) continue;
    const Real value = v[row] /= pivots[row];
    for (const auto& [at, factor] : upperByRow[row]) v[at] -= factor * value;
  }
  for (std::size_t k = order.size(); k-- > 0;) {
    const Real value = v[order[k]];
    if (value == 0) continue;
    for (const auto& [at, factor] : lowerByRow[order[k]]) v[at] -= factor * value;
  }
}

template <class Real>
void BasisFactor<Real>::replace(int row, const std::vector<Real>& column) {
  for (std::size_t i = 0; i < column.size(); ++i)
    if (column[i] != 0 && static_cast<int>(i) != row) exchanged.push_back({static_cast<int>(i), column[i]});
  exchanges.push_back({row, column[row], exchanged.size()});
}

template <class Real>
bool BasisFactor<Real>::worn() const {
  return exchanges.size() >= kMostExchanges ||
         exchanged.size() > kWork * (lowerByRow.entries.size() + upperByRow.entries.size() + order.size());
}

template class BasisFactor<double>;
template class BasisFactor<long double>;

}  // namespace LineProg
