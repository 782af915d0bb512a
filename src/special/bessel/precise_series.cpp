// SPDX-License-Identifier: Apache-2.0
#include "special/bessel/precise_series.h"

#include <optional>

#include "frame/numbers.h"
#include "special/hypergeometric/gmp_series.h"
#include "special/hypergeometric/hypergeometric_fast.h"

namespace SpecialFunction {
namespace {

using HP::HPByGMP;
constexpr mp_bitcnt_t kFirstBits = 256, kMostBits = 8192;
constexpr long kGuardBits = 70;
constexpr unsigned long kMaxTerms = 200000;

enum class Outcome { kDone, kMoreBits, kNoValue };

// `highest` becomes the exponent of the largest term.
template <class Arithmetic>
std::optional<Outcome> sumIn(const Arithmetic& arithmetic, long bits, const double* a, int32_t p, const double* b,
                             int32_t q, double z, ScaledValue& result, long& highest) {
  FloatSeries series(arithmetic, a, p, b, q, z);
  const auto &sum = series.sum, &term = series.term;
  long last = 1;
  highest = 1;
  for (unsigned long n = 1;; ++n) {
    if (n > kMaxTerms) return Outcome::kNoValue;
    if (!series.add(n)) return std::nullopt;
    const long size = term.binaryExponent();
    if (size > highest) highest = size;
    if (term.isZero()) break;
    // Below the guard twice and falling: a term can be small once, where an upper parameter passes near 0.
    const bool small = size < highest - bits || size < sum.binaryExponent() - kGuardBits;
    if (small && size < last) break;
    last = size;
  }
  if (highest - sum.binaryExponent() > bits - kGuardBits) return Outcome::kMoreBits;
  const __mpf_struct view = sum.view();
  result.mantissa = mpf_get_d_2exp(&result.exponent, &view);
  return Outcome::kDone;
}

Outcome sumWith(mp_bitcnt_t bits, const double* a, int32_t p, const double* b, int32_t q, double z, ScaledValue& result,
                long& highest) {
  return inFloats(bits, [&](const auto& arithmetic) {
    return sumIn(arithmetic, static_cast<long>(bits), a, p, b, q, z, result, highest);
  });
}

}  // namespace

ScaledValue preciseHypergeometric(const double* a, int32_t p, const double* b, int32_t q, double z) {
  const ScaledValue none{kNaN, 0};
  if (!std::isfinite(z)) return none;
  if (z == 0) return {1, 0};
  if (const auto value = calcHypergeometricPFQByDoubleDouble(a, p, b, q, z);
      value && std::abs(*value) > 1e-4 && std::abs(*value) < 1e290)
    return {*value, 0};
  ScaledValue result;
  mp_bitcnt_t bits = kFirstBits;
  while (bits <= kMostBits) {
    long highest = 0;
    const Outcome outcome = sumWith(bits, a, p, b, q, z, result, highest);
    if (outcome == Outcome::kDone) return result;
    if (outcome == Outcome::kNoValue) return none;
    // A sum of the order of 1 is what the largest term has to be held against; doubled where it is smaller.
    const auto wanted = static_cast<mp_bitcnt_t>(highest + 2 * kGuardBits);
    bits = wanted > bits ? wanted : 2 * bits;
  }
  return none;
}

double preciseThirds(const char* const weights[3], const int signs[3], bool derivative, double x) {
  constexpr mp_bitcnt_t kBits = 256;  // the terms reach e^50 times the sum at x = 17
  HPByGMP cube(kBits, x), sum(kBits, 0.0), largest(kBits, 0.0), power(kBits, 1.0);
  mpf_pow_ui(cube.get(), cube.get(), 3);
  for (unsigned long start = 0; start < 3; ++start) {
    HPByGMP term(kBits);
    mpf_set_str(term.get(), weights[start], 10);
    mpf_mul(term.get(), term.get(), power.get());
    const HPByGMP factor(kBits, x);
    mpf_mul(power.get(), power.get(), factor.get());
    for (unsigned long k = start; k < 300000; k += 3) {
      if (signs[start] > 0)
        mpf_add(sum.get(), sum.get(), term.get());
      else
        mpf_sub(sum.get(), sum.get(), term.get());
      mpf_mul(term.get(), term.get(), cube.get());
      mpf_div_ui(term.get(), term.get(), derivative ? k + 1 : k + 2);
      mpf_div_ui(term.get(), term.get(), k + 3);
      if (mpf_sgn(term.get()) == 0 || exponentOf(term) < -150) break;
    }
  }
  return sum.toDouble();
}

}  // namespace SpecialFunction
