// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

namespace Filter {

// Statistics of a window of width values, i - width/2 the first; a width below 1, or as long as the data, copies. out
// may be in. Border: indices outside read the end values.

void slidingMax(std::span<const double> in, double* out, int32_t width);
void slidingMin(std::span<const double> in, double* out, int32_t width);
void slidingMean(std::span<const double> in, double* out, int32_t width);
void slidingMeanSquared(std::span<const double> in, double* out, int32_t width);
void slidingMedian(std::span<const double> in, double* out, int32_t width);

// The same with the first i + 1 values for i < width/2, and the last ones at the far end.

void windowMean(std::span<const double> in, double* out, int32_t width);
void windowMedian(std::span<const double> in, double* out, int32_t width);

// Means with a host's weights, (width - 1)/2 before the point.

void weightedMean(std::span<const double> in, double* out, std::span<const double> weights);
/// Indices outside are reflected at the end values' outer edges: -1 reads 0.
void weightedMeanReflected(std::span<const double> in, double* out, std::span<const double> weights);

}  // namespace Filter
