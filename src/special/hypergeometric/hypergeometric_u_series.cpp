// SPDX-License-Identifier: Apache-2.0
// Tricomi's U by its two series in GMP floats, the gamma factors too.
#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>
#include <vector>

#include "special/hypergeometric/gmp_series.h"
#include "special/hypergeometric/hypergeometric_u_parts.h"

namespace SpecialFunction {
namespace {

using HP::HPByGMP;

constexpr double kMostX = 5000, kMostParameterU = 1e6;
constexpr mp_bitcnt_t kFirstBits = 192, kMostBitsU = 1 << 15;
constexpr long kWantedU = 70;  // bits of the result, with what rounding takes

HPByGMP sumOf(mp_bitcnt_t bits, std::initializer_list<double> summands) {
  HPByGMP sum(bits, 0.0);
  for (const double summand : summands) {
    const HPByGMP number(bits, summand);
    mpf_add(sum.get(), sum.get(), number.get());
  }
  return sum;
}

bool isPole(const HPByGMP& z) { return mpf_sgn(z.get()) <= 0 && mpf_integer_p(z.get()) != 0; }

HPByGMP integerPower(const HPByGMP& base, long exponent) {
  HPByGMP power(mpf_get_prec(base.get()));
  mpf_pow_ui(power.get(), base.get(), static_cast<unsigned long>(std::abs(exponent)));
  if (exponent < 0) mpf_ui_div(power.get(), 1, power.get());
  return power;
}

// log 2 = 18 artanh(1/26) - 2 artanh(1/4801) + 8 artanh(1/8749).
HPByGMP logTwo(mp_bitcnt_t bits) {
  static constexpr struct {
    long weight;
    unsigned long inverse;
  } kParts[] = {{18, 26}, {-2, 4801}, {8, 8749}};
  HPByGMP sum(bits, 0.0), term(bits), power(bits);
  for (const auto& part : kParts) {
    mpf_set_si(power.get(), part.weight);
    mpf_div_ui(power.get(), power.get(), part.inverse);
    for (unsigned long k = 1; exponentOf(power) > -static_cast<long>(bits) - 8; k += 2) {
      mpf_div_ui(term.get(), power.get(), k);
      mpf_add(sum.get(), sum.get(), term.get());
      mpf_div_ui(power.get(), power.get(), part.inverse * part.inverse);
    }
  }
  return sum;
}

// 2^exponent for any real exponent.
HPByGMP powerOfTwo(const HPByGMP& exponent) {
  const mp_bitcnt_t bits = mpf_get_prec(exponent.get());
  HPByGMP whole(bits), rest(bits), sum(bits, 1.0), term(bits, 1.0);
  mpf_floor(whole.get(), exponent.get());
  mpf_sub(rest.get(), exponent.get(), whole.get());
  const HPByGMP ln2 = logTwo(bits);
  mpf_mul(rest.get(), rest.get(), ln2.get());
  for (unsigned long k = 1; mpf_sgn(term.get()) != 0 && exponentOf(term) > -static_cast<long>(bits) - 8; ++k) {
    mpf_mul(term.get(), term.get(), rest.get());
    mpf_div_ui(term.get(), term.get(), k);
    mpf_add(sum.get(), sum.get(), term.get());
  }
  const long shift = mpf_get_si(whole.get());
  if (shift >= 0)
    mpf_mul_2exp(sum.get(), sum.get(), static_cast<mp_bitcnt_t>(shift));
  else
    mpf_div_2exp(sum.get(), sum.get(), static_cast<mp_bitcnt_t>(-shift));
  return sum;
}

/// gamma(z) as value N^power exp(-N): the incomplete gamma function gamma(f, N) = N^f exp(-N) sum of N^k/((f)(f+1)...
/// (f+k)), 1 <= f < 2, is gamma(f) up to exp(-N), and integer steps lead from f to z.
struct ScaledGamma {
  HPByGMP value;
  long steps;  // z - f; N's power is f

  ScaledGamma(const HPByGMP& z, const HPByGMP& n) : value(mpf_get_prec(n.get())), steps(0) {
    const mp_bitcnt_t bits = mpf_get_prec(n.get());
    HPByGMP f(bits), product(bits), scale(bits);
    mpf_floor(f.get(), z.get());
    steps = mpf_get_si(f.get()) - 1;
    mpf_sub(f.get(), z.get(), f.get());
    mpf_add_ui(f.get(), f.get(), 1);
    // As a fraction value/scale, so that one division is enough.
    inFloats(bits, [&](const auto& arithmetic) { return sums(arithmetic, z, f, mpf_get_d(n.get()), product, scale); });
    mpf_div(value.get(), value.get(), scale.get());
    if (steps >= 0)
      mpf_mul(value.get(), value.get(), product.get());
    else
      mpf_div(value.get(), value.get(), product.get());
  }

 private:
  /// value/scale = sum of N^k/((f)...(f+k)), product = (f)_steps or (z)_(-steps).
  template <class Arithmetic>
  std::optional<bool> sums(const Arithmetic& arithmetic, const HPByGMP& z, const HPByGMP& f, double n, HPByGMP& product,
                           HPByGMP& scale) {
    std::vector<typename Arithmetic::Parameter> factors;
    if (!arithmetic.addParameter(f, factors) || !arithmetic.addParameter(steps >= 0 ? f : z, factors))
      return std::nullopt;
    auto &factor = factors[0], &other = factors[1];
    const auto one = arithmetic.number(arithmetic.factor(1));
    const auto x = arithmetic.factor(n);
    auto sum = one, term = one, all = one, whole = arithmetic.number(factor.value());
    const auto bits = static_cast<long>(mpf_get_prec(value.get()));
    do {
      factor.addOne();
      term.multiply(x);
      whole.multiply(factor.value());
      sum.multiply(factor.value());
      if (!sum.add(term)) return std::nullopt;
    } while (term.binaryExponent() > sum.binaryExponent() - bits - 8);
    for (long k = std::abs(steps); k > 0; --k) {
      all.multiply(other.value());
      other.addOne();
    }
    set(value, sum.view());
    set(scale, whole.view());
    set(product, all.view());
    return true;
  }

  static void set(HPByGMP& number, const __mpf_struct& view) { mpf_set(number.get(), &view); }
};

// M(a, b, x), and its largest term's binary exponent.
HPByGMP kummer(const HPByGMP& a, const HPByGMP& b, double x, long& largest) {
  const mp_bitcnt_t bits = mpf_get_prec(a.get());
  const double turn = -mpf_get_d(b.get());
  HPByGMP result(bits);
  inFloats(bits, [&](const auto& arithmetic) -> std::optional<bool> {
    FloatSeries series(arithmetic, &a, 1, &b, 1, x);
    long last = 1;
    largest = 1;
    for (unsigned long n = 1;; ++n) {
      if (!series.add(n)) return std::nullopt;
      if (series.term.isZero()) break;
      const long size = series.term.binaryExponent();
      largest = std::max(largest, size);
      if (static_cast<double>(n) > turn && size < last && size < largest - static_cast<long>(bits)) break;
      last = size;
    }
    const __mpf_struct sum = series.sum.view();
    mpf_set(result.get(), &sum);
    return true;
  });
  return result;
}

struct Part {
  HPByGMP value;
  long error;  // binary exponent of its error
};

// gamma(upper)/gamma(lower) M(a, b, x) without the factors N^f; 0 at a pole of the lower gamma.
Part partOf(const HPByGMP& upper, const HPByGMP& lower, const HPByGMP& a, const HPByGMP& b, double x, const HPByGMP& n,
            long& steps) {
  const mp_bitcnt_t bits = mpf_get_prec(n.get());
  Part part{HPByGMP(bits, 0.0), std::numeric_limits<long>::min() / 2};
  if (isPole(lower)) return part;
  const ScaledGamma above(upper, n), below(lower, n);
  steps = below.steps - above.steps;
  mpf_div(part.value.get(), above.value.get(), below.value.get());
  long largest = 1;
  const long factor = exponentOf(part.value);
  const HPByGMP sum = kummer(a, b, x, largest);
  mpf_mul(part.value.get(), part.value.get(), sum.get());
  part.error = factor + largest - static_cast<long>(bits);
  return part;
}

void multiply(Part& part, const HPByGMP& factor) {
  mpf_mul(part.value.get(), part.value.get(), factor.get());
  part.error += exponentOf(factor);
}

// U N^rest, where rest = a - round(a).
Part sumOfParts(double a, double b, double x, int doublings, mp_bitcnt_t bits) {
  const HPByGMP one(bits, 1.0), n(bits, std::ldexp(x, doublings)), upper(bits, a), lower(bits, b);
  const HPByGMP otherUpper = sumOf(bits, {1, a, -b}), otherLower = sumOf(bits, {2, -b});
  const HPByGMP fromOne = sumOf(bits, {1, -b}), toOne = sumOf(bits, {b, -1});
  const long whole = std::lround(a);
  long steps = 0;
  Part left = partOf(fromOne, otherUpper, upper, lower, x, n, steps);
  multiply(left, integerPower(n, steps - whole));
  steps = 0;
  Part right = partOf(toOne, upper, otherUpper, otherLower, x, n, steps);
  multiply(right, integerPower(n, steps - whole));
  // x^(1-b) N^(b-1) = 2^(doublings (b-1))
  HPByGMP exponent(bits, doublings);
  mpf_mul(exponent.get(), exponent.get(), toOne.get());
  multiply(right, powerOfTwo(exponent));
  mpf_add(left.value.get(), left.value.get(), right.value.get());
  left.error = std::max(left.error, right.error);
  return left;
}

}  // namespace

std::optional<Scaled> hypergeometricUByMoreBits(double a, double b, double x) {
  if (!(x > 0 && x <= kMostX && std::abs(a) <= kMostParameterU && std::abs(b) <= kMostParameterU)) return std::nullopt;
  for (mp_bitcnt_t bits = kFirstBits; bits <= kMostBitsU;) {
    // N = x 2^doublings from 0.7 bits on, as exp(-N) is left out.
    const double least = 0.7 * static_cast<double>(bits + 16);
    int doublings = std::ilogb(least) - std::ilogb(x);
    if (std::ldexp(x, doublings) < least) ++doublings;
    const Part sum = sumOfParts(a, b, x, doublings, bits);
    const long lost = sum.error + static_cast<long>(bits) - exponentOf(sum.value);
    if (mpf_sgn(sum.value.get()) != 0 && lost + kWantedU <= static_cast<long>(bits)) {
      long exponent = 0;
      const double rest = std::pow(std::ldexp(x, doublings), std::round(a) - a);
      const double mantissa = mpf_get_d_2exp(&exponent, sum.value.get()) * rest;
      if (std::abs(exponent) < 1000) return Scaled{std::ldexp(mantissa, static_cast<int>(exponent)), 0};
      return Scaled{mantissa, static_cast<double>(exponent) * std::numbers::ln2};
    }
    bits = std::max(bits + bits / 2,
                    static_cast<mp_bitcnt_t>(std::clamp(lost, 0L, static_cast<long>(kMostBitsU))) + kWantedU + 32);
  }
  return std::nullopt;
}

}  // namespace SpecialFunction
