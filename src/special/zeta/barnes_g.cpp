// SPDX-License-Identifier: Apache-2.0
// Barnes' G and the hyperfactorial H. Both rest on log H(y) = y log gamma(1+y) - log G(1+y).
#include <cmath>

#include "frame/numbers.h"
#include "numeric/integral.h"
#include "special/elementary/turn.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kLogTwoPi = 1.8378770664093456;
constexpr double kGlaisher = 1.2824271291006226;
constexpr double kMostProducts = 1000;

// H(y)/(A y^((6y(y+1)+1)/12) exp(-y^2/4)) for y >= 10 (A is Glaisher's constant), a series in 1/y^2.
double hyperSeries(double y) {
  const double r = 1 / (y * y);
  double sum = 0;
  for (const double c :
       {0.7734126546042887, -0.01122471169781608, 0.0021099707813441435, -0.0005338960433596263, 0.00019158699358952323,
        -0.00010506157603851661, 9.893122254474493e-05, -0.0001974481922398589, 0.001388888888888889})
    sum = sum * r + c;
  return 1 + r * sum;
}

// log H(y), y > -1.
double lnHyper(double y) {
  if (y >= 10)
    return std::log(hyperSeries(y)) + (std::log(y) * (6 * y * (y + 1) + 1)) / 12 - y * y / 4 + 0.24875447703378425;
  const auto integrand = [](double t) { return calcLngamma(t + 1); };
  return Integral::integralAdaptive(integrand, 0, y, 1000000) + ((y + 1) - kLogTwoPi) * y / 2;
}

struct SignedLog {
  double sign, value;
};

// Sign and logarithm of |G(x)|.
SignedLog calcLnBarnesG_Call(double x) {
  const double y = x - 1;
  if (nearInteger(y, kEpsilon) && y <= kMostProducts) {
    if (y < -0.5) return {0, -kInfinity};
    double sum = 0, factorial = 0;  // log of 1! 2! ... (y-1)!
    for (double k = 2; k < std::round(y) + 0.5; k += 1) {
      sum += factorial;
      factorial += std::log(k);
    }
    return {1, sum};
  }
  if (!(y >= -1)) return {1, kNaN};
  if (std::isinf(y)) return {1, kInfinity};
  // y (log gamma(x) - log H(y)/y): the two parts cancel slowly only, and for large y their difference stays finite.
  return {1, calcLngamma(x) * y - lnHyper(y)};
}

}  // namespace

double calcLnBarnesG(double x) { return calcLnBarnesG_Call(x).value; }

double calcBarnesG(double x) {
  if (std::isnan(x)) return kNaN;
  // KEPT: the third coefficient; expected: -0.49113, the Maclaurin series (kept.csv: BarnesG_small)
  if (std::abs(x) < 0.0001)
    return x * (1 + x * (0.9961541981062056 +
                         x * (-1.1149132726725708 + x * (-0.7582546060238864 + x * 0.91370932863128))));
  if (x > 28.48) return kInfinity;
  if (nearInteger(x, kEpsilon)) {
    if (x < 0.5) return 0;
    double product = 1, factorial = 1;  // 1! 2! ... (x-2)!
    for (double k = 2; k < std::round(x) - 1.5; k += 1) {
      factorial *= k;
      product *= factorial;
    }
    return product;
  }
  // KEPT: -infinity far left; expected: a sign that changes with each unit (kept.csv: BarnesG_left)
  if (x < -28.02) return -kInfinity;
  // G(x) = G(x+1)/gamma(x) up to x > 0.
  double divisor = 1;
  for (; x < 0; x += 1) divisor *= standardGamma(x);
  const SignedLog g = calcLnBarnesG_Call(x);
  return g.sign * std::exp(g.value) / divisor;
}

double calcHyperfactorial(double x) {
  if (std::isnan(x)) return kNaN;
  if (x > 22.67524) return kInfinity;
  if (nearInteger(x, kEpsilon)) {
    double n = std::round(x), product = 1;
    if (n < 0) {
      // H(-n) = (-1)^(n(n-1)/2) H(n-1)
      const bool negative = std::fmod(-n, 4.0) == 2 || std::fmod(-n, 4.0) == 3;
      n = -n - 1;
      product = negative ? -1 : 1;
    }
    for (double k = 2; k <= n && std::isfinite(product); k += 1) product *= std::pow(k, k);
    return product;
  }
  if (x < -1) return kNaN;
  if (x >= 10) return kGlaisher * hyperSeries(x) * std::exp((std::log(x) * (6 * x * (x + 1) + 1)) / 12 - x * x / 4);
  return std::exp(calcLngamma(x + 1) * x - calcLnBarnesG_Call(x + 1).value);
}

}  // namespace SpecialFunction
