// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>

#include "special/special_function.h"

namespace Filter {

// Sine, cosine and tangent of angles that a host may have made huge.
inline double cosOf(double angle) { return std::cos(SpecialFunction::guardAngle(angle)); }
inline double sinOf(double angle) { return std::sin(SpecialFunction::guardAngle(angle)); }

}  // namespace Filter
