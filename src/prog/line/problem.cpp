// SPDX-License-Identifier: Apache-2.0
#include "prog/line/problem.h"

#include <algorithm>
#include <cmath>

namespace LineProg {

namespace {

constexpr double kSmallTerm = 1e-15;

}  // namespace

LineProblem::LineProblem(std::span<const uint8_t> kinds) : allVars(kinds.size()) {
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    allVars[i].index = static_cast<int32_t>(i);
    allVars[i].varKind = kinds[i];
    if (kinds[i] > kBinary) spoilt = true;
  }
}

void LineProblem::setMaxExpress(std::span<const int32_t> indices, std::span<const double> coefs) {
  sparseObjective.clear();
  for (std::size_t k = 0; k < std::min(indices.size(), coefs.size()); ++k)
    if (!(std::abs(coefs[k]) <= kSmallTerm)) sparseObjective.push_back({coefs[k], indices[k]});
}

void LineProblem::addConstraint(std::span<const int32_t> indices, std::span<const double> coefs, uint8_t relation,
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

bool LineProblem::prepareObjective() {
  if (spoilt || sparseObjective.empty() || allVars.empty()) return false;
  objective.assign(allVars.size(), 0.0);
  for (const auto& [coefficient, var] : sparseObjective) {
    if (var < 0 || static_cast<std::size_t>(var) >= allVars.size()) return false;
    objective[var] += coefficient;
    if (!std::isfinite(objective[var])) return false;
  }
  return true;
}

double LineProblem::objectiveOf(std::span<const double> x) const {
  double value = 0;
  for (std::size_t i = 0; i < x.size(); ++i) value += objective[i] * x[i];
  return value;
}

std::vector<uint8_t> LineProblem::standing() const {
  std::vector<uint8_t> stands(allVars.size(), 0);
  for (const EquVar& row : constraints)
    for (const auto& [var, coefficient] : row.coefs) stands[var] = 1;
  return stands;
}

}  // namespace LineProg
