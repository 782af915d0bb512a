// SPDX-License-Identifier: Apache-2.0
#include "expresssearch/implicit_powers.h"

#include <algorithm>
#include <cmath>

namespace Search {
namespace {

/// What a value is divided by: never so near to zero that it has no meaning.
double guarded(double denominator) { return std::abs(denominator) < 1e-12 ? denominator + 1e-11 : denominator; }

}  // namespace

std::optional<ImplicitPowers> ImplicitPowers::ofKind(int kind, std::size_t m, std::size_t params) {
  if (m < 2) return std::nullopt;
  ImplicitPowers equation(m);
  if (kind == 61) {
    if (params != 2 * m + 1 + 3 * m * (m - 1) / 2) return std::nullopt;
    for (std::size_t i = 0; i < m; ++i) equation.add({i});
    for (std::size_t i = 0; i < m; ++i)
      for (std::size_t j = i + 1; j < m; ++j) equation.add({i, j});
  } else {
    if (params < 5 || params % 2 == 0) return std::nullopt;
    for (std::size_t k = 0; k < params / 2; ++k) equation.add({(m - 1 + k) % m});
  }
  ++equation.count;
  return equation;
}

void ImplicitPowers::add(std::initializer_list<std::size_t> columns) {
  Term term{count, {}, columns.size()};
  std::ranges::copy(columns, term.columns);
  terms.push_back(term);
  count += 1 + columns.size();
}

double ImplicitPowers::basis(const Term& term, std::span<const double> params, std::span<const double> point) const {
  double value = std::pow(point[term.columns[0]], params[term.coef + 1]);
  if (term.factors == 2) value *= std::pow(point[term.columns[1]], params[term.coef + 2]);
  return value;
}

void ImplicitPowers::bases(std::span<const double> params, std::span<const double> point, std::span<double> out) const {
  for (std::size_t k = 0; k < terms.size(); ++k) out[k] = basis(terms[k], params, point);
}

/// Newton's method from the value that is there; no step more than halves or doubles it, so that it stays positive.
double ImplicitPowers::solve(std::span<const double> params, std::span<const double> point) const {
  std::vector<double> at(point.begin(), point.end());
  double& z = at[last];
  for (int round = 0; round < 24; ++round) {
    double value = params.back(), slope = 0.0;
    for (const Term& term : terms) {
      const double part = params[term.coef] * basis(term, params, at);
      value += part;
      for (std::size_t f = 0; f < term.factors; ++f)
        if (term.columns[f] == last) slope += part * params[term.coef + 1 + f] / z;
    }
    const double next = std::clamp(z - value / guarded(slope), 0.5 * z, 2.0 * z);
    const bool settled = std::abs(next - z) <= 1e-14 * z;
    z = next;
    if (settled || std::isnan(z)) break;
  }
  return z;
}

/// dz/dp = -(dF/dp)/(dF/dz), by the implicit function theorem.
void ImplicitPowers::gradient(std::span<const double> params, std::span<const double> point, double z,
                              std::span<double> row) const {
  std::vector<double> at(point.begin(), point.end());
  at[last] = z;
  double slope = 0.0;
  for (const Term& term : terms) {
    const double value = basis(term, params, at);
    row[term.coef] = value;
    for (std::size_t f = 0; f < term.factors; ++f) {
      row[term.coef + 1 + f] = params[term.coef] * value * std::log(at[term.columns[f]]);
      if (term.columns[f] == last) slope += params[term.coef] * value * params[term.coef + 1 + f] / z;
    }
  }
  row.back() = 1.0;
  for (double& derivative : row) derivative /= -guarded(slope);
}

}  // namespace Search
