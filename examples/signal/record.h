// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

using Series = std::vector<double>;

inline int32_t count(const Series& x) { return static_cast<int32_t>(x.size()); }

/// An evenly sampled record and its parts: value = trend + season + residual.
struct Record {
  std::string name;  ///< of the column
  double rate = 1;   ///< samples a unit of time
  Series time, value;
  Series trend, growth;       ///< Whittaker's line, and its derivative
  Series season;              ///< mean course of one unit of time
  Series residual;            ///< what is left
  Series level;               ///< value less a cubic: what filters and spectrum see
  Series band, envelope;      ///< around the greatest peak of the spectrum
  Series designed, recursed;  ///< level through the FIR filter, moved by its delay, and through Butterworth's
};

/// Reads a column of a CSV file with a header. A first column of the form 1958-03 gives the time, otherwise time starts
/// at 0. Throws Complaint, with file, line and value.
Record readRecord(const std::string& path, const std::string& column, double rate);

/// Fills trend, growth, season, residual and level.
void decompose(Record& record);

std::string recordSection(const Record& record);

/// All series as CSV. Throws Complaint.
void writeCsv(const std::string& path, const Record& record);
