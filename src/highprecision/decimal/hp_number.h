// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

#include "frame/base_data.h"
#include "highprecision/decimal/limb_vector.h"

namespace HighPrecision {

/// Base of the limbs, 10^7: a limb product and its carries stay well inside a signed 64-bit word.
constexpr int64_t kBase = 10000000;
/// Half a limb: from here on a dropped limb rounds up.
constexpr int64_t kHalf = kBase / 2;
/// A number whose top limb stands beyond this power of 10^7 is infinite; below its negative it is zero.
constexpr int64_t kMaxExponent = int64_t(1) << 56;
/// Precisions are held between 1 limb and this.
constexpr int32_t kMaxPrecision = 1000000;

/// A decimal float: sign * sum of limbs[i] * (10^7)^(i + exponent). Zero has no limbs. There is no NaN: an undefined
/// result has the infinite flag, no limbs and a positive sign.
class HPNumber_c : public BaseData {
 public:
  HPNumber_c() { typeCode = 13; }
  explicit HPNumber_c(int64_t value);
  HPNumber_c(LimbVector limbs, int64_t exponent, bool negative);
  static HPNumber_c infinite(bool negative);

  bool isZero() const { return limbs.empty() && !isInfinite; }
  /// The power of 10^7 just above the number; of a finite number other than 0.
  int64_t top() const { return exponent + static_cast<int64_t>(limbs.size()); }
  /// -1, 0 or 1.
  int sign() const { return isZero() ? 0 : isNegative ? -1 : 1; }
  bool isInteger() const { return !isInfinite && (limbs.empty() || exponent >= 0); }
  /// Of an integer.
  bool isOdd() const { return exponent == 0 && !limbs.empty() && limbs[0] % 2 != 0; }
  /// Strips zero limbs at both ends and holds the exponent inside its range.
  void normalise();
  /// Rounds to a number of limbs, half up by the highest dropped limb, and normalises.
  void round(int32_t precision);

  int64_t exponent = 0;
  bool isInfinite = false;
  bool isNegative = false;
  LimbVector limbs;

 private:
  void keepHighest(std::size_t most);
};

/// Any 64-bit words as limbs: carries make them 0..9999999, and the value stays. `negative` negates it.
HPNumber_c numberOfWords(std::span<const int64_t> words, int64_t exponent, bool negative);

/// The precision that is used for the one that was asked for.
int32_t heldPrecision(int32_t precision);

HPNumber_c rounded(HPNumber_c x, int32_t precision);

HPNumber_c negated(HPNumber_c x);
HPNumber_c absolute(HPNumber_c x);

// Exact on the full limbs, rounded once.
HPNumber_c add(const HPNumber_c& a, const HPNumber_c& b, int32_t precision);
HPNumber_c subtract(const HPNumber_c& a, const HPNumber_c& b, int32_t precision);
HPNumber_c multiply(const HPNumber_c& a, const HPNumber_c& b, int32_t precision);

/// 0/0 and infinity/infinity are 1, x/0 and infinity/x infinite, x/infinity 0.
HPNumber_c divide(const HPNumber_c& a, const HPNumber_c& b, int32_t precision);

/// The infinite flag for a negative or infinite argument.
HPNumber_c squareRoot(const HPNumber_c& x, int32_t precision);

/// Towards zero; an infinite number stays as it is.
HPNumber_c integerPart(HPNumber_c x);

/// -1, 0, 1 for a < b, a = b, a > b; infinities of one sign are equal.
int compare(const HPNumber_c& a, const HPNumber_c& b);

/// A number just above (up) or below |x|, its sign kept: it rounds as x(1 + d) or x(1 - d) does for any d too small to
/// reach the digits of x or the limb behind the precision.
HPNumber_c nudged(const HPNumber_c& x, bool up, int32_t precision);

/// Digits of a number in any base, most significant first, integer part and fraction; exact, rounded once.
HPNumber_c convert(std::span<const int32_t> integerDigits, std::span<const int32_t> fractionDigits, int32_t base,
                   bool negative, int32_t precision);

}  // namespace HighPrecision
