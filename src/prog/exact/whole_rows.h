// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include "prog/line/base_var.h"

namespace LineProg {

/// The largest value up to sign * right side that sign * sum can take when all its variables are integers: with g the
/// greatest common divisor of the integer variables' coefficients, a value is a multiple of g and a sum of binary
/// variables' coefficients. Without that rounding a search for 2x - 2y = 1 has no end. The right side itself for a row
/// with a real variable, without an integer one, or with coefficients that are no short decimals.
double largestReachable(const EquVar& row, double sign, std::span<const BaseVar> variables);

/// The greatest number that every value of the objective is a multiple of; 0 where a real variable counts, or the
/// coefficients are no short decimals.
double objectiveStep(std::span<const double> objective, std::span<const BaseVar> variables);

}  // namespace LineProg
