// SPDX-License-Identifier: Apache-2.0
#include "highprecision/fraction_number.h"

#include <algorithm>

#include "highprecision/integer.h"

namespace HighPrecision {
namespace {

using HP::Integer;
using HP::integerOfLimbs;

// A power of 10^7 in a fraction stands there limb by limb; longer ones are infinite or zero.
constexpr int64_t kMaxLimbs = 4000000;

std::vector<int64_t> atLeastOne(std::vector<int64_t> limbs) {
  while (limbs.size() > 1 && limbs.back() == 0) limbs.pop_back();
  if (limbs.empty()) limbs.push_back(0);
  return limbs;
}

std::vector<int64_t> shifted(std::vector<int64_t> limbs, int64_t zeros) {
  limbs.insert(limbs.begin(), static_cast<std::size_t>(zeros), 0);
  return limbs;
}

Integer signedNumerator(const FractionNumber_c& x) {
  Integer result = integerOfLimbs(x.numerator);
  if (x.isNegative) mpz_neg(result.get(), result.get());
  return result;
}

struct Ratio {
  Integer up, down;
};

void reduce(Ratio& x) {
  Integer common;
  mpz_gcd(common.get(), x.up.get(), x.down.get());
  if (mpz_cmp_ui(common.get(), 1) <= 0) return;
  mpz_divexact(x.up.get(), x.up.get(), common.get());
  mpz_divexact(x.down.get(), x.down.get(), common.get());
}

// Sums of more terms are reduced: the common denominator grows far slower than the product.
constexpr std::size_t kReducedFrom = 16;

Ratio inverses(std::span<const int64_t> values) {
  Ratio sum;
  if (values.size() == 1) {
    sum.up = Integer(1);
    sum.down = Integer(values[0]);
    return sum;
  }
  const std::size_t half = values.size() / 2;
  Ratio low = inverses(values.first(half)), high = inverses(values.subspan(half));
  mpz_mul(sum.down.get(), low.down.get(), high.down.get());
  mpz_mul(sum.up.get(), low.up.get(), high.down.get());
  mpz_addmul(sum.up.get(), high.up.get(), low.down.get());
  if (values.size() >= kReducedFrom) reduce(sum);
  return sum;
}

}  // namespace

FractionNumber_c::FractionNumber_c(std::vector<int64_t> numeratorLimbs, std::vector<int64_t> denominatorLimbs,
                                   bool negative)
    : numerator(atLeastOne(std::move(numeratorLimbs))), denominator(atLeastOne(std::move(denominatorLimbs))) {
  typeCode = 12;
  const std::size_t most = std::min(numerator.size(), denominator.size()) - 1;
  std::size_t zeros = 0;
  while (zeros < most && numerator[zeros] == 0 && denominator[zeros] == 0) ++zeros;
  numerator.erase(numerator.begin(), numerator.begin() + static_cast<std::ptrdiff_t>(zeros));
  denominator.erase(denominator.begin(), denominator.begin() + static_cast<std::ptrdiff_t>(zeros));
  if (denominator.size() == 1 && denominator[0] == 0) *this = infinite(negative);
  isNegative = negative && !isZero();
}

FractionNumber_c::FractionNumber_c(Integer top, Integer bottom, bool negative) : FractionNumber_c() {
  if (bottom.sign() == 0) {
    *this = infinite(negative != (top.sign() < 0));
    return;
  }
  if (top.sign() == 0) return;
  Ratio ratio{std::move(top), std::move(bottom)};
  reduce(ratio);
  isNegative = negative != ((ratio.up.sign() < 0) != (ratio.down.sign() < 0));
  numerator = HP::limbsOfInteger(ratio.up);
  denominator = HP::limbsOfInteger(ratio.down);
}

FractionNumber_c::FractionNumber_c(const HPNumber_c& x) : FractionNumber_c() {
  if (x.isInfinite || x.exponent > kMaxLimbs)
    *this = infinite(x.isNegative);
  else if (x.isZero() || x.exponent < -kMaxLimbs)
    *this = FractionNumber_c();
  else if (x.exponent >= 0)
    *this = FractionNumber_c(shifted(x.limbs, x.exponent), {1}, x.isNegative);
  else
    *this = FractionNumber_c(integerOfLimbs(x.limbs), HP::powerOfTen(7 * static_cast<unsigned long>(-x.exponent)),
                             x.isNegative);
}

FractionNumber_c FractionNumber_c::infinite(bool negative) {
  FractionNumber_c x;
  x.isInfinite = true;
  x.isNegative = negative;
  x.numerator = {1};
  x.denominator = {0};
  return x;
}

FractionNumber_c fractionOfWords(std::span<const int64_t> numerator, std::span<const int64_t> denominator,
                                 bool negative) {
  const HPNumber_c up = numberOfWords(numerator, 0, negative), down = numberOfWords(denominator, 0, false);
  return {shifted(up.limbs, up.exponent), shifted(down.limbs, down.exponent), up.isNegative != down.isNegative};
}

HPNumber_c numberOf(const FractionNumber_c& x, int32_t precision) {
  if (x.isInfinite) return HPNumber_c::infinite(x.isNegative);
  return divide(HPNumber_c(x.numerator, 0, x.isNegative), HPNumber_c(x.denominator, 0, false), precision);
}

FractionNumber_c negated(FractionNumber_c x) {
  x.isNegative = !x.isNegative && !x.isZero();
  return x;
}

FractionNumber_c absolute(FractionNumber_c x) {
  x.isNegative = false;
  return x;
}

FractionNumber_c add(const FractionNumber_c& a, const FractionNumber_c& b) {
  if (a.isInfinite || b.isInfinite) {
    if (a.isInfinite && b.isInfinite && a.isNegative != b.isNegative) return {};
    return FractionNumber_c::infinite(a.isInfinite ? a.isNegative : b.isNegative);
  }
  Integer down = integerOfLimbs(a.denominator), up = signedNumerator(a);
  const Integer other = integerOfLimbs(b.denominator);
  if (mpz_cmp(down.get(), other.get()) == 0) {
    mpz_add(up.get(), up.get(), signedNumerator(b).get());
  } else {
    mpz_mul(up.get(), up.get(), other.get());
    mpz_addmul(up.get(), signedNumerator(b).get(), down.get());
    mpz_mul(down.get(), down.get(), other.get());
  }
  return {std::move(up), std::move(down), false};
}

FractionNumber_c multiply(const FractionNumber_c& a, const FractionNumber_c& b) {
  const bool negative = a.isNegative != b.isNegative;
  if (a.isInfinite || b.isInfinite) return FractionNumber_c::infinite(negative);
  Integer up = integerOfLimbs(a.numerator), down = integerOfLimbs(a.denominator);
  mpz_mul(up.get(), up.get(), integerOfLimbs(b.numerator).get());
  mpz_mul(down.get(), down.get(), integerOfLimbs(b.denominator).get());
  return {std::move(up), std::move(down), negative};
}

FractionNumber_c divide(const FractionNumber_c& a, const FractionNumber_c& b) {
  if (a.isInfinite && b.isInfinite) return {std::vector<int64_t>{1}, {1}, false};
  if (b.isInfinite) return {};
  FractionNumber_c swapped;
  swapped.numerator = b.denominator;
  swapped.denominator = b.numerator;
  swapped.isNegative = b.isNegative;
  return multiply(a, swapped);
}

int compare(const FractionNumber_c& a, const FractionNumber_c& b) {
  if (a.sign() != b.sign()) return a.sign() < b.sign() ? -1 : 1;
  int size = int(a.isInfinite) - int(b.isInfinite);
  if (!a.isInfinite && !b.isInfinite) {
    Integer left = integerOfLimbs(a.numerator), right = integerOfLimbs(b.numerator);
    mpz_mul(left.get(), left.get(), integerOfLimbs(b.denominator).get());
    mpz_mul(right.get(), right.get(), integerOfLimbs(a.denominator).get());
    const int order = mpz_cmp(left.get(), right.get());
    size = (order > 0) - (order < 0);
  }
  return a.isNegative ? -size : size;
}

FractionNumber_c inverseSum(std::span<const int64_t> values) {
  if (values.empty()) return {};
  if (std::find(values.begin(), values.end(), 0) != values.end()) return FractionNumber_c::infinite(false);
  Ratio sum = inverses(values);
  return {std::move(sum.up), std::move(sum.down), false};
}

}  // namespace HighPrecision
