// SPDX-License-Identifier: Apache-2.0
#include "special/integrals/exp_integral.h"

#include <algorithm>
#include <cmath>

#include "frame/numbers.h"
#include "special/gamma/incomplete_gamma_kernel.h"
#include "special/special_function.h"
#include "special/two_doubles.h"

namespace SpecialFunction {
namespace {

// E_n(x), n > 1, x <= 1: (-x)^(n-1)/(n-1)! (psi(n) - log x) - sum over m != n-1 of (-x)^m/((m-n+1) m!).
double nearZero(long long n, double x) {
  double term = 1, sum = 0;
  for (long long m = 0; m < 10000; ++m) {
    if (m > 0) term *= -x / static_cast<double>(m);
    const double add = m == n - 1 ? term * (calcDigamma(static_cast<double>(n)) - std::log(x))
                                  : -term / static_cast<double>(m - n + 1);
    sum += add;
    if (m > 0 && std::abs(add) <= std::abs(sum) * (kEpsilon / 8)) break;
    if (term == 0) break;
  }
  return sum;
}

// Legendre's continued fraction of UG(1-n, x); the series would cancel its digits from about x = 2 on.
double fraction(double n, double x) {
  double b = x + n, c = 1e300, d = 1 / b, value = d;
  for (int k = 1; k < 100000; ++k) {
    const double a = -k * (n - 1 + k);
    b += 2;
    d = 1 / (a * d + b);
    c = b + a / c;
    const double step = c * d;
    value *= step;
    if (std::abs(step - 1) <= kEpsilon) break;
  }
  return value * std::exp(-x);
}

// E_p(x) for a non-integer p or one far left of 0.
double ofBrokenOrder(double p, double x) {
  if (!(x > 0)) return kNaN;  // x^(p-1)
  if (p > 0) {
    // x^(p-1) UG(1-p, x). From x = 1 on and for large orders the power and the gamma function leave the range first.
    if (x > 1) return p < 1 ? calcIGamma(1 - p, x) * std::pow(x, p - 1) : fraction(p, x);
    if (p < 20) return calcIGamma(1 - p, x) * std::pow(x, p - 1);
    double term = 1, sum = 1 / (p - 1);
    for (int m = 1; m < 100; ++m) {
      term *= -x / m;
      sum -= term / (m + 1 - p);
    }
    return sum;
  }
  // x^(p-1) gamma(1-p) less the power series, as gamma(1-p) x^(p-1) Q(1-p, x).
  if (x > 3 - p) return fraction(p, x);
  return std::exp(calcLngamma(1 - p) + (p - 1) * std::log(x)) * Kernel::regularisedGamma(1 - p, x).q;
}

// Ei(x) = gamma + log x + sum x^i/(i i!) for 0 < x < 36: the operations of the standard library's series, its doubles.
double growingSeries(double x) {
  double term = 1, sum = 0;
  for (double i = 1; i < 1000; i += 2) {
    const TwoDoubles places{i, i + 1}, steps = x / places;
    const double first = term * steps[0];
    term = first * steps[1];
    const TwoDoubles parts = TwoDoubles{first, term} / places;
    sum += parts[0];
    if (first < kEpsilon * sum) break;
    sum += parts[1];
    if (term < kEpsilon * sum) break;
  }
  return egamma + sum + std::log(x);
}

}  // namespace

double calcExpIntegral(double x) {
  if (x == 0) return -kInfinity;
  if (std::isinf(x)) return x > 0 ? x : 0;
  // The standard library's function loses all but its leading term below -100.
  if (x < -1) return -fraction(1, -x);
  return x > 0 && x < 36 ? growingSeries(x) : std::expint(x);
}

double calcExpIntegralP(double p, double x) {
  if (std::isnan(p) || std::isnan(x)) return kNaN;
  // KEPT: 1/(p-1) at 0 for p < 1 too; expected: infinity (kept.csv: ExpIntegralP_zero)
  if (std::abs(x) < kEpsilon) return 1 / (p - 1);
  const double n = std::round(p);
  if (std::abs(n - p) < kEpsilon && std::abs(n) < 1000) return calcExpIntegralN(static_cast<long long>(n), x);
  if (p < -1e15 || (p < 0 && std::isinf(x))) return std::isinf(x) ? 0 : kInfinity;
  if (std::abs(n - p) >= kEpsilon) return ofBrokenOrder(p, x);
  if (n < 0) return x > 0 ? ofBrokenOrder(p, x) : calcExpIntegralN(static_cast<long long>(n), x);
  return calcExpIntegralN(static_cast<long long>(std::min(n, 9e18)), x);
}

double calcExpIntegralN(long long n, double x) {
  if (std::isnan(x)) return kNaN;
  const double order = static_cast<double>(n);
  if (std::abs(x) < kEpsilon) return 1 / (order - 1);
  if (n == 0) return std::exp(-x) / x;
  // KEPT: Ei(x) at order 1; expected: E_1(x) = -Ei(-x) (kept.csv: ExpIntegralN_one)
  if (n == 1) return calcExpIntegral(x);
  if (n < 0) return calcIGamma(1 - order, x) * std::pow(x, order - 1);
  if (x <= 0) return kNaN;
  // KEPT: the mean of two bounds that differ by under 1e-100; expected: all digits (kept.csv: ExpIntegralN_mean)
  const double low = std::exp(-x) / (order + x), high = std::exp(-x) / (order + x - 1);
  if (high - low < 1e-100 || high - low <= high * kEpsilon) return (low + high) / 2;
  return x <= 1 ? nearZero(n, x) : fraction(order, x);
}

}  // namespace SpecialFunction
