// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

namespace HighPrecision {

/// places = a + b with the last carry behind, for a at least as long as b; places may be a.
void addLimbs(std::span<const int64_t> a, std::span<const int64_t> b, int64_t* places);

/// places = a - b for a >= b, and a zero behind.
void subtractLimbs(std::span<const int64_t> a, std::span<const int64_t> b, int64_t* places);

}  // namespace HighPrecision
