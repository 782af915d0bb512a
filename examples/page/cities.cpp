// SPDX-License-Identifier: Apache-2.0
#include "cities.h"

#include "csv.h"

std::vector<City> readCities(const std::string& path) {
  std::vector<City> cities;
  readRows(path, ',', {"city", "latitude", "longitude"}, [&cities](const CsvReader& reader, const auto& cells) {
    cities.push_back({cells[0], reader.number(cells[1], -90, 90, "angle within 90 degrees"),
                      reader.number(cells[2], -180, 180, "angle within 180 degrees")});
  });
  return cities;
}
