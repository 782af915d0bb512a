// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace HighPrecision {

/// The longest shorter factor that productColumns takes: the sums of its halves stay within 32 bits.
inline constexpr std::size_t kLongestColumns = 4096;

/// columns[k] = sum of a[i] b[k - i] modulo 2^64, for limbs below 10^7 and a at least as long as b; columns has as many
/// places as both have limbs.
void productColumns(std::span<const uint32_t> a, std::span<const uint32_t> b, std::span<uint64_t> columns);

}  // namespace HighPrecision
