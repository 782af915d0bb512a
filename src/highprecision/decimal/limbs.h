// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

namespace HighPrecision {

// Non-negative integers in base 10^7, least significant limb first. Results fill the places that they are given, with
// zero limbs at the top.

/// product = a b, in as many places as both have limbs.
void multiplyLimbs(std::span<const int64_t> a, std::span<const int64_t> b, std::span<int64_t> product);

/// quotient = floor(a 10^(7 padding) / b) for b > 0, in places enough for it: one more than its length less that of b,
/// or as many, when it is known to fit.
void divideLimbs(std::span<const int64_t> a, std::size_t padding, std::span<const int64_t> b,
                 std::span<int64_t> quotient);

/// root = floor(sqrt(a 10^(7 padding))), in half as many places as the limbs of both.
void squareRootLimbs(std::span<const int64_t> a, std::size_t padding, std::span<int64_t> root);

}  // namespace HighPrecision
