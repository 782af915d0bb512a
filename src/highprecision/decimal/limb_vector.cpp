// SPDX-License-Identifier: Apache-2.0
#include "highprecision/decimal/limb_vector.h"

namespace HighPrecision {

void LimbVector::grow(std::size_t places) {
  auto longer = std::make_unique_for_overwrite<int64_t[]>(places);
  std::copy(begin(), end(), longer.get());
  many = std::move(longer);
  room = places;
}

}  // namespace HighPrecision
