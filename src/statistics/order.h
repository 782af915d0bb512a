// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <span>
#include <vector>

namespace Statistics {

/// Ascending order in which NaN stands last, so that sorting is defined for every sample.
inline bool ascending(double a, double b) { return a < b || (std::isnan(b) && !std::isnan(a)); }

/// The values in that order, in time linear in their number when there are many.
std::vector<double> sorted(std::span<const double> x);

}  // namespace Statistics
