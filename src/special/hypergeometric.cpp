// SPDX-License-Identifier: Apache-2.0
#include "special/hypergeometric.h"

#include <cmath>
#include <limits>
#include <vector>

#include "highprecision/hp_by_gmp.h"

namespace SpecialFunction {
namespace {

constexpr mp_bitcnt_t kBits = 128;
constexpr double kTermLimit = 1e-17;  // absolute
constexpr unsigned long kMaxTerms = 1000000;

bool hasPole(const double* b, int32_t q) {
  for (int32_t j = 0; j < q; ++j)
    if (b[j] < 0.1 && std::abs(b[j] - std::round(b[j])) < 1e-15) return true;
  return false;
}

double sumSeries(const double* a, int32_t p, const double* b, int32_t q, double z) {
  using HP::HPByGMP;
  // The default precision is process-wide and another thread may change it meanwhile, so every number here carries its
  // own 128 bits; setting and restoring the default is what the routine shows outside.
  const HP::DefaultPrecision precision(kBits);
  std::vector<HPByGMP> upper, lower;
  upper.reserve(static_cast<std::size_t>(p));
  lower.reserve(static_cast<std::size_t>(q));
  for (int32_t i = 0; i < p; ++i) upper.emplace_back(kBits, a[i]);
  for (int32_t j = 0; j < q; ++j) lower.emplace_back(kBits, b[j]);
  const HPByGMP argument(kBits, z), limit(kBits, kTermLimit), huge(kBits, std::numeric_limits<double>::max());
  HPByGMP sum(kBits, 1.0), term(kBits, 1.0), size(kBits);
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
    mpf_abs(size.get(), term.get());
    if (mpf_cmp(size.get(), limit.get()) <= 0 || mpf_cmp(size.get(), huge.get()) > 0 || n + 1 >= kMaxTerms) break;
  }
  return sum.toDouble();
}

}  // namespace

double calcHypergeometricPFQ(const double* a, int32_t p, const double* b, int32_t q, double z) {
  if (p == 1 && q == 0 && std::abs(z) < 1.0) return std::pow(1.0 - z, -a[0]);
  if (hasPole(b, q)) return std::numeric_limits<double>::quiet_NaN();
  return sumSeries(a, p, b, q, z);
}

}  // namespace SpecialFunction
