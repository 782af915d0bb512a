// SPDX-License-Identifier: Apache-2.0
#include <cmath>
#include <optional>

#include "frame/numbers.h"
#include "numeric/integral.h"
#include "special/gamma/incomplete_beta_kernel.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kNearOne = 0.9999;  // up to here the series in x ends in time

// B_x(a, b)/(x^a y^b) for a, b > 0 by the continued fraction of 2F1 (Didonato and Morris 1992, eq. 9; the same value as
// the series); quick for x below a/(a+b). y = 1 - x.
double fractionAlone(double x, double y, double a, double b) {
  const double lambda = a - (a + b) * x;
  double a0 = 0, b0 = 1, a1 = 1, b1 = (a / (a + 1)) * (lambda + 1), value = a1 / b1;
  for (int n = 1; n < 1000000; ++n) {
    const double k = a + 2.0 * n - 1;
    const double alpha = ((a + n - 1) / k) * ((a + b + n - 1) / k) * n * (b - n) * x * x;
    const double beta = n + (n * (b - n) * x) / k + ((a + n) / (k + 2)) * (lambda + 1 + n * (1 + y));
    const double a2 = alpha * a0 + beta * a1, b2 = alpha * b0 + beta * b1;
    a0 = a1 / b2;
    b0 = b1 / b2;
    a1 = a2 / b2;
    b1 = 1;
    if (std::abs(a1 - value) <= std::abs(a1) * kEpsilon) return a1;
    value = a1;
  }
  return value;
}

double betaFraction(double x, double y, double a, double b) {
  const double power = b > 50 && x < 0.5 ? std::exp(b * std::log1p(-x)) : std::pow(y, b);
  return std::pow(x, a) * power * fractionAlone(x, y, a, b);
}

// log(gamma(x)) - (x-1/2) log(x) + x - log(2 pi)/2, Stirling's series; x >= 10.
double stirlingRest(double x) {
  const double r = 1 / (x * x);
  return (1.0 / 12 + r * (-1.0 / 360 +
                          r * (1.0 / 1260 + r * (-1.0 / 1680 + r * (1.0 / 1188 + r * (-691.0 / 360360 + r / 156)))))) /
         x;
}

// Beta for positive arguments whose gamma values overflow: no difference of large logarithms is taken.
double betaByLogarithms(double a, double b) {
  if (a > b) return betaByLogarithms(b, a);
  const double sum = a + b;
  if (a >= 10) {
    const double rest = stirlingRest(a) + stirlingRest(b) - stirlingRest(sum);
    return std::exp((a - 0.5) * std::log(a / sum) + b * std::log1p(-a / sum) + rest) * std::sqrt(2 * pi / b);
  }
  const double rest = stirlingRest(b) - stirlingRest(sum);
  return standardGamma(a) * std::exp((b - 0.5) * std::log1p(-a / sum) - a * std::log(sum) + a + rest);
}

// B(a, b) for a, b > 0.
double completeBeta(double a, double b) {
  return a + b < 170 ? standardGamma(b) * standardGamma(a) / standardGamma(a + b) : betaByLogarithms(a, b);
}

// x^a y^b/B(a, b) for a, b > 0, y = 1 - x; nothing leaves the range of double where the quotient is in it.
double powersOverBeta(double x, double y, double a, double b) {
  const double sum = a + b;
  if (sum < 170) return std::pow(x, a) * std::pow(y, b) / completeBeta(a, b);
  if (a > b) return powersOverBeta(y, x, b, a);
  const double rest = stirlingRest(sum) - stirlingRest(b);
  if (a < 10)
    return std::pow(x * sum, a) / standardGamma(a) *
           std::exp(b * std::log(y) - (b - 0.5) * std::log1p(-a / sum) - a + rest);
  // Against the greatest value, which is at x = a/(a+b).
  const double away = x < 0.5 ? sum * x - a : b - sum * y;
  return std::exp(a * std::log1p(away / a) + b * std::log1p(-away / b) + rest - stirlingRest(a)) *
         std::sqrt(a / sum * b / (2 * pi));
}

// B_x(a, b) for a, b > 0, y = 1 - x.
double positiveBeta(double x, double y, double a, double b) {
  if (x <= (a + 1) / (a + b + 2)) return betaFraction(x, y, a, b);
  return completeBeta(a, b) - betaFraction(y, x, b, a);
}

// The series of the definition, sum of a/(a+k) (1-b)_k/k! x^k, ends with the first term of at most 1e-17. Gives the sum
// of what follows for a, b > 0, x about 1/2 at most; nothing when a term leaves the range of double before.
std::optional<double> leftOut(double x, double a, double b) {
  double factor = 1, term = 1, k = 0;
  const auto next = [&] {
    k += 1;
    factor *= (k - b) / k * x;
    term = a / (a + k) * factor;
  };
  do {
    next();
    if (!std::isfinite(factor)) return std::nullopt;
  } while (std::abs(term) > 1e-17);
  double sum = 0;
  do {
    next();
    sum += term;
  } while (std::abs(term) > std::abs(sum) * kEpsilon);
  return sum;
}

// The same in units of the integral, x^a/a times it, where it can be seen beside a value.
std::optional<double> leftOutBeside(double value, double x, double a, double b) {
  const double power = std::pow(x, a);
  // Below (1+x)^b no term overflows, and beside 1e-4 nothing is seen of what follows a term of 1e-17.
  if (b * std::log1p(x) < 700 && !(value * a < 1e-4 * power)) return 0;
  const auto rest = leftOut(x, a, b);
  return rest ? std::optional(power * *rest / a) : std::nullopt;
}

bool arePositive(double a, double b) { return a > 0 && b > 0 && std::isfinite(a) && std::isfinite(b); }

// x^a/a times the hypergeometric series F(a, 1-b; a+1; x). The series alternates for b > 1: where it cancels, the same
// sum comes from the continued fraction and the terms that the series leaves out.
double betaSeries(double x, double a, double b) {
  if (arePositive(a, b)) {
    const double value = positiveBeta(x, 1 - x, a, b);
    // KEPT: the absolute stop shows in a small sum; expected: the integral (kept.csv: IBeta_stop)
    if (const auto rest = leftOutBeside(value, x, a, b)) return value - *rest;
  }
  const double upper[] = {a, 1 - b}, lower[] = {a + 1};
  return calcHypergeometricPFQKeepingDigits(upper, 2, lower, 1, x) * std::pow(x, a) / a;
}

// x^a (1-x)^b/a F(a+b, 1; a+1; x): for b <= 0 its terms have one sign, but for those of n < -(a+b).
double betaSeriesBelow(double x, double a, double b) {
  const double upper[] = {a + b, 1}, lower[] = {a + 1};
  return calcHypergeometricPFQKeepingDigits(upper, 2, lower, 1, x) * std::pow(x, a) * std::pow(1 - x, b) / a;
}

}  // namespace

double calcIBeta(double x, double a, double b) {
  if (!(x >= 0 && x <= 1)) return kNaN;
  // KEPT: 0 below 1e-64; expected: x^a/a, large for small or negative a (kept.csv: IBeta_tiny)
  if (x < 1e-64) return 0;
  if (x < 0.500000000000001) {
    return b > 0 ? betaSeries(x, a, b) : betaSeriesBelow(x, a, b);
  }
  const double y = 1 - x, full = calcBeta(a, b);
  if (arePositive(a, b) && y > 0 && std::isnormal(full)) {
    // B(a, b) minus the mirrored value without the subtraction: what the mirrored series leaves out stays left out.
    const double value = positiveBeta(x, y, a, b);
    if (const auto rest = leftOutBeside(value, y, b, a)) return value + *rest;
  }
  // For b < 0 the difference below cancels, or B(a, b) is beyond the doubles and the integral is not.
  const bool direct = a > 0 && b < 0 && b != std::round(b) && x < kNearOne;
  if (direct && !std::isfinite(full)) return betaSeriesBelow(x, a, b);
  const double mirrored = calcIBeta(y, b, a);
  if (full == 0) return -mirrored;
  // KEPT: NaN where B(a, b) overflows; expected: the integral (kept.csv: IBeta_overflow)
  const double value = full * (1 - mirrored / full);
  return direct && std::abs(value) < 0.1 * std::abs(full) ? betaSeriesBelow(x, a, b) : value;
}

double Kernel::regularisedBeta(double a, double b, double x) {
  const double y = 1 - x;
  if (x <= (a + 1) / (a + b + 2)) return powersOverBeta(x, y, a, b) * fractionAlone(x, y, a, b);
  return 1 - powersOverBeta(x, y, a, b) * fractionAlone(y, x, b, a);
}

double calcInverseBeta(double y, double a, double b) {
  if (!(a >= 0 && b >= 0 && y >= 0 && y <= 1)) return kNaN;
  // KEPT: the square of a y below 1e-15; expected: (y a B)^(1/a) (kept.csv: InverseBeta_start)
  if (y < 1e-15) return y * y;
  // KEPT: extrapolates near 1; expected: 1 (kept.csv: InverseBeta_end)
  if (y + 1e-15 > 1) return 1 - 3.123 * y;
  const double target = y * calcBeta(a, b);
  double low = 0, high = 1, middle = 0;
  for (int round = 0; round < 255; ++round) {
    middle = (low + high) / 2;
    const double value = calcIBeta(middle, a, b);
    if (std::abs(value - target) < 1e-15) return middle;
    (value > target ? high : low) = middle;
    if (std::abs(low - high) < 1e-15) return (low + high) / 2;
  }
  return middle;
}

}  // namespace SpecialFunction

namespace BaseFunction {

double incompleteBeta(double a, double b, double x) {
  using namespace SpecialFunction;
  if (!(x <= 1 && x >= 0 && a >= 0 && b >= 0)) return kNaN;
  if (x == 0) return 0;
  if (x == 1) return 1;
  // factor = gamma(a+b)/(gamma(a+1) gamma(b+1)) and edge = x^a (1-x)^b travel with a and b; the boundary terms of the
  // recurrences are edge*factor*b = x^a y^b gamma(a+b)/(a gamma(a) gamma(b)) for a step of a and, with b in the place
  // of that a, edge*factor*a for a step of b.
  double factor = 0;
  const double y = 1 - x;
  double edge = std::pow(x, a) * std::pow(y, b);
  if (a + b < 160)
    factor = a + b == 0 ? kNaN : standardGamma(a + b) / (standardGamma(a + 1) * standardGamma(b + 1));
  else
    factor = std::exp(calcLngamma(a + b) - calcLngamma(a + 1) - calcLngamma(b + 1));
  double sum = 0;
  while (a > 2) {  // I(a, b) = I(a-1, b) - term at a-1
    factor *= a / (a + b - 1);
    edge /= x;
    a -= 1;
    sum -= edge * factor * b;
  }
  while (a < 1) {  // I(a, b) = I(a+1, b) + term at a
    sum += edge * factor * b;
    factor *= (a + b) / (a + 1);
    edge *= x;
    a += 1;
  }
  while (b > 2) {
    factor *= b / (a + b - 1);
    edge /= y;
    b -= 1;
    sum += edge * factor * a;
  }
  while (b < 1) {
    sum -= edge * factor * a;
    factor *= (a + b) / (b + 1);
    edge *= y;
    b += 1;
  }
  const auto density = [a, b](double t) { return std::pow(t, a - 1) * std::pow(1 - t, b - 1); };
  return sum + Integral::integralAdaptive(density, 0, x, 1000000, kEpsilon) * factor * a * b;
}

}  // namespace BaseFunction
