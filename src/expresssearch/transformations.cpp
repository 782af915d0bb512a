// SPDX-License-Identifier: Apache-2.0
#include "expresssearch/transformations.h"

#include <algorithm>

namespace Search {

Scaling Transformation::fit(std::span<const double> data) const {
  constexpr double kNarrow = 0.001;
  if (data.empty() || std::abs(high - low) < kNarrow) return {};
  const auto [least, most] = std::minmax_element(data.begin(), data.end());
  const double a = *least, b = *most;
  if (std::abs(b - a) < kNarrow) return {(low + high) / 2 - a, 1.0};
  const double scale = (high - low) / (b - a);
  return {low - scale * a, scale};
}

}  // namespace Search
