// SPDX-License-Identifier: Apache-2.0
#include "record.h"

#include <orvane/smooth.h>
#include <orvane/transform.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <numbers>

#include "complaint.h"
#include "page.h"
#include "svg_plot.h"
#include "view.h"

namespace {

std::vector<std::string> cellsOf(std::string line) {
  if (line.ends_with('\r')) line.pop_back();
  std::vector<std::string> cells(1);
  for (const char c : line) {
    if (c == ',')
      cells.emplace_back();
    else
      cells.back() += c;
  }
  return cells;
}

bool readNumber(const std::string& text, double& value) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size() && std::isfinite(value);
}

/// 1958-03 as 1958 + 2.5/12; 0 for any other text.
double monthOf(const std::string& text) {
  int year = 0, month = 0;
  char rest = 0;
  if (std::sscanf(text.c_str(), "%4d-%2d%c", &year, &month, &rest) != 2 || month < 1 || month > 12) return 0;
  return year + (month - 0.5) / 12;
}

}  // namespace

Record readRecord(const std::string& path, const std::string& column, double rate) {
  if (std::filesystem::is_directory(path)) throw Complaint(path + ": is a directory");
  std::ifstream file(path);
  if (!file) throw Complaint(path + ": " + std::strerror(errno));
  std::string line;
  if (!std::getline(file, line)) throw Complaint(path + ": is empty");
  const std::vector<std::string> header = cellsOf(line);
  const auto found = std::find(header.begin(), header.end(), column);
  if (found == header.end()) throw Complaint(path + ":1: no column is called \"" + column + "\"");
  const auto index = static_cast<size_t>(found - header.begin());

  Record record;
  record.name = column;
  record.rate = rate;
  double start = 0;
  for (size_t number = 2; std::getline(file, line); ++number) {
    const std::string where = path + ":" + std::to_string(number) + ": ";
    const std::vector<std::string> cells = cellsOf(line);
    if (cells.size() == 1 && cells[0].empty()) continue;
    if (cells.size() != header.size())
      throw Complaint(where + std::to_string(cells.size()) + " cells, the header has " + std::to_string(header.size()));
    double value = 0;
    if (!readNumber(cells[index], value))
      throw Complaint(where + "\"" + cells[index] + "\" is no finite number (column \"" + column + "\")");
    if (record.value.empty()) start = monthOf(cells[0]);
    record.time.push_back(start + static_cast<double>(record.value.size()) / rate);
    record.value.push_back(value);
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
