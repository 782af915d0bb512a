// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <vector>

namespace Search {

using Vectors = std::vector<std::vector<double>>;

/// Coefficients c of the least squares of sum c_k rows[k] - target, by normal equations of rows scaled to length 1.
/// Rows that depend on one another give what is large or not finite.
std::vector<double> linearFit(const Vectors& rows, std::span<const double> target);

}  // namespace Search
