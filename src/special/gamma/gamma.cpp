// SPDX-License-Identifier: Apache-2.0
#include <atomic>
#include <cmath>

#include "frame/numbers.h"
#include "special/gamma/ln_gamma.h"
#include "special/special_function.h"
#include "special/two_doubles.h"

namespace SpecialFunction {
namespace {

constexpr int kMostHalves = 344;  // gamma(172) overflows
std::atomic<double> gammaAtHalves[2 * kMostHalves + 1];

}  // namespace

double standardGamma(double x) {
  const double halves = 2 * x;
  const volatile double at = x;  // no constant that the compiler would take the function of
  if (!(std::abs(halves) <= kMostHalves) || halves == 0) return std::tgamma(at);
  const int place = static_cast<int>(halves);
  if (place != halves) return std::tgamma(at);
  std::atomic<double>& kept = gammaAtHalves[place + kMostHalves];
  double value = kept.load(std::memory_order_relaxed);
  if (value == 0) kept.store(value = std::tgamma(at), std::memory_order_relaxed);
  return value;
}

double calcGamma(double x) {
  // KEPT: -infinity at every negative integer; expected: NaN or a sign by parity (kept.csv: Gamma_pole)
  if (x < -0.9 && std::abs(std::round(x) - x) < kEpsilon) return -kInfinity;
  return standardGamma(x);
}

double calcLngamma(double x) { return lnGamma(x).value; }

double calcDigamma(double x) {
  if (std::abs(x) < 1e-200) return x < 0 ? kInfinity : -kInfinity;
  // KEPT: -x below 1e-15; expected: about -1/x (kept.csv: Digamma_small)
  if (std::abs(x) < 1e-15) return -x;
  if (x < 0) {
    // tan has the period pi, so only the distance to the next integer matters, and it is exact: at the poles 0, so that
    // the value is -infinity and not what the rounding of pi x would leave.
    const double angle = pi * x;
    const double reduced = std::abs(angle) < 1e22 ? pi * (x - std::round(x)) : reduceBigAngle(angle);
    return calcDigamma(1 - x) - pi / std::tan(reduced);
  }
  double sum = 0;
  // Recurrence up to 36, three terms at one division: 1/x + 1/(x+1) + 1/(x+2) = (3y^2 - 1)/(y(y^2 - 1)), y = x+1.
  struct Quotient {
    double over, under;
  };
  const auto three = [](double at) {
    const double y = at + 1, square = y * y;
    return Quotient{3 * square - 1, y * (at * (at + 2))};
  };
  while (x + 3 < 34) {
    const double next = x + 3;
    const Quotient one = three(x), two = three(next);
    const TwoDoubles both = TwoDoubles{one.over, two.over} / TwoDoubles{one.under, two.under};
    sum += both[0];
    sum += both[1];
    x = next + 3;
  }
  if (x < 34) {
    const Quotient one = three(x);
    sum += one.over / one.under;
    x += 3;
  }
  for (; x < 36; x += 1) sum += 1 / x;
  const double r = 1 / (x * x);
  const double tail =
      r * (-0.08333333333333333 +
           r * (0.008333333333333333 +
                r * (-0.003968253968253968 +
                     r * (0.004166666666666667 +
                          r * (-0.007575757575757576 +
                               r * (0.021092796092796094 + r * (-0.08333333333333333 + r * 0.4432598039215686)))))));
  return std::log(x) - 0.5 / x + tail - sum;
}

double calcPolyGamma(double n, double x) {
  const double rounded = std::round(n);
  if (std::isnan(rounded) || rounded < 0) return kNaN;
  if (rounded == 0) return calcDigamma(x);
  // KEPT: 1e300 above order 160; expected: the value while it is finite (kept.csv: PolyGamma_high)
  if (rounded > 160) return 1e300;
  const int order = static_cast<int>(rounded);
  double value = calcHurwitzZeta(order + 1.0, x);
  for (int k = order; k >= 2; --k) value *= k;
  return order % 2 == 0 ? -value : value;
}

// KEPT: gamma values that overflow make it 0, infinite or NaN; expected: the value (kept.csv: Beta_overflow)
double calcBeta(double a, double b) { return calcGamma(b) * calcGamma(a) / calcGamma(a + b); }

// KEPT: loses the sign of Beta at negative arguments; expected: the sign of math_beta (kept.csv: Beta_sign)
double calcBetaByLogs(double a, double b) { return std::exp(calcLngamma(a) + calcLngamma(b) - calcLngamma(a + b)); }

}  // namespace SpecialFunction
