// SPDX-License-Identifier: Apache-2.0
#include "special/hurwitz_zeta.h"

#include <cmath>
#include <limits>

#include "special/bernoulli.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kNear = 1e-15;

bool isInteger(double x) { return std::abs(std::round(x) - x) < kNear; }

// x^-s; whole exponents up to 16 by multiplication.
double inversePower(double x, double s) {
  if (s > 16 || s < 0 || s != std::floor(s)) return std::pow(x, -s);
  double power = 1;
  for (int k = static_cast<int>(s); k > 0; --k) power *= x;
  return 1 / power;
}

// s > 6: the plain sum in blocks of ten.
// KEPT: the absolute stop leaves out the tail of the sum; one would expect it to be added (kept.csv: Hurwitz_block)
double directSum(double s, double a) {
  double sum = 0;
  for (int block = 0; block < 1000000; ++block) {
    double part = 0;
    for (int i = 0; i < 10; ++i, a += 1) part += inversePower(a, s);
    sum += part;
    if (part < 1e-15 && a > 11) break;
    if (std::isnan(part)) break;
  }
  return sum;
}

// Euler and Maclaurin, a >= 0: N direct terms, then with t = a+N
// t^(1-s)/(s-1) + t^-s/2 + sum B_2j/(2j)! s(s+1)...(s+2j-2) t^(1-s-2j).
double eulerMaclaurin(double s, double a) {
  const int direct = s < 0 ? 6 : 100;
  double sum = 0;
  for (int k = direct - 1; k >= 0; --k) sum += inversePower(a + k, s);
  const double t = a + direct, power = std::pow(t, -s);
  sum += power * t / (s - 1) + power / 2;
  double factor = s * power / t / 2;  // s...(s+2j-2)/(2j)! t^(1-s-2j)
  for (int j = 1; j <= 100; ++j) {
    const double term = kBernoulliTable[2 * j] * factor;
    sum += term;
    if (std::abs(term) < 1e-15) break;
    factor *= (s + 2 * j - 1) / (2 * j + 1) * ((s + 2 * j) / (2 * j + 2)) / (t * t);
  }
  return sum;
}

}  // namespace

double calcHurwitzZeta_Call4(double s, double a) {
  // KEPT: 0 at the pole s = 1, where one would expect infinity (kept.csv: Hurwitz_pole)
  if (std::abs(s - 1) < kNear) return 0;
  // KEPT: 0 far left, where one would expect the sum (kept.csv: Hurwitz_left)
  if (a < -10000) return 0;
  if (s > 6) return directSum(s, a);
  // Left of 0 the terms up to the first positive one are taken out; a negative base needs a whole s, else NaN.
  double head = 0;
  for (; a < 0; a += 1) head += inversePower(a, s);
  return head + eulerMaclaurin(s, a);
}

double calcHurwitzZeta(double s, double a) {
  if (std::isnan(s) || std::isnan(a)) return std::numeric_limits<double>::quiet_NaN();
  if (std::abs(a - 1) < kNear) return std::riemann_zeta(s);
  if (std::abs(a - 0.5) < kNear) return (std::pow(2.0, s) - 1) * std::riemann_zeta(s);
  if (std::abs(s) < kNear) return 0.5 - a;
  if (a < 0.1 && isInteger(a)) return std::numeric_limits<double>::infinity();
  if (s < 0 && isInteger(s)) {
    const double n = 1 - std::round(s);
    return n > 258 ? 0 : -calcPolyByBernoulli(static_cast<int32_t>(n), a) / n;
  }
  return calcHurwitzZeta_Call4(s, a);
}

}  // namespace SpecialFunction
