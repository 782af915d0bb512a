// SPDX-License-Identifier: Apache-2.0
#include <cmath>

#include "frame/numbers.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kHalfSqrtPi = 0.886226925452758;

constexpr double kInverseErfCoefficients[] = {
#include "special/error/inverse_erf_data.inc"
};
constexpr int kCoefficientCount = 95;
static_assert(sizeof(kInverseErfCoefficients) / sizeof(double) == kCoefficientCount);

double series(double y) {
  struct Count {
    double bound;
    int count;
  };
  static constexpr Count kCounts[] = {{0.12, 7},  {0.19, 9},  {0.29, 12}, {0.39, 16},
                                      {0.49, 21}, {0.59, 28}, {0.68, 38}, {0.78, 59}};
  int count = kCoefficientCount;
  for (const Count& row : kCounts)
    if (y < row.bound) {
      count = row.count;
      break;
    }
  const double square = y * y;
  double sum = kInverseErfCoefficients[count - 1];
  for (int k = count - 2; k >= 0; --k) sum = kInverseErfCoefficients[k] + square * sum;
  return y * sum;
}

// Newton on erf. The x of the smallest error is kept: at y = 1, where no x solves, it is the best one met.
double newton(double y) {
  double x = 1.2, f = std::erf(x) - y, best = x, least = std::abs(f);
  for (int round = 0; round < 28 && !(least <= kEpsilon); ++round) {
    const double square = x * x;
    x -= square <= 4 ? std::exp(square) * f * kHalfSqrtPi : f * kHalfSqrtPi / std::exp(-square);
    f = std::erf(x) - y;
    if (std::abs(f) < least) {
      least = std::abs(f);
      best = x;
    }
  }
  return best;
}

}  // namespace

double calcInvErf(double y) {
  if (!(y <= 1.000000000000001 && y >= -1.000000000000001)) return kNaN;
  // KEPT: 5.8 in the rounding band beyond 1; expected: NaN (kept.csv: InvErf_band)
  if (y > 1) return 5.8;
  if (y < -1) return -5.8;
  const double size = std::abs(y);
  // KEPT: y = 1 gives the best x of the iteration; expected: infinity (kept.csv: InvErf_one)
  return std::copysign(size < 0.86 ? series(size) : newton(size), y);
}

// KEPT: through 1 - y, so small y lose their digits; expected: the tail's own solution (kept.csv: InvErfc_tail)
double calcInvErfc(double y) { return calcInvErf(1 - y); }

}  // namespace SpecialFunction
