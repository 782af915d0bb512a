// SPDX-License-Identifier: Apache-2.0
#include "classify/tree/impurity.h"

#include <algorithm>

namespace NetWork {

GiniScore::GiniScore(const Samples& samples, std::span<const uint32_t> members) : labels(samples.classLabels) {
  for (const uint32_t sample : members) add(all, sample);
}

double GiniScore::score(const Side& left) const {
  const auto n = static_cast<double>(all.count);
  const auto part = [n](std::size_t count, std::size_t positive) {
    if (count == 0) return 0.0;
    const auto size = static_cast<double>(count);
    const double p1 = static_cast<double>(positive) / size;
    const double p0 = static_cast<double>(count - positive) / size;
    return (1 - (p0 * p0 + p1 * p1)) * (size / n);
  };
  return part(left.count, left.positive) + part(all.count - left.count, all.positive - left.positive);
}

DeviationScore::DeviationScore(const Samples& samples, std::span<const uint32_t> members)
    : labels(samples.realLabels), members(members) {
  for (const uint32_t sample : members) mean += labels[sample];
  mean /= static_cast<double>(members.size());
  for (const uint32_t sample : members) add(all, sample);
}

double DeviationScore::score(const Side& left) const {
  const auto part = [](std::size_t count, double sum, double squares) {
    return count == 0 ? 0.0 : std::max(0.0, squares - sum * sum / static_cast<double>(count));
  };
  return part(left.count, left.sum, left.squares) +
         part(all.count - left.count, all.sum - left.sum, all.squares - left.squares);
}

}  // namespace NetWork
