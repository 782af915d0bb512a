// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace Filter {

/// out[i] = sum over k ascending of kernel[k] x[i+k], i < n: x holds n + kernel.size() - 1 values.
void correlate(const double* x, std::span<const double> kernel, double* out, std::size_t n);
/// The same added to out.
void correlateAdd(const double* x, std::span<const double> kernel, double* out, std::size_t n);

/// The border rule of all kernel filters and windows: indices outside read the end values. Returns in[-half],
/// in[-half+1], ... as width - 1 more values than in has; half = width/2.
std::vector<double> clampedBorder(std::span<const double> in, std::size_t width);

/// Divides weights by their sum if asked to and unless that is within 1e-15 of 0.
void normaliseWeights(std::span<double> weights, bool normalise);

/// out[i] = sum of kernel[k] in[i - width/2 + k] with that border. A kernel as long as the data, or an empty one,
/// copies the data. out may be in.
void convolve(std::span<const double> in, double* out, std::span<const double> kernel, bool normalise);

}  // namespace Filter
