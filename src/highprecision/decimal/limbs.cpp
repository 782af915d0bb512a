// SPDX-License-Identifier: Apache-2.0
#include "highprecision/decimal/limbs.h"

#include <algorithm>

#include "highprecision/decimal/hp_number.h"
#include "highprecision/decimal/integer.h"
#include "highprecision/decimal/limb_product.h"
#include "highprecision/decimal/limb_quotient.h"
#include "highprecision/decimal/room.h"

namespace HighPrecision {
namespace {

using HP::Integer;
using HP::integerOfLimbs;
using HP::limbsOfInteger;

// From this length of the shorter factor on, the way through GMP's integers is quicker than the product of limbs, the
// change of radix there and back included.
constexpr std::size_t kGmpProduct = 4000;
static_assert(kGmpProduct <= kLongestColumns);

// Up to this length, of the divisor or the quotient and of the root, limb by limb is quicker.
constexpr std::size_t kFewByColumns = 4000;
static_assert(kFewByColumns <= kLongestQuotient);

Integer integerOfPadded(std::span<const int64_t> a, std::size_t padding) {
  Room<int64_t> places(padding + a.size());
  fillPlaces(a, padding, places);
  return integerOfLimbs(places);
}

void put(const Integer& x, std::span<int64_t> places) {
  const LimbVector limbs = limbsOfInteger(x);
  fillPlaces(limbs, 0, places);
}

}  // namespace

void multiplyLimbs(std::span<const int64_t> a, std::span<const int64_t> b, std::span<int64_t> product) {
  if (a.size() < b.size()) std::swap(a, b);
  if (b.size() < kGmpProduct) return productLimbs(a, b, product);
  Integer whole = integerOfLimbs(a);
  mpz_mul(whole.get(), whole.get(), integerOfLimbs(b).get());
  put(whole, product);
}

void divideLimbs(std::span<const int64_t> a, std::size_t padding, std::span<const int64_t> b,
                 std::span<int64_t> quotient) {
  if (b.size() == 1) {  // short division, the remainder carried as rem * 10^7 + limb
    int64_t rest = 0;
    for (std::size_t i = padding + a.size(); i-- > 0;) {
      const int64_t part = rest * kBase + (i >= padding ? a[i - padding] : 0);
      if (i < quotient.size()) quotient[i] = part / b[0];
      rest = part % b[0];
    }
    return;
  }
  if (std::min(b.size(), quotient.size()) <= kFewByColumns && b.back() != 0)
    return quotientLimbs(a, padding, b, quotient);
  Integer whole = integerOfPadded(a, padding);
  mpz_tdiv_q(whole.get(), whole.get(), integerOfLimbs(b).get());
  put(whole, quotient);
}

void squareRootLimbs(std::span<const int64_t> a, std::size_t padding, std::span<int64_t> root) {
  if (a.size() + padding > 2 && root.size() <= kFewByColumns && a.back() != 0) return rootLimbs(a, padding, root);
  Integer whole = integerOfPadded(a, padding);
  mpz_sqrt(whole.get(), whole.get());
  put(whole, root);
}

}  // namespace HighPrecision
