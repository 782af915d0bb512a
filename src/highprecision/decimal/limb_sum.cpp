// SPDX-License-Identifier: Apache-2.0
#include "highprecision/decimal/limb_sum.h"

#include "frame/processor.h"
#include "highprecision/decimal/hp_number.h"

#if ORVANE_DISPATCH_AVX2
#include <immintrin.h>
#endif

namespace HighPrecision {
namespace {

enum class Kind { sum, difference };

// One place: a + b + carry or a - b - carry as a limb, and the next carry. Carries of random limbs are not to be
// foreseen: no branch on them.
template <Kind kind>
[[gnu::always_inline]] inline int64_t limbOf(int64_t a, int64_t b, int64_t& carry) {
  if constexpr (kind == Kind::sum) {
    const int64_t total = a + b + carry;
    carry = total >= kBase;
    return total - (-carry & kBase);
  } else {
    const int64_t total = a - b - carry;
    carry = total < 0;
    return total + (-carry & kBase);
  }
}

#if ORVANE_DISPATCH_AVX2
using Four = __m256i;

// Four places that are all ones where true, as bits and back.
[[gnu::target("avx2"), gnu::always_inline]] inline unsigned maskOf(Four truth) {
  return static_cast<unsigned>(_mm256_movemask_pd(_mm256_castsi256_pd(truth)));
}
[[gnu::target("avx2"), gnu::always_inline]] inline Four truthOf(unsigned mask) {
  const Four bits = _mm256_set_epi64x(8, 4, 2, 1);
  return _mm256_cmpeq_epi64(_mm256_and_si256(_mm256_set1_epi64x(mask), bits), bits);
}

// Sixteen limbs at a time. A limb makes a carry by itself or hands on one that comes; as bits m and h, the carries of
// (m | h) + m + carry are those of the limbs. Returns how many limbs were done.
template <Kind kind>
[[gnu::target("avx2")]] std::size_t wide(const int64_t* a, const int64_t* b, std::size_t n, int64_t* places,
                                         int64_t& carryOfAll) {
  constexpr bool kSum = kind == Kind::sum;
  constexpr std::size_t kParts = 4, kPart = 4, kAtOnce = kParts * kPart;
  const Four base = _mm256_set1_epi64x(kBase), bound = _mm256_set1_epi64x(kSum ? kBase - 1 : 0);
  auto carry = static_cast<unsigned>(carryOfAll);
  std::size_t done = 0;
  for (; done + kAtOnce <= n; done += kAtOnce) {
    Four sums[kParts];
    unsigned made = 0, handed = 0;
    for (std::size_t p = 0; p < kParts; ++p) {
      const Four x = _mm256_loadu_si256(reinterpret_cast<const Four*>(a + done + p * kPart)),
                 y = _mm256_loadu_si256(reinterpret_cast<const Four*>(b + done + p * kPart));
      sums[p] = kSum ? _mm256_add_epi64(x, y) : _mm256_sub_epi64(x, y);
      made |= maskOf(kSum ? _mm256_cmpgt_epi64(sums[p], bound) : _mm256_cmpgt_epi64(bound, sums[p])) << (p * kPart);
      handed |= maskOf(_mm256_cmpeq_epi64(sums[p], bound)) << (p * kPart);
    }
    const unsigned total = (made | handed) + made + carry;
    const unsigned in = total ^ handed;  // (made | handed) ^ made = handed: what is not made
    for (std::size_t p = 0; p < kParts; ++p) {
      const Four one = truthOf(in >> (p * kPart)), over = _mm256_and_si256(truthOf(in >> (p * kPart + 1)), base);
      const Four limbs = kSum ? _mm256_sub_epi64(_mm256_sub_epi64(sums[p], one), over)
                              : _mm256_add_epi64(_mm256_add_epi64(sums[p], one), over);
      _mm256_storeu_si256(reinterpret_cast<Four*>(places + done + p * kPart), limbs);
    }
    carry = total >> kAtOnce;
  }
  carryOfAll = carry;
  return done;
}
#endif

// Returns the last carry.
template <Kind kind>
int64_t combine(std::span<const int64_t> a, std::span<const int64_t> b, int64_t* places) {
  int64_t carry = 0;
  std::size_t i = 0;
#if ORVANE_DISPATCH_AVX2
  if (b.size() >= 16 && hasAvx2()) i = wide<kind>(a.data(), b.data(), b.size(), places, carry);
#endif
  for (; i < b.size(); ++i) places[i] = limbOf<kind>(a[i], b[i], carry);
  for (; i < a.size(); ++i) places[i] = limbOf<kind>(a[i], 0, carry);
  return carry;
}

}  // namespace

void addLimbs(std::span<const int64_t> a, std::span<const int64_t> b, int64_t* places) {
  const int64_t carry = combine<Kind::sum>(a, b, places);
  places[a.size()] = carry;
}

void subtractLimbs(std::span<const int64_t> a, std::span<const int64_t> b, int64_t* places) {
  combine<Kind::difference>(a, b, places);
  places[a.size()] = 0;
}

}  // namespace HighPrecision
