// SPDX-License-Identifier: Apache-2.0
#include "filter/transform/filter_2d.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>
#include <span>
#include <vector>

#include "filter/apply/convolution.h"
#include "filter/apply/parts.h"

namespace Filter {

namespace {

/// What the workers share: nothing but `out` is written, each row by one of them.
struct Filter2DWork {
  std::shared_ptr<const std::vector<double>> padded;   ///< the rows with clamped borders left and right
  std::shared_ptr<const std::vector<double>> weights;  ///< row-major
  std::size_t rows, cols, kernelRows, kernelCols;
  double* out;

  void run(std::size_t first, std::size_t last) const {
    const std::size_t paddedCols = cols + kernelCols - 1;
    const auto half = static_cast<std::ptrdiff_t>(kernelRows / 2);
    for (std::size_t r = first; r < last; ++r) {
      std::fill_n(out + r * cols, cols, 0.0);
      for (std::size_t k = 0; k < kernelRows; ++k) {
        const auto at = std::clamp<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(r + k) - half, 0,
                                                   static_cast<std::ptrdiff_t>(rows) - 1);
        correlateAdd(padded->data() + static_cast<std::size_t>(at) * paddedCols,
                     {weights->data() + k * kernelCols, kernelCols}, out + r * cols, cols);
      }
    }
  }
};

}  // namespace

void filter2D(const double* in, double* out, const Filter2DKernel& kernel, int32_t rows, int32_t cols,
              int32_t threads) {
  if (rows < 1 || cols < 1 || kernel.rows < 1 || kernel.cols < 1 || kernel.values == nullptr) return;
  const auto r = static_cast<std::size_t>(rows), c = static_cast<std::size_t>(cols);
  const auto kernelRows = static_cast<std::size_t>(kernel.rows), kernelCols = static_cast<std::size_t>(kernel.cols);
  auto weights = std::make_shared<std::vector<double>>(kernel.values, kernel.values + kernelRows * kernelCols);
  normaliseWeights(*weights, kernel.normalise != 0);
  auto padded = std::make_shared<std::vector<double>>();
  for (std::size_t i = 0; i < r; ++i) {
    const std::vector<double> row = clampedBorder({in + i * c, c}, kernelCols);
    padded->insert(padded->end(), row.begin(), row.end());
  }
  const Filter2DWork work{padded, weights, r, c, kernelRows, kernelCols, out};
  inParts(r, threads, [&work](std::size_t first, std::size_t last) { work.run(first, last); });
}

}  // namespace Filter
