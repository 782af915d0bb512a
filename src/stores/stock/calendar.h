// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Stock {

/// A serial number of a date and a time of day: days, counted so that 1900-01-01 is 1, and hours on top of them. 0 for
/// a year outside 1900 to 9000.
double timeToDouble(int year, int month, int day, int hour, int minute, int second);

}  // namespace Stock
