// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <optional>

#include "highprecision/decimal/hp_functions.h"
#include "highprecision/fraction/fraction_number.h"
#include "highprecision/fraction/rational.h"

namespace HighPrecision {
namespace {

using HP::Rational;

// Powers beyond this size are not taken.
constexpr double kMaxBits = 1 << 28;
// Of what leaves the rational numbers where no precision is given.
constexpr int32_t kPrecision = 52;
// Limbs of an argument beyond those of the result.
constexpr int32_t kSpareLimbs = 8;

bool isOne(const LimbVector& limbs) { return limbs.size() == 1 && limbs[0] == 1; }

FractionNumber_c integer(int64_t n) { return FractionNumber_c(HPNumber_c(n)); }

// The n-th root of a fraction in lowest terms, where it is a fraction.
std::optional<FractionNumber_c> exactRoot(const FractionNumber_c& x, unsigned long n) {
  if (x.isInfinite || x.isNegative) return std::nullopt;
  Rational root;
  if (mpz_root(root.up(), x.size().up(), n) == 0) return std::nullopt;
  if (mpz_root(root.down(), x.size().down(), n) == 0) return std::nullopt;
  return FractionNumber_c(std::move(root));
}

std::optional<int64_t> smallInteger(const LimbVector& limbs) {
  if (limbs.size() > 2) return std::nullopt;
  return limbs[0] + (limbs.size() > 1 ? limbs[1] * kBase : 0);
}

}  // namespace

FractionNumber_c power(const FractionNumber_c& x, int64_t n, bool& exact) {
  if (n == 0) return integer(1);
  const bool negative = x.isNegative && n % 2 != 0;
  const uint64_t count = n < 0 ? 0 - static_cast<uint64_t>(n) : static_cast<uint64_t>(n);
  if (x.isInfinite) return n > 0 ? FractionNumber_c::infinite(negative) : FractionNumber_c();
  if (x.isZero()) {
    exact = exact && n > 0;
    return n > 0 ? FractionNumber_c() : FractionNumber_c::infinite(false);
  }
  const FractionNumber_c base = reduced(x);
  if (isOne(base.numerator()) && isOne(base.denominator())) return integer(negative ? -1 : 1);
  Rational value = rationalOf(base);
  const double bits = static_cast<double>(std::max(mpz_sizeinbase(value.up(), 2), mpz_sizeinbase(value.down(), 2)));
  if (bits * static_cast<double>(count) > kMaxBits) {
    exact = false;
    return FractionNumber_c::infinite(negative);
  }
  // Powers of numbers without a common factor have none.
  mpz_pow_ui(value.up(), value.up(), count);
  mpz_pow_ui(value.down(), value.down(), count);
  if (n < 0) mpq_inv(value.get(), value.get());
  return FractionNumber_c(std::move(value));
}

FractionNumber_c power(const FractionNumber_c& a, const FractionNumber_c& b, bool& exact) {
  const FractionNumber_c base = reduced(a), exponent = reduced(b);
  if (!exponent.isInfinite) {
    const std::optional<int64_t> up = smallInteger(exponent.numerator()), down = smallInteger(exponent.denominator());
    if (up && down) {
      const int64_t n = exponent.isNegative ? -*up : *up;
      if (*down == 1) return power(base, n, exact);
      if (const auto root = exactRoot(base, static_cast<unsigned long>(*down))) return power(*root, n, exact);
    }
  }
  exact = false;
  const HPNumber_c x = numberOf(base, kPrecision + kSpareLimbs), y = numberOf(exponent, kPrecision + kSpareLimbs);
  return FractionNumber_c(realPower(x, y, kPrecision));
}

FractionNumber_c functionOf(const FractionNumber_c& x, int32_t precision, int64_t n, uint8_t code) {
  if (code == 41) return negated(x);
  if (code == 42) return absolute(x);
  if (code >= 60) {
    bool exact = true;
    return power(x, n, exact);
  }
  if (code == 49)
    if (const auto root = exactRoot(reduced(x), 2)) return *root;
  const HPNumber_c argument = numberOf(x, heldPrecision(precision) + kSpareLimbs);
  return FractionNumber_c(functionOf(argument, code, precision));
}

FractionNumber_c functionOf(const FractionNumber_c& a, const FractionNumber_c& b, uint8_t code, bool& exact) {
  switch (code) {
    case 0:
      return add(a, b);
    case 1:
      return add(a, negated(b));
    case 2:
      return multiply(a, b);
    case 3:
      exact = !b.isZero();
      return divide(a, b);
    case 4:
      return power(a, b, exact);
    default:
      exact = false;
      return {};
  }
}

}  // namespace HighPrecision
