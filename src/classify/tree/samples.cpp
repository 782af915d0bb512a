// SPDX-License-Identifier: Apache-2.0
#include "classify/tree/samples.h"

#include <cmath>

namespace NetWork {

uint8_t classValueOf(double value) {
  return std::abs(value) < 0x1p63 ? static_cast<uint8_t>(static_cast<int64_t>(value)) : uint8_t{0};
}

Row::Row(const std::vector<bool>& flags, const double* values) {
  for (std::size_t i = 0; i < flags.size(); ++i) {
    if (flags[i])
      classes.push_back(classValueOf(values[i]));
    else
      reals.push_back(values[i]);
  }
}

}  // namespace NetWork
