// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Stock {

inline constexpr std::size_t kAttributeCount = 56;

std::string_view attributeName(uint16_t type);  ///< UTF-8; empty for an unknown number

}  // namespace Stock
