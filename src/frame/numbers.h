// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <limits>

/// The doubles that every subsystem names. Mathematical constants are those of <numbers>.
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();
inline constexpr double kEpsilon = std::numeric_limits<double>::epsilon();  ///< 2^-52
