// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>

#include "highprecision/hp_by_gmp.h"
#include "special/incomplete_gamma_kernel.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

bool isInteger(double a, double tolerance) { return std::abs(std::round(a) - a) < tolerance; }

// The pairs (a, x), x > 10, for which the full gamma is taken for the lower integral.
bool saturated(double a, double x) {
  struct Row {
    double a, x;
  };
  static constexpr Row kRows[] = {{2, 40},  {4, 47},  {6, 50},   {8, 56},   {10, 61},
                                  {15, 72}, {20, 80}, {50, 132}, {100, 210}};
  if (!(a > 0)) return false;
  for (const Row& row : kRows)
    if (a < row.a && x > row.x) return true;
  return false;
}

// 1/gamma(a) with its sign; gamma itself overflows from 171 on.
double inverseGamma(double a) { return 1 / std::tgamma(a); }

constexpr mp_bitcnt_t kBits = 128;
constexpr long long kShortSum = 64;

// sum of x^k/k!, k = 0..n-1, at 128 bits. Terms beyond the peak that no longer reach the sum are left out.
double longPartialSum(long long n, double x) {
  using HP::HPByGMP;
  // Other threads may change the default meanwhile, so each number carries its own 128 bits.
  const HP::DefaultPrecision precision(kBits);
  const HPByGMP argument(kBits, x);
  HPByGMP sum(kBits, 1.0), term(kBits, 1.0), size(kBits), least(kBits);
  for (long long k = 1; k < n; ++k) {
    mpf_mul(term.get(), term.get(), argument.get());
    mpf_div_ui(term.get(), term.get(), static_cast<unsigned long>(k));
    mpf_add(sum.get(), sum.get(), term.get());
    if (static_cast<double>(k) > std::abs(x)) {
      mpf_abs(size.get(), term.get());
      mpf_abs(least.get(), sum.get());
      mpf_div_2exp(least.get(), least.get(), 2 * kBits);
      if (mpf_cmp(size.get(), least.get()) <= 0) break;
    }
  }
  return mpf_cmp_d(sum.get(), DBL_MAX) > 0 ? kInf : sum.toDouble();
}

// The same sum: a short one of positive terms is right to the last bit in the 64-bit mantissa of long double too.
double partialSum(long long n, double x) {
  if (LDBL_MANT_DIG < 64 || n > kShortSum || !(x >= 0)) return longPartialSum(n, x);
  long double term = 1, sum = 1;
  for (long long k = 1; k < n; ++k) {
    term *= static_cast<long double>(x) / static_cast<long double>(k);
    sum += term;
  }
  return static_cast<double>(sum);
}

// Q(n, x) for an integer n > 1.
double upperAtInteger(long long n, double x) {
  if (std::isnan(x)) return kNaN;
  if (x == kInf) return 0;
  if (x > 700 || n > 1000000) return Kernel::regularisedGamma(static_cast<double>(n), x).q;
  if (x < 0 && static_cast<double>(n) > -2 * x) {
    // The alternating sum is close to exp(x): Q = 1 - P without the detour.
    return 1 - Kernel::lowerGammaSeries(static_cast<double>(n), x) * inverseGamma(static_cast<double>(n));
  }
  return partialSum(n, x) * std::exp(-x);
}

}  // namespace

double calcRLowerIncompleteGamma(double a, double x) {
  if (isInteger(a, 1e-15)) {
    const double rounded = std::round(a);
    if (rounded < 0) return kNaN;
    if (rounded == 0) return 0;
    // KEPT: the upper function at integer a, where one would expect the lower one (kept.csv: RLower_integer)
    if (rounded == 1) return std::exp(-x);
    return upperAtInteger(static_cast<long long>(std::min(rounded, 9e18)), x);
  }
  if (!(x >= 0)) return kNaN;
  if (a > 0) return Kernel::regularisedGamma(a, x).p;
  if (x <= 1) return Kernel::lowerGammaSeries(a, x) * inverseGamma(a);
  return 1 - Kernel::upperGamma(a, x) * inverseGamma(a);
}

// 1 - calcRLowerIncompleteGamma with the digits that this subtraction would lose.
double calcRUpperIncompleteGamma(double a, double x) {
  const double lower = calcRLowerIncompleteGamma(a, x);
  if (!(lower > 0.5)) return 1 - lower;
  const double rounded = std::round(a);
  if (isInteger(a, 1e-15)) {
    if (rounded == 1) return -std::expm1(-x);
    if (x >= 0) return Kernel::regularisedGamma(rounded, x).p;
    return Kernel::lowerGammaSeries(rounded, x) * inverseGamma(rounded);
  }
  if (a > 0) return Kernel::regularisedGamma(a, x).q;
  return x > 1 ? Kernel::upperGamma(a, x) * inverseGamma(a) : 1 - lower;
}

double calcIncompleteGammaLower(double a, double x) {
  if (isInteger(a, kEps)) {
    const double n = std::round(a);
    if (n == 0) return std::tgamma(a) - std::expint(x);
    // KEPT: the bare power below 0, where the integral diverges (kept.csv: LowerGamma_negative)
    if (n < 0) return std::pow(x, -n);
    if (x < 0) return Kernel::lowerGammaSeries(n, x);
    return std::isnan(x) ? kNaN : Kernel::lowerGamma(n, x);
  }
  if (!(x >= 0)) return kNaN;
  // KEPT: 0 below eps, although x^a/a may be large for small or negative a (kept.csv: LowerGamma_tiny)
  if (x < kEps) return 0;
  if (x > 10) {
    // KEPT: the full gamma from the table's x on (kept.csv: LowerGamma_saturated)
    if (saturated(a, x)) return std::tgamma(a);
  }
  if (a > 0) return Kernel::lowerGamma(a, x);
  if (x <= 1) return Kernel::lowerGammaSeries(a, x);
  return std::tgamma(a) - Kernel::upperGamma(a, x);
}

double calcIGamma(double a, double x) {
  if (!isInteger(a, kEps)) {
    if (!(x >= 0)) return kNaN;
    if (x > 10) {
      // KEPT: 0 where the lower integral takes the full gamma (kept.csv: UpperGamma_saturated)
      if (saturated(a, x)) return 0;
      return Kernel::upperGamma(a, x);
    }
    if (x < kEps) return std::tgamma(a);
    return Kernel::upperGamma(a, x);
  }
  const double n = std::round(a);
  // KEPT: Ei(x) at 0, where one would expect E_1(x) = -Ei(-x) (kept.csv: UpperGamma_zero)
  if (n == 0) return std::expint(x);
  if (n < 0) return calcExpIntegralN(static_cast<long long>(1 - std::max(n, -9e18)), x) * std::pow(x, n);
  if (x >= 0) return Kernel::upperGamma(n, x);
  if (std::isnan(x)) return kNaN;
  return std::tgamma(n) - Kernel::lowerGammaSeries(n, x);
}

double calcInverseRUpperIncompleteGamma(double a, double q) {
  if (!(q >= 0 && a >= 0 && q <= 1.000000000000001)) return kNaN;
  // KEPT: the square of a q below 1e-15, where one would expect a large x (kept.csv: InverseRUpper_small)
  if (q < 1e-15) return q * q;
  const auto upper = [a](double x) { return 1 - calcRLowerIncompleteGamma(a, x); };
  double low = 0, high = 1000;
  bool bracketed = false;
  for (int round = 0; round < 20 && !bracketed; ++round) {
    const double value = upper(high);
    if (std::abs(q - value) < 1e-15) return high;
    if (value < q) {
      bracketed = true;
    } else {
      // KEPT: at integer a it rises, so x grows 20 times; one would expect the root (kept.csv: InverseRUpper_integer)
      low = high;
      high *= 8;
    }
  }
  if (!bracketed) return high;
  for (int round = 0; round < 255; ++round) {
    const double middle = (low + high) / 2, value = upper(middle);
    if (std::abs(q - value) < 1e-15) return middle;
    (value < q ? high : low) = middle;
    if (std::abs(low - high) < 1e-15) break;
  }
  return (low + high) / 2;
}

}  // namespace SpecialFunction
