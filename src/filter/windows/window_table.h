// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>

#include "filter/windows/base_window.h"

namespace Filter {

/// The window of a code 0..24 with its default parameters; null for any other code.
std::unique_ptr<BaseWindow> makeWindow(int32_t code);

}  // namespace Filter
