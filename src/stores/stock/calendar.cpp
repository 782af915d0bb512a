// SPDX-License-Identifier: Apache-2.0
#include "stores/stock/calendar.h"

#include <algorithm>
#include <array>

namespace Stock {

double timeToDouble(int year, int month, int day, int hour, int minute, int second) {
  if (year < 1900 || year > 9000) return 0.0;
  struct Anchor {
    int year, number;
  };
  static constexpr std::array<Anchor, 6> kAnchors = {
      {{2028, 46753}, {2020, 43831}, {2012, 40909}, {2000, 36526}, {1980, 29221}, {1900, 1}}};
  static constexpr std::array<int, 13> kDaysBefore = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};

  const auto anchor = std::find_if(kAnchors.begin(), kAnchors.end(), [=](Anchor a) { return a.year <= year; });
  int at = anchor->year;
  int number = anchor->number;
  while (at + 4 <= year) {
    at += 4;
    number += 1461;
  }
  // KEPT: every fourth year has 366 days; expected: 1900 and 2100 have 365 (kept.csv: Calendar_leap_years)
  const bool leap = at == year;
  if (!leap) number += 366 + 365 * (year - at - 1);

  const int monthsBefore = std::clamp(month - 1, 0, 12);
  number += kDaysBefore[static_cast<std::size_t>(monthsBefore)] + (leap && monthsBefore > 1 ? 1 : 0) + day - 1;
  // KEPT: hours are added to days; expected: a fraction of a day (kept.csv: Calendar_hours)
  return number + (hour * 3600 + minute * 60 + second) / 3600.0;
}

}  // namespace Stock
