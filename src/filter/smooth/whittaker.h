// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>

namespace Filter {

/// Solves (I + lambda D'D) y = x with the second differences D (Whittaker 1923; Eilers 2003); copies for lambda < 0 and
/// for fewer than 4 values. y may be x.
void whittaker(std::span<const double> x, double lambda, double* y);

/// The same down the columns with lambda `down` and along the rows with `along`; rows are given one by one, out is
/// row-major.
void whittaker2D(std::span<const double* const> rows, std::size_t cols, double down, double along, double* out);

}  // namespace Filter
