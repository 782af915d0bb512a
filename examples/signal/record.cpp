// SPDX-License-Identifier: Apache-2.0
#include "record.h"

#include <orvane/smooth.h>
#include <orvane/transform.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <numbers>
#include <optional>

#include "complaint.h"
#include "csv.h"
#include "page.h"
#include "svg_plot.h"
#include "view.h"

namespace {

/// 1958-03 as 1958 + 2.5/12; 0 for any other text.
double monthOf(const std::string& text) {
  int year = 0, month = 0;
  char rest = 0;
  if (std::sscanf(text.c_str(), "%4d-%2d%c", &year, &month, &rest) != 2 || month < 1 || month > 12) return 0;
  return year + (month - 0.5) / 12;
}

}  // namespace

Record readRecord(const std::string& path, const std::string& column, double rate) {
  CsvReader reader(path, ',');
  std::vector<std::string> header, cells;
  if (!reader.next(header)) throw Complaint(path + ": is empty");
  const auto found = std::find(header.begin(), header.end(), column);
  if (found == header.end()) reader.complain("no column is called " + inQuotes(column));
  const auto index = static_cast<size_t>(found - header.begin());

  Record record;
  record.name = column;
  record.rate = rate;
  double start = 0;
  while (reader.next(cells)) {
    if (cells.size() != header.size())
      reader.complain(std::to_string(cells.size()) + " cells, the header has " + std::to_string(header.size()));
    const std::optional<double> value = numberIn(cells[index]);
    if (!value) reader.complain(inQuotes(cells[index]) + " is no finite number (column " + inQuotes(column) + ")");
    if (record.value.empty()) start = monthOf(cells[0]);
    record.time.push_back(start + static_cast<double>(record.value.size()) / rate);
    record.value.push_back(*value);
  }
  const auto least = static_cast<size_t>(std::max(48.0, 4 * rate));
  if (record.value.size() < least)
    throw Complaint(path + ": column \"" + column + "\" has " + std::to_string(record.value.size()) +
                    " values, at least " + std::to_string(least) + " are needed");
  const auto [low, high] = std::minmax_element(record.value.begin(), record.value.end());
  if (!(*low < *high)) throw Complaint(path + ": column \"" + column + "\" has one value throughout");
  return record;
}

void decompose(Record& record) {
  const Series& x = record.value;
  const size_t n = x.size();
  // Whittaker's gain at the frequency w is 1/(1 + lambda w^4): 1/750 once a unit of time.
  const double lambda = 750 * std::pow(record.rate / (2 * std::numbers::pi), 4);
  record.trend.resize(n);
  record.growth.resize(n);
  record.level.resize(n);
  data_SmoothWhittaker1D(x.data(), count(x), lambda, record.trend.data());
  data_calcDataDiffBySameDh(record.trend.data(), count(x), 1 / record.rate, record.growth.data());
  data_Detrend(x.data(), record.level.data(), count(x), 3);

  const auto phases = static_cast<size_t>(std::lround(record.rate));
  Series sum(phases, 0.0), times(phases, 0.0);
  for (size_t i = 0; i < n; ++i) {
    sum[i % phases] += x[i] - record.trend[i];
    times[i % phases] += 1;
  }
  for (size_t i = 0; i < n; ++i) {
    record.season.push_back(sum[i % phases] / times[i % phases]);
    record.residual.push_back(x[i] - record.trend[i] - record.season[i]);
  }
}

std::string recordSection(const Record& record) {
  const View view(record);
  return "<h2 id=\"record\">The record</h2>\n" +
         view.figure("series", "The record and its trend", record.name,
                     {{"record", &record.value}, {"trend", &record.trend}},
                     "The trend is Whittaker's line: the least sum of squared distances and squared second "
                     "differences.") +
         view.figure("growth", "Growth of the trend", record.name + " a unit of time", {{"growth", &record.growth}},
                     "The derivative of the trend, by polynomials through five points.");
}

void writeCsv(const std::string& path, const Record& record) {
  const std::pair<const char*, const Series*> columns[] = {
      {"time", &record.time},         {"value", &record.value},       {"trend", &record.trend},
      {"season", &record.season},     {"residual", &record.residual}, {"band", &record.band},
      {"envelope", &record.envelope}, {"fir", &record.designed},      {"butterworth", &record.recursed}};
  std::ofstream file(path);
  for (const auto& [name, series] : columns) file << (series == &record.time ? "" : ",") << name;
  file << '\n';
  file.precision(10);
  for (size_t i = 0; i < record.time.size(); ++i) {
    for (const auto& [name, series] : columns) file << (series == &record.time ? "" : ",") << (*series)[i];
    file << '\n';
  }
  if (!file.flush()) throw Complaint(path + ": cannot be written");
}
