// SPDX-License-Identifier: Apache-2.0
#include <cmath>

#include "special/hypergeometric/hypergeometric_fast.h"
#include "special/hypergeometric/hypergeometric_series_gmp.h"
#include "special/hypergeometric/wide_float.h"

// The series in floats of 128 mantissa bits, for sums that cancel away up to 60 of them. No division in the loop: with
// t_n = T_n / B_n, T_n = T_(n-1) z prod(a_i + n - 1), B_n = B_(n-1) Q_n, Q_n = n prod(b_j + n - 1), the sum is
// S_n = A_n / B_n with A_n = A_(n-1) Q_n + T_n.
//
// Let e = 2^-126: a product cut to 128 bits lies within e of the exact one, a sum within e of its larger summand; the
// parameters a_i + n are exact, held as multiples of 2^-92. Hence each step adds at most (p + q + 2) e to the relative
// error of t_n and (2 q + 3) e A to S_n, A = sum |t_n|: after N steps N (p + 3 q + 5) e A < N 2^-121 A. The GMP series
// lies within N 2^-122 A too (hypergeometric_fast.cpp, 6.). The bound taken is N 2^-120 A, and the stops have margins
// of 2^-40 as there.

namespace SpecialFunction {
#ifdef __SIZEOF_INT128__
std::optional<double> cutQuotient(const Wide& x, const Wide& y, double error) {
  if (x.mantissa == 0) return std::nullopt;
  // quotient = floor(2^126 mx / my), in (2^125, 2^127): schoolbook division by bits.
  UInt128 quotient = 0, rest = x.mantissa;
  bool carry = false;
  for (int bit = 0; bit <= 126; ++bit) {
    quotient <<= 1;
    if (carry || rest >= y.mantissa) {
      rest -= y.mantissa;
      quotient |= 1;
    }
    carry = (rest >> 127) != 0;
    rest <<= 1;
  }
  const int64_t exponent = x.exponent - y.exponent - 126;
  if (exponent < -1100 || exponent > 800) return std::nullopt;
  const double units = std::ldexp(error, static_cast<int>(-exponent)) + 4;
  if (!(units < 0x1p70)) return std::nullopt;
  const int shift = 128 - (high(quotient) != 0 ? std::countl_zero(high(quotient)) : 64) - 53;
  const UInt128 gap = static_cast<UInt128>(1) << shift;
  const UInt128 below = quotient & (gap - 1), margin = static_cast<UInt128>(units) + 1;
  if (below < margin || below + margin >= gap) return std::nullopt;
  const double size =
      std::ldexp(static_cast<double>(static_cast<uint64_t>(quotient >> shift)), static_cast<int>(exponent) + shift);
  return x.negative != y.negative ? -size : size;
}

std::optional<double> calcHypergeometricPFQByWide(const double* a, int32_t p, const double* b, int32_t q, double z) {
  constexpr double kMargin = 0x1p-40, kMost = 0x1p900;
  const double size = std::abs(z);
  FixedParameter upper[FixedParameter::kMost], lower[FixedParameter::kMost];
  if (!(size >= 0x1p-60 && size <= 0x1p60) || !FixedParameter::set(a, p, upper) || !FixedParameter::set(b, q, lower))
    return std::nullopt;
  const Factor argument = Factor::of(z);
  Wide term = normalised(1, 0, false), sum = term, scale = term;  // T, A, B
  double sizes = 1;
  int32_t n = 1;
  for (;; ++n) {
    takeProduct(argument, upper, p, [&](const Wide& factor) { term = multiply(term, factor); });
    if (term.mantissa == 0) break;
    takeProduct({static_cast<UInt128>(n), 0, false}, lower, q, [&](const Wide& factor) {
      scale = multiply(scale, factor);
      sum = multiply(sum, factor);
    });
    sum = add(sum, term);
    const double t = quotientSize(term, scale);
    sizes += t;
    if (!(t < kMost)) return std::nullopt;
    if (n + 1 >= kHypergeometricMaxTerms || t < kHypergeometricTermLimit * (1 - kMargin)) break;
    if (t < kHypergeometricTermLimit * (1 + kMargin)) return std::nullopt;
  }
  return cutQuotient(sum, scale, 1.01 * sizes * n * 0x1p-120);
}

#else

std::optional<double> calcHypergeometricPFQByWide(const double*, int32_t, const double*, int32_t, double) {
  return std::nullopt;
}

#endif
}  // namespace SpecialFunction
