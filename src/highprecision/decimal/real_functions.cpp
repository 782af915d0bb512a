// SPDX-License-Identifier: Apache-2.0
#include "highprecision/decimal/real_functions.h"

#include <algorithm>
#include <cmath>

#include "highprecision/decimal/constants.h"
#include "highprecision/decimal/real_series.h"

namespace HP {
namespace {

using HighPrecision::Constant;
using HighPrecision::constantOf;

// Spare bits of a working precision: thousands of roundings, and the size of short sums of constants.
constexpr mp_bitcnt_t kSpare = 24;

int64_t pointOf(mp_bitcnt_t bits) { return static_cast<int64_t>(bits); }

// The number of halvings that about balances products by halving against terms of a series.
int64_t halvingsFor(mp_bitcnt_t bits, double scale) {
  return static_cast<int64_t>(scale * std::sqrt(static_cast<double>(bits)));
}

// x times the sum of (+-x^2)^k / (2k + 1)!, or over 2k + 1 without the factorial.
HPByGMP oddSeries(const HPByGMP& x, bool alternating, bool factorial, mp_bitcnt_t bits) {
  const int64_t point = pointOf(bits);
  Integer square = fixedOf(product(x, x, bits), point);
  if (alternating) mpz_neg(square.get(), square.get());
  const Integer series = factorial ? factorialSeries(square, point, 2, 1) : reciprocalSeries(square, point);
  return product(x, floatOf(series, point, bits), bits);
}

// exp(f) for |f| <= 1: the series at f/2^s, then s squarings.
HPByGMP expOfFraction(const HPByGMP& f, mp_bitcnt_t bits) {
  const int64_t wanted = halvingsFor(bits, 0.6);
  const int64_t halvings = sign(f) == 0 ? 0 : std::max<int64_t>(0, wanted + std::min<int64_t>(0, exponentOf(f)));
  const int64_t point = pointOf(bits) + halvings + 8;
  Integer value = factorialSeries(fixedOf(f, point - halvings), point, 1, 0);
  for (int64_t i = 0; i < halvings; ++i) {
    mpz_mul(value.get(), value.get(), value.get());
    mpz_tdiv_q_2exp(value.get(), value.get(), static_cast<mp_bitcnt_t>(point));
  }
  return floatOf(value, point, bits);
}

}  // namespace

HPByGMP realExp(const HPByGMP& x, mp_bitcnt_t bits) {
  if (sign(x) == 0) return number(1);
  if (sign(x) < 0) return quotient(number(1), realExp(minus(x), bits + 4), bits + 4);
  const mp_bitcnt_t work = bits + kSpare;
  if (exponentOf(x) <= 0) return expOfFraction(x, work);
  HPByGMP whole(128);
  mpf_floor(whole.get(), x.get());
  const HPByGMP fraction = difference(x, whole, work);
  const unsigned long n = mpf_get_ui(whole.get());
  const HPByGMP turns = power(constantOf(Constant::e, work + 64), n, work);
  return sign(fraction) == 0 ? turns : product(turns, expOfFraction(fraction, work), work);
}

HPByGMP realExpm1(const HPByGMP& x, mp_bitcnt_t bits) {
  const int64_t size = exponentOf(x);
  const auto smallest = -halvingsFor(bits, 0.4);
  if (sign(x) == 0 || size > smallest) {
    const mp_bitcnt_t longer = bits + 8 + static_cast<mp_bitcnt_t>(std::max<int64_t>(0, 1 - size));
    return plus(realExp(x, longer), -1, longer);
  }
  const mp_bitcnt_t work = bits + kSpare;
  // x times the sum of x^k / (k + 1)!
  const Integer series = factorialSeries(fixedOf(x, pointOf(work)), pointOf(work), 1, 1);
  return product(x, floatOf(series, pointOf(work), work), work);
}

HPByGMP realLog1p(const HPByGMP& d, mp_bitcnt_t bits) {
  const mp_bitcnt_t work = bits + kSpare;
  if (sign(d) != 0 && exponentOf(d) > -6) {
    const auto whole = std::clamp<int64_t>(exponentOf(d), 0, pointOf(work));
    return realLog(plus(d, 1, work + 64 + static_cast<mp_bitcnt_t>(whole)), bits + 16);
  }
  // 2 atanh(d / (2 + d))
  return scaled(oddSeries(quotient(d, plus(d, 2, work), work), false, false, work), 1);
}

HPByGMP realLog(const HPByGMP& x, mp_bitcnt_t bits) {
  struct Step {
    int p, q, r;
  };
  static constexpr Step kSteps[] = {
#include "highprecision/decimal/log_steps_data.inc"
  };
  constexpr int kBins = sizeof kSteps / sizeof *kSteps;
  const HPByGMP fromOne = plus(x, -1, mpf_get_prec(x.get()) + 64);
  if (sign(fromOne) == 0) return number(0);
  if (exponentOf(fromOne) <= -6) return realLog1p(fromOne, bits);
  const mp_bitcnt_t work = bits + kSpare + 16;  // the terms with p, q and r may cancel to 2^-7 of their size
  long exponent = 0;
  const double mantissa = 2 * mpf_get_d_2exp(&exponent, x.get());  // in [1, 2)
  --exponent;
  const Step step = kSteps[std::clamp(static_cast<int>((mantissa - 1) * kBins), 0, kBins - 1)];
  // m = x / (2^exponent s) with s = 2^p 3^q 5^r = up/down 2^p; ln m = 2 atanh((m - 1)/(m + 1))
  Integer up, down, part;
  mpz_ui_pow_ui(up.get(), 3, static_cast<unsigned long>(std::max(step.q, 0)));
  mpz_ui_pow_ui(part.get(), 5, static_cast<unsigned long>(std::max(step.r, 0)));
  mpz_mul(up.get(), up.get(), part.get());
  mpz_ui_pow_ui(down.get(), 3, static_cast<unsigned long>(std::max(-step.q, 0)));
  mpz_ui_pow_ui(part.get(), 5, static_cast<unsigned long>(std::max(-step.r, 0)));
  mpz_mul(down.get(), down.get(), part.get());
  HPByGMP numerator = scaled(held(x, work), -exponent - step.p);
  mpf_mul_ui(numerator.get(), numerator.get(), mpz_get_ui(down.get()));
  const HPByGMP other = floatOf(up, 0, 64);
  const HPByGMP z = quotient(difference(numerator, other, work), sum(numerator, other, work), work);
  HPByGMP result = scaled(oddSeries(z, false, false, work), 1);
  const std::pair<Constant, long> parts[] = {
      {Constant::ln2, exponent + step.p}, {Constant::ln3, step.q}, {Constant::ln5, step.r}};
  for (const auto& [constant, count] : parts) {
    if (count == 0) continue;
    HPByGMP term = constantOf(constant, work);
    mpf_mul_ui(term.get(), term.get(), static_cast<unsigned long>(std::abs(count)));
    (count > 0 ? mpf_add : mpf_sub)(result.get(), result.get(), term.get());
  }
  return result;
}

HPByGMP realAtan(const HPByGMP& x, mp_bitcnt_t bits) {
  if (sign(x) < 0) return minus(realAtan(minus(x), bits));
  if (sign(x) == 0) return number(0);
  // From `begin` on the angle is atan(up/down) and that of (x - c)/(1 + c x).
  struct Angle {
    double begin;
    unsigned long up, down;
    Constant atan;
  };
  static constexpr Angle kAngles[] = {{2.4, 4, 1, Constant::atanFour},
                                      {1.06, 3, 2, Constant::atanThreeHalves},
                                      {0.62, 3, 4, Constant::atanThreeQuarters},
                                      {0.27, 1, 2, Constant::atanOneHalf}};
  const mp_bitcnt_t work = bits + kSpare;
  HPByGMP t = held(x, work);
  if (mpf_cmp_ui(t.get(), 1) == 0) return scaled(constantOf(Constant::pi, work), -2);
  const Angle* angle = nullptr;
  for (const Angle& candidate : kAngles)
    if (angle == nullptr && mpf_cmp_d(t.get(), candidate.begin) >= 0) angle = &candidate;
  if (angle != nullptr) {
    HPByGMP numerator(work), denominator(work), shift(64);
    mpf_mul_ui(numerator.get(), t.get(), angle->down);
    mpf_set_ui(shift.get(), angle->up);
    mpf_mul_ui(denominator.get(), t.get(), angle->up);
    mpf_add_ui(denominator.get(), denominator.get(), angle->down);
    mpf_sub(numerator.get(), numerator.get(), shift.get());
    t = quotient(numerator, denominator, work);
  }
  // atan t = 2 atan(t / (1 + sqrt(1 + t^2)))
  const int64_t halvings =
      sign(t) == 0 ? 0 : std::max<int64_t>(0, halvingsFor(work, 0.13) + std::min<int64_t>(0, exponentOf(t) + 1));
  for (int64_t i = 0; i < halvings; ++i)
    t = quotient(t, plus(root(plus(product(t, t, work), 1, work), work), 1, work), work);
  HPByGMP result = sign(t) == 0 ? t : scaled(oddSeries(t, true, false, work), halvings);
  return angle == nullptr ? result : sum(result, constantOf(angle->atan, work), work);
}

ReducedAngle reducedAngle(RealReader read, mp_bitcnt_t bits) {
  const HPByGMP rough = read(64);
  if (sign(rough) == 0 || exponentOf(rough) < 0) return {0, read(bits)};  // |x| < 1/2
  const auto whole = static_cast<mp_bitcnt_t>(std::max<int64_t>(0, exponentOf(rough)));
  for (mp_bitcnt_t spare = kSpare;; spare *= 2) {
    const mp_bitcnt_t work = bits + whole + spare + 8;
    const HPByGMP x = read(work);
    const HPByGMP quarter = scaled(constantOf(Constant::pi, work), -1);
    HPByGMP quarters = sum(quotient(absolute(x), quarter, whole + 64), scaled(number(1), -1), whole + 64);
    mpf_floor(quarters.get(), quarters.get());
    const HPByGMP rest = difference(absolute(x), product(quarters, quarter, work), work);
    if (sign(rest) == 0 || exponentOf(rest) < -static_cast<int64_t>(spare)) continue;
    const Integer count = fixedOf(quarters, 0);
    const auto turn = static_cast<unsigned>(mpz_fdiv_ui(count.get(), 4));
    return sign(x) > 0 ? ReducedAngle{turn, rest} : ReducedAngle{(4 - turn) % 4, minus(rest)};
  }
}

SineCosine sineCosine(const ReducedAngle& angle, mp_bitcnt_t bits) {
  const HPByGMP& r = angle.rest;
  const mp_bitcnt_t work = bits + kSpare;
  const int64_t size = exponentOf(r);
  const int64_t wanted = halvingsFor(work, 0.33);
  // cos r - 1 by u -> 2u(u + 2), which carries an error four times as large into each doubling.
  const int64_t halvings = sign(r) == 0 ? 0 : std::max<int64_t>(0, wanted + std::min<int64_t>(0, size));
  const bool small = size < -wanted;
  const int64_t point = pointOf(work) + 2 * halvings + (small ? 0 : 2 * std::max<int64_t>(0, -size)) + 8;
  Integer square = fixedOf(r, point - halvings);
  mpz_mul(square.get(), square.get(), square.get());
  mpz_tdiv_q_2exp(square.get(), square.get(), static_cast<mp_bitcnt_t>(point));
  mpz_neg(square.get(), square.get());
  Integer u = factorialSeries(square, point, 2, 2);
  mpz_mul(u.get(), u.get(), square.get());
  mpz_tdiv_q_2exp(u.get(), u.get(), static_cast<mp_bitcnt_t>(point));
  Integer two;
  mpz_setbit(two.get(), static_cast<mp_bitcnt_t>(point + 1));
  Integer next;
  for (int64_t i = 0; i < halvings; ++i) {
    mpz_add(next.get(), u.get(), two.get());
    mpz_mul(u.get(), u.get(), next.get());
    mpz_tdiv_q_2exp(u.get(), u.get(), static_cast<mp_bitcnt_t>(point - 1));
  }
  mpz_add(next.get(), u.get(), two.get());
  HPByGMP sine(work);
  if (small) {
    mpf_set(sine.get(), oddSeries(r, true, true, work).get());
  } else {  // sin^2 = 1 - cos^2 = -u(u + 2)
    mpz_mul(next.get(), next.get(), u.get());
    mpz_neg(next.get(), next.get());
    mpz_sqrt(next.get(), next.get());
    mpf_set(sine.get(), floatOf(next, point, work).get());
    if (sign(r) < 0) mpf_neg(sine.get(), sine.get());
  }
  const HPByGMP cosine = plus(floatOf(u, point, work), 1, work);
  switch (angle.quarters) {
    case 0:
      return {sine, cosine};
    case 1:
      return {cosine, minus(sine)};
    case 2:
      return {minus(sine), minus(cosine)};
    default:
      return {minus(cosine), sine};
  }
}

SineCosine realSineCosine(const HPByGMP& x, mp_bitcnt_t bits) {
  return sineCosine(reducedAngle([&x](mp_bitcnt_t) { return x; }, bits + 8), bits);
}

SinhCosh realSinhCosh(const HPByGMP& x, mp_bitcnt_t bits) {
  const mp_bitcnt_t work = bits + kSpare;
  if (sign(x) < 0) {
    const SinhCosh mirrored = realSinhCosh(minus(x), bits);
    return {minus(mirrored.sinh), mirrored.cosh};
  }
  // With u = exp(x) - 1: sinh = (u + u/(u + 1))/2, cosh = ((u + 1) + 1/(u + 1))/2
  const HPByGMP u = realExpm1(x, work);
  const HPByGMP grown = plus(u, 1, work);
  return {scaled(sum(u, quotient(u, grown, work), work), -1),
          scaled(sum(grown, quotient(number(1), grown, work), work), -1)};
}

HPByGMP realAsinh(const HPByGMP& x, mp_bitcnt_t bits) {
  if (sign(x) < 0) return minus(realAsinh(minus(x), bits));
  const mp_bitcnt_t work = bits + kSpare;
  // ln(1 + d) with d = x + x^2/(1 + sqrt(1 + x^2))
  const HPByGMP square = product(x, x, work);
  const HPByGMP below = plus(root(plus(square, 1, work), work), 1, work);
  return realLog1p(sum(x, quotient(square, below, work), work), bits + 8);
}

HPByGMP realAcosh1p(const HPByGMP& d, mp_bitcnt_t bits) {
  const mp_bitcnt_t work = bits + kSpare;
  return realLog1p(sum(d, root(product(d, plus(d, 2, work), work), work), work), bits + 8);
}

HPByGMP realAtanh(const HPByGMP& x, const HPByGMP& oneMinus, mp_bitcnt_t bits) {
  if (sign(x) < 0) return minus(realAtanh(minus(x), oneMinus, bits));
  // ln(1 + 2x/(1 - x)) / 2
  return scaled(realLog1p(quotient(scaled(x, 1), oneMinus, bits + kSpare), bits + 8), -1);
}

}  // namespace HP
