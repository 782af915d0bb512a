// SPDX-License-Identifier: Apache-2.0
#include "expresssearch/judge.h"

#include <algorithm>
#include <cmath>

#include "expresssearch/kernels.h"

namespace Search {
namespace {

double correlation(const Target& target, std::span<const double> fitted) {
  constexpr double kFlat = 1e-12;
  const auto n = static_cast<double>(fitted.size());
  const CentredSums sums = centredSums(target.values, target.mean, fitted, meanOf(fitted));
  const double variance = sums.yy / n;
  if (target.variance * variance < kFlat) return target.variance < kFlat && variance < kFlat ? 1.0 : 0.0;
  const double value = sums.xy / (n * std::sqrt(target.variance * variance));
  return std::isnan(value) ? value : std::clamp(value, -1.0, 1.0);
}

}  // namespace

double meanOf(std::span<const double> values) { return sum(values) / static_cast<double>(values.size()); }

double varianceOf(std::span<const double> values, double mean) {
  return centredSums(values, mean, values, mean).yy / static_cast<double>(values.size());
}

Target targetOf(std::span<const double> values) {
  const double mean = meanOf(values);
  return {values, mean, varianceOf(values, mean)};
}

Judgement judge(const Target& target, std::span<const double> fitted) {
  LaneSums sums{};
  addSquaredError(target.values, fitted, sums);
  return judge(target, fitted, total(sums));
}

Judgement judge(const Target& target, std::span<const double> fitted, double error) {
  const double fit = std::isfinite(error) ? correlation(target, fitted) : 0.0;
  return std::isfinite(error) && !std::isnan(fit) ? Judgement{error, fit} : Judgement{kNoError, 0.0};
}

}  // namespace Search
