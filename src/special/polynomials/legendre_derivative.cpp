// SPDX-License-Identifier: Apache-2.0
#include <cmath>

#include "frame/numbers.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr int32_t kLongestDerivative = 10000000;

}  // namespace

// P'_n(x) by P'_k = P'_(k-2) + (2k-1) P_(k-1) beside the recurrence of P; in closed form for orders without end.
double calcDiffPolyLegendre(int32_t n, double x) {
  if (n < 0 || std::isnan(x)) return kNaN;
  if (n == 0) return 0;
  const bool minus = x < 0 && n % 2 == 0;
  if (std::abs(x) == 1) return (minus ? -0.5 : 0.5) * n * (n + 1.0);
  if (std::isinf(x)) return n == 1 ? 1 : minus ? -kInfinity : kInfinity;
  if (n > kLongestDerivative) {
    if (std::abs(x) > 1) return minus ? -kInfinity : kInfinity;
    return n * (x * calcPolyLegendre(n, x) - calcPolyLegendre(n - 1, x)) / ((x - 1) * (x + 1));
  }
  double before = 1, value = x, slopeBefore = 0, slope = 1;  // P_0, P_1 and their derivatives
  for (double k = 2; k <= n; k += 1) {
    const double nextSlope = slopeBefore + (2 * k - 1) * value;
    slopeBefore = slope;
    slope = nextSlope;
    const double next = ((2 * k - 1) * x * value - (k - 1) * before) / k;
    before = value;
    value = next;
    if (!std::isfinite(value)) return minus ? -kInfinity : kInfinity;
  }
  return slope;
}

}  // namespace SpecialFunction
