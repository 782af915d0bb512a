// SPDX-License-Identifier: Apache-2.0
#include "highprecision/decimal/hp_number.h"
#include "highprecision/decimal/integer.h"

namespace HighPrecision {
namespace {

using HP::Integer;

struct Digits {
  Integer value;  // digits by multiply-and-add
  Integer power;  // base^count
};

// Halves at a time, so that long inputs take GMP's fast products.
Digits accumulate(std::span<const int32_t> digits, int32_t base) {
  Digits result;
  if (digits.size() <= 32) {
    mpz_set_ui(result.power.get(), 1);
    for (const int32_t digit : digits) {
      mpz_mul_si(result.value.get(), result.value.get(), base);
      const Integer term(digit);
      mpz_add(result.value.get(), result.value.get(), term.get());
      mpz_mul_si(result.power.get(), result.power.get(), base);
    }
    return result;
  }
  const std::size_t half = digits.size() / 2;
  const Digits high = accumulate(digits.first(half), base);
  const Digits low = accumulate(digits.subspan(half), base);
  mpz_mul(result.value.get(), high.value.get(), low.power.get());
  mpz_add(result.value.get(), result.value.get(), low.value.get());
  mpz_mul(result.power.get(), high.power.get(), low.power.get());
  return result;
}

HPNumber_c numberOf(const Integer& x) { return {HP::limbsOfInteger(x), 0, x.sign() < 0}; }

}  // namespace

HPNumber_c convert(std::span<const int32_t> integerDigits, std::span<const int32_t> fractionDigits, int32_t base,
                   bool negative, int32_t precision) {
  const Digits whole = accumulate(integerDigits, base);
  const Digits fraction = accumulate(fractionDigits, base);
  // whole + fraction / base^count over one denominator, so that the only rounding is that of the quotient.
  Integer numerator;
  mpz_mul(numerator.get(), whole.value.get(), fraction.power.get());
  mpz_add(numerator.get(), numerator.get(), fraction.value.get());
  const HPNumber_c value = divide(numberOf(numerator), numberOf(fraction.power), precision);
  return negative ? negated(value) : value;
}

}  // namespace HighPrecision
