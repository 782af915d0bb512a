// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace Filter {

/// Transform of max(re, im) values, the shorter array continued by zeros.
void transform1D(std::span<const double> re, std::span<const double> im, double* outRe, double* outIm, bool inverse);

/// Rows and then columns, the inverse the other way round, on up to `threads` threads.
void transform2D(const double* re, const double* im, int32_t rows, int32_t cols, double* outRe, double* outIm,
                 int32_t threads, bool inverse);

void spectrum(std::span<const double> x, double fs, double* freq, double* amp);
void bandByFFT(std::span<const double> x, double* y, double lowF, double highF, double value, double fs);
/// y[i] = x[(i + by) mod n]
void rotate(std::span<const double> x, double* y, std::size_t by);
/// Subtracts the least-squares polynomial of a degree; below 0 it copies.
void detrend(std::span<const double> x, double* y, int32_t degree);
void hilbertInfo(std::span<const double> x, double* out, uint8_t mode);

}  // namespace Filter
