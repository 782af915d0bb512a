// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <optional>

#ifdef __SIZEOF_INT128__

namespace SpecialFunction {

__extension__ typedef __int128 Int128;
__extension__ typedef unsigned __int128 UInt128;

/// (negative ? -1 : 1) mantissa 2^exponent; the mantissa has its highest bit set, or is 0.
struct Wide {
  UInt128 mantissa;
  int64_t exponent;
  bool negative;
};

inline uint64_t high(UInt128 x) { return static_cast<uint64_t>(x >> 64); }
inline uint64_t low(UInt128 x) { return static_cast<uint64_t>(x); }

inline Wide normalised(UInt128 mantissa, int64_t exponent, bool negative) {
  if (mantissa == 0) return {0, 0, false};
  const int shift = high(mantissa) != 0 ? std::countl_zero(high(mantissa)) : 64 + std::countl_zero(low(mantissa));
  return {mantissa << shift, exponent - shift, negative};
}

/// Cut to 128 bits.
inline Wide multiply(const Wide& x, const Wide& y) {
  const UInt128 ll = static_cast<UInt128>(low(x.mantissa)) * low(y.mantissa);
  const UInt128 lh = static_cast<UInt128>(low(x.mantissa)) * high(y.mantissa);
  const UInt128 hl = static_cast<UInt128>(high(x.mantissa)) * low(y.mantissa);
  const UInt128 hh = static_cast<UInt128>(high(x.mantissa)) * high(y.mantissa);
  const UInt128 middle = static_cast<UInt128>(high(ll)) + low(lh) + low(hl);
  const UInt128 product = hh + high(lh) + high(hl) + high(middle);
  const int shift = static_cast<int>(product >> 127) ^ 1;
  return {product << shift, x.exponent + y.exponent + 128 - shift, x.negative != y.negative};
}

/// Within 2^-127 of the larger summand.
inline Wide add(const Wide& x, const Wide& y) {
  if (y.mantissa == 0) return x;
  if (x.mantissa == 0) return y;
  const bool xLarger = x.exponent != y.exponent ? x.exponent > y.exponent : x.mantissa >= y.mantissa;
  const Wide& larger = xLarger ? x : y;
  const Wide& smaller = xLarger ? y : x;
  const int64_t distance = larger.exponent - smaller.exponent;
  const UInt128 part = distance < 128 ? smaller.mantissa >> distance : 0;
  if (x.negative != y.negative) return normalised(larger.mantissa - part, larger.exponent, larger.negative);
  const UInt128 sum = larger.mantissa + part;
  if (sum >= part) return {sum, larger.exponent, larger.negative};
  return {(sum >> 1) | (static_cast<UInt128>(1) << 127), larger.exponent + 1, larger.negative};
}

inline int bitsOf(UInt128 x) { return high(x) != 0 ? 128 - std::countl_zero(high(x)) : 64 - std::countl_zero(low(x)); }

/// An exact number, (negative ? -1 : 1) units 2^exponent, with few bits where that is possible.
struct Factor {
  UInt128 units;
  int64_t exponent;
  bool negative;

  static Factor of(double x) {
    int exponent;
    const auto units = static_cast<uint64_t>(std::ldexp(std::frexp(std::abs(x), &exponent), 53));
    const int zeros = units == 0 ? 0 : std::countr_zero(units);
    return {units >> zeros, exponent - 53 + zeros, x < 0};
  }
};

/// A parameter a + n of a hypergeometric series, exactly, as a multiple of 2^-92.
class FixedParameter {
 public:
  static constexpr int kMost = 3;  ///< upper or lower ones of a series

  /// The parameters as such multiples; false when one is not.
  static bool set(const double* values, int32_t count, FixedParameter* fixed) {
    if (count < 0 || count > kMost) return false;
    for (int32_t i = 0; i < count; ++i) {
      const double size = std::abs(values[i]);
      if (values[i] != 0 && !(size >= 0x1p-39 && size <= 0x1p30)) return false;
      const Factor start = Factor::of(values[i]);
      fixed[i].places = start.exponent < 0 ? static_cast<int>(-start.exponent) : 0;
      const auto units = static_cast<Int128>(start.units) << (start.exponent + fixed[i].places);
      fixed[i].units = start.negative ? -units : units;
    }
    return true;
  }

  /// Its value; the next one is larger by 1.
  Factor next() {
    const Factor value{units < 0 ? -static_cast<UInt128>(units) : static_cast<UInt128>(units), -places, units < 0};
    units += static_cast<Int128>(1) << places;
    return value;
  }

 private:
  Int128 units;
  int places;  // binary
};

/// Hands the product of `first` and of the next values of the parameters to `take`, as few numbers: joined as long as
/// they are exact in 128 bits.
template <class Take>
void takeProduct(Factor first, FixedParameter* parameters, int32_t count, Take&& take) {
  for (int32_t i = 0; i < count; ++i) {
    const Factor factor = parameters[i].next();
    if ((high(first.units) | high(factor.units)) == 0 || bitsOf(first.units) + bitsOf(factor.units) <= 128) {
      first = {first.units * factor.units, first.exponent + factor.exponent, first.negative != factor.negative};
    } else {
      take(normalised(first.units, first.exponent, first.negative));
      first = factor;
    }
  }
  take(normalised(first.units, first.exponent, first.negative));
}

/// |x / y| to about 50 bits; 0 below and infinity above what a term can be here.
inline double quotientSize(const Wide& x, const Wide& y) {
  if (x.mantissa == 0) return 0;
  const int64_t exponent = x.exponent - y.exponent;
  if (exponent < -1000) return 0;
  if (exponent > 1000) return HUGE_VAL;
  const double scale = std::bit_cast<double>(static_cast<uint64_t>(exponent + 1023) << 52);
  return static_cast<double>(high(x.mantissa)) / static_cast<double>(high(y.mantissa)) * scale;
}

/// x / y cut to a double when every number within `error` of it is cut to the same.
std::optional<double> cutQuotient(const Wide& x, const Wide& y, double error);

}  // namespace SpecialFunction

#endif
