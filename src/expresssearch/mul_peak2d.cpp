// SPDX-License-Identifier: Apache-2.0
#include "expresssearch/mul_peak2d.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "expresssearch/linear_fit.h"

namespace Search {

MulPeak2D_c::Point MulPeak2D_c::peak(std::size_t k, std::span<const double> parameters, double at) const {
  const double away = at - parameters[3 * k + 1], width = parameters[3 * k + 2];
  if (k < gauss) {
    const double z = away / width, shape = std::exp(-z * z * 0.5);
    return {shape, shape * z / width, shape * z * z / width};
  }
  const double shape = 1.0 / (away * away + width * width);
  return {shape, 2.0 * away * shape * shape, -2.0 * width * shape * shape};
}

void MulPeak2D_c::values(std::span<const double> parameters, std::span<const double> points,
                         std::span<double> out) const {
  for (std::size_t i = 0; i < out.size(); ++i) {
    double value = parameters.back();
    for (std::size_t k = 0; k < gauss + lorentz; ++k) value += parameters[3 * k] * peak(k, parameters, points[i]).shape;
    out[i] = value;
  }
}

void MulPeak2D_c::jacobian(std::span<const double> parameters, std::span<double> rows) const {
  for (std::size_t i = 0; i < x.size(); ++i) {
    const std::span<double> row = rows.subspan(i * size(), size());
    for (std::size_t k = 0; k < gauss + lorentz; ++k) {
      const Point point = peak(k, parameters, x[i]);
      row[3 * k] = point.shape;
      row[3 * k + 1] = parameters[3 * k] * point.byCentre;
      row[3 * k + 2] = parameters[3 * k] * point.byWidth;
    }
    row.back() = 1.0;
  }
}

double MulPeak2D_c::fit(Solver::SolverByDogLeg_c& solver, std::mt19937& rng, const OptimizerByNbird_c::Settings& flock,
                        double target, FunctionRef<bool()> stopped) {
  solver.resFun = [this](std::span<const double> parameters, std::span<double> residuals) {
    values(parameters, x, residuals);
    for (std::size_t i = 0; i < x.size(); ++i) residuals[i] -= y[i];
  };
  solver.jacFun = [this](std::span<const double> parameters, std::span<double> rows) { jacobian(parameters, rows); };
  solver.limitFun = [this](std::span<double> parameters) {  // both shapes are even in the width
    for (std::size_t k = 0; k < gauss + lorentz; ++k) parameters[3 * k + 2] = std::abs(parameters[3 * k + 2]);
  };
  OptimizerByNbird_c birds(solver, rng, flock);
  best.assign(size(), 0.0);
  startPoint(best);
  birds.search(
      best, [&](std::span<double> point) { draw(rng, point); }, target, stopped);
  best.assign(birds.bestPoint().begin(), birds.bestPoint().end());
  return birds.bestError();
}

/// Peaks side by side over the range of x.
void MulPeak2D_c::startPoint(std::span<double> parameters) const {
  const auto [least, most] = std::ranges::minmax(x);
  std::vector<std::size_t> all(gauss + lorentz);
  std::iota(all.begin(), all.end(), std::size_t{0});
  for (const std::size_t k : all) {
    parameters[3 * k + 1] = least + (most - least) * (static_cast<double>(k) + 0.5) / static_cast<double>(all.size());
    parameters[3 * k + 2] = (most - least) / (4.0 * static_cast<double>(all.size()));
  }
  fitHeights(parameters, all);
}

/// Peaks one after another in random order, each where the ones before leave much: at a point drawn by the squares of
/// the residuals, 1/100 to 1/2 of the range wide. Half of the draws begin with a base, centred up to a range outside.
void MulPeak2D_c::draw(std::mt19937& rng, std::span<double> parameters) const {
  const auto [least, most] = std::ranges::minmax(x);
  const double range = most - least;
  const UniformDistribution uniform;
  std::vector<std::size_t> order(gauss + lorentz), placed;
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::shuffle(order, rng);
  const bool base = uniform(rng) < 0.5;
  for (const std::size_t k : order) {
    std::vector<double> weight = fitHeights(parameters, placed);
    for (double& w : weight) w *= w;
    std::discrete_distribution<std::size_t> where(weight.begin(), weight.end());
    const double v = uniform(rng);
    const bool broad = base && placed.empty();
    parameters[3 * k + 1] = broad ? least + range * (3.0 * uniform(rng) - 1.0) : x[where(rng)];
    parameters[3 * k + 2] = range * (broad ? 0.5 + 1.5 * v : 0.5 * std::pow(0.02, v));
    placed.push_back(k);
  }
  fitHeights(parameters, order);
}

/// Heights and the constant are linear: for given centres and widths they are fitted at once. The others get the height
/// 0. The residuals are returned.
std::vector<double> MulPeak2D_c::fitHeights(std::span<double> parameters, std::span<const std::size_t> peaks) const {
  Vectors shapes(peaks.size() + 1, std::vector<double>(x.size(), 1.0));
  for (std::size_t k = 0; k < peaks.size(); ++k)
    for (std::size_t i = 0; i < x.size(); ++i) shapes[k][i] = peak(peaks[k], parameters, x[i]).shape;
  std::vector<double> heights = linearFit(shapes, y), rest(y.begin(), y.end());
  for (std::size_t k = 0; k <= peaks.size(); ++k) {
    if (!std::isfinite(heights[k])) heights[k] = 0.0;
    (k < peaks.size() ? parameters[3 * peaks[k]] : parameters.back()) = heights[k];
    for (std::size_t i = 0; i < x.size(); ++i) rest[i] -= heights[k] * shapes[k][i];
  }
  return rest;
}

}  // namespace Search
