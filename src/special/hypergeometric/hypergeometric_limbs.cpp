// SPDX-License-Identifier: Apache-2.0
#include <cmath>
#include <limits>

#include "special/hypergeometric/hypergeometric_fast.h"
#include "special/hypergeometric/hypergeometric_series_gmp.h"
#include "special/hypergeometric/long_float.h"

// The series with a relative stop in floats of a fixed count k of limbs, as many as its cancellation asks for, by the
// quotients of hypergeometric_wide.cpp: t_n = T_n/B_n, S_n = A_n/B_n, without a division in the loop.
//
// With e = 2^(1 - 64 k) a factor adds at most e, an addition e of its larger summand: after N steps t_n is within
// n (p + q + 2) e of itself and S_n within N (p + 3 q + 6) e A < N 2^(6 - 64 k) A, A = sum |t_n|. The GMP series in
// floats of `bits` lies within N 2^(6 - bits) A (hypergeometric_fast.cpp, 6., with `bits` in place of 128). Four times
// the sum of both is taken, and A < (N + 1) 2^E with the exponent E of the largest term.
//
// Its stops compare binary exponents. A term or sum whose mantissa is within 2^-23 of a power of two has two exponents
// here, and what they do not decide alike is left to GMP. That margin is enough: N < 2^16, and GMP's sum is kept only
// while it has 64 bits more than it lost, so that it is off by N^2 2^(6 - 64) of itself.

namespace SpecialFunction {
#ifdef __SIZEOF_INT128__
namespace {

constexpr int32_t kMostTerms = 1 << 16;
constexpr int64_t kLeastExponent = -1000;  // below it a term counts as one of this size where sizes are bounds

/// The binary exponent of a quotient x / y as GMP gives it; two where its mantissa is too near to a power of two.
struct Exponent {
  int64_t least, most;

  static Exponent of(const Wide& x, const Wide& y) {
    constexpr uint64_t kNear = static_cast<uint64_t>(1) << 40;
    const int64_t exponent = x.exponent - y.exponent;
    const uint64_t above = high(x.mantissa), below = high(y.mantissa);
    return {exponent + (above >= below && above - below >= kNear ? 1 : 0),
            exponent + (above >= below || below - above < kNear ? 1 : 0)};
  }
  void rise(const Exponent& other) {
    least = std::max(least, other.least);
    most = std::max(most, other.most);
  }
};

enum class Answer { yes, no, unknown };
Answer isBelow(const Exponent& x, const Exponent& y) {
  return x.most < y.least ? Answer::yes : x.least >= y.most ? Answer::no : Answer::unknown;
}

struct LimbSeries {
  const double* a;
  int32_t p;
  const double* b;
  int32_t q;
  double z, turn;
};

struct LimbSum {
  std::optional<double> value;
  Exponent lost{};  ///< of the largest term over the sum
  double rest = 0;  ///< a bound of the terms from the first one below 2^-55 on; infinite when there is none
  bool ended = false;
};

// `bits` are those of the GMP series whose double is wanted.
template <int kLimbs>
LimbSum sumOf(const LimbSeries& s, int64_t bits) {
  FixedParameter upper[FixedParameter::kMost], lower[FixedParameter::kMost];
  if (!FixedParameter::set(s.a, s.p, upper) || !FixedParameter::set(s.b, s.q, lower)) return {};
  const Factor argument = Factor::of(s.z);
  auto term = LongFloat<kLimbs>::one(), sum = term, scale = term;  // T, A, B
  Exponent largest{1, 1}, last{1, 1}, whole{1, 1};
  constexpr int64_t kSmall = -55;  // 2^-55 is above kHypergeometricTermLimit
  int64_t rest = kLeastExponent - 1;
  int32_t n = 1;
  for (;; ++n) {
    if (n == kMostTerms) return {};
    takeProduct(argument, upper, s.p, [&](const Wide& factor) { term.multiply(factor); });
    if (term.isZero()) break;
    takeProduct({static_cast<UInt128>(n), 0, false}, lower, s.q, [&](const Wide& factor) {
      scale.multiply(factor);
      sum.multiply(factor);
    });
    sum.add(term);
    if (sum.isZero()) return {};
    const Wide below = scale.top();
    const Exponent size = Exponent::of(term.top(), below);
    largest.rise(size);
    if (size.most <= kSmall || rest >= kLeastExponent) rest = std::max({rest, size.most, kLeastExponent});
    if (n > s.turn) {
      whole = Exponent::of(sum.top(), below);
      constexpr int64_t kWanted = 72;
      Exponent limit{whole.least - kWanted, whole.most - kWanted};
      limit.rise({largest.least - bits, largest.most - bits});
      const Answer isSmall = isBelow(size, limit), isFalling = isBelow(size, last);
      if (isSmall == Answer::yes && isFalling == Answer::yes) break;
      if (isSmall != Answer::no && isFalling != Answer::no) return {};
    }
    last = size;
  }
  whole = Exponent::of(sum.top(), scale.top());
  const Exponent lost{largest.least - whole.most, largest.most - whole.least};
  if (largest.most > 900) return {};
  const double sizes = std::ldexp(n + 1.0, static_cast<int>(largest.most));
  const double noise = std::ldexp(1.0, 8 - 64 * kLimbs) + std::ldexp(1.0, 8 - static_cast<int>(bits));
  return {cutQuotient(sum.top(), scale.top(), sizes * n * noise), lost,
          rest < kLeastExponent ? HUGE_VAL : std::ldexp(n, static_cast<int>(rest)), true};
}

// In the least count of limbs that holds `digits` bits.
LimbSum sumWithDigits(const LimbSeries& s, int64_t digits, int64_t bits) {
  if (digits <= 192) return sumOf<3>(s, bits);
  if (digits <= 256) return sumOf<4>(s, bits);
  if (digits <= 320) return sumOf<5>(s, bits);
  if (digits <= 384) return sumOf<6>(s, bits);
  if (digits <= 512) return sumOf<8>(s, bits);
  if (digits <= 768) return sumOf<12>(s, bits);
  return {};
}

constexpr int64_t kGuard = 96;  // bits of the double, of the sum of errors and of a proof that seldom fails

}  // namespace

std::optional<double> calcHypergeometricPFQByLimbs(const double* a, int32_t p, const double* b, int32_t q, double z,
                                                   unsigned long bits, double largest, double* rest) {
  double turn = 0;
  for (int32_t j = 0; j < q; ++j) turn = std::fmax(turn, -b[j]);
  if (!(std::abs(z) >= 0x1p-60 && std::abs(z) <= 0x1p60 && turn < kMostTerms && largest < 800)) return std::nullopt;
  const LimbSeries series{a, p, b, q, z, turn};
  auto kept = static_cast<int64_t>(bits), digits = static_cast<int64_t>(largest) + kGuard;
  for (int round = 0; round < 4; ++round) {
    const LimbSum sum = sumWithDigits(series, digits, kept);
    if (!sum.ended) return std::nullopt;
    // The GMP series is kept when it lost at most all but 64 of its bits, else begun again with twice as many.
    if (sum.lost.least + 64 > kept) {
      if (sum.lost.most + 128 > 2 * kept) return std::nullopt;
      kept *= 2;
    } else if (sum.lost.most + 64 > kept) {
      return std::nullopt;
    } else if (sum.value) {
      if (rest != nullptr) *rest = sum.rest;
      return sum.value;
    }
    if (sum.lost.most + kGuard <= digits && kept == static_cast<int64_t>(bits)) return std::nullopt;
    digits = std::max(digits, sum.lost.most + kGuard);
  }
  return std::nullopt;
}

#else

std::optional<double> calcHypergeometricPFQByLimbs(const double*, int32_t, const double*, int32_t, double,
                                                   unsigned long, double, double*) {
  return std::nullopt;
}

#endif
}  // namespace SpecialFunction
