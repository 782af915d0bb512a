// SPDX-License-Identifier: Apache-2.0
#include "network/layers/product.h"

#include <cstring>

#include "network/layers/formula.h"

namespace NetWork {
namespace {

using Quad = double __attribute__((vector_size(32)));
constexpr std::size_t kLanes = 4;

[[gnu::always_inline]] inline void load(Quad& to, const double* from) { std::memcpy(&to, from, sizeof to); }
[[gnu::always_inline]] inline void store(double* to, const Quad& from) { std::memcpy(to, &from, sizeof from); }

/// kRows by kCols scalar products of rows of x with rows of a.
template <std::size_t kRows, std::size_t kCols>
[[gnu::always_inline]] inline void scalarProducts(const double* x, const double* a, std::size_t m, double* y,
                                                  std::size_t n) {
  Quad sum[kRows][kCols] = {};
  std::size_t j = 0;
  for (; j + kLanes <= m; j += kLanes) {
    Quad right[kCols];
    for (std::size_t c = 0; c < kCols; ++c) load(right[c], a + c * m + j);
    for (std::size_t r = 0; r < kRows; ++r) {
      Quad left;
      load(left, x + r * m + j);
      for (std::size_t c = 0; c < kCols; ++c) sum[r][c] += left * right[c];
    }
  }
  for (std::size_t r = 0; r < kRows; ++r)
    for (std::size_t c = 0; c < kCols; ++c) {
      const Quad& s = sum[r][c];
      double total = (s[0] + s[2]) + (s[1] + s[3]);
      for (std::size_t k = j; k < m; ++k) total += x[r * m + k] * a[c * m + k];
      y[r * n + c] = total;
    }
}

/// All columns for kRows rows of x.
template <std::size_t kRows, std::size_t kCols>
[[gnu::always_inline]] inline void scalarProductRows(const double* x, std::size_t m, const double* a, std::size_t n,
                                                     double* y) {
  std::size_t i = 0;
  for (; i + kCols <= n; i += kCols) scalarProducts<kRows, kCols>(x, a + i * m, m, y + i, n);
  for (; i < n; ++i) scalarProducts<kRows, 1>(x, a + i * m, m, y + i, n);
}

struct Left {
  const double* at;
  std::size_t rowStep, innerStep;
  Left from(std::size_t row) const { return {at + row * rowStep, rowStep, innerStep}; }
};

/// kRows by 4 kQuads entries of c.
template <std::size_t kRows, std::size_t kQuads>
[[gnu::always_inline]] inline void updateBlock(double* c, std::size_t cols, Left left, std::size_t inner,
                                               const double* right) {
  Quad sum[kRows][kQuads];
  for (std::size_t r = 0; r < kRows; ++r)
    for (std::size_t q = 0; q < kQuads; ++q) load(sum[r][q], c + r * cols + q * kLanes);
  for (std::size_t k = 0; k < inner; ++k) {
    Quad row[kQuads];
    for (std::size_t q = 0; q < kQuads; ++q) load(row[q], right + k * cols + q * kLanes);
    for (std::size_t r = 0; r < kRows; ++r) {
      const double factor = left.at[r * left.rowStep + k * left.innerStep];
      for (std::size_t q = 0; q < kQuads; ++q) sum[r][q] += factor * row[q];
    }
  }
  for (std::size_t r = 0; r < kRows; ++r)
    for (std::size_t q = 0; q < kQuads; ++q) store(c + r * cols + q * kLanes, sum[r][q]);
}

/// All columns for kRows rows of c.
template <std::size_t kRows>
[[gnu::always_inline]] inline void updateRows(double* c, std::size_t cols, Left left, std::size_t inner,
                                              const double* right) {
  std::size_t j = 0;
  for (; j + 2 * kLanes <= cols; j += 2 * kLanes) updateBlock<kRows, 2>(c + j, cols, left, inner, right + j);
  for (; j + kLanes <= cols; j += kLanes) updateBlock<kRows, 1>(c + j, cols, left, inner, right + j);
  for (; j < cols; ++j)
    for (std::size_t r = 0; r < kRows; ++r) {
      double sum = c[r * cols + j];
      for (std::size_t k = 0; k < inner; ++k)
        sum += left.at[r * left.rowStep + k * left.innerStep] * right[k * cols + j];
      c[r * cols + j] = sum;
    }
}

}  // namespace

void multiplyRows(const double* x, std::size_t samples, std::size_t m, const double* a, std::size_t n, double* y) {
  vectorised([=] {
    std::size_t s = 0;
    for (; s + 4 <= samples; s += 4) scalarProductRows<4, 2>(x + s * m, m, a, n, y + s * n);
    for (; s < samples; ++s) scalarProductRows<1, 8>(x + s * m, m, a, n, y + s * n);
  });
}

void addProduct(double* c, std::size_t rows, std::size_t cols, const double* left, std::size_t rowStep,
                std::size_t innerStep, std::size_t inner, const double* right) {
  const Left all{left, rowStep, innerStep};
  vectorised([=] {
    std::size_t r = 0;
    for (; r + 4 <= rows; r += 4) updateRows<4>(c + r * cols, cols, all.from(r), inner, right);
    for (; r < rows; ++r) updateRows<1>(c + r * cols, cols, all.from(r), inner, right);
  });
}

}  // namespace NetWork
