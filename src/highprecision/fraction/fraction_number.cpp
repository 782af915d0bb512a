// SPDX-License-Identifier: Apache-2.0
#include "highprecision/fraction/fraction_number.h"

#include <algorithm>
#include <utility>

#include "highprecision/fraction/rational.h"

namespace HighPrecision {
namespace {

using HP::Rational;

// A power of 10^7 in a fraction stands there limb by limb; longer ones are infinite or zero.
constexpr int64_t kMaxLimbs = 4000000;

LimbVector atLeastOne(LimbVector limbs) {
  limbs.dropTopZeros(1);
  if (limbs.empty()) limbs.push_back(0);
  return limbs;
}

LimbVector shifted(LimbVector limbs, int64_t zeros) {
  limbs.insertLow(static_cast<std::size_t>(zeros));
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

FractionNumber_c::FractionNumber_c() {
  static const auto zero = std::make_shared<const FractionParts>(LimbVector{0}, LimbVector{1}, true);
  typeCode = 12;
  parts = zero;
}

FractionNumber_c::FractionNumber_c(LimbVector up, LimbVector down, bool negative) {
  typeCode = 12;
  up = atLeastOne(std::move(up));
  down = atLeastOne(std::move(down));
  const std::size_t most = std::min(up.size(), down.size()) - 1;
  std::size_t zeros = 0;
  while (zeros < most && up[zeros] == 0 && down[zeros] == 0) ++zeros;
  up.dropLow(zeros);
  down.dropLow(zeros);
  isInfinite = down.size() == 1 && down[0] == 0;
  if (isInfinite) up = {1};
  const auto isOne = [](const LimbVector& limbs) { return limbs.size() == 1 && limbs[0] == 1; };
  const bool lowest = isOne(down) || isOne(up) || isInfinite;
  parts = std::make_shared<const FractionParts>(std::move(up), std::move(down), lowest);
  isNegative = negative && !isZero();
}

FractionNumber_c::FractionNumber_c(Rational&& x) {
  typeCode = 12;
  isNegative = mpq_sgn(x.get()) < 0;
  parts = std::make_shared<const FractionParts>(std::move(x));
}

FractionNumber_c::FractionNumber_c(const HPNumber_c& x) : FractionNumber_c() {
  if (x.isInfinite || x.exponent > kMaxLimbs)
    *this = infinite(x.isNegative);
  else if (x.isZero() || x.exponent < -kMaxLimbs)
    *this = FractionNumber_c();
  else if (x.exponent >= 0)
    *this = FractionNumber_c(shifted(x.limbs, x.exponent), {1}, x.isNegative);
  else
    *this = reduced({x.limbs, shifted({1}, -x.exponent), x.isNegative});
}

Rational rationalOf(const FractionNumber_c& x) {
  Rational result;
  mpq_set(result.get(), x.size().get());
  if (x.isNegative) mpq_neg(result.get(), result.get());
  return result;
}

FractionNumber_c reduced(const FractionNumber_c& x) {
  return x.isInfinite || x.isLowest() ? x : FractionNumber_c(rationalOf(x));
}

FractionNumber_c FractionNumber_c::infinite(bool negative) { return {{1}, {0}, negative}; }

FractionNumber_c FractionNumber_c::reciprocal() const {
  Rational inverse;
  mpq_inv(inverse.get(), size().get());
  FractionNumber_c result(std::move(inverse));
  result.isNegative = isNegative;
  return result;
}

FractionNumber_c fractionOfWords(std::span<const int64_t> numerator, std::span<const int64_t> denominator,
                                 bool negative) {
  const auto isLimb = [](int64_t word) { return word >= 0 && word < kBase; };
  if (std::ranges::all_of(numerator, isLimb) && std::ranges::all_of(denominator, isLimb))
    return {LimbVector(numerator), LimbVector(denominator), negative};
  const HPNumber_c up = numberOfWords(numerator, 0, negative), down = numberOfWords(denominator, 0, false);
  return {shifted(up.limbs, up.exponent), shifted(down.limbs, down.exponent), up.isNegative != down.isNegative};
}

HPNumber_c numberOf(const FractionNumber_c& x, int32_t precision) {
  if (x.isInfinite) return HPNumber_c::infinite(x.isNegative);
  return divide(HPNumber_c(x.numerator(), 0, x.isNegative), HPNumber_c(x.denominator(), 0, false), precision);
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
  Rational sum(a.size().bits() + b.size().bits() + GMP_NUMB_BITS);
  (a.isNegative == b.isNegative ? mpq_add : mpq_sub)(sum.get(), a.size().get(), b.size().get());
  if (a.isNegative) mpq_neg(sum.get(), sum.get());
  return FractionNumber_c(std::move(sum));
}

FractionNumber_c multiply(const FractionNumber_c& a, const FractionNumber_c& b) {
  const bool negative = a.isNegative != b.isNegative;
  if (a.isInfinite || b.isInfinite) return FractionNumber_c::infinite(negative);
  Rational product(a.size().bits() + b.size().bits());
  mpq_mul(product.get(), a.size().get(), b.size().get());
  if (negative) mpq_neg(product.get(), product.get());
  return FractionNumber_c(std::move(product));
}

FractionNumber_c divide(const FractionNumber_c& a, const FractionNumber_c& b) {
  if (a.isInfinite && b.isInfinite) return FractionNumber_c(HPNumber_c(1));
  if (b.isInfinite) return {};
  if (a.isInfinite || b.isZero()) return FractionNumber_c::infinite(a.isNegative != b.isNegative);
  return multiply(a, b.reciprocal());
}

int compare(const FractionNumber_c& a, const FractionNumber_c& b) {
  if (a.sign() != b.sign()) return a.sign() < b.sign() ? -1 : 1;
  int size = int(a.isInfinite) - int(b.isInfinite);
  if (!a.isInfinite && !b.isInfinite) {
    const int order = mpq_cmp(a.size().get(), b.size().get());
    size = (order > 0) - (order < 0);
  }
  return a.isNegative ? -size : size;
}

FractionNumber_c inverseSum(std::span<const int64_t> values) {
  if (values.empty()) return {};
  if (std::find(values.begin(), values.end(), 0) != values.end()) return FractionNumber_c::infinite(false);
  Rational sum = inverses(values);
  mpq_canonicalize(sum.get());
  return FractionNumber_c(std::move(sum));
}

}  // namespace HighPrecision
