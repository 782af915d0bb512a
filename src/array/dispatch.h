// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// Functions over whole arrays. A table has one row a code; a row holds the loop over the elements, instantiated for
/// its function, so that the look-up happens once an array and the function is called, or inlined, without a pointer.
namespace ArrayFun {

/// Rows by code: rows are ordered, each code once, and found in one step.
template <class Row, std::size_t kCount>
class Table {
 public:
  consteval explicit Table(const Row (&source)[kCount]) {
    places.fill(kNone);
    int before = -1;
    for (std::size_t i = 0; i < kCount; ++i) {
      if (source[i].code <= before) throw "rows out of order";
      before = source[i].code;
      rows[i] = source[i];
      places[source[i].code] = static_cast<uint8_t>(i);
    }
  }

  /// Null for a code without a row.
  const Row* find(uint8_t code) const { return places[code] == kNone ? nullptr : &rows[places[code]]; }

 private:
  static constexpr uint8_t kNone = 255;
  static_assert(kCount < kNone);
  std::array<Row, kCount> rows{};
  std::array<uint8_t, 256> places{};
};

/// The exports of orvane/array.h, by the same names.
void calcFun(const double* source, int32_t count, double* destination, uint8_t code);
void calcFun2(const double* a, int32_t countA, const double* b, int32_t countB, double* destination, uint8_t code);
void calcPoly(const double* xs, int32_t countX, const int32_t* orders, int32_t countN, double* destination,
              uint8_t code);
void randFun(double* destination, int32_t count, bool wide, uint64_t seed, uint8_t code);
void sortForIndex(const double* values, int32_t count, bool descending, uint32_t* indices);
void sortForValue(double* values, int32_t count, bool descending);
void randomShuffle(void* data, int32_t count, int32_t type);

}  // namespace ArrayFun
