// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

/// Products of row-major matrices, in blocks that stay in registers. An entry's terms are added in one order whatever
/// the number of rows, so that a row gives the same bits alone and among others.
namespace NetWork {

/// y[s][i] = sum_j a[i][j] x[s][j] for `samples` rows of x (m) and y (n). Four interleaved sums, then the rest.
void multiplyRows(const double* x, std::size_t samples, std::size_t m, const double* a, std::size_t n, double* y);

/// c[r][j] += sum_k left(r, k) right[k][j], k ascending, where left(r, k) = left[r*rowStep + k*innerStep].
void addProduct(double* c, std::size_t rows, std::size_t cols, const double* left, std::size_t rowStep,
                std::size_t innerStep, std::size_t inner, const double* right);

}  // namespace NetWork
