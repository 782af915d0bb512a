// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>

namespace NetWork {

/// sqrt(sum v^2) of the values that forEach(f) hands to f. It is called again, to scale them, where the squares leave
/// the range of doubles.
template <class ForEach>
double rootOfSquares(const ForEach& forEach) {
  double squares = 0, largest = 0;
  forEach([&](double v) { squares += v * v; });
  if (squares > 1e-280 && squares < 1e290) return std::sqrt(squares);
  forEach([&](double v) { largest = std::max(largest, std::abs(v)); });
  if (largest == 0 || !std::isfinite(largest) || std::isnan(squares)) return std::sqrt(squares);
  squares = 0;
  forEach([&](double v) { squares += (v / largest) * (v / largest); });
  return largest * std::sqrt(squares);
}

}  // namespace NetWork
