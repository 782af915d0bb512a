// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// A line of a table: where it stands ("file:line", for messages) and its cells.
struct Row {
  std::string where;
  std::vector<std::string> cells;
};

/// The lines of a file behind its first one, which holds titles; empty ones are left out. Each must have as many cells
/// as `columns` names. Throws Complaint.
std::vector<Row> readRows(const std::string& path, char separator, const std::vector<std::string>& columns);

/// The number in a cell, held to [least, most]; otherwise throws Complaint, which calls it `what`.
double numberIn(const Row& row, size_t column, double least, double most, const std::string& what);

struct City {
  std::string name;
  double latitude, longitude;  ///< degrees, north and east positive
};

/// The columns city, latitude, longitude of a CSV file. Throws Complaint.
std::vector<City> readCities(const std::string& path);
