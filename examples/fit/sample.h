// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "handles.h"

/// A sample in ascending order, its steps and its figures.
struct Sample {
  explicit Sample(std::vector<double> data);

  double quantile(double p) const;  ///< with straight lines between the order statistics

  std::vector<double> values;  ///< ascending
  std::vector<double> xs;      ///< distinct values, ascending
  std::vector<double> cdf;     ///< share of the sample at or below xs[i]
  double mean, deviation;      ///< deviation with n-1
};

/// The values when there are `most` or fewer; otherwise `most` evenly spaced order statistics, at which the empirical
/// distribution function of all values is that of the few.
std::vector<double> thinned(std::vector<double> values, size_t most);

/// A histogram as a density: the areas of the bars sum to 1.
struct Histogram {
  explicit Histogram(const Sample& sample);

  std::vector<double> edges;    ///< [bins+1]
  std::vector<double> heights;  ///< [bins]
};

/// Largest distance between the empirical and the fitted distribution function, both sides of each step.
double largestGap(const Sample& sample, const PDFFun* fun);

/// Whether the density's integral over the sample's range is the rise of the distribution function there. In some
/// distributions the two formulas disagree, and a good fit of the one says nothing about the other.
bool densityAgrees(const Sample& sample, const PDFFun* fun);

/// Points x with P(X <= x) = p[i], found by halving; NaN where the distribution function does not pass p[i].
std::vector<double> quantiles(const PDFFun* fun, const std::vector<double>& p, double low, double high);
