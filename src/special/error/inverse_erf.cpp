// SPDX-License-Identifier: Apache-2.0
#include <cmath>
#include <cstddef>

#include "frame/numbers.h"
#include "special/special_function.h"
#include "special/two_doubles.h"

namespace SpecialFunction {
namespace {

constexpr double kHalfSqrtPi = 0.886226925452758;

constexpr double kInverseErfCoefficients[] = {
#include "special/error/inverse_erf_data.inc"
};
constexpr int kCoefficientCount = 95;
static_assert(sizeof(kInverseErfCoefficients) / sizeof(double) == kCoefficientCount);

// Horner's rule from a sum of the coefficients from `from` on down to 0; one sum, or two in lanes.
template <class Sum>
Sum hornerDown(Sum sum, std::ptrdiff_t from, double square) {
  for (const double* c = kInverseErfCoefficients + from; c != kInverseErfCoefficients;) sum = *--c + square * sum;
  return sum;
}

// The sum of the coefficients first..last-1, a multiple of 8 of them, by eight short sums side by side: right to 12
// half units of the last place for square < 0.75.
double topTerms(std::ptrdiff_t first, std::ptrdiff_t last, double square) {
  const double q2 = square * square, q4 = q2 * q2, q8 = q4 * q4;
  TwoDoubles sums[4] = {};
  for (std::ptrdiff_t k = last - 8; k >= first; k -= 8)
    for (int i = 0; i < 4; ++i) {
      const double* c = kInverseErfCoefficients + k + 2 * i;
      sums[i] = TwoDoubles{c[0], c[1]} + q8 * sums[i];
    }
  const TwoDoubles all = (sums[0] + q2 * sums[1]) + q4 * (sums[2] + q2 * sums[3]);
  return all[0] + square * all[1];
}

// The value is that of Horner's rule with all its roundings, term after term. What the top terms bring in is rounded
// off on the way down: from a bound below and one above their sum (which Horner's rule has to 7 half units) both run
// down side by side, and where they meet is the value, as every rounded step is monotone. The few arguments where they
// do not meet take the long way.
double series(double y) {
  struct Count {
    double bound;
    std::ptrdiff_t count, split;  // the top terms from this one on are taken at once
  };
  static constexpr Count kCounts[] = {{0.12, 7, 0},  {0.19, 9, 0},  {0.29, 12, 0},  {0.39, 16, 0}, {0.49, 21, 5},
                                      {0.59, 28, 4}, {0.68, 38, 6}, {0.78, 59, 11}, {0.86, 95, 31}};
  const Count* row = kCounts;
  while (!(y < row->bound)) ++row;
  const double square = y * y;
  if (row->split > 0) {
    constexpr double kMargin = 24 * kEpsilon / 2;
    const double top = topTerms(row->split, row->count, square);
    const TwoDoubles bounds = hornerDown(TwoDoubles{top * (1 - kMargin), top * (1 + kMargin)}, row->split, square);
    if (bounds[0] == bounds[1]) return y * bounds[0];
  }
  return y * hornerDown(kInverseErfCoefficients[row->count - 1], row->count - 1, square);
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
