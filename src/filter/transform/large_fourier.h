// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "filter/transform/fourier.h"
#include "filter/transform/stockham.h"

namespace Filter {

/// A length beyond the cache as a matrix of rows x columns (Bailey 1990): transforms down the columns, a twiddle
/// factor, transforms along the rows, read out by columns. Blocks of kLanes columns or rows go through the cache
/// together, so that memory is read and written twice.
class LargeFourier final : public FourierPlan {
 public:
  struct Factors {
    std::size_t rows = 0, columns = 0;
  };

  /// Factors near the square root of n; columns 0 where n is small enough or has none.
  static Factors factorsOf(std::size_t n);

  explicit LargeFourier(Factors factors);

  void run(ConstSplit in, Split out) const override;
  std::size_t tableSize() const override;

 private:
  static constexpr std::size_t kLanes = 8;

  void columnBlock(ConstSplit in, Split middle, Split a, Split b, std::size_t first) const;
  void rowBlock(Split middle, Split out, Split a, Split b, std::size_t first) const;

  std::size_t rows, columns;
  Stockham down, along;
  std::vector<double> stepRe, stepIm;    ///< w^(r q) for r < rows, q < kLanes, w = exp(-2 pi i/(rows columns))
  std::vector<double> blockRe, blockIm;  ///< w^(r first) for every block, r < rows
};

}  // namespace Filter
