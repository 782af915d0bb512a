// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <utility>

#include "special/hypergeometric/wide_float.h"

#ifdef __SIZEOF_INT128__

namespace SpecialFunction {

/// (negative ? -1 : 1) sum of limb[i] 2^(64 i) 2^exponent; the highest limb has its highest bit set, or all are 0.
/// Every result is cut and lies within 2^(1 - 64 kLimbs) of the exact one, a sum within that of its larger summand.
template <int kLimbs>
struct LongFloat {
  uint64_t limb[kLimbs];
  int64_t exponent;
  bool negative;

  static LongFloat one() {
    LongFloat x{};
    x.limb[kLimbs - 1] = static_cast<uint64_t>(1) << 63;
    x.exponent = 1 - 64 * kLimbs;
    return x;
  }

  bool isZero() const { return limb[kLimbs - 1] == 0; }

  /// Its leading 128 bits.
  Wide top() const {
    return {static_cast<UInt128>(limb[kLimbs - 1]) << 64 | limb[kLimbs - 2], exponent + 64 * (kLimbs - 2), negative};
  }

  [[gnu::noinline]] void multiply(const Wide& y) {
    if (y.mantissa == 0) {
      *this = {};
      return;
    }
    exponent += y.exponent + 128;
    uint64_t product[kLimbs + 1], carry = 0;
    if (low(y.mantissa) == 0) {
      for (int i = 0; i < kLimbs; ++i) product[i] = step(limb[i], high(y.mantissa), 0, carry);
    } else {
      for (int i = 0; i < kLimbs; ++i) product[i] = step(limb[i], low(y.mantissa), 0, carry);
      product[kLimbs] = std::exchange(carry, 0);
      for (int i = 0; i < kLimbs; ++i) product[i] = step(limb[i], high(y.mantissa), product[i + 1], carry);
    }
    product[kLimbs] = carry;
    const uint64_t shift = product[kLimbs] >> 63 ^ 1;
    for (int i = 0; i < kLimbs; ++i) limb[i] = product[i + 1] << shift | (product[i] >> 63 & shift);
    exponent -= static_cast<int64_t>(shift);
    negative = negative != y.negative;
  }

  [[gnu::noinline]] void add(const LongFloat& y) {
    if (y.isZero()) return;
    if (isZero()) {
      *this = y;
      return;
    }
    const bool larger = exponent != y.exponent ? exponent > y.exponent : !isBelow(y);
    const bool opposite = negative != y.negative;
    const LongFloat part = larger ? y.shiftedDown(exponent - y.exponent) : shiftedDown(y.exponent - exponent);
    if (!larger) *this = y;
    if (opposite)
      subtractPart(part);
    else
      addPart(part);
  }

 private:
  /// The lowest 64 of the 128 bits of above, below after a shift to the right by 0 to 63.
  static uint64_t joined(uint64_t above, uint64_t below, int shift) {
    return above << 1 << (63 - shift) | below >> shift;
  }

  /// The low half of x y + more + carry; the high half is the next carry.
  static uint64_t step(uint64_t x, uint64_t y, uint64_t more, uint64_t& carry) {
    const UInt128 part = static_cast<UInt128>(x) * y + more + carry;
    carry = high(part);
    return low(part);
  }

  bool isBelow(const LongFloat& y) const {
    for (int i = kLimbs - 1; i >= 0; --i)
      if (limb[i] != y.limb[i]) return limb[i] < y.limb[i];
    return false;
  }

  /// The limbs alone, without what falls off.
  LongFloat shiftedDown(int64_t distance) const {
    LongFloat result;
    const int limbs = static_cast<int>(std::min<int64_t>(distance / 64, kLimbs)),
              bits = static_cast<int>(distance % 64);
    const auto at = [&](int i) { return i < kLimbs ? limb[i] : 0; };
    for (int i = 0; i < kLimbs; ++i) result.limb[i] = joined(at(i + limbs + 1), at(i + limbs), bits);
    return result;
  }

  void addPart(const LongFloat& part) {
    uint64_t carry = 0;
    for (int i = 0; i < kLimbs; ++i) {
      const UInt128 sum = static_cast<UInt128>(limb[i]) + part.limb[i] + carry;
      limb[i] = low(sum);
      carry = high(sum);
    }
    if (carry == 0) return;
    for (int i = 0; i < kLimbs; ++i) limb[i] = joined(i + 1 < kLimbs ? limb[i + 1] : 1, limb[i], 1);
    ++exponent;
  }

  void subtractPart(const LongFloat& part) {
    uint64_t borrow = 0;
    for (int i = 0; i < kLimbs; ++i) {
      const UInt128 rest = static_cast<UInt128>(limb[i]) - part.limb[i] - borrow;
      limb[i] = low(rest);
      borrow = high(rest) & 1;
    }
    int top = kLimbs - 1;
    while (top >= 0 && limb[top] == 0) --top;
    if (top < 0) {
      *this = {};
      return;
    }
    const int limbs = kLimbs - 1 - top, bits = std::countl_zero(limb[top]);
    for (int i = kLimbs - 1; i >= 0; --i)
      limb[i] = i < limbs ? 0 : limb[i - limbs] << bits | (i > limbs ? limb[i - limbs - 1] >> 1 >> (63 - bits) : 0);
    exponent -= 64 * limbs + bits;
  }
};

}  // namespace SpecialFunction

#endif
