// SPDX-License-Identifier: Apache-2.0
#include "special/zeta/hurwitz_zeta.h"
#include "special/elementary/turn.h"

#include <cmath>

#include "frame/numbers.h"
#include "special/special_function.h"
#include "special/zeta/bernoulli.h"

namespace SpecialFunction {
namespace {

constexpr double kNear = 1e-15;

// x^-s of one s; integer exponents up to 16 by multiplication.
class InversePower {
 public:
  explicit InversePower(double order) : s(order), factors(s >= 0 && s <= 16 && isWhole(s) ? static_cast<int>(s) : -1) {}

  double operator()(double x) const {
    if (factors < 0) return std::pow(x, -s);
    double power = 1;
    for (int k = factors; k > 0; --k) power *= x;
    return 1 / power;
  }

 private:
  double s;
  int factors;
};

// s > 6: the plain sum in blocks of ten.
// KEPT: the absolute stop leaves out the tail of the sum; expected: it to be added (kept.csv: Hurwitz_block)
double hurwitzSum(double s, double a) {
  const InversePower inversePower(s);
  double sum = 0;
  for (int block = 0; block < 1000000; ++block) {
    double part = 0;
    for (int i = 0; i < 10; ++i, a += 1) part += inversePower(a);
    sum += part;
    if (part < 1e-15 && a > 11) break;
    // The blocks fall from a = 0 on: less than half an ulp, this and all later ones leave the sum as it is.
    if (a > 10 && part < 0x1p-54 * std::abs(sum)) break;
    if (std::isnan(part)) break;
  }
  return sum;
}

// What Euler and Maclaurin add to the direct terms and to t^(1-s)/(s-1) + t^-s/2:
// sum B_2j/(2j)! s(s+1)...(s+2j-2) t^(1-s-2j).
template <class Real>
Real bernoulliTail(Real s, Real t, Real power) {
  Real sum = 0;
  Real factor = s * power / t / 2;  // s...(s+2j-2)/(2j)! t^(1-s-2j)
  for (int j = 1; j <= 100; ++j) {
    // 1/6 and -1/30 with all digits of Real.
    const Real number = j == 1 ? Real(1) / 6 : j == 2 ? Real(-1) / 30 : static_cast<Real>(kBernoulliTable[2 * j]);
    const Real term = number * factor;
    sum += term;
    if (std::abs(term) < 1e-15) break;
    factor *= (s + 2 * j - 1) / (2 * j + 1) * ((s + 2 * j) / (2 * j + 2)) / (t * t);
  }
  return sum;
}

// Euler and Maclaurin, a >= 0, with t = a+N after N direct terms.
double eulerMaclaurin(double s, double a) {
  const int direct = s < 0 ? 6 : 100;
  if (s >= 0) {
    const double t = a + direct;
    const InversePower inversePower(s);
    double sum = 0;
    for (int k = direct - 1; k >= 0; --k) sum += inversePower(a + k);
    const double power = std::pow(t, -s);
    return sum + power * t / (s - 1) + power / 2 + bernoulliTail(s, t, power);
  }
  // For s < 0 these parts are large and cancel: in long double.
  using Wide = long double;
  const Wide t = static_cast<Wide>(a) + direct, power = std::pow(t, -static_cast<Wide>(s));
  Wide sum = power * t / (static_cast<Wide>(s) - 1) + power / 2;
  for (int k = direct - 1; k >= 0; --k) sum += std::pow(static_cast<Wide>(a) + k, -static_cast<Wide>(s));
  return static_cast<double>(sum + bernoulliTail<Wide>(s, t, power));
}

// Hurwitz's formula for s < 0, 0 < a <= 1: 2 gamma(1-s)/(2 pi)^(1-s) sum sin(2 pi n a + pi s/2)/n^(1-s). Unlike the
// sums above it loses no digits for s far left of 0.
double byFourier(double s, double a) {
  const double order = 1 - s;
  double sum = 0;
  for (int n = 1; n < 100000; ++n) {
    const double weight = std::pow(n, -order);
    const double turn = n * a;
    sum += weight * std::sin(pi * (2 * (turn - std::floor(turn)) + std::fmod(s, 4.0) / 2));
    // Below half a unit of the sum's last place this one and all later terms leave the sum as it is.
    if (weight < 1e-17 || weight < 0x1p-54 * std::abs(sum)) break;
  }
  const double logarithm = calcLngamma(order) - order * std::log(2 * pi);
  const double scale = order < 100 ? standardGamma(order) * std::pow(2 * pi, -order) : std::exp(logarithm);
  return 2 * scale * sum;
}

}  // namespace

double hurwitzDifference(double s, double a, double b) {
  constexpr int kDirect = 100;
  const InversePower inversePower(s);
  double sum = 0;
  for (int k = kDirect - 1; k >= 0; --k) sum += inversePower(a + k) - inversePower(b + k);
  const double t = a + kDirect, u = b + kDirect, p = std::pow(t, -s), q = std::pow(u, -s);
  // (t^(1-s) - u^(1-s))/(s-1) = u^(1-s) (exp((1-s) log(t/u)) - 1)/(s-1)
  const double l = std::log1p((t - u) / u), x = (1 - s) * l;
  const double lead = -u * q * l * (std::abs(x) < 1e-12 ? 1 + x / 2 : std::expm1(x) / x);
  return sum + lead + (p - q) / 2 + bernoulliTail(s, t, p) - bernoulliTail(s, u, q);
}

double calcHurwitzZeta_Call4(double s, double a) {
  // KEPT: 0 at the pole s = 1; expected: infinity (kept.csv: Hurwitz_pole)
  if (std::abs(s - 1) < kNear) return 0;
  // KEPT: 0 far left; expected: the sum (kept.csv: Hurwitz_left)
  if (a < -10000) return 0;
  if (s > 6) return hurwitzSum(s, a);
  // Left of 0 the terms up to the first positive one are taken out; a negative base needs an integer s, else NaN.
  const InversePower inversePower(s);
  double head = 0;
  for (; a < 0; a += 1) head += inversePower(a);
  if (std::isnan(head)) return head;
  if (s < -4 && a < 20) {
    for (; a > 1; a -= 1) head -= inversePower(a - 1);
    return head + byFourier(s, a);
  }
  return head + eulerMaclaurin(s, a);
}

double calcHurwitzZeta(double s, double a) {
  if (std::isnan(s) || std::isnan(a)) return kNaN;
  if (std::abs(a - 1) < kNear) return calcZeta(s);
  if (std::abs(a - 0.5) < kNear) return (std::pow(2.0, s) - 1) * calcZeta(s);
  if (std::abs(s) < kNear) return 0.5 - a;
  if (a < 0.1 && nearInteger(a, kNear)) return kInfinity;
  if (s < 0 && nearInteger(s, kNear)) {
    const double n = 1 - std::round(s);
    return n > 258 ? 0 : -calcPolyByBernoulli(static_cast<int32_t>(n), a) / n;
  }
  return calcHurwitzZeta_Call4(s, a);
}

}  // namespace SpecialFunction
