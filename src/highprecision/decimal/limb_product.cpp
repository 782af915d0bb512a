// SPDX-License-Identifier: Apache-2.0
#include "highprecision/decimal/limb_product.h"

#include <algorithm>
#include <vector>

#include "frame/processor.h"

namespace HighPrecision {
namespace {

// Below this length the schoolbook product is quicker than three halves of it.
constexpr std::size_t kHalve = 80;

// The loops of the schoolbook product, the same for every set of instructions.
[[gnu::always_inline]] inline void schoolbook(const uint32_t* a, std::size_t n, const uint32_t* b, std::size_t m,
                                              uint64_t* columns) {
  std::fill_n(columns, n + m, uint64_t{0});
  for (std::size_t j = 0; j < m; ++j) {
    const uint64_t factor = b[j];
    uint64_t* const column = columns + j;
    for (std::size_t i = 0; i < n; ++i) column[i] += a[i] * factor;
  }
}

void plain(const uint32_t* a, std::size_t n, const uint32_t* b, std::size_t m, uint64_t* columns) {
  schoolbook(a, n, b, m, columns);
}

#if ORVANE_DISPATCH_AVX2
[[gnu::target("avx2")]] void wide(const uint32_t* a, std::size_t n, const uint32_t* b, std::size_t m,
                                  uint64_t* columns) {
  schoolbook(a, n, b, m, columns);
}
#endif

using Schoolbook = decltype(&plain);

Schoolbook chosen() {
#if ORVANE_DISPATCH_AVX2
  if (hasAvx2()) return wide;
#endif
  return plain;
}

// Karatsuba: (a1 x + a0)(b1 x + b0) takes the products of the high and of the low halves and that of their sums. The
// columns need no carries on the way: they are right modulo 2^64, and so right in the end, whatever overflows between.
// The limbs of sums double at each level. `work` has 6n places and more.
void halved(const uint32_t* a, const uint32_t* b, std::size_t n, uint64_t* columns, uint64_t* work, Schoolbook small) {
  if (n < kHalve) return small(a, n, b, n, columns);
  const std::size_t low = (n + 1) / 2, high = n - low;
  halved(a, b, low, columns, work, small);
  halved(a + low, b + low, high, columns + 2 * low, work, small);
  uint64_t* const middle = work;
  auto* const sumA = reinterpret_cast<uint32_t*>(work + 2 * low);
  uint32_t* const sumB = sumA + low;
  for (std::size_t i = 0; i < low; ++i) {
    sumA[i] = a[i] + (i < high ? a[low + i] : 0);
    sumB[i] = b[i] + (i < high ? b[low + i] : 0);
  }
  halved(sumA, sumB, low, middle, work + 3 * low, small);
  for (std::size_t i = 0; i < 2 * low; ++i) middle[i] -= columns[i] + (i < 2 * high ? columns[2 * low + i] : 0);
  for (std::size_t i = 0; i < std::min(2 * low, 2 * n - low); ++i) columns[low + i] += middle[i];
}

}  // namespace

void productColumns(std::span<const uint32_t> a, std::span<const uint32_t> b, std::span<uint64_t> columns) {
  const std::size_t n = b.size();
  const Schoolbook small = chosen();
  if (n < kHalve) return small(a.data(), a.size(), b.data(), n, columns.data());
  // Pieces of the longer factor as long as the shorter one; the last one is filled up with zeros.
  std::vector<uint64_t> work(8 * n + 6 * kHalve);
  uint64_t* const product = work.data();
  std::vector<uint32_t> last;
  std::fill(columns.begin(), columns.end(), uint64_t{0});
  for (std::size_t at = 0; at < a.size(); at += n) {
    const uint32_t* piece = a.data() + at;
    if (at + n > a.size()) {
      last.assign(a.begin() + static_cast<std::ptrdiff_t>(at), a.end());
      last.resize(n);
      piece = last.data();
    }
    halved(piece, b.data(), n, product, product + 2 * n, small);
    const std::size_t count = std::min(2 * n, columns.size() - at);
    for (std::size_t i = 0; i < count; ++i) columns[at + i] += product[i];
  }
}

}  // namespace HighPrecision
