// SPDX-License-Identifier: Apache-2.0
// Kind 60: implicit planes and quadrics, sum of A_k times monomial k + A_0 = 0, by linear fits.
#include <algorithm>
#include <cmath>
#include <optional>

#include "expresssearch/express_search.h"
#include "expresssearch/kinds.h"
#include "expresssearch/linear_fit.h"

namespace Search {
namespace {

enum class Shape { Plane, AxisQuadric, Quadric };

/// The surface that has `terms` coefficients over m columns; a budget of another size has none.
std::optional<Shape> shapeOf(std::size_t m, std::size_t terms) {
  if (m >= 1 && terms == m + 1) return Shape::Plane;
  if (m >= 1 && terms == 2 * m + 1) return Shape::AxisQuadric;
  if (m >= 2 && terms == 2 * m + 1 + m * (m - 1) / 2) return Shape::Quadric;
  return std::nullopt;
}

std::vector<double> product(const std::vector<double>& a, const std::vector<double>& b) {
  std::vector<double> out(a.size());
  std::ranges::transform(a, b, out.begin(), std::multiplies<>());
  return out;
}

/// The columns, their squares, their products in pairs.
Vectors monomials(const Vectors& columns, Shape shape) {
  Vectors rows = columns;
  if (shape != Shape::Plane)
    for (const auto& column : columns) rows.push_back(product(column, column));
  if (shape == Shape::Quadric)
    for (std::size_t i = 0; i < columns.size(); ++i)
      for (std::size_t j = i + 1; j < columns.size(); ++j) rows.push_back(product(columns[i], columns[j]));
  return rows;
}

/// A surface solved for one of its terms: for the constant, which is last and then stands for -1, or for a monomial.
struct Fit {
  std::vector<double> coef;  ///< A, of the monomials and then of the constant
  std::size_t solvedFor;
  std::vector<double> fitted;
  Judgement judged;
};

/// Values of the term that the surface is solved for.
void solvedValues(const Vectors& rows, std::span<const double> coef, std::size_t solvedFor, std::span<double> out) {
  const double factor = -1.0 / coef[solvedFor];
  const bool forConstant = solvedFor == rows.size();
  std::ranges::fill(out, forConstant ? 0.0 : coef.back() * factor);
  for (std::size_t k = 0; k < rows.size(); ++k)
    for (std::size_t i = 0; k != solvedFor && i < out.size(); ++i)
      out[i] += coef[k] * (forConstant ? 1.0 : factor) * rows[k][i];
}

Fit judgedFit(const Vectors& rows, std::vector<double> coef, std::size_t solvedFor, std::span<const double> target) {
  Fit fit{std::move(coef), solvedFor, std::vector<double>(target.size()), {}};
  solvedValues(rows, fit.coef, solvedFor, fit.fitted);
  fit.judged = judge(targetOf(target), fit.fitted);
  return fit;
}

Fit fitForConstant(const Vectors& rows) {
  const std::vector<double> target(rows.front().size(), -1.0);
  std::vector<double> coef = linearFit(rows, target);
  coef.push_back(1.0);
  return judgedFit(rows, std::move(coef), rows.size(), target);
}

Fit fitForMonomial(const Vectors& rows, std::size_t k) {
  Vectors others = rows;
  std::ranges::fill(others[k], 1.0);
  std::vector<double> coef = linearFit(others, rows[k]);
  coef.push_back(coef[k]);
  coef[k] = -1.0;
  return judgedFit(rows, std::move(coef), k, rows[k]);
}

}  // namespace

void searchSurface(ExpressSearch_c& search) {
  const std::size_t m = search.columns.size();
  const std::optional<Shape> shape = shapeOf(m, static_cast<std::size_t>(std::max(search.maxTerms, 0)));
  if (!shape || search.stopped()) return;
  const Vectors rows = monomials(search.columns, *shape);
  Fit fit = fitForConstant(rows);
  search.store.countCandidate();
  const auto largest =
      std::ranges::max_element(fit.coef.begin(), fit.coef.end() - 1, {}, [](double c) { return std::abs(c); });
  Fit other = fitForMonomial(rows, static_cast<std::size_t>(largest - fit.coef.begin()));
  search.store.countCandidate();
  if (other.judged.error < fit.judged.error) fit = std::move(other);
  search.keep(fit.judged, [&](Result& result) {
    result.numCoef = fit.coef;
    result.numIdx = {static_cast<int32_t>(fit.solvedFor)};
  });
}

void evaluateSurface(const SearchSettings& data, const Result& result, std::span<double> out) {
  const std::optional<Shape> shape = shapeOf(data.columns.size(), result.numCoef.size());
  if (!shape) return fillNaN(out);
  solvedValues(monomials(data.columns, *shape), result.numCoef, static_cast<std::size_t>(result.numIdx.front()), out);
}

}  // namespace Search
