// SPDX-License-Identifier: Apache-2.0
#include "highprecision/decimal/limb_product.h"

#include <algorithm>

#include "frame/processor.h"
#include "highprecision/decimal/hp_number.h"
#include "highprecision/decimal/room.h"

#if ORVANE_DISPATCH_AVX2
#include <immintrin.h>
#endif

namespace HighPrecision {
namespace {

// Below this length the schoolbook product is quicker than three halves of it.
constexpr std::size_t kHalve = 160;
// Limbs of the longer factor that are multiplied at a time; they stay in the nearest cache.
constexpr std::size_t kPiece = 512;
// So many places behind the columns are touched, nothing added to them.
constexpr std::size_t kSpare = 8;

constexpr auto kLimb = static_cast<uint64_t>(kBase);
// A column holds at most kLongestColumns products below 10^14: no carry is due before the end.
static_assert(kLongestColumns < INT64_MAX / (kBase * kBase) - 1);

[[gnu::always_inline]] inline void addRowsOf(const int64_t* a, const int64_t* b, int64_t* columns, std::size_t t,
                                             std::size_t count) {
  for (; t < count; ++t) columns[t] += a[t] * b[0] + (a + t)[-1] * b[1] + (a + t)[-2] * b[2] + (a + t)[-3] * b[3];
}

void plainRows(const int64_t* a, const int64_t* b, int64_t* columns, std::size_t count) {
  addRowsOf(a, b, columns, 0, count);
}

void plainSubtract(int64_t* columns, int64_t factor, const int64_t* limbs, std::size_t n) {
  for (std::size_t i = 0; i < n; ++i) columns[i] -= factor * limbs[i];
}

#if ORVANE_DISPATCH_AVX2
using Four = __m256i;
[[gnu::target("avx2"), gnu::always_inline]] inline Four four(const int64_t* places) {
  return _mm256_loadu_si256(reinterpret_cast<const Four*>(places));
}
[[gnu::target("avx2"), gnu::always_inline]] inline void put(int64_t* places, Four values) {
  _mm256_storeu_si256(reinterpret_cast<Four*>(places), values);
}

// The product of the low 32 bits of each place is the product of the places.
[[gnu::target("avx2")]] void wideRows(const int64_t* a, const int64_t* b, int64_t* columns, std::size_t count) {
  const Four b0 = _mm256_set1_epi64x(b[0]), b1 = _mm256_set1_epi64x(b[1]), b2 = _mm256_set1_epi64x(b[2]),
             b3 = _mm256_set1_epi64x(b[3]);
  std::size_t t = 0;
  for (; t + 4 <= count; t += 4) {
    const int64_t* const at = a + t;
    const Four low = _mm256_add_epi64(_mm256_mul_epi32(four(at), b0), _mm256_mul_epi32(four(at - 1), b1));
    const Four high = _mm256_add_epi64(_mm256_mul_epi32(four(at - 2), b2), _mm256_mul_epi32(four(at - 3), b3));
    put(columns + t, _mm256_add_epi64(four(columns + t), _mm256_add_epi64(low, high)));
  }
  addRowsOf(a, b, columns, t, count);
}

[[gnu::target("avx2")]] void wideSubtract(int64_t* columns, int64_t factor, const int64_t* limbs, std::size_t n) {
  const Four factors = _mm256_set1_epi64x(factor);
  std::size_t i = 0;
  for (; i + 4 <= n; i += 4)
    put(columns + i, _mm256_sub_epi64(four(columns + i), _mm256_mul_epi32(four(limbs + i), factors)));
  for (; i < n; ++i) columns[i] -= factor * limbs[i];
}
#endif

using Rows = decltype(&plainRows);

Rows chosen() {
#if ORVANE_DISPATCH_AVX2
  if (hasAvx2()) return wideRows;
#endif
  return plainRows;
}

// The columns of a b, with kSpare places behind them: the rows of a piece are taken as whole steps of four columns,
// with nothing in the last ones.
void schoolbook(const int64_t* a, std::size_t n, const int64_t* b, std::size_t m, int64_t* columns, Rows rows) {
  std::fill_n(columns, n + m, 0);
  constexpr std::size_t kBefore = kRows - 1;
  int64_t padded[kBefore + kPiece + kSpare];
  std::fill_n(padded, kBefore, 0);
  for (std::size_t at = 0; at < n; at += kPiece) {
    const std::size_t count = std::min(kPiece, n - at);
    std::copy_n(a + at, count, padded + kBefore);
    std::fill_n(padded + kBefore + count, kSpare, 0);
    const std::size_t steps = (count + kBefore + 3) / 4 * 4;
    std::size_t j = 0;
    for (; j + kRows <= m; j += kRows) rows(padded + kBefore, b + j, columns + at + j, steps);
    if (j < m) {
      int64_t last[kRows] = {};
      std::copy(b + j, b + m, last);
      rows(padded + kBefore, last, columns + at + j, steps);
    }
  }
}

// Karatsuba: (a1 x + a0)(b1 x + b0) takes the products of the high and of the low halves and that of their sums. The
// limbs of sums double at each level. `work` has 8n places and more.
void halved(const int64_t* a, const int64_t* b, std::size_t n, int64_t* columns, int64_t* work, Rows rows) {
  if (n < kHalve) return schoolbook(a, n, b, n, columns, rows);
  const std::size_t low = (n + 1) / 2, high = n - low;
  halved(a, b, low, columns, work, rows);
  halved(a + low, b + low, high, columns + 2 * low, work, rows);
  int64_t *const middle = work, *const sumA = work + 2 * low, *const sumB = sumA + low;
  for (std::size_t i = 0; i < low; ++i) {
    sumA[i] = a[i] + (i < high ? a[low + i] : 0);
    sumB[i] = b[i] + (i < high ? b[low + i] : 0);
  }
  halved(sumA, sumB, low, middle, work + 4 * low, rows);
  for (std::size_t i = 0; i < 2 * low; ++i) middle[i] -= columns[i] + (i < 2 * high ? columns[2 * low + i] : 0);
  for (std::size_t i = 0; i < std::min(2 * low, 2 * n - low); ++i) columns[low + i] += middle[i];
}

// Pieces of the longer factor as long as the shorter one; the last one is filled up with zeros.
void byHalves(std::span<const int64_t> a, std::span<const int64_t> b, std::span<int64_t> columns, Rows rows) {
  const std::size_t n = b.size();
  Room<int64_t> work(11 * n + 8 * kHalve);
  int64_t *const product = work.data(), *const last = product + 2 * n + kSpare;
  std::fill(columns.begin(), columns.end(), 0);
  for (std::size_t at = 0; at < a.size(); at += n) {
    const int64_t* piece = a.data() + at;
    if (at + n > a.size()) {
      fillPlaces(a.subspan(at), 0, std::span(last, n));
      piece = last;
    }
    halved(piece, b.data(), n, product, last + n, rows);
    const std::size_t count = std::min(2 * n, columns.size() - at);
    for (std::size_t i = 0; i < count; ++i) columns[at + i] += product[i];
  }
}

// One column with what is carried into it; returns the limb.
int64_t limbOf(int64_t column, uint64_t& carry) {
  const uint64_t sum = static_cast<uint64_t>(column) + carry;
  carry = sum / kLimb;
  return static_cast<int64_t>(sum - carry * kLimb);
}

// Carries run through four quarters side by side, for one waits for the other; then from quarter to quarter.
void carried(const int64_t* columns, std::span<int64_t> limbs) {
  constexpr std::size_t kParts = 4, kFew = 24;
  const std::size_t part = limbs.size() >= kFew ? limbs.size() / kParts : 0;
  uint64_t carries[kParts] = {};
  for (std::size_t i = 0; i < part; ++i)
    for (std::size_t p = 0; p < kParts; ++p) limbs[p * part + i] = limbOf(columns[p * part + i], carries[p]);
  for (std::size_t i = kParts * part; i < limbs.size(); ++i) limbs[i] = limbOf(columns[i], carries[kParts - 1]);
  for (std::size_t p = 0; p + 1 < kParts && part > 0; ++p)
    for (std::size_t i = (p + 1) * part; carries[p] != 0; ++i) limbs[i] = limbOf(limbs[i], carries[p]);
}

// Column by column, without places of its own.
void ofFew(std::span<const int64_t> a, std::span<const int64_t> b, std::span<int64_t> product) {
  uint64_t carry = 0;
  for (std::size_t k = 0; k + 1 < product.size(); ++k) {
    const std::size_t first = k < b.size() ? 0 : k - b.size() + 1, last = std::min(k, a.size() - 1);
    int64_t column = 0;
    for (std::size_t i = first; i <= last; ++i) {
      column += a[i] * b[k - i];
      oneByOne();
    }
    product[k] = limbOf(column, carry);
  }
  product.back() = static_cast<int64_t>(carry);
}

}  // namespace

void productLimbs(std::span<const int64_t> a, std::span<const int64_t> b, std::span<int64_t> product) {
  constexpr std::size_t kFew = 6;
  if (a.size() <= kFew) return ofFew(a, b, product);
  Room<int64_t> columns(product.size() + kSpare);
  if (b.size() < kHalve)
    schoolbook(a.data(), a.size(), b.data(), b.size(), columns.data(), chosen());
  else
    byHalves(a, b, std::span(columns).first(product.size()), chosen());
  carried(columns.data(), product);
}

void addRows(const int64_t* a, const int64_t* b, int64_t* columns, std::size_t count) {
  chosen()(a, b, columns, count);
}

void subtractRow(int64_t* columns, int64_t factor, const int64_t* limbs, std::size_t n) {
#if ORVANE_DISPATCH_AVX2
  if (hasAvx2()) return wideSubtract(columns, factor, limbs, n);
#endif
  plainSubtract(columns, factor, limbs, n);
}

}  // namespace HighPrecision
