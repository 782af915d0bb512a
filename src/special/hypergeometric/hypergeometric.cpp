// SPDX-License-Identifier: Apache-2.0
#include "special/hypergeometric/hypergeometric.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "special/hypergeometric/hypergeometric_fast.h"
#include "special/hypergeometric/hypergeometric_series_gmp.h"

namespace SpecialFunction {
namespace {

bool hasPole(const double* b, int32_t q) {
  for (int32_t j = 0; j < q; ++j)
    if (b[j] < 0.1 && std::abs(b[j] - std::round(b[j])) < 1e-15) return true;
  return false;
}

bool allFinite(const double* values, int32_t count) {
  return count <= 0 || std::all_of(values, values + count, [](double v) { return std::isfinite(v); });
}

}  // namespace

double calcHypergeometricPFQ(const double* a, int32_t p, const double* b, int32_t q, double z) {
  if (p == 1 && q == 0 && std::abs(z) < 1.0) return std::pow(1.0 - z, -a[0]);
  if (hasPole(b, q) || !std::isfinite(z) || !allFinite(a, p) || !allFinite(b, q))
    return std::numeric_limits<double>::quiet_NaN();
  double cancellation = 0;
  if (const auto value = calcHypergeometricPFQByDoubleDouble(a, p, b, q, z, true, &cancellation)) return *value;
  if (cancellation < kWideCancellation)
    if (const auto value = calcHypergeometricPFQByWide(a, p, b, q, z)) return *value;
  return calcHypergeometricPFQByGMP(a, p, b, q, z);
}

}  // namespace SpecialFunction
