// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

namespace Filter {

// Convolutions with a kernel made for the call. out may be in; a kernel as long as the data copies.

void shaped(std::span<const double> in, double* out, int32_t width, double (*shape)(double));
/// Leaves out as it is for a kind without a function.
void radial(std::span<const double> in, double* out, int32_t half, double delta, int32_t kind);
void savitzkyGolay(std::span<const double> in, double* out, double dt, int32_t degree, int32_t width);

}  // namespace Filter
