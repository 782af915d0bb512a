// SPDX-License-Identifier: Apache-2.0
// The Goodwin-Staton integral of exp(-t^2)/(t+x) from 0 to infinity, and Glasser's integral of sin(t sin t).
#include <algorithm>
#include <cmath>

#include "frame/numbers.h"
#include "numeric/integral.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

// exp(-x^2) (pi erfi(x) - Ei(x^2))/2. From |x| = 10 on exp(-y) Ei(y) is the integral of exp(-t)/(y-t), y = x^2.
double goodwinStatonIntegral(double x) {
  const double y = x * x;
  const auto integrand = [y](double t) { return std::exp(-t) / (t - y); };
  const double tail =
      std::isinf(y) ? 0 : Integral::integralAdaptive(integrand, 0, 100, 1000000, kEpsilon / std::max(1.0, y / 100));
  return kSqrtPi * calcDrawson(x) + tail / 2;
}

// Sixteen-point Gauss-Legendre rule on [a, b].
template <class Function>
double gauss16(Function f, double a, double b) {
  static constexpr double kNodes[] = {0.0950125098376374402, 0.2816035507792589132, 0.4580167776572273863,
                                      0.6178762444026437484, 0.7554044083550030339, 0.8656312023878317439,
                                      0.9445750230732325761, 0.9894009349916499326};
  static constexpr double kWeights[] = {0.1894506104550684963, 0.1826034150449235889, 0.1691565193950025382,
                                        0.1495959888165767321, 0.1246289712555338720, 0.0951585116824927848,
                                        0.0622535239386478929, 0.0271524594117540949};
  const double middle = (a + b) / 2, half = (b - a) / 2;
  double sum = 0;
  for (int i = 0; i < 8; ++i) sum += kWeights[i] * (f(middle - half * kNodes[i]) + f(middle + half * kNodes[i]));
  return sum * half;
}

constexpr double kPanelsEnd = 1000;  // the work grows with x^2, and with x for what an expansion leaves
constexpr double kRestEnd = 1e5;     // beyond, only the leading term
constexpr double kNextOrder = 0.11424;

// Panels over which t sin t turns by at most 4 radians.
double glasserPanels(double from, double to) {
  const auto integrand = [](double t) { return std::sin(t * std::sin(t)); };
  double sum = 0;
  for (double a = from; a < to;) {
    const double b = std::min(to, a + 4 / (2 + a));
    sum += gauss16(integrand, a, b);
    a = b;
  }
  return sum;
}

}  // namespace

double calcGoodwinStaton(double x) {
  if (std::isnan(x)) return x;
  if (std::abs(x) >= 10) return goodwinStatonIntegral(x);
  const double y = x * x;
  return (calcErfi(x) * pi - calcExpIntegral(y)) * std::exp(-y) / 2;
}

double calcGlasser(double x) {
  if (std::isnan(x)) return x;
  if (x < 0) return -calcGlasser(-x);  // the integrand is even
  if (x <= kPanelsEnd) return glasserPanels(0, x);
  // Each half turn of sin t adds its stationary point: 2 sqrt k - 3/(4 pi sqrt k) - 1/(pi k) + ... at x = k pi, k even.
  const double k = 2 * std::floor(x / (2 * pi));
  if (!(x <= kRestEnd)) return 2 * std::sqrt(x / pi);
  const double lead = 2 * std::sqrt(k) - 3 / (4 * pi * std::sqrt(k)) - 1 / (pi * k) + kNextOrder / (k * std::sqrt(k));
  return lead + glasserPanels(k * pi, x);
}

}  // namespace SpecialFunction
