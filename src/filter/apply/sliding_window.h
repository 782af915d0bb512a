// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

namespace Filter {

/// out[i] = op over padded[i], ..., padded[i + width - 1] for i < n; padded holds n + width - 1 values and op is
/// associative. Three operations a value whatever the width (van Herk 1992): the array is cut into blocks of one width,
/// and every window is the end of one block and the beginning of the next. Sums cancel nothing in this way, and a NaN
/// touches only the windows that hold it.
template <class Op>
void slidingFold(std::span<const double> padded, std::size_t width, double* out, std::size_t n, Op op) {
  std::vector<double> suffix(width);
  for (std::size_t start = 0; start < n; start += width) {
    const double* const block = padded.data() + start;
    suffix[width - 1] = block[width - 1];
    for (std::size_t j = width - 1; j-- > 0;) suffix[j] = op(block[j], suffix[j + 1]);
    out[start] = suffix[0];
    const std::size_t count = std::min(width, n - start);
    if (count < 2) continue;
    double prefix = block[width];
    out[start + 1] = op(suffix[1], prefix);
    for (std::size_t j = 2; j < count; ++j) {
      prefix = op(prefix, block[width + j - 1]);
      out[start + j] = op(suffix[j], prefix);
    }
  }
}

/// out[i] = median of padded[i], ..., padded[i + width - 1] for i < n, the mean of the two middle values for an even
/// width. A NaN counts as greater than every number. Time O(n log width) at most.
void slidingMedian(std::span<const double> padded, std::size_t width, double* out, std::size_t n);

}  // namespace Filter
