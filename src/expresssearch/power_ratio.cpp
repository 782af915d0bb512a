// SPDX-License-Identifier: Apache-2.0
#include "expresssearch/power_ratio.h"

#include <algorithm>
#include <cmath>

namespace Search {

PowerRatio::PowerRatio(const Columns& numerator, bool numeratorPowers, const Columns& denominator, std::size_t points)
    : rows(points) {
  const auto add = [this](const Columns& columns, bool powers, bool under) {
    linear.push_back(count++);
    for (const double* column : columns) {
      linear.push_back(count);
      terms.push_back({column, count, powers ? count + 1 : kNoPower, under});
      count += powers ? 2 : 1;
    }
  };
  add(numerator, numeratorPowers, false);
  bottom = count;
  add(denominator, true, true);
}

double PowerRatio::basis(const Term& term, std::span<const double> params, std::size_t row) const {
  return term.power == kNoPower ? term.column[row] : std::pow(term.column[row], params[term.power]);
}

void PowerRatio::values(std::span<const double> params, std::span<double> out) const {
  for (std::size_t i = 0; i < out.size(); ++i) {
    double over = params[0], under = params[bottom];
    for (const Term& term : terms) (term.under ? under : over) += params[term.coef] * basis(term, params, i);
    out[i] = over / under;
  }
}

void PowerRatio::jacobian(std::span<const double> params, std::span<double> out) const {
  std::vector<double> powers(terms.size());
  for (std::size_t i = 0; i < rows; ++i) {
    double over = params[0], under = params[bottom];
    for (std::size_t k = 0; k < terms.size(); ++k) {
      powers[k] = basis(terms[k], params, i);
      (terms[k].under ? under : over) += params[terms[k].coef] * powers[k];
    }
    const std::span<double> row = out.subspan(i * count, count);
    const double byOver = 1.0 / under, byUnder = -over / (under * under);
    row[0] = byOver;
    row[bottom] = byUnder;
    for (std::size_t k = 0; k < terms.size(); ++k) {
      const Term& term = terms[k];
      row[term.coef] = powers[k] * (term.under ? byUnder : byOver);
      if (term.power == kNoPower) continue;
      const double x = term.column[i];  // x^p ln x goes to 0 with x
      row[term.power] = x > 0.0 ? row[term.coef] * params[term.coef] * std::log(x) : 0.0;
    }
  }
}

double PowerRatio::gauge(std::span<const double> params) const {
  double excess = 0.0;
  for (const std::size_t place : linear) excess += params[place] * params[place] - 1.0;
  return excess;
}

void PowerRatio::gaugeGradient(std::span<const double> params, std::span<double> row) const {
  std::ranges::fill(row, 0.0);
  for (const std::size_t place : linear) row[place] = 2.0 * params[place];
}

}  // namespace Search
