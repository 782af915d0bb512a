// SPDX-License-Identifier: Apache-2.0
#include "special/hypergeometric/hypergeometric_series_gmp.h"

#include <algorithm>
#include <limits>

#include "special/hypergeometric/gmp_series.h"

namespace SpecialFunction {
namespace {

constexpr mp_bitcnt_t kBits = 128;

}  // namespace

double calcHypergeometricPFQByGMP(const double* a, int32_t p, const double* b, int32_t q, double z) {
  using HP::HPByGMP;
  // Setting and restoring the default precision is what the routine shows outside.
  const HP::DefaultPrecision precision(kBits);
  GMPSeries series(kBits, a, p, b, q, z);
  const HPByGMP limit(kBits, kHypergeometricTermLimit), huge(kBits, std::numeric_limits<double>::max());
  for (unsigned long n = 1;; ++n) {
    series.add(n);
    __mpf_struct size = *series.term.get();  // |term|, sharing its limbs
    if (size._mp_size < 0) size._mp_size = -size._mp_size;
    if (mpf_cmp(&size, limit.get()) <= 0 || mpf_cmp(&size, huge.get()) > 0 ||
        n + 1 >= static_cast<unsigned long>(kHypergeometricMaxTerms))
      break;
  }
  return series.sum.toDouble();
}

double calcHypergeometricPFQByMoreBits(const double* a, int32_t p, const double* b, int32_t q, double z,
                                       unsigned long bits) {
  using HP::HPByGMP;
  constexpr mp_bitcnt_t kMostBits = 1 << 15;
  constexpr unsigned long kMostTerms = 200000;
  constexpr long kWanted = 64;  // bits of the result
  const double turn = lastTurn(b, q);
  double result = 0;
  for (;;) {
    GMPSeries series(bits, a, p, b, q, z);
    const HPByGMP &sum = series.sum, &term = series.term;
    long largest = 1, last = 1;
    for (unsigned long n = 1; n < kMostTerms; ++n) {
      series.add(n);
      if (mpf_sgn(term.get()) == 0) break;
      const long size = exponentOf(term);
      if (size > largest) largest = size;
      // Falling for good, and below the last bit that the sum can keep.
      if (static_cast<double>(n) > turn && size < last &&
          (size < exponentOf(sum) - kWanted - 8 || size < largest - static_cast<long>(bits)))
        break;
      last = size;
    }
    result = sum.toDouble();
    const long lost = mpf_sgn(sum.get()) == 0 ? static_cast<long>(bits) : largest - exponentOf(sum);
    if (static_cast<long>(bits) >= lost + kWanted || bits >= kMostBits) break;
    bits = std::max(2 * bits, static_cast<mp_bitcnt_t>(lost) + 128);
  }
  return result;
}

}  // namespace SpecialFunction
