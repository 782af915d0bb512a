// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <vector>

/// Dense linear algebra on row-major arrays: element (i, j) of an r x c matrix stands at i*c + j.
namespace Dense {

/// rows*cols as a length; throws std::bad_alloc when so many doubles cannot be addressed.
std::size_t area(std::ptrdiff_t rows, std::ptrdiff_t cols);

bool allFinite(std::span<const double> values);

/// U S V' = A with the singular values in descending order. Non-finite input gives NaN throughout.
struct SVD {
  std::vector<double> u, values, v;  ///< u and v row-major, empty when not asked for
  std::ptrdiff_t uCols = 0, vCols = 0;
};
enum class Vectors { none, full, thin };
SVD svd(std::span<const double> a, std::ptrdiff_t rows, std::ptrdiff_t cols, Vectors vectors);

/// The rows x cols matrix with `values` on its diagonal.
std::vector<double> diagonal(std::span<const double> values, std::ptrdiff_t rows, std::ptrdiff_t cols);

/// Singular values above max(k, 1) * epsilon * largest, k = min(rows, cols); 0 for non-finite input.
std::ptrdiff_t rank(std::span<const double> a, std::ptrdiff_t rows, std::ptrdiff_t cols);

/// Least-squares solution of least norm of A X = B for each of the colsB columns; X is cols x colsB.
std::vector<double> leastSquares(std::span<const double> a, std::ptrdiff_t rows, std::ptrdiff_t cols,
                                 std::span<const double> b, std::ptrdiff_t colsB);

}  // namespace Dense
