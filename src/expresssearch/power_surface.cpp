// SPDX-License-Identifier: Apache-2.0
// Kinds 61 and 62: implicit surfaces of powers over the shifted columns, fitted by the flock.
#include <algorithm>
#include <cmath>

#include "expresssearch/express_search.h"
#include "expresssearch/flock.h"
#include "expresssearch/implicit_powers.h"
#include "expresssearch/kinds.h"
#include "expresssearch/linear_fit.h"

namespace Search {
namespace {

/// The shifted columns, a row a data point.
Vectors shiftedPoints(const Vectors& columns, std::span<const double> shift) {
  Vectors points(columns.front().size(), std::vector<double>(columns.size()));
  for (std::size_t i = 0; i < points.size(); ++i)
    for (std::size_t k = 0; k < columns.size(); ++k) points[i][k] = columns[k][i] + shift[k];
  return points;
}

class SurfaceFit {
 public:
  SurfaceFit(ExpressSearch_c& search, const ImplicitPowers& powers)
      : owner(search), equation(powers), points(shiftedPoints(search.columns, search.columnShift)) {}

  void run() {
    const std::size_t rows = points.size();
    Solver::SolverByDogLeg_c& solver =
        owner.makeSolver(static_cast<int32_t>(equation.size()), static_cast<int32_t>(rows + 1));
    solver.resFun = [this](std::span<const double> params, std::span<double> residuals) { calc(params, residuals); };
    solver.jacFun = [this](std::span<const double> params, std::span<double> jacobian) { derive(params, jacobian); };
    OptimizerByNbird_c flock(solver, owner.rng, owner.bird);
    std::vector<double> point(equation.size(), 1.0);
    fitCoefficients(point);
    flock.search(
        point, [this](std::span<double> place) { draw(place); }, owner.limits.error,
        [this] { return owner.stopped(); });
    judge(flock.bestPoint());
  }

 private:
  /// Differences from the last column, and the gauge: the equation may be multiplied by any factor, so that its
  /// coefficients are held to a sum of squares of 1.
  void calc(std::span<const double> params, std::span<double> residuals) const {
    for (std::size_t i = 0; i < points.size(); ++i) residuals[i] = equation.solve(params, points[i]) - points[i].back();
    double square = params.back() * params.back();
    for (const auto& term : equation.all()) square += params[term.coef] * params[term.coef];
    residuals.back() = square - 1.0;
  }

  void derive(std::span<const double> params, std::span<double> jacobian) const {
    const std::size_t n = params.size();
    for (std::size_t i = 0; i < points.size(); ++i)
      equation.gradient(params, points[i], equation.solve(params, points[i]), jacobian.subspan(i * n, n));
    const std::span<double> gauge = jacobian.last(n);
    std::ranges::fill(gauge, 0.0);
    for (const auto& term : equation.all()) gauge[term.coef] = 2.0 * params[term.coef];
    gauge.back() = 2.0 * params.back();
  }

  /// Exponents anywhere from -1 to 3, in halves: where most laws have them.
  void draw(std::span<double> params) {
    const UniformDistribution uniform;
    for (const auto& term : equation.all())
      for (std::size_t f = 1; f <= term.factors; ++f)
        params[term.coef + f] = std::floor(uniform(owner.rng) * 9.0) * 0.5 - 1.0;
    fitCoefficients(params);
  }

  /// For given exponents the coefficients follow from a linear fit with c = 1, brought to the gauge.
  void fitCoefficients(std::span<double> params) const {
    const auto terms = equation.all();
    Vectors rows(terms.size(), std::vector<double>(points.size()));
    std::vector<double> bases(terms.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
      equation.bases(params, points[i], bases);
      for (std::size_t k = 0; k < terms.size(); ++k) rows[k][i] = bases[k];
    }
    const std::vector<double> coef = linearFit(rows, std::vector<double>(points.size(), -1.0));
    double square = 1.0;
    for (const double c : coef) square += c * c;
    const bool usable = std::isfinite(square);
    const double factor = 1.0 / std::sqrt(usable ? square : static_cast<double>(terms.size() + 1));
    for (std::size_t k = 0; k < terms.size(); ++k) params[terms[k].coef] = (usable ? coef[k] : 1.0) * factor;
    params.back() = factor;
  }

  void judge(std::span<const double> params) {
    const std::size_t last = owner.columns.size() - 1;
    std::vector<double> fitted(points.size());
    for (std::size_t i = 0; i < points.size(); ++i)
      fitted[i] = equation.solve(params, points[i]) - owner.columnShift[last];
    owner.judgeAndKeep(targetOf(owner.columns[last]), fitted, [&](Result& result) {
      result.numCoef.assign(params.begin(), params.end());
      result.denCoef = owner.columnShift;
      result.numIdx = {static_cast<int32_t>(last)};
    });
  }

  ExpressSearch_c& owner;
  const ImplicitPowers& equation;
  Vectors points;
};

}  // namespace

void searchPowerSurface(ExpressSearch_c& search) {
  const auto budget = static_cast<std::size_t>(std::max(search.maxTerms, 0));
  if (budget > search.columns.front().size()) return;
  const auto equation = ImplicitPowers::ofKind(search.kind, search.columns.size(), budget);
  if (equation && !search.stopped()) SurfaceFit(search, *equation).run();
}

void evaluatePowerSurface(const SearchSettings& data, const Result& result, std::span<double> out) {
  const auto equation = ImplicitPowers::ofKind(result.kind, data.columns.size(), result.numCoef.size());
  if (!equation || result.denCoef.size() != data.columns.size()) return fillNaN(out);
  const Vectors points = shiftedPoints(data.columns, result.denCoef);
  for (std::size_t i = 0; i < out.size(); ++i)
    out[i] = equation->solve(result.numCoef, points[i]) - result.denCoef.back();
}

}  // namespace Search
