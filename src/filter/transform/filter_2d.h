// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "orvane/transform.h"

namespace Filter {

/// Each value becomes the weighted sum of its neighbourhood; indices outside read the nearest edge.
void filter2D(const double* in, double* out, const Filter2DKernel& kernel, int32_t rows, int32_t cols, int32_t threads);

}  // namespace Filter
