// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <utility>

#include "special/table.h"

namespace ArrayFun {

using SpecialFunction::Shape;

/// Places in the table of functions of those of one shape that have an array code, in ascending order of it.
template <Shape kShape>
consteval auto placesByCode() {
  using SpecialFunction::kFunctions;
  constexpr auto served = [](const SpecialFunction::ScalarFunction& function) {
    return function.routine.shape == kShape && function.arrayCode != SpecialFunction::kNone;
  };
  std::array<std::size_t, std::ranges::count_if(kFunctions, served)> places;
  std::size_t count = 0;
  for (std::size_t i = 0; i < std::size(kFunctions); ++i)
    if (served(kFunctions[i])) places[count++] = i;
  std::ranges::sort(places, {}, [](std::size_t i) { return kFunctions[i].arrayCode; });
  return places;
}

/// The rows of one dispatch, for a CodeTable: `Row{code, Row::loop<routine>}` for every function of the shape.
template <class Row, Shape kShape>
consteval auto rowsByCode() {
  constexpr auto places = placesByCode<kShape>();
  return [&]<std::size_t... k>(std::index_sequence<k...>) {
    return std::array{Row{SpecialFunction::kFunctions[places[k]].arrayCode,
                          Row::template loop<SpecialFunction::kRoutine<places[k]>>}...};
  }
  (std::make_index_sequence<places.size()>());
}

}  // namespace ArrayFun
