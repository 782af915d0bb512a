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

/// Logarithms of the shifted columns, a row a data point.
Vectors logsOf(const Vectors& columns, std::span<const double> shift) {
  Vectors logs(columns.front().size(), std::vector<double>(columns.size()));
  for (std::size_t i = 0; i < logs.size(); ++i)
    for (std::size_t k = 0; k < columns.size(); ++k) logs[i][k] = std::log(columns[k][i] + shift[k]);
  return logs;
}

class SurfaceFit {
 public:
  SurfaceFit(ExpressSearch_c& search, const ImplicitPowers& powers)
      : owner(search), equation(powers), points(logsOf(search.columns, search.columnShift)), at(points) {}

  void run() {
    const std::size_t rows = points.size();
    Solver::SolverByDogLeg_c& solver =
        owner.makeSolver(static_cast<int32_t>(equation.size()), static_cast<int32_t>(rows + 1));
    solver.resFun = [this](std::span<const double> params, std::span<double> residuals) { calc(params, residuals); };
    solver.jacFun = [this](std::span<const double> params, std::span<double> jacobian) { derive(params, jacobian); };
    OptimizerByNbird_c flock(solver, owner.rng, owner.bird);
    const auto draw = [&](std::span<double> place) {
      drawExponents(place);
      approach(solver, place);
    };
    std::vector<double> point(equation.size(), 1.0);
    approach(solver, point);
    flock.search(point, draw, owner.limits.error, [this] { return owner.stopped(); });
    judge(flock.bestPoint());
  }

 private:
  /// Differences from the last column, and the gauge: the equation may be multiplied by any factor, so that its
  /// coefficients are held to a sum of squares of 1.
  void calc(std::span<const double> params, std::span<double> residuals) const {
    const std::vector<double>& last = owner.columns.back();
    for (std::size_t i = 0; i < points.size(); ++i) residuals[i] = solved(params, i) - last[i];
    double square = params.back() * params.back();
    for (const auto& term : equation.all()) square += params[term.coef] * params[term.coef];
    residuals.back() = square - 1.0;
  }

  void derive(std::span<const double> params, std::span<double> jacobian) {
    const std::size_t n = params.size();
    for (std::size_t i = 0; i < points.size(); ++i) {
      at[i].back() = rounds == 1 ? points[i].back() : equation.solve(params, points[i]);
      equation.gradient(params, at[i], jacobian.subspan(i * n, n));
    }
    const std::span<double> gauge = jacobian.last(n);
    std::ranges::fill(gauge, 0.0);
    for (const auto& term : equation.all()) gauge[term.coef] = 2.0 * params[term.coef];
    gauge.back() = 2.0 * params.back();
  }

  double solved(std::span<const double> params, std::size_t i) const {
    return std::exp(equation.solve(params, points[i], rounds)) - owner.columnShift.back();
  }

  /// From given exponents to a start: the coefficients by a linear fit, then a fit of the first approximation to the
  /// solution, which is smooth also where a surface far from the data has no solution.
  void approach(Solver::SolverByDogLeg_c& solver, std::span<double> params) {
    fitCoefficients(params);
    rounds = 1;
    solver.solve(params);
    rounds = ImplicitPowers::kMostRounds;
    if (std::isfinite(solver.error)) std::ranges::copy(solver.var, params.begin());
  }

  /// Exponents from -1 to 3 in halves, without 0: where most laws have them.
  void drawExponents(std::span<double> params) {
    static constexpr double kExponents[] = {-1.0, -0.5, 0.5, 1.0, 1.5, 2.0, 2.5, 3.0};
    const UniformDistribution uniform;
    for (const auto& term : equation.all())
      for (std::size_t f = 1; f <= term.factors; ++f)
        params[term.coef + f] = kExponents[static_cast<std::size_t>(uniform(owner.rng) * std::size(kExponents))];
  }

  /// For given exponents the coefficients follow from a linear fit with c = 1, brought to the gauge.
  void fitCoefficients(std::span<double> params) const {
    const auto terms = equation.all();
    Vectors rows(terms.size(), std::vector<double>(points.size()));
    for (std::size_t k = 0; k < terms.size(); ++k)
      for (std::size_t i = 0; i < points.size(); ++i) rows[k][i] = ImplicitPowers::basis(terms[k], params, points[i]);
    const std::vector<double> coef = linearFit(rows, std::vector<double>(points.size(), -1.0));
    double square = 1.0;
    for (const double c : coef) square += c * c;
    const bool usable = std::isfinite(square);
    const double factor = 1.0 / std::sqrt(usable ? square : static_cast<double>(terms.size() + 1));
    for (std::size_t k = 0; k < terms.size(); ++k) params[terms[k].coef] = (usable ? coef[k] : 1.0) * factor;
    params.back() = factor;
  }

  void judge(std::span<const double> params) {
    std::vector<double> fitted(points.size());
    for (std::size_t i = 0; i < points.size(); ++i) fitted[i] = solved(params, i);
    owner.judgeAndKeep(targetOf(owner.columns.back()), fitted, [&](Result& result) {
      result.numCoef.assign(params.begin(), params.end());
      result.denCoef = owner.columnShift;
      result.numIdx = {static_cast<int32_t>(owner.columns.size() - 1)};
    });
  }

  ExpressSearch_c& owner;
  const ImplicitPowers& equation;
  int rounds = ImplicitPowers::kMostRounds;
  Vectors points;  ///< logarithms
  Vectors at;      ///< the same, the last one being its solution
};

}  // namespace

void searchPowerSurface(ExpressSearch_c& search) {
  if (!fitsRows(search.maxTerms, search.columns.front().size())) return;
  const auto budget = static_cast<std::size_t>(std::max(search.maxTerms, 0));
  const auto equation = ImplicitPowers::ofKind(search.kind, search.columns.size(), budget);
  if (equation && !search.stopped()) SurfaceFit(search, *equation).run();
}

void evaluatePowerSurface(const SearchSettings& data, const Result& result, std::span<double> out) {
  const auto equation = ImplicitPowers::ofKind(result.kind, data.columns.size(), result.numCoef.size());
  if (!equation || result.denCoef.size() != data.columns.size()) return fillNaN(out);
  const Vectors points = logsOf(data.columns, result.denCoef);
  for (std::size_t i = 0; i < out.size(); ++i)
    out[i] = std::exp(equation->solve(result.numCoef, points[i])) - result.denCoef.back();
}

}  // namespace Search
