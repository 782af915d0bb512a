// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cities.h"

/// Great-circle distance in kilometres.
double kilometres(const City& a, const City& b);

struct Tour {
  std::vector<uint32_t> order;
  double length;   ///< kilometres
  double nearest;  ///< of the tour that always goes to the nearest city left
};

Tour deliveryTour(const std::vector<City>& cities, int threads);

/// The map with the tour, as an SVG element.
std::string drawnMap(const std::vector<City>& cities, const Tour& tour);

std::string tourSection(const std::vector<City>& cities, const Tour& tour);
