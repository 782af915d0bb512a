// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>
#include <vector>

#include "array/dispatch.h"

namespace ArrayFun {
namespace {

// NaN has no place in an order: such elements go to the end in either direction, the others are sorted.
template <class Element, class ValueOf>
void sortBy(Element* first, Element* last, bool descending, ValueOf valueOf) {
  Element* numbers = std::partition(first, last, [&](const Element& e) { return !std::isnan(valueOf(e)); });
  if (descending)
    std::sort(first, numbers, [&](const Element& a, const Element& b) { return valueOf(a) > valueOf(b); });
  else
    std::sort(first, numbers, [&](const Element& a, const Element& b) { return valueOf(a) < valueOf(b); });
}

}  // namespace

void sortForValue(double* values, int32_t count, bool descending) {
  if (count > 0) sortBy(values, values + count, descending, [](double value) { return value; });
}

void sortForIndex(const double* values, int32_t count, bool descending, uint32_t* indices) {
  struct Pair {
    double value;
    uint32_t place;
  };
  if (count <= 0) return;
  std::vector<Pair> pairs(static_cast<std::size_t>(count));
  for (int32_t i = 0; i < count; ++i) pairs[static_cast<std::size_t>(i)] = {values[i], static_cast<uint32_t>(i)};
  sortBy(pairs.data(), pairs.data() + count, descending, [](const Pair& pair) { return pair.value; });
  for (std::size_t i = 0; i < pairs.size(); ++i) indices[i] = pairs[i].place;
}

}  // namespace ArrayFun
