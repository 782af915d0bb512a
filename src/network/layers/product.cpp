// SPDX-License-Identifier: Apache-2.0
#include "network/layers/product.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "network/layers/formula.h"

namespace NetWork {
namespace {

using Quad = double __attribute__((vector_size(32)));
constexpr std::size_t kLanes = 4;

[[gnu::always_inline]] inline void load(Quad& to, const double* from) { std::memcpy(&to, from, sizeof to); }
[[gnu::always_inline]] inline void store(double* to, const Quad& from) { std::memcpy(to, &from, sizeof from); }

/// f(0) to f(kCount - 1), written out, so that arrays of them are registers.
template <std::size_t kCount, class F>
[[gnu::always_inline]] inline void repeat(const F& f) {
  [&]<std::size_t... i>(std::index_sequence<i...>) { (f(i), ...); }
  (std::make_index_sequence<kCount>{});
}

/// kRows by kCols scalar products of rows of x with rows of a.
template <std::size_t kRows, std::size_t kCols>
[[gnu::always_inline]] inline void scalarProducts(const double* x, const double* a, std::size_t m, double* y,
                                                  std::size_t n) {
  Quad sum[kRows][kCols] = {};
  std::size_t j = 0;
  for (; j + kLanes <= m; j += kLanes) {
    Quad left[kRows];
    repeat<kRows>([&](std::size_t r) { load(left[r], x + r * m + j); });
    repeat<kCols>([&](std::size_t c) {
      Quad right;
      load(right, a + c * m + j);
      repeat<kRows>([&](std::size_t r) { sum[r][c] += left[r] * right; });
    });
  }
  repeat<kRows>([&](std::size_t r) {
    repeat<kCols>([&](std::size_t c) {
      const Quad& s = sum[r][c];
      double total = (s[0] + s[2]) + (s[1] + s[3]);
      for (std::size_t k = j; k < m; ++k) total += x[r * m + k] * a[c * m + k];
      y[r * n + c] = total;
    });
  });
}

/// All samples for kCols rows of a, which stay in the cache meanwhile.
template <std::size_t kCols>
[[gnu::always_inline]] inline void scalarProductCols(const double* x, std::size_t samples, std::size_t m,
                                                     const double* a, double* y, std::size_t n) {
  std::size_t s = 0;
  if constexpr (kCols <= 2)
    for (; s + 4 <= samples; s += 4) scalarProducts<4, kCols>(x + s * m, a, m, y + s * n, n);
  for (; s < samples; ++s) scalarProducts<1, kCols>(x + s * m, a, m, y + s * n, n);
}

template <std::size_t kCols>
[[gnu::always_inline]] inline void scalarProductBlocks(const double* x, std::size_t samples, std::size_t m,
                                                       const double* a, std::size_t n, double* y) {
  std::size_t i = 0;
  for (; i + kCols <= n; i += kCols) scalarProductCols<kCols>(x, samples, m, a + i * m, y + i, n);
  for (; i < n; ++i) scalarProductCols<1>(x, samples, m, a + i * m, y + i, n);
}

struct Left {
  const double* at;
  std::size_t rowStep, innerStep;
  Left from(std::size_t row) const { return {at + row * rowStep, rowStep, innerStep}; }
  double operator()(std::size_t row, std::size_t k) const { return at[row * rowStep + k * innerStep]; }
};

/// kRows by 4 kQuads entries of c.
template <std::size_t kRows, std::size_t kQuads>
[[gnu::always_inline]] inline void updateBlock(double* c, std::size_t cols, Left left, std::size_t inner,
                                               const double* right) {
  Quad sum[kRows][kQuads];
  const auto forBlock = [&](const auto& f) {
    repeat<kRows>(
        [&](std::size_t r) { repeat<kQuads>([&](std::size_t q) { f(sum[r][q], c + r * cols + q * kLanes); }); });
  };
  forBlock([](Quad& s, const double* from) { load(s, from); });
  for (std::size_t k = 0; k < inner; ++k) {
    Quad row[kQuads];
    repeat<kQuads>([&](std::size_t q) { load(row[q], right + k * cols + q * kLanes); });
    repeat<kRows>([&](std::size_t r) {
      const double factor = left(r, k);
      repeat<kQuads>([&](std::size_t q) { sum[r][q] += factor * row[q]; });
    });
  }
  forBlock([](const Quad& s, double* to) { store(to, s); });
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
      for (std::size_t k = 0; k < inner; ++k) sum += left(r, k) * right[k * cols + j];
      c[r * cols + j] = sum;
    }
}

}  // namespace

// Blocks of 4 samples by 2 rows of a, or of one sample by 4.
void multiplyRows(const double* x, std::size_t samples, std::size_t m, const double* a, std::size_t n, double* y) {
  vectorised([=] {
    if (samples < 4)
      scalarProductBlocks<4>(x, samples, m, a, n, y);
    else
      scalarProductBlocks<2>(x, samples, m, a, n, y);
  });
}

// Some rows of the right side after another: they stay in the cache while all of c takes them in.
void addProduct(double* c, std::size_t rows, std::size_t cols, const double* left, std::size_t rowStep,
                std::size_t innerStep, std::size_t inner, const double* right) {
  constexpr std::size_t kStep = 32;
  vectorised([=] {
    for (std::size_t k = 0; k < inner; k += kStep) {
      const Left part{left + k * innerStep, rowStep, innerStep};
      const std::size_t depth = std::min(kStep, inner - k);
      std::size_t r = 0;
      for (; r + 4 <= rows; r += 4) updateRows<4>(c + r * cols, cols, part.from(r), depth, right + k * cols);
      for (; r < rows; ++r) updateRows<1>(c + r * cols, cols, part.from(r), depth, right + k * cols);
    }
  });
}

}  // namespace NetWork
