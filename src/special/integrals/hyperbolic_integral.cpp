// SPDX-License-Identifier: Apache-2.0
// Hyperbolic sine and cosine integral, their inverses, and the logarithmic integral.
#include <algorithm>
#include <cmath>

#include "frame/numbers.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kBeyond = 739;  // the integrals have left the range of doubles
constexpr int kMostTerms = 20000;

// sum of x^(2k+first)/((2k+first) (2k+first)!), first 1 or 2, after the term of k = 0.
double powerSeries(double x, int first) {
  const double square = x * x;
  double power = first == 1 ? x : square / 2;  // x^m/m!
  double sum = power / first;
  double m = first;
  for (int k = 1; k < kMostTerms; ++k) {
    power *= square / ((m + 1) * (m + 2));
    m += 2;
    const double term = power / m;
    sum += term;
    if (!(std::abs(term) > kEpsilon / 4 * std::abs(sum)) || std::isinf(sum)) break;
  }
  return sum;
}

// A root of f(x) = y, f rising on (low, high): Newton's steps while they stay inside, at most 36, then at most 56
// halvings.
template <class Function, class Slope>
double invert(Function f, Slope slope, double y, double low, double high, double x) {
  for (int round = 0; round < 36; ++round) {
    const double d = f(x) - y;
    if (d == 0) return x;
    (d > 0 ? high : low) = x;
    const double next = x - d / slope(x);
    if (!(next > low && next < high)) break;
    if (std::abs(next - x) <= kEpsilon * std::abs(x)) return next;
    x = next;
  }
  for (int round = 0; round < 56; ++round) {
    x = (low + high) / 2;
    const double d = f(x) - y;
    if (d == 0 || high - low <= kEpsilon * std::abs(x)) return x;
    (d > 0 ? high : low) = x;
  }
  return x;
}

// Shi and Chi are close to exp(x)/(2x): x = log(2 y x), from two rounds of it.
double guessForLarge(double y, double low, double high) {
  const double l = std::log(2 * y);
  double x = l + std::log(l);
  x = l + std::log(x) - 1 / x;
  return std::clamp(x, low, high);
}

}  // namespace

double calcSinhIntegral(double x) {
  if (std::isnan(x)) return x;
  if (std::abs(x) > kBeyond) return std::copysign(kInfinity, x);
  if (std::abs(x) <= 0.01) {
    const double t = x * x;
    return x * (1 + t * (1.0 / 18 + t * (1.0 / 600 + t * (1.0 / 35280 + t / 3265920))));
  }
  return powerSeries(x, 1);
}

double calcCoshIntegral(double x) {
  if (!(x >= 0)) return kNaN;
  if (x > kBeyond) return kInfinity;
  const double lead = std::log(x) + egamma;
  if (x <= 0.01) {
    const double t = x * x;
    return lead + t * (0.25 + t * (1.0 / 96 + t * (1.0 / 4320 + t / 322560)));
  }
  return lead + powerSeries(x, 2);
}

double calcLogIntegral(double x) {
  if (!(x >= 0)) return kNaN;
  if (std::isinf(x)) return x;
  if (x < 1) return calcExpIntegral(std::log(x));
  if (x < 1.001) {
    const double u = x - 1;
    return egamma + std::log(u) +
           u * (0.5 + u * (-1.0 / 24 + u * (1.0 / 72 + u * (-19.0 / 2880 + u * (3.0 / 800 - u * (863.0 / 362880))))));
  }
  const double l = std::log(x);
  double power = l, sum = l;  // l^k/k!
  for (int k = 2; k < 1000000; ++k) {
    power *= l / k;
    const double term = power / k;
    sum += term;
    if (term <= kEpsilon / 4 * sum || std::isinf(sum)) break;
  }
  return egamma + std::log(l) + sum;
}

double calcInvCoshIntegral(double y) {
  if (std::isnan(y)) return kNaN;
  if (y > 5.191571403e+306) return kInfinity;
  // Chi(x) = log x + gamma + x^2/4 up to x = 1e-4.
  if (y < -8.63312470457465) {
    const double w = std::exp(2 * (y - egamma)) / 2;
    return w < 1e-300 ? std::exp(y - egamma) : std::sqrt(2 * calcLambertW(w));
  }
  const auto slope = [](double x) { return std::cosh(x) / x; };
  if (y < -1.722868386195) return invert(calcCoshIntegral, slope, y, 0.99e-4, 0.101, std::exp(y - egamma));
  if (y < 0.83786694098) return invert(calcCoshIntegral, slope, y, 0.099, 1.001, 0.5);
  if (y < 1246.114486042) return invert(calcCoshIntegral, slope, y, 0.999, 10.001, y < 20 ? 3 : 7);
  return invert(calcCoshIntegral, slope, y, 9.999, 716, guessForLarge(y, 9.999, 716));
}

double calcInvSinhIntegral(double y) {
  if (std::isnan(y)) return kNaN;
  if (std::abs(y) < 1e-5) return y;
  if (y < 0) return -calcInvSinhIntegral(-y);
  if (y > 5.191571403e+306) return kInfinity;
  const auto slope = [](double x) { return std::sinh(x) / x; };
  if (y < 1.057250875375) return invert(calcSinhIntegral, slope, y, 0.99e-5, 1.001, y);
  if (y < 1246.114486042) return invert(calcSinhIntegral, slope, y, 0.999, 10.001, y < 20 ? 3 : 7);
  return invert(calcSinhIntegral, slope, y, 9.999, 716, guessForLarge(y, 9.999, 716));
}

}  // namespace SpecialFunction
