// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cfloat>
#include <cmath>

#include "frame/numbers.h"
#include "highprecision/binary/hp_by_gmp.h"
#include "special/elementary/turn.h"
#include "special/gamma/incomplete_gamma_kernel.h"
#include "special/gamma/ln_gamma.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

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

// value/gamma(a); by logarithms, with gamma's sign beside them, where gamma itself leaves the range.
double overGamma(double value, double a) {
  const double full = standardGamma(a);
  if (std::isnormal(full)) return value / full;
  const LnGamma gamma = lnGamma(a);
  return std::copysign(std::exp(std::log(std::abs(value)) - gamma.value), value * gamma.sign);
}

struct PartialSum {
  double value;
  double terms;
};

// sum of x^k/k!, k = 0..n, ended early by a term of at most eps, or by overflow.
PartialSum exponentialPartialSum(double x, double n) {
  double sum = 1, term = 1, k = 1;
  for (; k <= n && std::abs(term) > kEpsilon; k += 1) {
    term *= x / k;
    sum += term;
    if (!std::isfinite(sum)) return {sum, n + 1};
  }
  return {sum, k};
}

constexpr mp_bitcnt_t kBits = 128;
constexpr long long kShortSum = 64;

// sum of x^k/k!, k = 0..n-1, x >= 0, at 128 bits. Terms beyond the peak that no longer reach the sum are left out.
double longPartialSum(long long n, double x) {
  using HP::HPByGMP;
  // Other threads may change the default meanwhile, so each number carries its own 128 bits.
  const HP::DefaultPrecision precision(kBits);
  const HPByGMP argument(kBits, x);
  HPByGMP sum(kBits, 1.0), term(kBits, 1.0), least(kBits);
  for (long long k = 1; k < n; ++k) {
    mpf_mul(term.get(), term.get(), argument.get());
    mpf_div_ui(term.get(), term.get(), static_cast<unsigned long>(k));
    mpf_add(sum.get(), sum.get(), term.get());
    if (static_cast<double>(k) > x) {
      mpf_div_2exp(least.get(), sum.get(), 2 * kBits);
      if (mpf_cmp(term.get(), least.get()) <= 0) break;
    }
  }
  return mpf_cmp_d(sum.get(), DBL_MAX) > 0 ? kInfinity : sum.toDouble();
}

// The same for x < 0, near a zero of the sum: beside 128 bits those of exp(2|x|), which its terms cancel.
double alternatingPartialSum(double n, double x) {
  using HP::HPByGMP;
  const auto bits = kBits + static_cast<mp_bitcnt_t>(-3 * x);
  const HPByGMP argument(bits, x);
  HPByGMP sum(bits, 1.0), term(bits, 1.0);
  for (unsigned long k = 1; static_cast<double>(k) < n; ++k) {
    mpf_mul(term.get(), term.get(), argument.get());
    mpf_div_ui(term.get(), term.get(), k);
    mpf_add(sum.get(), sum.get(), term.get());
  }
  return sum.toDouble();
}

// The sum for x >= 0: a short one of positive terms is right to the last bit in the 64-bit mantissa of long double too.
double partialSum(long long n, double x) {
  if (LDBL_MANT_DIG < 64 || n > kShortSum) return longPartialSum(n, x);
  long double term = 1, sum = 1;
  for (long long k = 1; k < n; ++k) {
    term *= static_cast<long double>(x) / static_cast<long double>(k);
    sum += term;
  }
  return static_cast<double>(sum);
}

// P(n, x) for integer n > 0 and x < 0: x^n/gamma(n) sum of |x|^k/(k! (n+k)), all of one sign.
double lowerAtWholeLeft(double n, double x) {
  const double size = -x, logarithm = n * std::log(size) - calcLngamma(n);
  const double sign = std::fmod(n, 2) == 0 ? 1 : -1;
  // About size^n e^size/n!: far below 1 or far above.
  if (size > 700) return logarithm + size - std::log(n) < 0 ? 0 : sign * kInfinity;
  double term = 1, sum = 1 / n;
  for (double k = 1; k < size || term > sum * n * (kEpsilon / 8); k += 1) {
    term *= size / k;
    sum += term / (n + k);
  }
  return sign * sum *
         (n < 100 && std::abs(logarithm) < 300 ? std::pow(size, n) / standardGamma(n) : std::exp(logarithm));
}

// P(n, x) for integer n > 0.
double lowerAtWhole(double n, double x) {
  if (std::isnan(x)) return kNaN;
  return x < 0 ? lowerAtWholeLeft(n, x) : Kernel::regularisedGamma(n, x).p;
}

// Q(n, x) for integer n > 1. The sum times exp(-x) is formed as it stands while that neither cancels (x < 0) nor is
// infinity times zero.
double upperAtWhole(double n, double x) {
  if (x >= 0 && x <= 700 && n <= 1000000) return partialSum(static_cast<long long>(n), x) * std::exp(-x);
  if (!(x < 0)) return std::isnan(x) ? kNaN : Kernel::regularisedGamma(n, x).q;
  return 1 - lowerAtWholeLeft(n, x);
}

}  // namespace

// The hypergeometric series of the definition, M(a, a+1, -x) and M(1, a+1, x), stop at an absolute 1e-17 and are at
// least x^-a gamma(a+1) and 1: the exact value differs in the last digits only, so the kernel's quicker forms stand for
// it, also where the series would cancel away its digits or leave the range.
double calcRLowerIncompleteGamma(double a, double x) {
  if (nearInteger(a, 1e-15)) {
    const double n = std::round(a);
    if (n < 0) return kNaN;
    if (n == 0) return 0;
    // KEPT: the upper function at integer a; expected: the lower one (kept.csv: RLower_integer)
    return n == 1 ? std::exp(-x) : upperAtWhole(n, x);
  }
  if (!(x >= 0)) return kNaN;
  if (a > 0) return Kernel::regularisedGamma(a, x).p;
  if (x <= 1) return overGamma(Kernel::lowerGammaSeries(a, x), a);
  return 1 - overGamma(Kernel::upperGamma(a, x), a);
}

// 1 - calcRLowerIncompleteGamma with the digits that this subtraction would lose.
double calcRUpperIncompleteGamma(double a, double x) {
  const double lower = calcRLowerIncompleteGamma(a, x);
  if (nearInteger(a, 1e-15)) {
    if (!(lower > 0.5)) return 1 - lower;
    const double n = std::round(a);
    return n == 1 ? -std::expm1(-x) : lowerAtWhole(n, x);
  }
  if (a > 0) return lower > 0.5 ? Kernel::regularisedGamma(a, x).q : 1 - lower;
  return x > 1 ? overGamma(Kernel::upperGamma(a, x), a) : 1 - lower;
}

double calcIncompleteGammaLower(double a, double x) { return calcIncompleteGammaLower(a, x, standardGamma(a)); }

double calcIncompleteGammaLower(double a, double x, double full) {
  if (nearInteger(a, kEpsilon)) {
    const double n = std::round(a);
    if (n == 0) return full - std::expint(x);
    // KEPT: the bare power below 0; expected: a diverging integral, infinity (kept.csv: LowerGamma_negative)
    if (n < 0) return std::pow(x, -n);
    if (x == 0) return 0;
    // KEPT: infinite from a = 172 on; expected: the integral, where it is finite (kept.csv: LowerGamma_overflow)
    if (std::isinf(full) && x > 0) return full;
    const PartialSum sum = exponentialPartialSum(x, n - 1);
    const double upper = sum.value * std::exp(-x);
    if (x >= 0 && upper < 0.9) return full * (1 - upper);
    // KEPT: a sum of m < n terms leaves P(m, x); expected: P(n, x) (kept.csv: LowerGamma_early)
    return full * lowerAtWhole(sum.terms, x);
  }
  if (!(x >= 0)) return kNaN;
  // KEPT: 0 below eps; expected: x^a/a, large for small or negative a (kept.csv: LowerGamma_tiny)
  if (x < kEpsilon) return 0;
  if (x > 10) {
    // KEPT: the full gamma from the table's x on; expected: the integral up to x (kept.csv: LowerGamma_saturated)
    if (saturated(a, x)) return full;
    // KEPT: within 1e-15 of an integer RLower's exchange shows; expected: P (kept.csv: LowerGamma_exchanged)
    if (const double value = full * calcRLowerIncompleteGamma(a, x); !std::isnan(value)) return value;
  }
  // The pole of M(a, a+1, -x), recognised as the series does.
  if (a < -0.9 && nearInteger(a + 1, 1e-15)) return kNaN;
  if (a > 0) return Kernel::lowerGammaByPower(a, x);
  if (x <= 1) return Kernel::lowerGammaSeries(a, x);
  return full - Kernel::upperGamma(a, x);
}

double calcIGamma(double a, double x) {
  if (!nearInteger(a, kEpsilon)) {
    const double full = standardGamma(a);
    if (x > 10) {
      // KEPT: 0 where the lower integral takes the full gamma; expected: the small rest (kept.csv:
      // UpperGamma_saturated)
      if (saturated(a, x)) return 0;
      if (std::isinf(full)) return calcRLowerIncompleteGamma(a, x) < 1 ? full : Kernel::upperGamma(a, x);
      if (const double value = full * calcRUpperIncompleteGamma(a, x); !std::isnan(value)) return value;
    }
    // gamma(a) - LG(a, x) without the subtraction where that is finite.
    const double lower = calcIncompleteGammaLower(a, x);
    return x >= kEpsilon && std::isfinite(full - lower) ? Kernel::upperGamma(a, x) : full - lower;
  }
  const double n = std::round(a);
  // KEPT: Ei(x) at 0; expected: E_1(x) = -Ei(-x) (kept.csv: UpperGamma_zero)
  if (n == 0) return std::expint(x);
  if (n < 0) return calcExpIntegralN(static_cast<long long>(1 - std::max(n, -9e18)), x) * std::pow(x, n);
  // KEPT: 0 for a NaN from a = 2 on; expected: NaN (kept.csv: UpperGamma_nan)
  if (std::isnan(x)) return n == 1 ? kNaN : 0;
  if (x >= 0) return Kernel::upperGamma(n, x);
  // gamma(n) exp(-x) S, S the partial sum, which cancels; ended early it is the one of a lower order.
  const double terms = exponentialPartialSum(x, n - 1).terms, upper = 1 - lowerAtWholeLeft(terms, x);
  if (std::abs(upper) < 0.5) {  // near a zero of S
    const double sum = alternatingPartialSum(terms, x);
    if (sum == 0 || (n < 150 && x > -50)) return standardGamma(n) * std::exp(-x) * sum;
    return std::copysign(std::exp(calcLngamma(n) - x + std::log(std::abs(sum))), sum);
  }
  return std::copysign(std::exp(calcLngamma(n) + std::log(std::abs(upper))), upper);
}

double calcInverseRUpperIncompleteGamma(double a, double q) {
  if (!(q >= 0 && a >= 0 && q <= 1.000000000000001)) return kNaN;
  // KEPT: the square of a q below 1e-15; expected: a large x (kept.csv: InverseRUpper_small)
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
      // KEPT: at integer a it rises, so x grows 20 times; expected: the root (kept.csv: InverseRUpper_integer)
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
