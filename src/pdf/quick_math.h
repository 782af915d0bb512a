// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "frame/numbers.h"

/// exp, log, power and the normal distribution function without a branch, a table or a call, so that a loop over points
/// becomes vector instructions. Every operation is rounded on its own (no fused ones), so that a point gives the same
/// bits in a loop and alone. Errors: about one ulp for exp and log, 1e-14 in the far tail of the normal distribution.
namespace PDF {

/// Both values are there before the choice: a loop can then choose lane by lane.
inline double choose(bool condition, double value, double other) { return condition ? value : other; }

/// c[K] + c[K+4] x4 + c[K+8] x4^2 + ...
template <std::size_t K, std::size_t N>
inline double everyFourth(const double (&c)[N], double x4) {
  if constexpr (K + 4 < N)
    return c[K] + x4 * everyFourth<K + 4>(c, x4);
  else
    return K < N ? c[K] : 0;
}

/// c[0] + c[1] x + ... in four independent chains.
template <std::size_t N>
inline double polynomial(const double (&c)[N], double x) {
  const double x2 = x * x, x4 = x2 * x2;
  return (everyFourth<0>(c, x4) + x * everyFourth<1>(c, x4)) + x2 * (everyFourth<2>(c, x4) + x * everyFourth<3>(c, x4));
}

/// Added to a number, it leaves the rounded integer in the low bits.
inline constexpr double kExpInteger = 0x1.8p52;
inline constexpr double kExpSeries[] = {0.5,
                                        0.16666666666666671,
                                        0.04166666666666667,
                                        0.0083333333333261121,
                                        0.0013888888888883732,
                                        0.00019841269874901259,
                                        2.4801587325605323e-5,
                                        2.7557255297969644e-6,
                                        2.755727357010214e-7,
                                        2.5105259538448493e-8,
                                        2.0914717341716376e-9};

/// x = k ln 2 + r with r in [-ln 2/2, ln 2/2]: exp(x) is (1 + expm1(r)) 2^k.
struct ExpParts {
  double series;        ///< exp(r) - 1, by a minimax polynomial
  double lower, upper;  ///< 2^k in two halves, whose product reaches 0 and infinity
};

inline ExpParts expParts(double x) {
  double c = x > 1000 ? 1000 : x;
  c = c < -1000 ? -1000 : c;
  const double k = (c * 1.4426950408889634 + kExpInteger) - kExpInteger;
  const double r = (c - k * 6.93147180369123816490e-01) - k * 1.90821492927058770002e-10;
  const double lower = k * 0.5 + kExpInteger, upper = (k - (lower - kExpInteger)) + kExpInteger;
  const auto power = [](double biased) {
    return std::bit_cast<double>((std::bit_cast<uint64_t>(biased) << 52) + (uint64_t{1023} << 52));
  };
  return {r + r * r * polynomial(kExpSeries, r), power(lower), power(upper)};
}

inline double quickExp(double x) {
  const ExpParts parts = expParts(x);
  return (1 + parts.series) * parts.lower * parts.upper;
}

/// quickExp for -600 <= x <= 600, where 2^k is in range as a whole: the same value.
inline double quickExpInside(double x) {
  const double shifted = x * 1.4426950408889634 + kExpInteger, k = shifted - kExpInteger;
  const double r = (x - k * 6.93147180369123816490e-01) - k * 1.90821492927058770002e-10;
  const double power = std::bit_cast<double>((std::bit_cast<uint64_t>(shifted) << 52) + (uint64_t{1023} << 52));
  return (1 + (r + r * r * polynomial(kExpSeries, r))) * power;
}

/// exp(x) - 1, to about two ulps also near 0.
inline double quickExpm1(double x) {
  const ExpParts parts = expParts(x);
  const double scaled = parts.series * parts.lower * parts.upper;
  const double value = scaled + (parts.lower * parts.upper - 1);
  return x > 40 ? (1 + parts.series) * parts.lower * parts.upper : value;
}

inline constexpr uint64_t kExponentBias = uint64_t{1023} << 52;

/// ln of the normal number with these bits, less `shift` ln 2: x = 2^k m, m in [sqrt(1/2), sqrt(2));
/// ln m = 2 s + s^3 R(s^2), s = (m-1)/(m+1).
inline double logOfBits(uint64_t bits, double shift) {
  static constexpr double kSeries[] = {0.66666666666666697,  0.39999999999899239,  0.285714286260958915,
                                       0.222222111151441615, 0.181828905566956035, 0.153316740301678619,
                                       0.146170375487916501};
  constexpr uint64_t kRootHalf = 0x3fe6a09e667f3bcd;
  const uint64_t biased = bits - (kRootHalf - kExponentBias);
  const double k = std::bit_cast<double>((biased >> 52) | 0x4330000000000000) - (0x1p52 + 1023) - shift;
  const double f = std::bit_cast<double>(bits - (biased & 0xfff0000000000000) + kExponentBias) - 1;
  const double s = f / (2 + f), s2 = s * s;
  return k * 6.93147180369123816490e-01 + (2 * s + (s * s2 * polynomial(kSeries, s2) + k * 1.90821492927058770002e-10));
}

/// quickLog for a positive normal x.
inline double quickLogNormal(double x) { return logOfBits(std::bit_cast<uint64_t>(x), 0); }

/// quickLog for 0 < x < infinity.
inline double quickLogFinite(double x) {
  const bool tiny = x < std::numeric_limits<double>::min();
  return logOfBits(std::bit_cast<uint64_t>(tiny ? x * 0x1p54 : x), tiny ? 54.0 : 0.0);
}

inline double quickLog(double x) {
  const double value = quickLogFinite(x);
  const double finite = x > 0 ? value : x == 0 ? -kInfinity : x * 0 / 0.0;
  return x <= std::numeric_limits<double>::max() ? finite : x;
}

/// ln(1 + x) for x >= 0: what 1 + x loses comes back to first order.
inline double quickLog1p(double x) {
  const double u = 1 + x, lost = x - (u - 1);
  const double value = quickLog(u) + lost / u;
  return x > 0x1p53 ? quickLog(x) : value;
}

/// x^exponent for a fixed exponent: |x|^exponent with the sign that belongs to a negative x, NaN if there is none.
class QuickPower {
 public:
  QuickPower() = default;
  explicit QuickPower(double exponent)
      : exponent(exponent),
        atZero(std::pow(0.0, exponent)),
        left(std::pow(-1.0, exponent)),
        farLeft(std::isnan(left) ? 1 : left) {}
  double operator()(double x) const {
    const double logarithm = quickLog(std::abs(x)), zero = atZero;
    // As with pow, 1 to any power and anything to the power of 0 is 1.
    const double product = exponent * logarithm;
    const double size = quickExp(((exponent == 0) | (logarithm == 0)) ? 0 : product);
    const double mirrored = size * left, far = size * farLeft;
    const double value = x < 0 ? (x < -std::numeric_limits<double>::max() ? far : mirrored) : size;
    return x == 0 ? zero : value;
  }
  /// The same for 0 <= x < infinity and a finite exponent, and for a normal x: less to choose.
  double ofFinite(double x) const {
    const double size = quickExp(exponent * quickLogFinite(x)), zero = atZero;
    return x == 0 ? zero : size;
  }
  double ofNormal(double x) const { return quickExp(exponent * quickLogNormal(x)); }

 private:
  double exponent = 1, atZero = 0, left = -1, farLeft = -1;
};

/// erfc(t) = exp(-t^2) P((t-5)/(t+5)), t >= 0 (Schonfelder 1978).
inline double quickErfc(double t) {
  static constexpr double kSeries[] = {
      0.11070463773306863,    -0.2133278976482631,    0.19074099324544445,     -0.15808692928813735,
      0.12121254375414957,    -0.085724735652924681,  0.055683077068663229,    -0.033021323055205095,
      0.01772606896695035,    -0.0085059452160760497, 0.0035776937100634277,   -0.001275024336455079,
      0.00035890165284194431, -6.4543276018744289e-5, -1.9352769997320729e-6,  6.3229911655402747e-6,
      -2.1517923446149512e-6, 1.3413829569062114e-7,  1.7367270235189795e-7,   -6.6139083649659932e-8,
      -1.8323798399056849e-9, 8.1839234915021071e-9,  -9.0567701452004609e-10, -7.0473822466054946e-10};
  const double size = std::abs(t), held = size > 27.5 ? 27.5 : size;
  const double value = quickExp(-(size * size)) * polynomial(kSeries, (held - 5) / (held + 5));
  return t < 0 ? 2 - value : value;
}

/// erf, to an absolute error of 9e-16.
inline double quickErf(double t) {
  const double value = quickErfc(std::abs(t));
  return t < 0 ? value - 1 : 1 - value;
}

/// The normal distribution function.
inline double normalPhi(double z) { return (quickErf(z / 1.4142135623730951) + 1) / 2; }

}  // namespace PDF
