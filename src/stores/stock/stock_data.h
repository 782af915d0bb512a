// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "frame/base_data.h"

namespace Stock {

/// A calendar date, as the host writes it: nothing asks whether there is such a day.
struct StockTime {
  uint16_t year = 0;
  uint8_t month = 0;
  uint8_t day = 0;

  auto operator<=>(const StockTime&) const = default;
};

inline constexpr std::size_t kFieldCount = 9;
inline constexpr uint8_t kDateField = 255;

/// One day of one stock in 36 bytes: hundredths in the first seven fields, ten thousands in the last two.
struct DayData {
  StockTime time;
  std::array<int32_t, 4> prices{};
  std::array<int16_t, 3> ratios{};
  std::array<int32_t, 2> volumes{};

  void set(std::span<const double, kFieldCount> values);
  double get(uint8_t field) const;  ///< kDateField gives the date as a number of days; an unknown field NaN
};

/// One stock; its days stand in ascending order of date, each date once. Only a file may bring them in another order,
/// which they keep until they are sorted.
class StockData final : public BaseData {
 public:
  StockData(uint8_t type, int32_t code) : type(type), code(code) {}

  /// Replaces the day of this date or inserts it in its place; among days out of order, at the end.
  void setData(StockTime time, std::span<const double, kFieldCount> values);

  /// A field of the days from first to last, both inclusive, in either order, held to the days that there are.
  /// @return how many values were written
  int32_t getData(uint8_t field, int32_t first, int32_t last, double* out) const;

  void deleteData(int32_t index, int32_t count);
  bool dateIsExist(StockTime time) const;
  void sort();

  /// Indices of the first and the last day from one date to another, both inclusive, in either order; -1 for none.
  struct Range {
    int32_t first, last;
  };
  Range getTimeRange(StockTime from, StockTime to) const;

  void daysWereRead();  ///< to be told when `days` was filled from outside

  const uint8_t type;
  const int32_t code;
  std::string name;
  std::set<uint16_t> attributes;
  std::vector<DayData> days;

 private:
  using Place = std::vector<DayData>::const_iterator;

  Place placeOf(StockTime time) const;  ///< of the date's day, or where it is to be put

  bool ascending = true;
};

}  // namespace Stock
