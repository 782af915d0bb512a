// SPDX-License-Identifier: Apache-2.0
// Parabolic cylinder functions D, U and V (DLMF 12). With D_nu(x) = U(-nu - 1/2, x).
#include <cmath>
#include <initializer_list>
#include <numbers>

#include "frame/numbers.h"
#include "special/bessel/parabolic_far.h"
#include "special/bessel/precise_series.h"
#include "special/elementary/turn.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

// KEPT: 15 digits of log 2 and sqrt(pi) in V, 2.2e-15 below its value; expected: all digits (kept.csv:
// ParabolicV_constants)
constexpr double kLn2Rest = 0.3094172321214581e-15;  // log 2 - 0.693147180559945
constexpr double kSqrtPiRatio = 1 - 2.2413569924470e-15;
constexpr double kMostSteps = 100000;  // of the recurrence in a
constexpr double kMostTerms = 100000;  // of the series, about x^2/2 + |a|
constexpr double kFarX = 1e9, kFarA = 1000;

double reciprocalGamma(double x) { return x <= 0 && isWhole(x) ? 0.0 : 1 / standardGamma(x); }

/// 1F1(alpha; beta; x^2/2).
ScaledValue series(double alpha, double beta, double x) {
  const double upper[] = {alpha}, lower[] = {beta};
  return preciseHypergeometric(upper, 1, lower, 1, x * x / 2);
}

/// The even and the odd part for |x| sqrt(|a| + 1) <= 1.5, where they do not cancel.
bool isSmall(double a, double x) { return std::abs(x) * std::sqrt(std::abs(a) + 1) <= 1.5 && std::abs(a) < 30; }

double smallU(double a, double x) {
  const double nu = -a - 0.5;
  const double y1 = series(-nu / 2, 0.5, x).value(), y2 = series(0.5 - nu / 2, 1.5, x).value();
  const double even = reciprocalGamma((1 - nu) / 2) * y1, odd = std::sqrt(2.0) * x * reciprocalGamma(-nu / 2) * y2;
  return std::exp2(nu / 2) * std::exp(-x * x / 4) * kSqrtPi * (even - odd);
}

struct Neighbours {
  double here, next;  // at a and a + 1
};

/// exp(constant) times gamma(a + 1/2) exp(x^2/4) U(a, x), the integral of t^(a-1/2) exp(-t^2/2 - xt) (DLMF 12.5.1), and
/// the same factors times U(a + 1, x); a >= 3/2, x >= 0. The trapezoid rule in s = log t, from the peak to both sides.
Neighbours integralU(double a, double x, double constant) {
  const double power = a + 0.5;  // of t, with dt = t ds
  const double peak = 2 * power / (x + std::sqrt(x * x + 4 * power));
  const double width = 1 / std::sqrt(2 * peak * peak + x * peak), step = std::fmin(0.125, width / 2);
  const double logPeak = std::log(peak), ratio = std::exp(step);
  Neighbours sum{0, 0};
  for (const int direction : {-1, 1}) {
    double t = direction < 0 ? peak / ratio : peak;
    for (int i = direction < 0 ? -1 : 0; i > -2000 && i < 2000; i += direction) {
      const double term = std::exp(power * (logPeak + i * step) - t * (t / 2 + x) + constant);
      sum.here += term;
      sum.next += term * t;
      if (!(term > sum.here * 1e-18)) break;
      t = direction < 0 ? t / ratio : t * ratio;
    }
  }
  return {sum.here * step, sum.next * step / power};
}

/// exp(-x^2/4) x^(-a-1/2) sum (-1)^k (1/2 + a)_2k/(k! (2x^2)^k) (DLMF 12.9.1), as far as its terms fall; NaN else.
double asymptoticU(double a, double x, double shift) {
  double term = 1, sum = 1;
  for (double k = 0; k < 500; k += 1) {
    const double step = (a + 0.5 + 2 * k) * (a + 1.5 + 2 * k) / (2 * x * x * (k + 1));
    if (std::abs(step) >= 0.9) return kNaN;
    term *= -step;
    sum += term;
    if (std::abs(term) < kEpsilon / 16 * std::abs(sum))
      return sum * std::exp((-a - 0.5) * std::log(x) - x * x / 4 + shift);
  }
  return kNaN;
}

/// U(a, x) exp(shift), x >= 0.
double positiveU(double a, double x, double shift) {
  if (isSmall(a, x) && shift == 0) return smallU(a, x);
  if (x > 9) {
    const double value = asymptoticU(a, x, shift);
    if (!std::isnan(value)) return value;
  }
  if (a >= 1.5) {
    // U(a, x) <= U(a, 0) = sqrt(pi) 2^(-a/2-1/4)/gamma(a/2 + 3/4)
    if (shift - calcLngamma(a / 2 + 0.75) - a / 2 * 0.69 - x * x / 4 < -800) return 0;
    return integralU(a, x, shift - calcLngamma(a + 0.5) - x * x / 4).here;
  }
  if (!(a > -kMostSteps)) return kNaN;
  // Down in a: U(a-1) = x U(a) + (a + 1/2) U(a+1), the stable direction (DLMF 12.8.1), rescaled on the way.
  double order, low, high;
  if (isWhole(a + 0.5)) {  // from U(-1/2, x) = exp(-x^2/4), where the factor of U(1/2, x) is 0
    order = a < 0 ? -0.5 : 1.5;
  } else {
    order = a + std::ceil(1.5 - a);
  }
  if (order < 0) {
    low = 1;
    high = 0;
  } else {
    const Neighbours start = integralU(order, x, -calcLngamma(order + 0.5));
    low = start.here;
    high = start.next;
  }
  const int steps = static_cast<int>(std::round(order - a));
  int rescaled = 0;
  for (int i = 0; i < steps; ++i, order -= 1) {
    const double next = x * low + (order + 0.5) * high;
    high = low;
    low = next;
    if (std::abs(low) > 0x1p500) {
      low *= 0x1p-500;
      high *= 0x1p-500;
      ++rescaled;
    }
  }
  if (low == 0) return 0;
  // Far from 1 both summands are large.
  const auto exponent = static_cast<double>(static_cast<long double>(shift) - static_cast<long double>(x) * x / 4 +
                                            500 * std::numbers::ln2_v<long double> * rescaled);
  return std::copysign(std::exp(exponent / 2) * std::abs(low) * std::exp(exponent / 2), low);
}

/// value 2^exponent exp(logFactor), each beyond the doubles perhaps.
double times(const ScaledValue& value, double logFactor) {
  if (value.mantissa == 0 || std::isnan(value.mantissa)) return value.mantissa;
  if (std::abs(value.exponent) < 500 && std::abs(logFactor) < 300) return value.value() * std::exp(logFactor);
  return std::copysign(std::exp(value.logSize() + logFactor), value.mantissa);
}

/// sqrt(2/pi) exp(x^2/4) x^(a-1/2) sum (1/2 - a)_2k/(k! (2x^2)^k) (DLMF 12.9.2), as far as its terms fall; NaN else.
double asymptoticV(double a, double x, double shift) {
  double term = 1, sum = 1;
  for (double k = 0; k < 500; k += 1) {
    const double step = (a - 0.5 - 2 * k) * (a - 1.5 - 2 * k) / (2 * x * x * (k + 1));
    if (std::abs(step) >= 0.9) return kNaN;
    term *= step;
    sum += term;
    if (std::abs(term) < kEpsilon / 16 * std::abs(sum))
      return kSqrtPiRatio * sum * std::sqrt(2 / pi) *
             std::exp((a - 0.5) * std::log(x) + a / 2 * kLn2Rest + x * x / 4 + shift);
  }
  return kNaN;
}

/// The stated sum of the even and the odd part, with gamma(1/2 - a) = 2^(-1/2-a) gamma(1/4 - h) gamma(3/4 - h)/sqrt(pi)
/// divided out: no poles are left, and for a > 0 and x > 0 nothing cancels.
double seriesV(double a, double x, double shift) {
  const double h = a / 2, cosine = cosPi(h + 0.25), sine = sinPi(h + 0.25);
  const ScaledValue y1 = series(h + 0.25, 0.5, x), y2 = series(h + 0.75, 1.5, x);
  const double evenLog = (h + 0.25) * (0.6931471805599453 + kLn2Rest) - x * x / 4 + shift;
  const double oddLog = (h + 0.75) * (0.6931471805599453 + kLn2Rest) - kLn2Rest - x * x / 4 + shift;
  double even, odd;
  if (h >= 0) {
    even = sine * sine / pi * times(y1, evenLog + calcLngamma(h + 0.25));
    odd = cosine * cosine / pi * times(y2, oddLog + calcLngamma(h + 0.75));
  } else {
    even = sine * times(y1, evenLog - calcLngamma(0.75 - h));
    odd = cosine * times(y2, oddLog - calcLngamma(0.25 - h));
  }
  return kSqrtPiRatio * (even + x * odd);
}

/// V(a, x) exp(shift), x >= 0.
double positiveV(double a, double x, double shift) {
  if (x > 9) {
    const double value = asymptoticV(a, x, shift);
    if (!std::isnan(value)) return value;
  }
  if (x * x / 2 + std::abs(a) < kMostTerms) return seriesV(a, x, shift);
  // V >= sqrt(2/pi) exp(x^2/4) x^(a-1/2) for a >= 3/2.
  return a >= 1.5 && x > 1 && shift + x * x / 4 + (a - 0.5) * std::log(x) > 711 ? kInfinity : kNaN;
}

/// cos(pi a) gamma(1/2 - a) V(a, x) - sin(pi a) U(a, x), times exp(shift): U(a, -x), x > 0, the first factor being
/// pi/gamma(1/2 + a) (DLMF 12.2.17).
double reflectedU(double a, double x, double shift) {
  const double cosine = cosPi(a), sine = sinPi(a);
  double first = 0;
  if (a >= 0)
    first = pi * positiveV(a, x, shift - calcLngamma(a + 0.5));
  else if (cosine != 0)
    first = cosine * positiveV(a, x, calcLngamma(0.5 - a) + shift);
  return first - (sine == 0 ? 0.0 : sine * positiveU(a, x, shift));
}

/// Whether the sums and the recurrence above would be too long, or take too many bits: for a < 0 the terms of V's
/// series reach about exp(2 sqrt(-a/2) |x|).
bool isFarU(double a, double x) {
  if (a < -kFarA) return x < 0 || a < -kMostSteps;
  return a > kFarA && x < 0 && x * x / 2 + a >= kMostTerms;
}
bool isFarV(double a, double x) {
  const double size = std::abs(a);
  return size > kFarA && (x * x / 2 + size >= kMostTerms || (a < 0 && x * x * size > 2e6));
}

}  // namespace

double calcParabolicCylinderD(double nu, double x) { return calcParabolicCylinderU(-nu - 0.5, x); }

double calcParabolicCylinderU(double a, double x) {
  if (std::isnan(a) || std::isnan(x) || std::isinf(a)) return kNaN;
  if (x > kFarX) return std::isinf(x) ? 0.0 : (1 + 1 / x / x) * std::exp((-a - 0.5) * std::log(x) - x * x / 4);
  if (isFarU(a, x)) return parabolicUFar(a, x);
  if (x >= -1e-16) return positiveU(a, x, 0);
  if (isSmall(a, x)) return smallU(a, x);
  const double value = reflectedU(a, -x, 0);
  if (!std::isnan(value) || !(a < 0)) return value;
  // Both parts overflow: their difference in units of sqrt(gamma(1/2 - a)), the size of U.
  const double size = calcLngamma(0.5 - a) / 2, scaled = reflectedU(a, -x, -size);
  return std::exp(size / 2) * scaled * std::exp(size / 2);
}

double calcParabolicCylinderV(double a, double x) {
  if (std::isnan(a) || std::isnan(x) || std::isinf(a)) return kNaN;
  if (x > kFarX) return std::exp(std::log(x) * (a - 0.5) + x * x / 4) * (1 + 1 / x / x) * 0.7978845608028654;
  if (isFarV(a, x)) return kSqrtPiRatio * std::exp(a / 2 * kLn2Rest) * parabolicVFar(a, x);
  if (x >= 0) return positiveV(a, x, 0);
  if (isSmall(a, x)) return seriesV(a, x, 0);
  // cos(pi a)/gamma(1/2 - a) U(a, -x) + sin(pi a) V(a, -x) (DLMF 12.2.16): the parts would cancel.
  const double cosine = cosPi(a), sine = sinPi(a);
  double first = 0;
  if (a >= 0.5)
    first = cosine * cosine / pi * positiveU(a, -x, calcLngamma(a + 0.5));
  else if (cosine != 0)
    first = cosine * positiveU(a, -x, -calcLngamma(0.5 - a));
  return first + (sine == 0 ? 0.0 : sine * positiveV(a, -x, 0));
}

}  // namespace SpecialFunction
