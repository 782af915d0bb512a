// SPDX-License-Identifier: Apache-2.0
// Dawson's integral D(x) = exp(-x^2) * integral of exp(t^2) from 0 to x, and erfi = 2/sqrt(pi) exp(x^2) D(x).
#include <cmath>

#include "frame/numbers.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kLogTwoOverSqrtPi = 0.12078223763524522;
constexpr double kErfiOfOne = 0.7316971534684924;  // erfi there is 1

// Levels of a fraction for x below the bound.
struct Levels {
  double bound;
  int count;
};

template <std::size_t N>
int levels(const Levels (&rows)[N], double x, int last) {
  for (const Levels& row : rows)
    if (x < row.bound) return row.count;
  return last;
}

constexpr Levels kInner[] = {{0.006, 2}, {0.1, 3}, {0.5, 5}, {1, 7}, {2, 11}, {3, 15}, {4, 19}, {5, 23}};
constexpr Levels kOuter[] = {{7, 19}, {8, 12}, {9, 10}, {16, 9}, {30, 6}, {40, 5}, {100, 4}, {400, 3}};

// Two steps of the fraction x/(1 + 2x^2/(3 - 4x^2/(5 + ...))) a round.
double innerFraction(double x, int count) {
  const double square = x * x;
  double acc = 0;
  for (int k = 4 * count, i = k - 1; k != 0; k -= 4, i -= 4)
    acc = ((i - 1) * square) / (i - (k * square) / ((i + 2) + acc));
  return x / (acc + 1);
}

double outerFraction(double x, int count) {
  double acc = 0;
  for (int k = 2 * count; k >= 2; k -= 2) acc = k / (2 * x - acc);
  return 1 / (2 * x - acc);
}

// exp(x^2) with the rounding error of the square put back.
double expSquare(double x) {
  const double square = x * x;
  return std::exp(square) * (1 + std::fma(x, x, -square));
}

double lnErfi(double x) { return x < 1e-16 ? kNaN : std::log(calcDrawson(x)) + x * x + kLogTwoOverSqrtPi; }

}  // namespace

double calcDrawson(double x) {
  if (x < 0) return -calcDrawson(-x);
  if (x < 0.005) return ((15 - 4 * x * x) * x) / (6 * x * x + 15);
  if (x < 6) return innerFraction(x, levels(kInner, x, 27));
  if (x <= 4800) return outerFraction(x, levels(kOuter, x, 2));
  return x <= 1e8 ? x / (2 * x * x - 1) : 1 / (2 * x);
}

double calcErfi(double x) {
  if (x < 0) return -calcErfi(-x);
  const double d = calcDrawson(x);
  // The product while it stays in range, where the logarithm would only add its error.
  if (d <= kEpsilon || x < 26) return d * expSquare(x) * kTwoOverSqrtPi;
  return std::exp(std::log(d) + x * x + kLogTwoOverSqrtPi);
}

double calcLnErfi(double x) { return lnErfi(x); }

double calcInvLnErfi(double y) {
  if (std::isnan(y)) return kNaN;
  if (std::abs(y) < kEpsilon) return kErfiOfOne;
  double lower = 0, upper = kErfiOfOne;
  if (y >= 0.5) {
    lower = 0.999;
    upper = 1.998;
    double value = std::log(calcDrawson(1.998)) + 3.992004 + kLogTwoOverSqrtPi;
    while (value < y) {
      if (std::abs(value - y) < kEpsilon) return upper;
      upper *= 2;
      value = lnErfi(upper);
    }
  } else if (y >= 0) {
    lower = kErfiOfOne;
    upper = 1;
  }
  double x = (lower + upper) / 2;
  for (int round = 0; round < 168; ++round) {
    const double f = lnErfi(x), d = f - y;
    if (std::abs(d) < kEpsilon) return x;
    (d > 0 ? upper : lower) = x;
    if (std::abs(upper - lower) < kEpsilon) return x;
    const double t = x * x - f;
    x -= t <= 4 ? (d * kSqrtPi) / (2 * std::exp(t)) : std::exp(-t) * d * kSqrtPi * 0.5;
    if (!(x >= lower && x <= upper)) break;
  }
  for (int round = 0; round < 238; ++round) {
    x = (lower + upper) / 2;
    const double d = lnErfi(x) - y;
    if (std::abs(d) < kEpsilon) return x;
    (d > 0 ? upper : lower) = x;
    if (std::abs(upper - lower) < kEpsilon) return x;
  }
  return x;
}

double calcInvErfi(double y) {
  if (std::abs(y) < 1e-8) return y * kSqrtPi * 0.5;
  return y < 0 ? -calcInvLnErfi(std::log(-y)) : calcInvLnErfi(std::log(y));
}

}  // namespace SpecialFunction
