// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <vector>

namespace Search {

/// What a candidate is held against: the data, its mean, its variance (divided by n).
struct Target {
  std::span<const double> values;
  double mean, variance;
};

double meanOf(std::span<const double> values);
double varianceOf(std::span<const double> values, double mean);
Target targetOf(std::span<const double> values);

/// A judged fit. What is not finite has kNoError and no correlation.
struct Judgement {
  double error;  ///< sum of squares of data - fitted
  double fit;    ///< correlation of data and fitted
};
inline constexpr double kNoError = 1e300;

Judgement judge(const Target& target, std::span<const double> fitted);
/// The same for a sum of squares that is known already.
Judgement judge(const Target& target, std::span<const double> fitted, double error);

}  // namespace Search
