// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "frame/base_data.h"
#include "highprecision/decimal/hp_number.h"
#include "highprecision/fraction/fraction_parts.h"

namespace HighPrecision {

/// An exact rational number. Numerator and denominator are integers in base 10^7, least significant limb first, with at
/// least one limb each; zero has the numerator limb 0 and no sign. An infinite fraction is 1/0.
class FractionNumber_c : public BaseData {
 public:
  FractionNumber_c();
  /// Strips the low limbs that are zero in both; does not reduce. A zero denominator makes it infinite.
  FractionNumber_c(LimbVector numeratorLimbs, LimbVector denominatorLimbs, bool negative);
  /// A number in lowest terms.
  explicit FractionNumber_c(HP::Rational&& x);
  explicit FractionNumber_c(const HPNumber_c& x);
  static FractionNumber_c infinite(bool negative);

  /// -1, 0 or 1.
  int sign() const { return isZero() ? 0 : isNegative ? -1 : 1; }
  bool isZero() const { return !isInfinite && parts->isZero; }
  const LimbVector& numerator() const { return parts->numerator(); }
  const LimbVector& denominator() const { return parts->denominator(); }
  /// The size of a finite fraction, in lowest terms.
  const HP::Rational& size() const { return parts->value(); }
  /// Known to be in lowest terms, so that no common factor need be looked for.
  bool isLowest() const { return parts->isLowest; }
  FractionNumber_c reciprocal() const;  ///< of a finite number other than zero, in lowest terms

  bool isInfinite = false;
  bool isNegative = false;

 private:
  std::shared_ptr<const FractionParts> parts;
};

/// A finite fraction in lowest terms.
HP::Rational rationalOf(const FractionNumber_c& x);

/// The same in lowest terms.
FractionNumber_c reduced(const FractionNumber_c& x);

/// Any 64-bit words as limbs: carries make them 0..9999999, and the values stay.
FractionNumber_c fractionOfWords(std::span<const int64_t> numerator, std::span<const int64_t> denominator,
                                 bool negative);

/// The quotient, rounded.
HPNumber_c numberOf(const FractionNumber_c& x, int32_t precision);

FractionNumber_c negated(FractionNumber_c x);
FractionNumber_c absolute(FractionNumber_c x);

// Exact, in lowest terms.
FractionNumber_c add(const FractionNumber_c& a, const FractionNumber_c& b);
FractionNumber_c multiply(const FractionNumber_c& a, const FractionNumber_c& b);
/// A zero divisor gives the infinite flag, 0/0 too.
FractionNumber_c divide(const FractionNumber_c& a, const FractionNumber_c& b);

/// x^n. `exact` is cleared, and the result infinite, when it would not fit into memory reasonably.
FractionNumber_c power(const FractionNumber_c& x, int64_t n, bool& exact);

/// a^b: exact where a has the root; otherwise `exact` is cleared and the value has 52 limbs.
FractionNumber_c power(const FractionNumber_c& a, const FractionNumber_c& b, bool& exact);

/// -1, 0 or 1.
int compare(const FractionNumber_c& a, const FractionNumber_c& b);

/// Sum of 1/values[i], by binary splitting; a value 0 makes it infinite.
FractionNumber_c inverseSum(std::span<const int64_t> values);

/// Function of one fraction by the code of fraction_fun.
FractionNumber_c functionOf(const FractionNumber_c& x, int32_t precision, int64_t n, uint8_t code);

/// Operation by the code of fraction_fun2.
FractionNumber_c functionOf(const FractionNumber_c& a, const FractionNumber_c& b, uint8_t code, bool& exact);

}  // namespace HighPrecision
