// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <limits>
#include <numbers>

/// The doubles that tests name; those that see src/ take frame/numbers.h.
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInf = std::numeric_limits<double>::infinity();
inline constexpr double kPi = std::numbers::pi;
