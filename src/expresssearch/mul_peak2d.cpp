// SPDX-License-Identifier: Apache-2.0
#include "expresssearch/mul_peak2d.h"

#include <algorithm>
#include <cmath>

#include "expresssearch/kernels.h"
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
  birds.search(best, [&](std::span<double> point) { draw(rng, point); }, target, stopped);
  best.assign(birds.bestPoint().begin(), birds.bestPoint().end());
  return birds.bestError();
}

/// Peaks side by side over the range of x.
void MulPeak2D_c::startPoint(std::span<double> parameters) const {
  const auto [least, most] = std::ranges::minmax(x);
  const auto peaks = static_cast<double>(gauss + lorentz);
  for (std::size_t k = 0; k < gauss + lorentz; ++k) {
    parameters[3 * k + 1] = least + (most - least) * (static_cast<double>(k) + 0.5) / peaks;
    parameters[3 * k + 2] = (most - least) / (4.0 * peaks);
  }
  fitHeights(parameters);
}

/// Centres anywhere in the range of x, widths from a hundredth of it to all of it, by their logarithm.
void MulPeak2D_c::draw(std::mt19937& rng, std::span<double> parameters) const {
  const auto [least, most] = std::ranges::minmax(x);
  const UniformDistribution uniform;
  for (std::size_t k = 0; k < gauss + lorentz; ++k) {
    parameters[3 * k + 1] = least + (most - least) * uniform(rng);
    parameters[3 * k + 2] = (most - least) * std::pow(0.01, uniform(rng));
  }
  fitHeights(parameters);
}

/// Heights and the constant are linear: for given centres and widths they are fitted at once.
void MulPeak2D_c::fitHeights(std::span<double> parameters) const {
  const std::size_t peaks = gauss + lorentz;
  Vectors shapes(peaks + 1, std::vector<double>(x.size(), 1.0));
  for (std::size_t k = 0; k < peaks; ++k)
    for (std::size_t i = 0; i < x.size(); ++i) shapes[k][i] = peak(k, parameters, x[i]).shape;
  std::vector<double> heights = linearFit(shapes, y);
  for (double& height : heights)
    if (!std::isfinite(height)) height = 0.0;
  for (std::size_t k = 0; k < peaks; ++k) parameters[3 * k] = heights[k];
  parameters.back() = heights.back();
}

}  // namespace Search
