// SPDX-License-Identifier: Apache-2.0
#include "special/hypergeometric_series_gmp.h"

#include <limits>
#include <vector>

#include "highprecision/hp_by_gmp.h"

namespace SpecialFunction {
namespace {

constexpr mp_bitcnt_t kBits = 128;

std::vector<HP::HPByGMP> numbers(const double* values, int32_t count, mp_bitcnt_t bits = kBits) {
  std::vector<HP::HPByGMP> result;
  result.reserve(static_cast<std::size_t>(count > 0 ? count : 0));
  for (int32_t i = 0; i < count; ++i) result.emplace_back(bits, values[i]);
  return result;
}

long exponentOf(HP::HPByGMP& x) {
  long exponent = 0;
  mpf_get_d_2exp(&exponent, x.get());
  return exponent;
}

}  // namespace

double calcHypergeometricPFQByGMP(const double* a, int32_t p, const double* b, int32_t q, double z) {
  using HP::HPByGMP;
  // The default precision is process-wide and another thread may change it meanwhile, so every number here carries its
  // own 128 bits; setting and restoring the default is what the routine shows outside.
  const HP::DefaultPrecision precision(kBits);
  std::vector<HPByGMP> upper = numbers(a, p), lower = numbers(b, q);
  const HPByGMP argument(kBits, z), limit(kBits, kHypergeometricTermLimit),
      huge(kBits, std::numeric_limits<double>::max());
  HPByGMP sum(kBits, 1.0), term(kBits, 1.0);
  for (unsigned long n = 1;; ++n) {
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
    __mpf_struct size = *term.get();  // |term|, sharing its limbs
    if (size._mp_size < 0) size._mp_size = -size._mp_size;
    if (mpf_cmp(&size, limit.get()) <= 0 || mpf_cmp(&size, huge.get()) > 0 ||
        n + 1 >= static_cast<unsigned long>(kHypergeometricMaxTerms))
      break;
  }
  return sum.toDouble();
}

double calcHypergeometricPFQByMoreBits(const double* a, int32_t p, const double* b, int32_t q, double z) {
  using HP::HPByGMP;
  constexpr mp_bitcnt_t kMostBits = 1 << 15;
  constexpr unsigned long kMostTerms = 200000;
  constexpr long kWanted = 64;  // bits of the result
  double result = 0;
  for (mp_bitcnt_t bits = 256;;) {
    std::vector<HPByGMP> upper = numbers(a, p, bits), lower = numbers(b, q, bits);
    const HPByGMP argument(bits, z);
    HPByGMP sum(bits, 1.0), term(bits, 1.0);
    long largest = 1, last = 1;
    for (unsigned long n = 1; n < kMostTerms; ++n) {
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
      if (mpf_sgn(term.get()) == 0) break;
      const long size = exponentOf(term);
      if (size > largest) largest = size;
      // Falling, and below the last bit that the sum can keep.
      if (size < last && (size < exponentOf(sum) - kWanted - 8 || size < largest - static_cast<long>(bits))) break;
      last = size;
    }
    result = sum.toDouble();
    const long lost = mpf_sgn(sum.get()) == 0 ? static_cast<long>(bits) : largest - exponentOf(sum);
    if (static_cast<long>(bits) >= lost + kWanted || bits >= kMostBits) break;
    bits = 2 * bits > static_cast<mp_bitcnt_t>(lost) + 128 ? 2 * bits : static_cast<mp_bitcnt_t>(lost) + 128;
  }
  return result;
}

}  // namespace SpecialFunction
