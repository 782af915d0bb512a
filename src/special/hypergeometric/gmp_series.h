// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "highprecision/binary/hp_by_gmp.h"

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

/// The series pFq(a; b; z) term by term in GMP floats. Every number carries its own bits, as the default precision is
/// process-wide and another thread may change it meanwhile.
class GMPSeries {
 public:
  GMPSeries(mp_bitcnt_t bits, const double* a, int32_t p, const double* b, int32_t q, double z)
      : GMPSeries(bits, numbers(a, p, bits), numbers(b, q, bits), z) {}
  GMPSeries(mp_bitcnt_t bits, std::vector<HP::HPByGMP> a, std::vector<HP::HPByGMP> b, double z)
      : sum(bits, 1.0), term(bits, 1.0), upper(std::move(a)), lower(std::move(b)), argument(bits, z) {}

  /// Makes term n from term n - 1 and adds it.
  void add(unsigned long n) {
    for (auto& parameter : upper) {
      mpf_mul(term.get(), term.get(), parameter.get());
      mpf_add_ui(parameter.get(), parameter.get(), 1);
    }
    for (auto& parameter : lower) {
      mpf_div(term.get(), term.get(), parameter.get());
      mpf_add_ui(parameter.get(), parameter.get(), 1);
    }
    mpf_div_ui(term.get(), term.get(), n);
    mpf_mul(term.get(), term.get(), argument.get());
    mpf_add(sum.get(), sum.get(), term.get());
  }

  HP::HPByGMP sum, term;

 private:
  static std::vector<HP::HPByGMP> numbers(const double* values, int32_t count, mp_bitcnt_t bits) {
    std::vector<HP::HPByGMP> result;
    result.reserve(static_cast<std::size_t>(count > 0 ? count : 0));
    for (int32_t i = 0; i < count; ++i) result.emplace_back(bits, values[i]);
    return result;
  }

  std::vector<HP::HPByGMP> upper, lower;
  const HP::HPByGMP argument;
};

}  // namespace SpecialFunction
