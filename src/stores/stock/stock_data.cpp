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

bool before(const DayData& day, StockTime time) { return day.time < time; }
bool after(StockTime time, const DayData& day) { return time < day.time; }

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

void StockData::setData(StockTime time, std::span<const double, kFieldCount> values) {
  auto place =
      days.empty() || days.back().time < time ? days.end() : std::lower_bound(days.begin(), days.end(), time, before);
  if (place == days.end() || place->time != time) place = days.insert(place, {.time = time});
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
  const auto place = std::lower_bound(days.begin(), days.end(), time, before);
  return place != days.end() && place->time == time;
}

void StockData::sort() {
  std::stable_sort(days.begin(), days.end(), [](const DayData& a, const DayData& b) { return a.time < b.time; });
}

StockData::Range StockData::getTimeRange(StockTime from, StockTime to) const {
  if (to < from) std::swap(from, to);
  const auto first = std::lower_bound(days.begin(), days.end(), from, before);
  const auto end = std::upper_bound(first, days.end(), to, after);
  if (first == end) return {-1, -1};
  return {static_cast<int32_t>(first - days.begin()), static_cast<int32_t>(end - days.begin() - 1)};
}

}  // namespace Stock
