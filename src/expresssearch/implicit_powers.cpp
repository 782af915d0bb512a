// SPDX-License-Identifier: Apache-2.0
#include "expresssearch/implicit_powers.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "frame/numbers.h"

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

double ImplicitPowers::basis(const Term& term, std::span<const double> params, std::span<const double> logs) {
  double exponent = params[term.coef + 1] * logs[term.columns[0]];
  if (term.factors == 2) exponent += params[term.coef + 2] * logs[term.columns[1]];
  return std::exp(exponent);
}

/// The power with which the last column stands in a term.
double ImplicitPowers::lastExponent(const Term& term, std::span<const double> params) const {
  double exponent = 0.0;
  for (std::size_t f = 0; f < term.factors; ++f)
    if (term.columns[f] == last) exponent += params[term.coef + 1 + f];
  return exponent;
}

/// Newton's method for the logarithm of the last column, which keeps it positive, from the value that is there. No step
/// more than halves or doubles it.
double ImplicitPowers::solve(std::span<const double> params, std::span<const double> logs, int rounds) const {
  constexpr double kMost = std::numbers::ln2, kSettled = 1e-7;  // then the next step is below rounding
  constexpr double kIndependent = 1e-6;
  struct Part {
    double value, exponent;
  };
  double rest = params.back(), size = std::abs(rest);
  std::vector<Part> parts;
  parts.reserve(terms.size());
  for (const Term& term : terms) {
    const double value = params[term.coef] * basis(term, params, logs), exponent = lastExponent(term, params);
    size += std::abs(value);
    if (exponent == 0.0)
      rest += value;
    else
      parts.push_back({value, exponent});
  }
  double moved = 0.0;
  for (int round = 0; round < rounds; ++round) {
    double value = rest, slope = 0.0;
    for (const Part& part : parts) {
      const double now = part.value * (moved == 0.0 ? 1.0 : std::exp(part.exponent * moved));
      value += now;
      slope += now * part.exponent;
    }
    if (!(std::abs(slope) > kIndependent * size)) return kNaN;
    const double step = std::clamp(-value / guarded(slope), -kMost, kMost);
    moved += step;
    if (std::abs(step) < kSettled) break;
  }
  return logs[last] + moved;
}

/// dz/dp = -(dF/dp)/(dF/dz), by the implicit function theorem.
void ImplicitPowers::gradient(std::span<const double> params, std::span<const double> logs,
                              std::span<double> row) const {
  double slope = 0.0;  // by the logarithm of the last column
  for (const Term& term : terms) {
    const double value = basis(term, params, logs);
    row[term.coef] = value;
    for (std::size_t f = 0; f < term.factors; ++f)
      row[term.coef + 1 + f] = params[term.coef] * value * logs[term.columns[f]];
    slope += params[term.coef] * value * lastExponent(term, params);
  }
  row.back() = 1.0;
  const double factor = -std::exp(logs[last]) / guarded(slope);
  for (double& derivative : row) derivative *= factor;
}

}  // namespace Search
