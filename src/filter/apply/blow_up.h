// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>

namespace Filter {

/// Whether a value ends a filter's run: NaN, or beyond 1e100 in size.
inline bool blownUp(double value) { return !(std::abs(value) <= 1e100); }

/// The coefficients in front of the first that is not finite. A causal sum meets that one at its own place, whatever
/// the samples hold: the values before are sound, and there the run ends.
inline std::span<const double> finitePart(std::span<const double> coefficients) {
  const auto bad = std::ranges::find_if(coefficients, [](double c) { return !std::isfinite(c); });
  return coefficients.first(static_cast<std::size_t>(bad - coefficients.begin()));
}

/// How far a run to `to` comes with them.
inline int32_t soundEnd(std::span<const double> coefficients, int32_t to) {
  const std::size_t sound = finitePart(coefficients).size();
  return sound == coefficients.size()
             ? to
             : static_cast<int32_t>(std::min<std::size_t>(sound, static_cast<std::size_t>(to)));
}

}  // namespace Filter
