// SPDX-License-Identifier: Apache-2.0
#include "highprecision/fraction/fraction_number.h"

#include <algorithm>

#include "highprecision/decimal/integer.h"
#include "highprecision/fraction/rational.h"

namespace HighPrecision {
namespace {

using HP::Integer;
using HP::integerOfLimbs;
using HP::Rational;

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

// Sums of more terms are reduced: the common denominator grows far slower than the product.
constexpr std::size_t kReducedFrom = 16;

// Numerator and denominator of the sum; the sign may be in the denominator.
Rational inverses(std::span<const int64_t> values) {
  Rational sum;
  if (values.size() == 1) {
    mpz_set_ui(sum.up(), 1);
    mpz_set_si(sum.down(), values[0]);
    return sum;
  }
  const std::size_t half = values.size() / 2;
  const Rational low = inverses(values.first(half)), high = inverses(values.subspan(half));
  mpz_mul(sum.down(), low.down(), high.down());
  mpz_mul(sum.up(), low.up(), high.down());
  mpz_addmul(sum.up(), high.up(), low.down());
  if (values.size() >= kReducedFrom) mpq_canonicalize(sum.get());
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
  isLowest = denominator.size() == 1 && denominator[0] == 1;
}

FractionNumber_c::FractionNumber_c(const Rational& x) : FractionNumber_c() {
  isNegative = mpq_sgn(x.get()) < 0;
  numerator = atLeastOne(HP::limbsOfInteger(x.up()));
  denominator = HP::limbsOfInteger(x.down());
}

FractionNumber_c::FractionNumber_c(const HPNumber_c& x) : FractionNumber_c() {
  if (x.isInfinite || x.exponent > kMaxLimbs)
    *this = infinite(x.isNegative);
  else if (x.isZero() || x.exponent < -kMaxLimbs)
    *this = FractionNumber_c();
  else if (x.exponent >= 0)
    *this = FractionNumber_c(shifted(x.limbs, x.exponent), {1}, x.isNegative);
  else
    *this = FractionNumber_c(rationalOf({x.limbs, shifted({1}, -x.exponent), x.isNegative}));
}

Rational rationalOf(const FractionNumber_c& x) {
  Rational result;
  mpz_set(result.up(), integerOfLimbs(x.numerator).get());
  mpz_set(result.down(), integerOfLimbs(x.denominator).get());
  if (x.isNegative) mpz_neg(result.up(), result.up());
  if (!x.isLowest) mpq_canonicalize(result.get());
  return result;
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
  Rational sum = rationalOf(a);
  mpq_add(sum.get(), sum.get(), rationalOf(b).get());
  return FractionNumber_c(sum);
}

FractionNumber_c multiply(const FractionNumber_c& a, const FractionNumber_c& b) {
  const bool negative = a.isNegative != b.isNegative;
  if (a.isInfinite || b.isInfinite) return FractionNumber_c::infinite(negative);
  Rational product = rationalOf(a);
  mpq_mul(product.get(), product.get(), rationalOf(b).get());
  return FractionNumber_c(product);
}

FractionNumber_c divide(const FractionNumber_c& a, const FractionNumber_c& b) {
  if (a.isInfinite && b.isInfinite) return FractionNumber_c(HPNumber_c(1));
  if (b.isInfinite) return {};
  if (a.isInfinite || b.isZero()) return FractionNumber_c::infinite(a.isNegative != b.isNegative);
  FractionNumber_c swapped = b;
  std::swap(swapped.numerator, swapped.denominator);
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
  Rational sum = inverses(values);
  mpq_canonicalize(sum.get());
  return FractionNumber_c(sum);
}

}  // namespace HighPrecision
