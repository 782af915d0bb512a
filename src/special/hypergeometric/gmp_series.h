// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <type_traits>
#include <vector>

#include "highprecision/binary/hp_by_gmp.h"
#include "special/hypergeometric/cut_float.h"

namespace SpecialFunction {

/// Binary exponent of a number; far below all others for 0.
inline long exponentOf(const HP::HPByGMP& x) {
  long exponent = std::numeric_limits<long>::min() / 2;
  if (mpf_sgn(x.get()) != 0) mpf_get_d_2exp(&exponent, x.get());
  return exponent;
}

/// The index behind which no lower parameter b + n is negative any more: terms may rise again up to there. 0 where that
/// is too far to wait for.
inline double lastTurn(const double* b, int32_t q) {
  double turn = 0;
  for (int32_t j = 0; j < q; ++j) turn = std::fmax(turn, -b[j]);
  return turn < 100000 ? turn : 0;
}

/// GMP floats of so many bits. Every number carries its own bits, as the default precision is process-wide and another
/// thread may change it meanwhile.
struct GMPArithmetic {
  struct Float : HP::HPByGMP {
    using HPByGMP::HPByGMP;
    Float(mp_bitcnt_t bits, const HPByGMP& x) : HPByGMP(bits) { mpf_set(get(), x.get()); }

    void multiply(const Float& y) { mpf_mul(get(), get(), y.get()); }
    bool divide(const Float& y) {
      mpf_div(get(), get(), y.get());
      return true;
    }
    void divide(unsigned long n) { mpf_div_ui(get(), get(), n); }
    bool add(const Float& y) {
      mpf_add(get(), get(), y.get());
      return true;
    }
    bool isZero() const { return mpf_sgn(get()) == 0; }
    long binaryExponent() const { return exponentOf(*this); }
    __mpf_struct view() const { return *get(); }
    int compareSize(const Float& y) const {
      const __mpf_struct size{get()->_mp_prec, std::abs(get()->_mp_size), get()->_mp_exp, get()->_mp_d};
      return mpf_cmp(&size, y.get());
    }
  };
  using Factor = Float;
  struct Parameter : Float {
    using Float::Float;
    const Float& value() const { return *this; }
    void addOne() { mpf_add_ui(get(), get(), 1); }
  };

  mp_bitcnt_t bits;

  Float number(const Factor& x) const { return x; }
  Factor factor(double x) const { return {bits, x}; }
  template <class Number>
  bool addParameter(const Number& x, std::vector<Parameter>& parameters) const {
    parameters.emplace_back(bits, x);
    return true;
  }
};

#ifdef ORVANE_HAS_CUT_FLOAT
/// The same on fixed limbs, for bits that take kPrecision limbs.
template <int kPrecision>
struct CutArithmetic {
  using Float = CutFloat<kPrecision>;
  using Factor = CutFactor;
  using Parameter = CutParameter;

  static Float number(const Factor& x) { return Float::of(x); }
  static Factor factor(double x) { return Factor::of(x); }
  template <class Number>
  static bool addParameter(const Number& x, std::vector<Parameter>& parameters) {
    if constexpr (std::is_same_v<Number, double>)
      return parameters.emplace_back().set(x);
    else
      return parameters.emplace_back().set(x.get());
  }
};
#endif

/// What `compute` gives in floats of `bits` bits: on fixed limbs, and by GMP where these give nothing.
template <int kPrecision = 3, class Compute>
auto inFloats(mp_bitcnt_t bits, const Compute& compute) {
#ifdef ORVANE_HAS_CUT_FLOAT
  constexpr int kMostPrecision = 9;
  const mp_bitcnt_t precision = (bits + 2 * 64 - 1) / 64;  // as mpf_init2 counts it
  if (precision == kPrecision)
    if (const auto result = compute(CutArithmetic<kPrecision>{})) return *result;
  if constexpr (kPrecision < kMostPrecision)
    if (precision > kPrecision) return inFloats<kPrecision + 1>(bits, compute);
#endif
  return *compute(GMPArithmetic{bits});
}

/// The series pFq(a; b; z) term by term, in the order of its definition.
template <class Arithmetic>
class FloatSeries {
 public:
  /// Parameters: doubles or GMP floats.
  template <class Number>
  FloatSeries(const Arithmetic& arithmetic, const Number* a, int32_t p, const Number* b, int32_t q, double z)
      : sum(arithmetic.number(arithmetic.factor(1))), term(sum), argument(arithmetic.factor(z)) {
    for (int32_t i = 0; i < p; ++i) fits = arithmetic.addParameter(a[i], upper) && fits;
    for (int32_t j = 0; j < q; ++j) fits = arithmetic.addParameter(b[j], lower) && fits;
  }

  /// Makes term n from term n - 1 and adds it. False where this arithmetic cannot.
  bool add(unsigned long n) {
    for (auto& parameter : upper) {
      term.multiply(parameter.value());
      parameter.addOne();
    }
    for (auto& parameter : lower) {
      fits = term.divide(parameter.value()) && fits;
      parameter.addOne();
    }
    term.divide(n);
    term.multiply(argument);
    return sum.add(term) && fits;
  }

  double toDouble() const {
    const __mpf_struct view = sum.view();
    return mpf_get_d(&view);
  }

  typename Arithmetic::Float sum, term;

 private:
  std::vector<typename Arithmetic::Parameter> upper, lower;
  const typename Arithmetic::Factor argument;
  bool fits = true;
};

using GMPSeries = FloatSeries<GMPArithmetic>;

}  // namespace SpecialFunction
