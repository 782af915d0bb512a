// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

/// Tests of ascending values against the uniform law on [0, 1]: p values, 0 for fewer than 3 values.
namespace Statistics {

double andersonDarling(std::span<const double> z);
double kolmogorovSmirnov(std::span<const double> z);

/// P(D >= d) for the greatest distance d between the distribution functions of n values and of their law.
double kolmogorovTail(double n, double d);

}  // namespace Statistics
