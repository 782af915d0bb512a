// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <random>
#include <span>
#include <vector>

#include "expresssearch/flock.h"

namespace Search {

/// Peaks over a constant: c + sum a exp(-((x-u)/s)^2/2) + sum h/((x-p)^2 + w^2). The parameters are the Gaussian
/// triples (a, u, s), the Lorentzian triples (h, p, w) and c. Widths s and w are kept positive.
class MulPeak2D_c {
 public:
  MulPeak2D_c(std::span<const double> xs, std::span<const double> ys, std::size_t gaussPeaks, std::size_t lorentzPeaks)
      : x(xs), y(ys), gauss(gaussPeaks), lorentz(lorentzPeaks) {}

  std::size_t size() const { return 3 * (gauss + lorentz) + 1; }  ///< number of parameters

  /// Fits by a flock over `solver`, which has been made for size() variables and a residual a point; the best error is
  /// returned, at or below `target` as soon as the flock finds such a fit.
  double fit(Solver::SolverByDogLeg_c& solver, std::mt19937& rng, const OptimizerByNbird_c::Settings& flock,
             double target, FunctionRef<bool()> stopped);

  std::span<const double> params() const { return best; }
  /// Values of parameters at points; as many as out has.
  void values(std::span<const double> parameters, std::span<const double> points, std::span<double> out) const;

 private:
  struct Point {
    double shape, byCentre, byWidth;  ///< the peak of height 1 and its derivatives
  };
  Point peak(std::size_t k, std::span<const double> parameters, double at) const;

  void jacobian(std::span<const double> parameters, std::span<double> rows) const;
  void startPoint(std::span<double> parameters) const;
  void draw(std::mt19937& rng, std::span<double> parameters) const;
  std::vector<double> fitHeights(std::span<double> parameters, std::span<const std::size_t> peaks) const;

  std::span<const double> x, y;
  std::size_t gauss, lorentz;
  std::vector<double> best;
};

}  // namespace Search
