// SPDX-License-Identifier: Apache-2.0
#include "prog/line/tableau_row.h"

#include <algorithm>

namespace LineProg {

namespace {

constexpr std::size_t kAlwaysDense = 64;  // columns

}  // namespace

template <class Real>
TableauRow<Real>::TableauRow(int basic, Real constant, const std::vector<std::pair<int, Real>>& terms)
    : var(basic), value(constant) {
  for (const auto& [slot, coefficient] : terms) at.push_back(slot);
  std::sort(at.begin(), at.end());
  at.erase(std::unique(at.begin(), at.end()), at.end());
  coef.assign(at.size(), 0.0);
  for (const auto& [slot, coefficient] : terms) coef[find(slot)] += coefficient;
}

template <class Real>
std::size_t TableauRow<Real>::find(int slot) const {
  return static_cast<std::size_t>(std::lower_bound(at.begin(), at.end(), slot) - at.begin());
}

template <class Real>
Real TableauRow<Real>::coefficient(int slot) const {
  if (dense) return coef[slot];
  const std::size_t place = find(slot);
  return holds(place, slot) ? coef[place] : 0;
}

template <class Real>
void TableauRow<Real>::set(int slot, Real coefficient) {
  if (dense) {
    coef[slot] = coefficient;
    return;
  }
  const std::size_t place = find(slot);
  if (holds(place, slot)) {
    coef[place] = coefficient;
    return;
  }
  at.insert(at.begin() + static_cast<std::ptrdiff_t>(place), slot);
  coef.insert(coef.begin() + static_cast<std::ptrdiff_t>(place), coefficient);
}

template <class Real>
void TableauRow<Real>::erase(int slot) {
  if (dense) {
    coef[slot] = 0;
    return;
  }
  const std::size_t place = find(slot);
  if (!holds(place, slot)) return;
  at.erase(at.begin() + static_cast<std::ptrdiff_t>(place));
  coef.erase(coef.begin() + static_cast<std::ptrdiff_t>(place));
}

template <class Real>
void TableauRow<Real>::makeDense(std::size_t columns) {
  std::vector<Real> all(columns, 0.0);
  for (std::size_t k = 0; k < at.size(); ++k) all[at[k]] = coef[k];
  coef = std::move(all);
  at.clear();
  at.shrink_to_fit();
  dense = true;
}

template <class Real>
void TableauRow<Real>::trim(std::size_t columns) {
  if (!dense && (columns <= kAlwaysDense || at.size() * 4 > columns)) makeDense(columns);
}

template <class Real>
void TableauRow<Real>::addToDense(Real factor, const TableauRow& other) {
  Real* to = coef.data();
  const Real* from = other.coef.data();
  const std::size_t n = other.coef.size();
  if (other.dense) {
    for (std::size_t j = 0; j < n; ++j) to[j] = coefficientSum(to[j], factor * from[j]);
  } else {
    for (std::size_t k = 0; k < n; ++k) to[other.at[k]] = coefficientSum(to[other.at[k]], factor * from[k]);
  }
}

template <class Real>
void TableauRow<Real>::addScaled(Real factor, const TableauRow& other, int slot, std::size_t columns, Spare& spare) {
  if (!dense && other.dense) makeDense(columns);
  if (dense) {
    if (slot != kNone) coef[slot] = 0;
    addToDense(factor, other);
    return;
  }
  spare.at.clear();
  spare.coef.clear();
  std::size_t a = 0, b = 0;
  const auto put = [&spare](int where, Real coefficient) {
    if (coefficient == 0) return;
    spare.at.push_back(where);
    spare.coef.push_back(coefficient);
  };
  while (a < at.size() || b < other.at.size()) {
    if (b == other.at.size() || (a < at.size() && at[a] < other.at[b])) {
      if (at[a] != slot) put(at[a], coef[a]);
      ++a;
    } else {
      const bool both = a < at.size() && at[a] == other.at[b];
      const Real old = both && at[a] != slot ? coef[a] : 0;
      put(other.at[b], coefficientSum(old, factor * other.coef[b]));
      a += both;
      ++b;
    }
  }
  at.swap(spare.at);
  coef.swap(spare.coef);
  trim(columns);
}

template <class Real>
void TableauRow<Real>::solveFor(int slot, Real inverse) {
  value *= -inverse;
  if (value == 0) value = 0;  // no negative zero
  for (Real& coefficient : coef) coefficient *= -inverse;
  coef[dense ? static_cast<std::size_t>(slot) : find(slot)] = inverse;
}

template class TableauRow<double>;
template class TableauRow<long double>;

}  // namespace LineProg
