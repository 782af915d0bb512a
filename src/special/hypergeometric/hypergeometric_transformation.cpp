// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "frame/numbers.h"
#include "special/hypergeometric/hypergeometric_fast.h"
#include "special/hypergeometric/wide_functions.h"

// Left of 0 the terms of 1F1 and 2F1 cancel; transformed, they often do not (Abramowitz and Stegun 13.1.27, 15.3.3-5):
// 1F1(a; b; z) = exp(z) 1F1(b-a; b; -z)
// 2F1(a, b; c; z) = (1-z)^(-a) 2F1(a, c-b; c; z/(z-1)) = (1-z)^(-b) 2F1(c-a, b; c; z/(z-1))
//                 = (1-z)^(c-a-b) 2F1(c-a, c-b; c; z).
// The value is that of the infinite series, S. The GMP series of `bits` bits that is wanted gives a sum within the
// following of S; where all doubles that near are cut to the same one, that one is GMP's.
//
// 1. Its rounding: N 2^(6 - bits) A (hypergeometric_fast.cpp, 6.) after N terms. With the exponent E of its largest
// term,
//    A < s 2^E and |S| >= 2^(E - lost - 1) it is below N s 2^(7 + lost - bits) |S|. N and s from the terms in doubles.
// 2. The terms it leaves out. It stops where a term is below 2^-72 of its sum or 2^-bits of its largest term: below
//    2^-50 of the largest one anyway, as a sum is below N of these. From the first such term on, behind the turn of the
//    lower parameter, all ratios are at most r, and the rest is at most r/(1-r) of the last term: r/(1-r) 2^-71 |S|, as
//    bits is above lost + 71.
// The count of bits follows as in hypergeometric_limbs.cpp from the bits that are lost, known to one or two.

namespace SpecialFunction {
#ifdef __SIZEOF_INT128__
namespace {

constexpr int kTransformedTerms = 1 << 15;
constexpr double kMostRatio = 0.95;
constexpr double kMostPower = 4096, kMostParameter = 0x1p20, kMostExponent = 7200;

struct Pair {
  double high, low;
};

// Exact (Knuth's TwoSum).
Pair sumOf(double x, double y) {
  const double sum = x + y, part = sum - x;
  return {sum, (x - (sum - part)) + (y - part)};
}

/// Of the terms of the series itself.
struct Tail {
  double factor;  ///< from the first term below 2^-50 of the largest on: a bound of what follows over a term
  double rest;    ///< a bound of the sum of the sizes from the first term below 2^-55 on
  double terms;   ///< before the first term below 2^-50 of the largest
  double sizes;   ///< the sum of the sizes of these over the largest one
};

std::optional<Tail> tailOf(const double* a, int32_t p, double b, double z) {
  const double second = p == 2 ? a[1] : 0;
  double term = 1, largest = 1, factor = -1, rest = 0, terms = 0, share = 0;
  double sizes = 1;  // with term and largest times 2^(-500 scale)
  int scale = 0;
  for (int n = 1; n < kTransformedTerms; ++n) {
    const double index = n - 1;
    term *= std::abs(z * (a[0] + index) * (p == 2 ? second + index : 1) / (n * (b + index)));
    if (term > 0x1p500) {
      term *= 0x1p-500;
      largest *= 0x1p-500;
      sizes *= 0x1p-500;
      ++scale;
    } else if (scale > 0 && term < 0x1p-400) {  // infinity is as good as a largest one
      term *= 0x1p500;
      largest *= 0x1p500;
      --scale;
    }
    if (!(term < kInfinity)) return std::nullopt;
    if (term == 0)
      return Tail{std::fmax(factor, 0), rest, factor >= 0 ? terms : n, factor >= 0 ? share : sizes / largest};
    largest = std::fmax(largest, term);
    if (factor < 0) sizes += term;
    if (scale == 0 && (rest > 0 || term <= 0x1p-55)) rest += term;
    if (factor < 0 && term < 0x1p-50 * largest && n > -b) {
      double ratio = 1.001 * std::abs(z) * (p == 2 ? std::fmax(1, std::abs(second + n) / (b + n)) : 1 / (b + n));
      ratio *= std::fmax(1, std::abs(a[0] + n) / (n + 1));
      if (!(ratio <= kMostRatio)) return std::nullopt;
      factor = ratio / (1 - ratio);
      terms = n;
      share = 1.01 * sizes / largest;
    }
    if (factor >= 0 && rest > 0) return Tail{factor, rest + 1.01 * term * factor, terms, share};
  }
  return std::nullopt;
}

struct Value {
  Wide value;
  double error;  // relative
};

Wide wideOf(double x) {
  const Factor exact = Factor::of(x);
  return normalised(exact.units, exact.exponent, exact.negative);
}

// (sum of the series) exp(y), y known to errorOfY.
std::optional<Value> product(const std::optional<DoubleDoubleSum>& sum, const std::optional<WideFixed>& y,
                             double errorOfY) {
  if (!sum || !y) return std::nullopt;
  const double error = sum->error / std::abs(sum->high);
  if (!(error < 0x1p-55)) return std::nullopt;
  const WideExponential factor = exponentialOf(*y);
  Wide value = multiply(add(wideOf(sum->high), wideOf(sum->low)), factor.value);
  value.exponent += DoubleDoubleSum::kExponent;
  return Value{value, 1.01 * (error + factor.error + errorOfY) + 0x1p-120};
}

std::optional<Value> kummer(double a, double b, double z) {
  const Pair upper = sumOf(b, -a);
  const auto sum = wholeHypergeometricSum(&upper.high, &upper.low, 1, &b, 1, -z, 0);
  return product(sum, WideFixed::of(wideOf(z)), 0x1p-100);
}

// (1-z)^power 2F1(first, second; c; w).
struct Transformed {
  Pair first, second, power, w;
};

std::optional<Value> valueOf(const Transformed& t, double c, const WideFixed& logarithm) {
  if (!(std::abs(t.power.high) < kMostPower)) return std::nullopt;
  const double upper[] = {t.first.high, t.second.high}, tails[] = {t.first.low, t.second.low};
  const auto sum = wholeHypergeometricSum(upper, tails, 2, &c, 1, t.w.high, t.w.low);
  if (!sum) return std::nullopt;
  const Wide power = add(wideOf(t.power.high), wideOf(t.power.low));
  return product(sum, WideFixed::of(multiply(logarithm.wide(), power)), kMostPower * 0x1p-90 + 0x1p-99);
}

// The double of v when the GMP series that begins with `bits` gives it.
std::optional<double> decided(const Value& v, const Tail& tail, long bits, double largest) {
  const auto exponent = static_cast<long>(v.value.exponent) + 128;
  const auto exponentOf = [](double size) { return std::max(1L, static_cast<long>(std::floor(size)) + 1); };
  const long least = exponentOf(largest - 0.01) - exponent - 1, most = exponentOf(largest + 0.01) - exponent + 1;
  if (least + 64 > bits) {
    if (most + 128 > 2 * bits) return std::nullopt;
    bits *= 2;
  }
  if (most + 72 > bits) return std::nullopt;
  // From 2^-50 of the largest term on the terms fall by log2(1/r) > 1.44/(factor + 1) bits each.
  const double terms = tail.terms + 2 + (static_cast<double>(bits) + 4) * (tail.factor + 1) * 0.7;
  const double lost = std::ldexp(1.0, static_cast<int>(most - bits));
  const double error = v.error + 128 * terms * tail.sizes * lost + 1.01 * tail.factor * (0x1p-71 + lost);
  const Wide one{static_cast<UInt128>(1) << 127, -127, false};
  return cutQuotient(v.value, one, std::ldexp(error, static_cast<int>(exponent)));
}

}  // namespace

std::optional<double> calcHypergeometricPFQByTransformation(const double* a, int32_t p, const double* b, int32_t q,
                                                            double z, unsigned long bits, double largest,
                                                            double* rest) {
  if (!(z < -0x1p-20) || q != 1 || !(largest < kMostExponent) || (p == 1 ? z < -1000 : p != 2 || z <= -1))
    return std::nullopt;
  const auto tail = tailOf(a, p, b[0], z);
  if (!tail) return std::nullopt;
  const auto take = [&](const std::optional<Value>& value) {
    const auto result =
        value && value->value.mantissa != 0 ? decided(*value, *tail, static_cast<long>(bits), largest) : std::nullopt;
    if (result && rest != nullptr) *rest = tail->rest;
    return result;
  };
  if (p == 1) return take(kummer(a[0], b[0], z));
  const double c = b[0];
  if (std::max({std::abs(a[0]), std::abs(a[1]), std::abs(c)}) > kMostParameter) return std::nullopt;
  const Pair fromFirst = sumOf(c, -a[0]), fromSecond = sumOf(c, -a[1]), base = sumOf(1, -z);
  const auto logarithm = logarithmOf(add(wideOf(base.high), wideOf(base.low)));
  if (!logarithm) return std::nullopt;
  // z/(z-1): the head of the quotient and the rest of its product, which is exact.
  const double head = -z / base.high;
  const Pair w{head, (std::fma(-head, base.high, -z) - head * base.low) / base.high}, first{a[0], 0}, second{a[1], 0};
  const Pair sumOfPowers = sumOf(fromFirst.high, -a[1]);
  const Pair euler = sumOf(sumOfPowers.high, sumOfPowers.low + fromFirst.low);  // off by 2^-83 at most
  for (const Transformed& t :
       {Transformed{first, fromSecond, {-a[0], 0}, w}, Transformed{fromFirst, second, {-a[1], 0}, w},
        Transformed{fromFirst, fromSecond, euler, {z, 0}}})
    if (const auto result = take(valueOf(t, c, *logarithm))) return result;
  return std::nullopt;
}

#else

std::optional<double> calcHypergeometricPFQByTransformation(const double*, int32_t, const double*, int32_t, double,
                                                            unsigned long, double, double*) {
  return std::nullopt;
}

#endif
}  // namespace SpecialFunction
