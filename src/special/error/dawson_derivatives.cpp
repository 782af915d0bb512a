// SPDX-License-Identifier: Apache-2.0
// Derivatives of Dawson's integral. From |x| = 8 on by D(x) = 1/(2x) (1 + sum of (2k-1)!!/(2 x^2)^k), whose leading
// terms cancel in the derivatives.
#include <cmath>

#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kAsymptotic = 8;
constexpr int kTerms = 24;

}  // namespace

// D'(x) = 1 - 2 x D(x).
double calcDiffDrawson(double x) {
  if (!(std::abs(x) >= kAsymptotic)) return 1 - 2 * x * calcDrawson(x);
  const double step = 0.5 / x / x;
  double sum = 0, term = 1;
  for (int k = 1; k <= kTerms; ++k) {
    term *= (2 * k - 1) * step;
    sum -= term;
  }
  return sum;
}

// D''(x) = (4 x^2 - 2) D(x) - 2 x.
double calcDiffDiffDrawson(double x) {
  if (!(std::abs(x) >= kAsymptotic)) return -2 * calcDrawson(x) - 2 * x * calcDiffDrawson(x);
  const double step = 0.5 / x / x;
  double sum = 0, term = 1;
  for (int k = 1; k <= kTerms; ++k) {
    term *= (2 * k - 1) * step;
    sum += 2 * k * term;
  }
  return sum / x;
}

}  // namespace SpecialFunction
