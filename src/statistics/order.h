// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>

namespace Statistics {

/// Ascending order in which NaN stands last, so that sorting is defined for every sample.
inline bool ascending(double a, double b) { return a < b || (std::isnan(b) && !std::isnan(a)); }

}  // namespace Statistics
