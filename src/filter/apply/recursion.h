// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

namespace Filter {

/// y[i] = sum of b[k] x[i-k] - sum over k >= 1 of a[k] y[i-k] for i in [from, to), with zeros before x[0] and y[0].
/// False at the first value that has blown up: it and all behind it stay as they were.
bool recurse(std::span<const double> b, std::span<const double> a, const double* x, double* y, int32_t from,
             int32_t to);

}  // namespace Filter
