// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "frame/function_ref.h"

namespace Search {

/// Sizes of the two lists of a candidate.
struct Split {
  std::size_t numerator, denominator;
};

/// Visits every pair of an increasing numerator list and an increasing denominator list of positions below `count`, the
/// last position moving fastest. `visit` gets the positions of both lists, one after another; `stopped` is asked before
/// every one.
void walk(const Split& split, std::size_t count, FunctionRef<bool()> stopped,
          FunctionRef<void(std::span<const uint32_t>)> visit);

}  // namespace Search
