// SPDX-License-Identifier: Apache-2.0
#include "special/hypergeometric_series_gmp.h"

#include <limits>
#include <vector>

#include "highprecision/hp_by_gmp.h"

namespace SpecialFunction {
namespace {

constexpr mp_bitcnt_t kBits = 128;

std::vector<HP::HPByGMP> numbers(const double* values, int32_t count) {
  std::vector<HP::HPByGMP> result;
  result.reserve(static_cast<std::size_t>(count > 0 ? count : 0));
  for (int32_t i = 0; i < count; ++i) result.emplace_back(kBits, values[i]);
  return result;
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

}  // namespace SpecialFunction
