// SPDX-License-Identifier: Apache-2.0
#include "highprecision/decimal/limbs.h"

#include <algorithm>

#include "highprecision/decimal/hp_number.h"
#include "highprecision/decimal/integer.h"

namespace HighPrecision {
namespace {

using HP::Integer;
using HP::integerOfLimbs;
using HP::limbsOfInteger;

// From this length of the shorter factor on, the way through GMP's integers is quicker than the schoolbook product, the
// change of radix there and back included.
constexpr std::size_t kGmpProduct = 350;

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
  // A column holds at most kGmpProduct products below 10^14: no carry is due before the end. Factors of 32 bits let the
  // compiler take several products at once.
  static_assert(static_cast<int64_t>(kGmpProduct) < INT64_MAX / (kBase * kBase) - 1);
  const std::vector<uint32_t> factors(a.begin(), a.end());
  std::vector<int64_t> columns(a.size() + b.size(), 0);
  for (std::size_t j = 0; j < b.size(); ++j) {
    const auto factor = static_cast<uint32_t>(b[j]);
    int64_t* column = columns.data() + j;
    for (std::size_t i = 0; i < factors.size(); ++i)
      column[i] += static_cast<int64_t>(static_cast<uint64_t>(factors[i]) * factor);
  }
  int64_t carry = 0;
  for (int64_t& column : columns) {
    column += carry;
    carry = column / kBase;
    column -= carry * kBase;
  }
  return columns;
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
  Integer quotient = integerOfLimbs(padded(a, padding));
  mpz_tdiv_q(quotient.get(), quotient.get(), integerOfLimbs(b).get());
  return limbsOfInteger(quotient);
}

std::vector<int64_t> squareRootLimbs(std::span<const int64_t> a, std::size_t padding) {
  Integer root = integerOfLimbs(padded(a, padding));
  mpz_sqrt(root.get(), root.get());
  return limbsOfInteger(root);
}

}  // namespace HighPrecision
