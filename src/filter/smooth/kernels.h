// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace Filter {

/// shape(h + 1 - |k|) for a kernel of a width, h = width/2 and k the distance from index h.
std::vector<double> shapedKernel(std::size_t width, double (*shape)(double));

/// Radial kernel of 2 half + 1 values, f(j/reach) at distance j. Empty for a kind without a function.
std::vector<double> radialKernel(std::size_t half, double reach, int32_t kind);
bool isRadialKind(int32_t kind);

/// The weights that give the least-squares polynomial of a degree over 2 half + 1 even steps at its middle.
std::vector<double> savitzkyGolayKernel(std::size_t half, std::size_t degree);

}  // namespace Filter
