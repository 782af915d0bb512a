// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "cities.h"

// Each makes one section of the page, as HTML, and prints its answer as one line. Throws Complaint.

/// WGS 84, which the functions are told: semi-major axis in metres, first eccentricity.
inline constexpr double kSemiMajor = 6378137, kEccentricity = 0.081819190842621494;

/// A satellite on a circular orbit over the cities, and its passes over one of them.
std::string satelliteSection(const std::vector<City>& cities, const City& station, double kilometres,
                             double inclination);

/// The shifted map datums over their region.
std::string datumSection();

/// The relative pose of two views from noisy pixels.
std::string twoViewsSection(double noise);

/// A triangulated map: the part in the current range and the nodes nearest to drawn places.
std::string meshSection(const std::vector<City>& cities, const std::string& nodes, const std::string& elements);

/// Series in the stock store, saved and loaded: the flow of a river from a file, and a drawn one.
std::string seriesSection(const std::string& river, const std::string& store);
