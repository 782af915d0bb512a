// SPDX-License-Identifier: Apache-2.0
#include "cities.h"

#include <charconv>
#include <fstream>

#include "complaint.h"

std::vector<Row> readRows(const std::string& path, char separator, const std::vector<std::string>& columns) {
  std::ifstream file(path);
  if (!file) throw Complaint(path + ": cannot be read");
  std::vector<Row> rows;
  int number = 0;
  for (std::string line; std::getline(file, line);) {
    Row row{path + ":" + std::to_string(++number), {}};
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || number == 1) continue;
    for (size_t from = 0; from <= line.size();) {
      const size_t end = std::min(line.find(separator, from), line.size());
      const size_t first = std::min(line.find_first_not_of(' ', from), end);
      row.cells.push_back(line.substr(first, end - first));
      from = end + 1;
    }
    if (row.cells.size() < columns.size())
      throw Complaint(row.where + ": \"" + line + "\" has no column " + columns[row.cells.size()]);
    rows.push_back(std::move(row));
  }
  if (file.bad() || rows.empty()) throw Complaint(path + ": holds no line behind its title");
  return rows;
}

double numberIn(const Row& row, size_t column, double least, double most, const std::string& what) {
  const std::string& text = row.cells[column];
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !(value >= least && value <= most))
    throw Complaint(row.where + ": \"" + text + "\" is no " + what);
  return value;
}

std::vector<City> readCities(const std::string& path) {
  std::vector<City> cities;
  for (const Row& row : readRows(path, ',', {"city", "latitude", "longitude"}))
    cities.push_back({row.cells[0], numberIn(row, 1, -90, 90, "angle within 90 degrees"),
                      numberIn(row, 2, -180, 180, "angle within 180 degrees")});
  return cities;
}
