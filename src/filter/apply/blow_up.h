// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>

namespace Filter {

/// Whether a value ends a filter's run: NaN, or beyond 1e100 in size.
inline bool blownUp(double value) { return !(std::abs(value) <= 1e100); }

}  // namespace Filter
