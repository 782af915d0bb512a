// SPDX-License-Identifier: Apache-2.0
#include "highprecision/decimal/limbs.h"

#include <algorithm>

#include "highprecision/decimal/hp_number.h"
#include "highprecision/decimal/integer.h"
#include "highprecision/decimal/limb_product.h"
#include "highprecision/decimal/limb_quotient.h"

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
constexpr std::size_t kFewByColumns = 800;
static_assert(kFewByColumns <= kLongestQuotient);

std::vector<int64_t> padded(std::span<const int64_t> a, std::size_t padding) {
  std::vector<int64_t> result(padding);
  result.insert(result.end(), a.begin(), a.end());
  return result;
}

}  // namespace

std::vector<int64_t> multiplyLimbs(std::span<const int64_t> a, std::span<const int64_t> b) {
  if (a.size() < b.size()) std::swap(a, b);
  if (b.size() >= kGmpProduct) {
    Integer product = integerOfLimbs(a);
    mpz_mul(product.get(), product.get(), integerOfLimbs(b).get());
    return limbsOfInteger(product);
  }
  // A column holds at most kGmpProduct products below 10^14: no carry is due before the end.
  constexpr auto kLimb = static_cast<uint64_t>(kBase);
  static_assert(kGmpProduct < INT64_MAX / (kLimb * kLimb) - 1);
  constexpr std::size_t kFew = 64;  // so many limbs of both need no memory of their own
  uint32_t few[kFew];
  std::vector<uint32_t> many(a.size() + b.size() > kFew ? a.size() + b.size() : 0);
  uint32_t* const factors = many.empty() ? few : many.data();
  std::copy(a.begin(), a.end(), factors);
  std::copy(b.begin(), b.end(), factors + a.size());
  std::vector<int64_t> limbs(a.size() + b.size());
  const std::span<uint64_t> columns(reinterpret_cast<uint64_t*>(limbs.data()), limbs.size());
  productColumns({factors, a.size()}, {factors + a.size(), b.size()}, columns);
  uint64_t carry = 0;
  for (uint64_t& column : columns) {
    column += carry;
    carry = column / kLimb;
    column -= carry * kLimb;
  }
  return limbs;
}

std::vector<int64_t> divideLimbs(std::span<const int64_t> a, std::size_t padding, std::span<const int64_t> b) {
  if (b.size() == 1) {  // short division, the remainder carried as rem * 10^7 + limb
    std::vector<int64_t> quotient = padded(a, padding);
    int64_t rest = 0;
    for (std::size_t i = quotient.size(); i-- > 0;) {
      const int64_t part = rest * kBase + quotient[i];
      quotient[i] = part / b[0];
      rest = part % b[0];
    }
    return quotient;
  }
  const std::size_t length = a.size() + padding;
  if (std::min(b.size(), length - std::min(length, b.size())) <= kFewByColumns && b.back() != 0)
    return quotientLimbs(a, padding, b);
  Integer quotient = integerOfLimbs(padded(a, padding));
  mpz_tdiv_q(quotient.get(), quotient.get(), integerOfLimbs(b).get());
  return limbsOfInteger(quotient);
}

std::vector<int64_t> squareRootLimbs(std::span<const int64_t> a, std::size_t padding) {
  const std::size_t length = a.size() + padding;
  if (length > 2 && length / 2 <= kFewByColumns && a.back() != 0) return rootLimbs(a, padding);
  Integer root = integerOfLimbs(padded(a, padding));
  mpz_sqrt(root.get(), root.get());
  return limbsOfInteger(root);
}

}  // namespace HighPrecision
