// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gmp.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "special/hypergeometric/wide_float.h"

#if defined(__SIZEOF_INT128__) && GMP_NUMB_BITS == 64

#define ORVANE_HAS_CUT_FLOAT 1

namespace SpecialFunction {

/// GMP's floats with a fixed count of limbs, inline and without allocation: each operation gives the very number that
/// mpf_mul, mpf_div, mpf_div_ui and mpf_add give in floats of `kPrecision` limbs of precision (one limb more is held).
/// What is stated there by counts of limbs depends on values only, as limbs of 0 at the low end change nothing: a
/// factor is cut to kPrecision limbs, a product to one more, a quotient has kPrecision digits in base 2^64 behind the
/// point of the quotient of the two mantissas, a sum keeps kPrecision limbs below its larger exponent (and the carry),
/// a difference one more.

/// An exact factor of up to three limbs: its highest and its lowest limb are not 0. No limb: the number is 0.
struct CutFactor {
  mp_limb_t limb[3];
  int count;
  int64_t exponent;  ///< limbs before the point
  bool negative;

  static CutFactor of(double x) {
    CutFactor result{};
    if (x == 0) return result;
    const Factor exact = Factor::of(x);  // an odd number of up to 53 bits
    const int64_t place = exact.exponent >= 0 ? exact.exponent / 64 : -((63 - exact.exponent) / 64);
    const UInt128 units = exact.units << (exact.exponent - 64 * place);
    return joined({low(units), high(units), 0}, place, exact.negative);
  }

  /// Three limbs, the lowest at 2^(64 place).
  static CutFactor joined(const mp_limb_t (&limbs)[3], int64_t place, bool negative) {
    if (limbs[0] == 0 && limbs[1] != 0 && limbs[2] != 0) return {{limbs[1], limbs[2]}, 2, place + 3, negative};
    int first = 0, end = 3;
    while (end > 0 && limbs[end - 1] == 0) --end;
    while (first < end && limbs[first] == 0) ++first;
    CutFactor result{{}, end - first, place + end, negative};
    for (int i = 0; i < 3; ++i) result.limb[i] = first + i < end ? limbs[first + i] : 0;
    return result;
  }
};

/// A parameter a + n of a series, exactly: one limb before the point and two behind it.
class CutParameter {
 public:
  /// False where it does not fit.
  bool set(mpf_srcptr x) {
    const int size = std::abs(x->_mp_size);
    negative = x->_mp_size < 0;
    std::fill_n(part, 3, 0);
    for (int i = 0; i < size; ++i) {
      const long place = x->_mp_exp - size + i + 2;
      if (x->_mp_d[i] == 0) continue;
      if (place < 0 || place > 2) return false;
      part[place] = x->_mp_d[i];
    }
    return part[2] >> 62 == 0;
  }
  bool set(double x) {
    const CutFactor exact = CutFactor::of(x);
    negative = exact.negative;
    std::fill_n(part, 3, 0);
    for (int i = 0; i < exact.count; ++i) {
      const int64_t place = exact.exponent - exact.count + i + 2;
      if (place < 0 || place > 2) return false;
      part[place] = exact.limb[i];
    }
    return part[2] >> 62 == 0;
  }

  CutFactor value() const { return CutFactor::joined(part, -2, negative); }

  void addOne() {
    if (!negative) {
      ++part[2];
    } else if (part[2] != 0) {
      --part[2];
    } else {  // 1 - fraction
      negative = false;
      part[2] = part[0] == 0 && part[1] == 0 ? 1 : 0;
      part[1] = ~part[1] + (part[0] == 0 ? 1 : 0);
      part[0] = -part[0];
    }
  }

 private:
  mp_limb_t part[3];
  bool negative;
};

/// floor((2^128 - 1) / d) - 2^64 for d with its highest bit set (Moeller and Granlund, IEEE Trans. Comput. 60, 2011):
/// a quotient in doubles and the rest of it.
inline uint64_t reciprocalOf(uint64_t d) {
  const double size = static_cast<double>(d >> 11);
  const double guess = 0x1p116 / size;  // 2^127 / d
  const uint64_t half = guess < 0x1.fffffffffffffp63 ? static_cast<uint64_t>(guess) : ~static_cast<uint64_t>(0);
  UInt128 product = static_cast<UInt128>(half) * d;
  uint64_t quotient = 2 * half;  // of 2^64 and more, without the 2^64
  auto rest = static_cast<Int128>(~(product << 1));
  const auto more = static_cast<int64_t>(static_cast<double>(static_cast<int64_t>(rest >> 24)) * 0x1p13 / size);
  quotient += static_cast<uint64_t>(more);
  rest -= static_cast<Int128>(more) * d;
  while (rest < 0) {
    --quotient;
    rest += d;
  }
  while (rest >= static_cast<Int128>(d)) {
    ++quotient;
    rest -= d;
  }
  return quotient;
}

/// A divisor of two limbs (high with its highest bit set), or of one, and its reciprocal (ibid.).
struct CutDivisor {
  uint64_t above, below, reciprocal;

  explicit CutDivisor(uint64_t d) : above(d), below(0), reciprocal(reciprocalOf(d)) {}
  CutDivisor(uint64_t d1, uint64_t d0) : above(d1), below(d0), reciprocal(reciprocalOf(d1)) {
    uint64_t p = d1 * reciprocal + d0;
    if (p < d0) {
      --reciprocal;
      if (p >= d1) {
        --reciprocal;
        p -= d1;
      }
      p -= d1;
    }
    const UInt128 t = static_cast<UInt128>(d0) * reciprocal;
    p += high(t);
    if (p < high(t)) {
      --reciprocal;
      if (p > d1 || (p == d1 && low(t) >= d0)) --reciprocal;
    }
  }

  /// The quotient of rest 2^64 + next by one limb; rest < above becomes that of the division.
  uint64_t step(uint64_t& rest, uint64_t next) const {
    const UInt128 q = static_cast<UInt128>(rest) * reciprocal + (static_cast<UInt128>(rest + 1) << 64 | next);
    uint64_t quotient = high(q);
    rest = next - quotient * above;
    const uint64_t mask = -static_cast<uint64_t>(rest > low(q));
    quotient += mask;
    rest += mask & above;
    if (rest >= above) [[unlikely]] {
      rest -= above;
      ++quotient;
    }
    return quotient;
  }

  /// The same by two limbs: rest is below the divisor.
  uint64_t step(UInt128& rest, uint64_t next) const {
    const UInt128 divisor = static_cast<UInt128>(above) << 64 | below;
    const UInt128 q = static_cast<UInt128>(high(rest)) * reciprocal + rest;
    uint64_t quotient = high(q);
    rest = (static_cast<UInt128>(low(rest) - quotient * above) << 64 | next) - divisor -
           static_cast<UInt128>(below) * quotient;
    ++quotient;
    if (high(rest) >= low(q)) {
      --quotient;
      rest += divisor;
    }
    if (rest >= divisor) [[unlikely]] {
      ++quotient;
      rest -= divisor;
    }
    return quotient;
  }
};

template <int kPrecision>
struct CutFloat {
  static constexpr int kLimbs = kPrecision + 1;
  mp_limb_t limb[kLimbs];  ///< the highest is 0 for the number 0 only
  int64_t exponent;        ///< limbs before the point
  bool negative;

  static CutFloat of(const CutFactor& x) {
    CutFloat result{{}, x.exponent, x.negative};
    for (int i = 0; i < x.count; ++i) result.limb[kLimbs - x.count + i] = x.limb[i];
    return result;
  }

  bool isZero() const { return limb[kLimbs - 1] == 0; }
  /// Far below all others for 0.
  long binaryExponent() const {
    if (isZero()) return std::numeric_limits<long>::min() / 2;
    return static_cast<long>(64 * exponent) - std::countl_zero(limb[kLimbs - 1]);
  }

  /// The number as GMP reads it, in the limbs of this one.
  __mpf_struct view() const {
    const int size = isZero() ? 0 : kLimbs;
    return {kPrecision, negative ? -size : size, exponent, const_cast<mp_limb_t*>(limb)};
  }

  int compareSize(const CutFloat& y) const {
    if (isZero() || y.isZero()) return static_cast<int>(!isZero()) - static_cast<int>(!y.isZero());
    if (exponent != y.exponent) return exponent < y.exponent ? -1 : 1;
    for (int i = kLimbs - 1; i >= 0; --i)
      if (limb[i] != y.limb[i]) return limb[i] < y.limb[i] ? -1 : 1;
    return 0;
  }

  void multiply(const CutFactor& y) {
    switch (isZero() ? 0 : y.count) {
      case 0:
        *this = {};
        return;
      case 1:
        multiplyBy<1>(y.limb);
        break;
      case 2:
        multiplyBy<2>(y.limb);
        break;
      default:
        multiplyBy<3>(y.limb);
        break;
    }
    exponent += y.exponent;
    negative = negative != y.negative;
  }

  /// False where the quotient needs a step that is left to GMP.
  bool divide(const CutFactor& y) {
    if (isZero()) return true;
    exponent -= y.exponent - 1;
    negative = negative != y.negative;
    switch (y.count) {
      case 1:
        divideBy(y.limb[0]);
        return true;
      case 2:
        divideBy(y.limb[1], y.limb[0]);
        return true;
      default:
        return false;
    }
  }

  void divide(uint64_t n) {
    if (!isZero()) divideBy(n);
  }

  /// False where GMP treats a cancellation in a way of its own.
  bool add(const CutFloat& y) {
    if (y.isZero()) return true;
    if (isZero()) {
      *this = y;
      return true;
    }
    if (negative == y.negative) {
      addSize(y);
      return true;
    }
    return subtractSize(y);
  }

 private:
  template <int kCount>
  void multiplyBy(const mp_limb_t* y) {
    uint64_t product[kPrecision + kCount];
    for (int j = 0; j < kCount; ++j) {
      uint64_t carry = 0;
      for (int i = 0; i < kPrecision; ++i) {
        const UInt128 part = static_cast<UInt128>(limb[i + 1]) * y[j] + carry + (j == 0 ? 0 : product[i + j]);
        product[i + j] = low(part);
        carry = high(part);
      }
      product[kPrecision + j] = carry;
    }
    const bool isShort = product[kPrecision + kCount - 1] == 0;
    const auto at = [&](int i) { return i >= 0 ? product[i] : 0; };
    if (isShort)
      for (int i = 0; i < kLimbs; ++i) limb[i] = at(i + kCount - 2);
    else
      for (int i = 0; i < kLimbs; ++i) limb[i] = at(i + kCount - 1);
    exponent -= isShort ? 1 : 0;
  }

  void dropHighZero() {
    if (limb[kLimbs - 1] != 0) return;
    for (int i = kLimbs - 1; i > 0; --i) limb[i] = limb[i - 1];
    limb[0] = 0;
    --exponent;
  }

  /// The limbs `shift` bits up, from the one above the highest down.
  uint64_t shifted(int i, int shift) const {
    const uint64_t above = i < kLimbs ? limb[i] : 0, below = i > 0 ? limb[i - 1] : 0;
    return above << shift | below >> 1 >> (63 - shift);
  }

  void divideBy(uint64_t d) {
    const int shift = std::countl_zero(d);
    const CutDivisor divisor(d << shift);
    uint64_t rest = shifted(kLimbs, shift);
    for (int i = kLimbs - 1; i >= 0; --i) {
      const uint64_t next = shifted(i, shift);
      limb[i] = divisor.step(rest, next);
    }
    dropHighZero();
  }

  void divideBy(uint64_t d1, uint64_t d0) {
    const int shift = std::countl_zero(d1);
    const CutDivisor divisor(d1 << shift | d0 >> 1 >> (63 - shift), d0 << shift);
    // The highest limb of the quotient takes the two highest limbs of the dividend, the lowest the 0 behind it.
    UInt128 rest = static_cast<UInt128>(shifted(kLimbs, shift)) << 64 | shifted(kLimbs - 1, shift);
    uint64_t quotient[kLimbs];
    for (int i = kLimbs - 1; i >= 0; --i) quotient[i] = divisor.step(rest, i > 0 ? shifted(i - 1, shift) : 0);
    std::copy_n(quotient, kLimbs, limb);
    dropHighZero();
  }

  void addSize(const CutFloat& y) {
    const bool swap = exponent < y.exponent;
    const CutFloat &u = swap ? y : *this, &v = swap ? *this : y;
    const int64_t distance = u.exponent - v.exponent;
    uint64_t sum[kPrecision], carry = 0;
    for (int i = 0; i < kPrecision; ++i) {
      const int64_t from = i + 1 + distance;
      const UInt128 part = static_cast<UInt128>(u.limb[i + 1]) + (from < kLimbs ? v.limb[from] : 0) + carry;
      sum[i] = low(part);
      carry = high(part);
    }
    exponent = u.exponent;
    if (carry != 0) {
      ++exponent;
      for (int i = 0; i < kPrecision; ++i) limb[i] = sum[i];
      limb[kPrecision] = 1;
    } else {
      for (int i = 0; i < kPrecision; ++i) limb[i + 1] = sum[i];
      limb[0] = 0;
    }
  }

  bool subtractSize(const CutFloat& y) {
    const bool swap = compareSize(y) < 0;
    const CutFloat &u = swap ? y : *this, &v = swap ? *this : y;
    const int64_t distance = u.exponent - v.exponent;
    if (distance == 1 && u.limb[kPrecision] == 1 && u.limb[kPrecision - 1] == 0 && ~v.limb[kPrecision] == 0)
      return false;
    uint64_t borrow = 0, rest[kLimbs];
    for (int i = 0; i < kLimbs; ++i) {
      const int64_t from = i + distance;
      const UInt128 part = static_cast<UInt128>(u.limb[i]) - (from < kLimbs ? v.limb[from] : 0) - borrow;
      rest[i] = low(part);
      borrow = high(part) & 1;
    }
    exponent = u.exponent;
    negative = u.negative;
    int zeros = 0;
    while (zeros < kLimbs && rest[kLimbs - 1 - zeros] == 0) ++zeros;
    for (int i = kLimbs - 1; i >= 0; --i) limb[i] = i >= zeros ? rest[i - zeros] : 0;
    exponent -= zeros;
    return true;
  }
};

}  // namespace SpecialFunction

#endif
