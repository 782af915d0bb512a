// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// The two-call string pattern: copies the bytes when they fit into `capacity` (no terminator is written) and returns
/// their number in every case.
int32_t handOut(std::string_view text, char* out, int32_t capacity);

/// UTF-8 to GBK, the code page in which labels and messages leave the library.
std::string toGBK(std::string_view utf8);
