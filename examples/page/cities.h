// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

struct City {
  std::string name;
  double latitude, longitude;  ///< degrees, north and east positive
};

/// The columns city, latitude, longitude of a CSV file. Throws Complaint.
std::vector<City> readCities(const std::string& path);
