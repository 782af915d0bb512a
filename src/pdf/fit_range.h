// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <span>

namespace PDF {

/// A sample as the start ranges see it: ascending points with their empirical distribution function.
struct Sample {
  explicit Sample(std::span<const double> points, std::span<const double> cdf = {}) : x(points), cdf(cdf) {
    if (x.empty()) return;
    x1 = x.front(), xn = x.back(), xm = x[x.size() / 2];
    D = xn - x1;
    W = std::max(10.0, 8 * D);
    low = x1 - W, high = xn + W, wide = D + 2 * W;
  }

  std::span<const double> x, cdf;
  double x1 = 0, xn = 0, xm = 0;  ///< ends and middle point; 0 without data
  double D = 0;                   ///< xn - x1
  double W = 10;                  ///< the width by which a location may leave the data
  double low = -10, high = 10;    ///< x1 - W, xn + W
  double wide = 20;               ///< high - low
};

/// Bounds and start of a fit, seen in the caller's vectors.
struct FitRange {
  std::span<double> lower, upper, start;

  void set(std::initializer_list<double> low, std::initializer_list<double> high,
           std::initializer_list<double> first) const {
    std::copy(low.begin(), low.end(), lower.begin());
    std::copy(high.begin(), high.end(), upper.begin());
    std::copy(first.begin(), first.end(), start.begin());
  }
};

/// A start that a straight line through transformed quantiles gives.
struct QuantileStart {
  std::array<double, 2> value;
  std::size_t count = 2;
  int positive = -1;      ///< index of the parameter that must not be negative
  double floor = 0;       ///< its lower bound
  double leastUpper = 0;  ///< if floor is positive, the least upper bound of that parameter

  bool finite() const {
    return std::all_of(value.begin(), value.begin() + static_cast<std::ptrdiff_t>(count),
                       [](double v) { return std::isfinite(v); });
  }
  /// Enters the values as the start, with bounds around each.
  void apply(const FitRange& range) const;
};

/// @{ The quantile lines of the distributions that have one; the values are not finite when the line fails.
QuantileStart quantileArcSin(const Sample& s);
QuantileStart quantileCosine(const Sample& s);
QuantileStart quantileExponential(const Sample& s);
QuantileStart quantileGumbel(const Sample& s);
QuantileStart quantileHalfLogistic(const Sample& s);
QuantileStart quantileHalfNormal(const Sample& s);
QuantileStart quantileInverseRayleigh(const Sample& s);
QuantileStart quantileLevy(const Sample& s);
QuantileStart quantileNormal(const Sample& s);
QuantileStart quantileSigmod(const Sample& s);
QuantileStart quantileUniform(const Sample& s);
/// @}

}  // namespace PDF
