// SPDX-License-Identifier: Apache-2.0
// 0F1, 1F1 and 2F1. The shared series serves wherever its 128 bits and its absolute stop leave enough digits; for
// arguments far left of 0, where its terms cancel, the same sum is taken by a road that keeps them.
#include <algorithm>
#include <cmath>
#include <optional>

#include "frame/numbers.h"
#include "special/gamma/ln_gamma.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kMostForSeries = 5000;  // exponent of the largest term for which more bits are taken

bool isLowerPole(double b) { return b < 0.1 && std::abs(b - std::round(b)) < 1e-15; }
bool isNonPositiveInteger(double a) { return a <= 0 && a == std::floor(a); }

constexpr double kSmallParameters = 8;

// Whether the part with exp(z), z = -y, of 1F1 is below the last digit of the part with y^-a.
bool isLowerPartLost(double a, double b, double y) {
  if (std::abs(a) < kSmallParameters && std::abs(b) < kSmallParameters) return true;
  const double ratio = lnGamma(b - a).value - lnGamma(a).value + (2 * a - b) * std::log(y) - y;
  return !(ratio > -40);
}

// 1F1(a; b; z), z -> -infinity: gamma(b)/gamma(b-a) (-z)^-a sum (a)_n (a-b+1)_n/n! (-z)^-n (Abramowitz and Stegun
// 13.5.1; the part with exp(z) is below the last digit). The sum ends at its smallest term; `loose` takes it as it is.
std::optional<double> farLeft1F1(double a, double b, double z, bool loose) {
  const double y = -z;
  if (!isLowerPartLost(a, b, y)) return std::nullopt;
  double term = 1, sum = 1, last = 1, largest = 1;
  for (int n = 0; n < 100000; ++n) {
    term *= (a + n) * (a - b + 1 + n) / ((n + 1) * y);
    const double size = std::abs(term);
    largest = std::max(largest, size);
    if (size <= kEpsilon / 4 * std::abs(sum)) {
      last = 0;
      break;
    }
    if (size >= last && n > std::abs(a) && n > std::abs(a - b + 1)) break;
    if (!(size < 1e250)) return std::nullopt;
    sum += term;
    last = size;
  }
  if (last != 0 && !(loose && last < 1e-6 * std::abs(sum))) return std::nullopt;
  if (!loose && !(largest < 1000 * std::abs(sum))) return std::nullopt;
  if (std::abs(a) * std::log(y) < 600 && std::abs(b) < 150 && std::abs(b - a) < 150)
    return std::tgamma(b) / std::tgamma(b - a) * std::pow(y, -a) * sum;
  const LnGamma above = lnGamma(b), below = lnGamma(b - a);
  return above.sign * below.sign * std::exp(above.value - below.value - a * std::log(y)) * sum;
}

double leftward1F1(double a, double b, double z) {
  if (isNonPositiveInteger(b - a)) {
    // Kummer's transform ends.
    const double half = std::exp(z / 2), upper = b - a;
    if (half == 0) return 0;
    const double sum = calcHypergeometricPFQKeepingDigits(&upper, 1, &b, 1, -z);
    if (std::isfinite(sum)) return z > -700 ? std::exp(z) * sum : half * sum * half;
  }
  if (z < -36)
    if (const auto value = farLeft1F1(a, b, z, false)) return *value;
  if (-z < kMostForSeries) return calcHypergeometricPFQInFullDigits(&a, 1, &b, 1, z);
  if (const auto value = farLeft1F1(a, b, z, true)) return *value;
  return calcHypergeometricPFQ(&a, 1, &b, 1, z);
}

// 0F1(; b; -t^2/4) = gamma(b) (t/2)^(1-b) J_(b-1)(t) for large t, by Hankel's expansion.
std::optional<double> farLeft0F1(double b, double z) {
  const double t = 2 * std::sqrt(-z), nu = b - 1, mu = 4 * nu * nu;
  double term = 1, p = 1, q = 0, last = 1;
  for (int k = 1; k < 1000; ++k) {
    term *= (mu - (2.0 * k - 1) * (2.0 * k - 1)) / (8 * t * k);
    const double size = std::abs(term);
    if (!(size <= last)) return std::nullopt;
    if (k % 2 == 1)
      q += k % 4 == 1 ? term : -term;
    else
      p += k % 4 == 0 ? term : -term;
    last = size;
    if (size < kEpsilon / 4) break;
  }
  if (last >= kEpsilon / 4) return std::nullopt;
  const double angle = guardAngle(t - (nu / 2 + 0.25) * pi);
  const double wave = std::sqrt(2 / (pi * t)) * (p * std::cos(angle) - q * std::sin(angle));
  const LnGamma gamma = lnGamma(b);
  return gamma.sign * std::exp(gamma.value - nu * std::log(t / 2)) * wave;
}

}  // namespace

double calcHypergeometric0F1(double b, double z) {
  if (!(z <= -100) || !std::isfinite(z) || !std::isfinite(b) || isLowerPole(b))
    return calcHypergeometricPFQKeepingDigits(nullptr, 0, &b, 1, z);
  if (z < -1000)
    if (const auto far = farLeft0F1(b, z)) return *far;
  if (2 * std::sqrt(-z) < kMostForSeries) return calcHypergeometricPFQInFullDigits(nullptr, 0, &b, 1, z);
  return z < -1e7 ? 0 : calcHypergeometricPFQ(nullptr, 0, &b, 1, z);
}

double calcHypergeometric1F1(double a, double b, double z) {
  const bool outside = !std::isfinite(z) || !std::isfinite(a) || !std::isfinite(b) || isLowerPole(b);
  return outside || z > -20 || isNonPositiveInteger(a) ? calcHypergeometricPFQKeepingDigits(&a, 1, &b, 1, z)
                                                       : leftward1F1(a, b, z);
}

double calcHypergeometric2F1(double a, double b, double c, double z) {
  const double upper[] = {a, b};
  const bool large = std::max({std::abs(a), std::abs(b), std::abs(c)}) > kSmallParameters;
  const bool ends = isNonPositiveInteger(a) || isNonPositiveInteger(b);
  return large && (ends || std::abs(z) < 0.99) ? calcHypergeometricPFQKeepingDigits(upper, 2, &c, 1, z)
                                               : calcHypergeometricPFQ(upper, 2, &c, 1, z);
}

}  // namespace SpecialFunction
