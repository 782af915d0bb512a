// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace HighPrecision {

// Non-negative integers in base 10^7, least significant limb first. Results may have zero limbs at the top.

std::vector<int64_t> multiplyLimbs(std::span<const int64_t> a, std::span<const int64_t> b);

/// floor(a * 10^(7 padding) / b) for b > 0.
std::vector<int64_t> divideLimbs(std::span<const int64_t> a, std::size_t padding, std::span<const int64_t> b);

/// floor(sqrt(a * 10^(7 padding))).
std::vector<int64_t> squareRootLimbs(std::span<const int64_t> a, std::size_t padding);

}  // namespace HighPrecision
