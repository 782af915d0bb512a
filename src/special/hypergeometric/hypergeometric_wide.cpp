// SPDX-License-Identifier: Apache-2.0
#include <bit>
#include <cmath>

#include "special/hypergeometric/hypergeometric_fast.h"
#include "special/hypergeometric/hypergeometric_series_gmp.h"

// The series in floats of 128 mantissa bits, for sums that cancel away up to 60 of them. No division in the loop: with
// t_n = T_n / B_n, T_n = T_(n-1) z prod(a_i + n - 1), B_n = B_(n-1) Q_n, Q_n = n prod(b_j + n - 1), the sum is
// S_n = A_n / B_n with A_n = A_(n-1) Q_n + T_n.
//
// Let e = 2^-126: a product cut to 128 bits lies within e of the exact one, a sum within e of its larger summand; the
// parameters a_i + n are exact, held as multiples of 2^-92. The rounding of Q_n is the same in A and B and counts once
// as a change of the ratio. Hence each step adds at most (p + q + 3) e to the relative error of t_n and 4 e A to S_n,
// A = sum |t_n|: after N steps N (p + q + 7) e A < N 2^-122 A. The GMP series lies within N 2^-122 A too
// (hypergeometric_fast.cpp, 6.). The bound taken is N 2^-120 A, and the stops have margins of 2^-40 as there.

namespace SpecialFunction {
#ifdef __SIZEOF_INT128__
namespace {

__extension__ typedef __int128 Int128;
__extension__ typedef unsigned __int128 UInt128;

constexpr int kPoint = 92;  // binary places of a parameter

/// (negative ? -1 : 1) mantissa 2^exponent; the mantissa has its highest bit set, or is 0.
struct Wide {
  UInt128 mantissa;
  int64_t exponent;
  bool negative;
};

uint64_t high(UInt128 x) { return static_cast<uint64_t>(x >> 64); }
uint64_t low(UInt128 x) { return static_cast<uint64_t>(x); }

Wide normalised(UInt128 mantissa, int64_t exponent, bool negative) {
  if (mantissa == 0) return {0, 0, false};
  const int shift = high(mantissa) != 0 ? std::countl_zero(high(mantissa)) : 64 + std::countl_zero(low(mantissa));
  return {mantissa << shift, exponent - shift, negative};
}

Wide fromFixed(Int128 x) {
  return normalised(x < 0 ? -static_cast<UInt128>(x) : static_cast<UInt128>(x), -kPoint, x < 0);
}

Wide fromDouble(double x) {
  int exponent;
  const double mantissa = std::frexp(std::abs(x), &exponent);
  return normalised(static_cast<uint64_t>(std::ldexp(mantissa, 64)), exponent - 64, x < 0);
}

Wide multiply(const Wide& x, const Wide& y) {
  const UInt128 ll = static_cast<UInt128>(low(x.mantissa)) * low(y.mantissa);
  const UInt128 lh = static_cast<UInt128>(low(x.mantissa)) * high(y.mantissa);
  const UInt128 hl = static_cast<UInt128>(high(x.mantissa)) * low(y.mantissa);
  const UInt128 hh = static_cast<UInt128>(high(x.mantissa)) * high(y.mantissa);
  const UInt128 middle = static_cast<UInt128>(high(ll)) + low(lh) + low(hl);
  const UInt128 product = hh + high(lh) + high(hl) + high(middle);
  const int shift = static_cast<int>(product >> 127) ^ 1;
  return {product << shift, x.exponent + y.exponent + 128 - shift, x.negative != y.negative};
}

Wide add(const Wide& x, const Wide& y) {
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

/// |x / y| to about 50 bits; 0 below and infinity above what a term can be here.
double quotientSize(const Wide& x, const Wide& y) {
  if (x.mantissa == 0) return 0;
  const int64_t exponent = x.exponent - y.exponent;
  if (exponent < -1000) return 0;
  if (exponent > 1000) return HUGE_VAL;
  const double scale = std::bit_cast<double>(static_cast<uint64_t>(exponent + 1023) << 52);
  return static_cast<double>(high(x.mantissa)) / static_cast<double>(high(y.mantissa)) * scale;
}

/// x / y cut to a double when every number within `error` of it is cut to the same.
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

/// The parameters as multiples of 2^-92, exactly; false when one is not.
bool toFixed(const double* values, int32_t count, Int128* fixed) {
  if (count < 0 || count > kMaxParameters) return false;
  for (int32_t i = 0; i < count; ++i) {
    const double size = std::abs(values[i]);
    if (values[i] != 0 && !(size >= 0x1p-39 && size <= 0x1p30)) return false;
    fixed[i] = static_cast<Int128>(std::ldexp(values[i], kPoint));
  }
  return true;
}

}  // namespace

std::optional<double> calcHypergeometricPFQByWide(const double* a, int32_t p, const double* b, int32_t q, double z) {
  constexpr double kMargin = 0x1p-40, kMost = 0x1p900;
  constexpr Int128 kOne = static_cast<Int128>(1) << kPoint;
  const double size = std::abs(z);
  Int128 upper[kMaxParameters], lower[kMaxParameters];
  if (!(size >= 0x1p-60 && size <= 0x1p60) || !toFixed(a, p, upper) || !toFixed(b, q, lower)) return std::nullopt;
  const Wide argument = fromDouble(z);
  Wide term = fromDouble(1.0), sum = term, scale = term;  // T, A, B
  double sizes = 1;
  int32_t n = 1;
  for (;; ++n) {
    term = multiply(term, argument);
    for (int32_t i = 0; i < p; ++i) {
      term = multiply(term, fromFixed(upper[i]));
      upper[i] += kOne;
    }
    Wide step = normalised(static_cast<UInt128>(n), 0, false);
    for (int32_t j = 0; j < q; ++j) {
      step = multiply(step, fromFixed(lower[j]));
      lower[j] += kOne;
    }
    if (term.mantissa == 0) break;
    scale = multiply(scale, step);
    sum = add(multiply(sum, step), term);
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
