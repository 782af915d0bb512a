// SPDX-License-Identifier: Apache-2.0
#include <cmath>
#include <limits>

#include "frame/numbers.h"
#include "special/elliptic/elliptic.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kStop = 1.3322676295501878e-15;
constexpr int kRounds = 512;

// sqrt(a b); by the roots where the product leaves the normal range.
double geometricMean(double a, double b) {
  const double product = a * b;
  const bool normal = product >= std::numeric_limits<double>::min() && product <= std::numeric_limits<double>::max();
  return normal ? std::sqrt(product) : std::sqrt(a) * std::sqrt(b);
}

double arithmeticMean(double a, double b) {
  const double sum = a + b;
  return std::isinf(sum) ? a / 2 + b / 2 : sum / 2;
}

}  // namespace

double calcAGM(double a, double b) {
  if (!(a >= 0 && b >= 0)) return kNaN;
  // KEPT: the stop is absolute, so that means below it are not formed; expected: the mean (kept.csv: AGM_stop)
  for (int round = 0; round < kRounds && std::abs(a - b) > kStop; ++round) {
    const double arithmetic = arithmeticMean(a, b), geometric = geometricMean(a, b);
    // Large arguments never come within the stop but come to rest: further rounds would repeat the same pair.
    if (arithmetic == a && geometric == b) break;
    a = arithmetic;
    b = geometric;
  }
  return a;
}

double meanOf(double a, double b) {
  // The difference is squared by each round: from 1e-8 on, the next arithmetic mean is the limit.
  for (int round = 0; round < kRounds && std::abs(a - b) > 1e-8 * a; ++round) {
    const double arithmetic = arithmeticMean(a, b);
    b = geometricMean(a, b);
    a = arithmetic;
  }
  return arithmeticMean(a, b);
}

double calcEllipticRK(double x, double y) {
  if (!(x >= 0 && y >= 0)) return kNaN;
  if (x < kEpsilon && y < kEpsilon) return kInfinity;
  return 1 / calcAGM(std::sqrt(x), std::sqrt(y));
}

}  // namespace SpecialFunction
