// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>

#include "filter/transform/fourier.h"

namespace Filter {

/// Room for n complex numbers, not initialised. Both parts and a neighbour of another skew lie apart by no power of
/// two: equal low bits of their addresses would make them fight for the same places in the cache.
class Scratch {
 public:
  explicit Scratch(std::size_t count, std::size_t skew = 0)
      : n(count), start(2 * kApart * skew), values(std::make_unique_for_overwrite<double[]>(2 * n + start + kApart)) {}

  Split split() { return {values.get() + start, values.get() + start + n + kApart}; }

 private:
  static constexpr std::size_t kApart = 40;

  std::size_t n, start;
  std::unique_ptr<double[]> values;
};

}  // namespace Filter
