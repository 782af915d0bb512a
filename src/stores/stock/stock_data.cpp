// SPDX-License-Identifier: Apache-2.0
#include "stores/stock/stock_data.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "frame/numbers.h"
#include "stores/stock/calendar.h"

namespace Stock {
namespace {

constexpr double kHundredths = 100.0;
constexpr double kTenThousands = 10000.0;

// The nearest integer that the field can hold; 0 for NaN.
template <class Integer>
Integer held(double value) {
  using Limits = std::numeric_limits<Integer>;
  if (std::isnan(value)) return 0;
  return static_cast<Integer>(
      std::clamp(std::round(value), static_cast<double>(Limits::min()), static_cast<double>(Limits::max())));
}

}  // namespace

void DayData::set(std::span<const double, kFieldCount> values) {
  for (std::size_t i = 0; i < 4; ++i) prices[i] = held<int32_t>(values[i] * kHundredths);
  for (std::size_t i = 0; i < 3; ++i) ratios[i] = held<int16_t>(values[4 + i] * kHundredths);
  for (std::size_t i = 0; i < 2; ++i) volumes[i] = held<int32_t>(values[7 + i] / kTenThousands);
}

double DayData::get(uint8_t field) const {
  // KEPT: a fixed time of day is in the date; expected: a number of whole days (kept.csv: Date_time_of_day)
  if (field == kDateField) return timeToDouble(time.year, time.month, time.day, 18, 16, 39);
  if (field < 4) return prices[field] / kHundredths;
  if (field < 7) return ratios[field - 4u] / kHundredths;
  if (field < kFieldCount) return volumes[field - 7u] * kTenThousands;
  return kNaN;
}

StockData::Place StockData::placeOf(StockTime time) const {
  if (!ascending) return std::ranges::find(days, time, &DayData::time);
  if (days.empty() || days.back().time < time) return days.end();
  return std::ranges::lower_bound(days, time, {}, &DayData::time);
}

void StockData::setData(StockTime time, std::span<const double, kFieldCount> values) {
  const Place found = placeOf(time);
  const bool isNew = found == days.end() || found->time != time;
  const auto place = isNew ? days.insert(found, {.time = time}) : days.begin() + (found - days.begin());
  place->set(values);
}

int32_t StockData::getData(uint8_t field, int32_t first, int32_t last, double* out) const {
  if (days.empty()) return 0;
  const auto end = static_cast<int32_t>(days.size() - 1);
  const int32_t from = std::clamp(std::min(first, last), 0, end);
  const int32_t to = std::clamp(std::max(first, last), 0, end);
  for (int32_t i = from; i <= to; ++i) *out++ = days[static_cast<std::size_t>(i)].get(field);
  return to - from + 1;
}

void StockData::deleteData(int32_t index, int32_t count) {
  const auto size = static_cast<int64_t>(days.size());
  const int64_t from = std::clamp<int64_t>(index, 0, size);
  const int64_t to = std::clamp<int64_t>(int64_t{index} + std::max(count, 0), from, size);
  days.erase(days.begin() + from, days.begin() + to);
}

bool StockData::dateIsExist(StockTime time) const {
  const Place place = placeOf(time);
  return place != days.end() && place->time == time;
}

void StockData::sort() {
  std::ranges::stable_sort(days, {}, &DayData::time);
  ascending = true;
}

void StockData::daysWereRead() { ascending = std::ranges::is_sorted(days, {}, &DayData::time); }

StockData::Range StockData::getTimeRange(StockTime from, StockTime to) const {
  if (to < from) std::swap(from, to);
  const auto inside = [=](const DayData& day) { return from <= day.time && day.time <= to; };
  // Of days in order the first one inside is found by halves, and the last one stands before the next date outside.
  const Place first =
      ascending ? std::ranges::lower_bound(days, from, {}, &DayData::time) : std::ranges::find_if(days, inside);
  if (first == days.end() || !inside(*first)) return {-1, -1};
  const Place end = ascending ? std::upper_bound(first, days.end(), to,
                                                 [](StockTime time, const DayData& day) { return time < day.time; })
                              : std::find_if(days.rbegin(), days.rend(), inside).base();
  return {static_cast<int32_t>(first - days.begin()), static_cast<int32_t>(end - days.begin() - 1)};
}

}  // namespace Stock
