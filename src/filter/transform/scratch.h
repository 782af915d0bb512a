// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>

#include "filter/transform/fourier.h"

namespace Filter {

/// Room for n complex numbers, not initialised.
class Scratch {
 public:
  explicit Scratch(std::size_t count) : n(count), values(std::make_unique_for_overwrite<double[]>(2 * count)) {}

  Split split() { return {values.get(), values.get() + n}; }

 private:
  std::size_t n;
  std::unique_ptr<double[]> values;
};

}  // namespace Filter
