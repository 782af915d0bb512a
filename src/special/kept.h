// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <optional>

namespace SpecialFunction {

/// What belongs to an order alone, of the last eight orders that this thread asked for: orders come again while
/// arguments change. OfOrder is made from the order and holds it as its member s.
template <class OfOrder>
OfOrder& keptFor(double s) {
  constexpr std::size_t kKept = 8;
  struct Store {
    std::array<std::optional<OfOrder>, kKept> kept;
    std::size_t last = 0, oldest = 0;
  };
  thread_local Store store;
  if (auto& one = store.kept[store.last]; one && one->s == s) return *one;
  for (std::size_t i = 0; i < kKept; ++i)
    if (store.kept[i] && store.kept[i]->s == s) return *store.kept[store.last = i];
  store.last = store.oldest;
  store.oldest = (store.oldest + 1) % kKept;
  const volatile double order = s;  // made by the standard library, never by the compiler from a constant
  return store.kept[store.last].emplace(order);
}

}  // namespace SpecialFunction
