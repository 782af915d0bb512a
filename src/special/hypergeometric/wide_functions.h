// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <optional>

#include "special/hypergeometric/wide_float.h"

#ifdef __SIZEOF_INT128__

namespace SpecialFunction {

/// A number in units of 2^-kPlaces.
struct WideFixed {
  static constexpr int kPlaces = 100;
  Int128 units;

  /// Cut; nothing from 2^20 on.
  static std::optional<WideFixed> of(const Wide& x) {
    if (x.mantissa == 0) return WideFixed{0};
    const int64_t shift = -(x.exponent + kPlaces);
    if (shift < 8) return std::nullopt;
    const auto size = static_cast<Int128>(shift < 128 ? x.mantissa >> shift : 0);
    return WideFixed{x.negative ? -size : size};
  }
  Wide wide() const {
    return normalised(units < 0 ? -static_cast<UInt128>(units) : static_cast<UInt128>(units), -kPlaces, units < 0);
  }
};

struct WideExponential {
  Wide value;
  double error;  ///< relative
};

/// exp(y) = 2^k exp(r/2^7)^(2^7), 0 <= r < log 2, the last by Taylor's series in units of 2^-127.
///
/// Twelve terms leave 2^-130. A step of Horner's rule adds less than 4 units (coefficient 2, product 1, the rest from
/// before times r/2^7 < 2^-7), a squaring doubles and adds 2: less than 2^10 units in the end. log 2 is within 2^-101,
/// k times.
inline WideExponential exponentialOf(const WideFixed& y) {
  constexpr Int128 kLog2 = static_cast<Int128>(0xb17217f7dULL) << 64 | 0x1cf79abc9e3b3980ULL;
  constexpr int kTerms = 12, kSquarings = 7;
  const auto upperHalf = [](UInt128 a, UInt128 b) {
    const UInt128 ll = static_cast<UInt128>(low(a)) * low(b), lh = static_cast<UInt128>(low(a)) * high(b);
    const UInt128 hl = static_cast<UInt128>(high(a)) * low(b), hh = static_cast<UInt128>(high(a)) * high(b);
    return hh + high(lh) + high(hl) + high(static_cast<UInt128>(high(ll)) + low(lh) + low(hl));
  };
  auto k = static_cast<int64_t>(std::floor(static_cast<double>(static_cast<int64_t>(y.units >> 60)) /
                                           static_cast<double>(static_cast<int64_t>(kLog2 >> 60))));
  Int128 rest = y.units - k * kLog2;
  for (; rest < 0; rest += kLog2) --k;
  for (; rest >= kLog2; rest -= kLog2) ++k;
  const UInt128 x = static_cast<UInt128>(rest) << (128 - WideFixed::kPlaces - kSquarings);  // of 2^-128
  static constexpr struct Coefficients {
    UInt128 inverse[kTerms + 1];  // of the factorials
    constexpr Coefficients() : inverse{} {
      inverse[0] = static_cast<UInt128>(1) << 127;
      for (int n = 1; n <= kTerms; ++n) inverse[n] = inverse[n - 1] / static_cast<UInt128>(n);
    }
  } kCoefficients;
  UInt128 power = kCoefficients.inverse[kTerms];
  for (int n = kTerms - 1; n >= 0; --n) power = kCoefficients.inverse[n] + upperHalf(power, x);
  for (int i = 0; i < kSquarings; ++i) power = upperHalf(power, power) << 1;
  return {normalised(power, k - 127, false), 0x1p-117 + static_cast<double>(std::abs(k)) * 0x1p-101};
}

/// log(x), 1 <= x < 2^10, within 2^-90: with y near it, y + e - e^2/2, e = x exp(-y) - 1; e^3/3 is below 2^-121.
/// Nothing where y is not as near as that takes.
inline std::optional<WideFixed> logarithmOf(const Wide& x) {
  const double size = std::ldexp(static_cast<double>(high(x.mantissa)), static_cast<int>(x.exponent) + 64);
  if (x.negative || !(size >= 1 && size < 1024)) return std::nullopt;
  const Factor guess = Factor::of(std::log(size));
  const auto y = WideFixed::of(normalised(guess.units, guess.exponent, guess.negative));
  const auto ratio = y ? WideFixed::of(multiply(x, exponentialOf({-y->units}).value)) : std::nullopt;
  if (!ratio) return std::nullopt;
  const Int128 e = ratio->units - (static_cast<Int128>(1) << WideFixed::kPlaces);
  constexpr Int128 kNear = static_cast<Int128>(1) << (WideFixed::kPlaces - 40);
  if (e >= kNear || e <= -kNear) return std::nullopt;
  return WideFixed{y->units + e - ((e * e) >> (WideFixed::kPlaces + 1))};
}

}  // namespace SpecialFunction

#endif
