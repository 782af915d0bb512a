// SPDX-License-Identifier: Apache-2.0
// Parabolic cylinder functions for large |a|: with a = -+mu^2/2 and x = mu t sqrt(2) they are exp(-+mu^2 xi)
// (t^2-+1)^(-1/4) times a series in 1/mu^2 (DLMF 12.10(ii), 12.10(iv), 12.10(vi)). In long double, as large logarithms
// cancel.
#include "special/bessel/parabolic_far.h"

#include <math.h>

#include <cmath>
#include <numbers>

#include "special/elementary/turn.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

using Long = long double;
constexpr Long kLogPi = 1.1447298858494001741434273513530587L;

Long logGamma(Long x) {
  int sign = 1;
  return ::lgammal_r(x, &sign);
}

double expOf(Long logarithm) { return static_cast<double>(std::exp(logarithm)); }

// The polynomials of the series: u_s(t) for even s, u_s(t)/t for odd s, in powers of t^2 (DLMF 12.10.9 to 12.10.12).
// `turn` -1 stands for i^s u_s(-it), which are real.
struct Polynomial {
  Long divisor, coefficients[8];
};
constexpr Polynomial kPolynomials[] = {
    {1, {1}},
    {24, {-6, 1}},
    {1152, {145, 249, -9}},
    {414720, {-259290, -151995, -28287, 18189, -4042}},
    {39813120, {12773113, 122602962, 50938215, -154982, -321339, 72756}},
    {6688604160,
     {-34009066266, -119582875013, -37370295816, 4433574213, -3630137104, 1994971575, -617950920, 82393456}}};

Long sumOfSeries(Long muSquared, Long t, int turn, int direction) {
  const Long square = turn * t * t, q = std::abs(square - 1) * std::sqrt(std::abs(square - 1)) * muSquared;
  Long sum = 0, power = 1;
  for (int s = 0; s < 6; ++s) {
    Long value = 0;
    for (int k = 7; k >= 0; --k) value = value * square + kPolynomials[s].coefficients[k];
    if (s % 2 == 1) value *= t;
    if (turn < 0 && s / 2 % 2 == 1) value = -value;
    sum += power * value / kPolynomials[s].divisor;
    power *= direction / q;
  }
  return sum;
}

// log of sqrt(gamma(1/2 + z)/(2 sqrt(2 pi z))), z = mu^2/2, times what the constants of integration in u_s leave:
// (1 + G/2)/sqrt(1 + G), 1 + G = gamma(1/2 + z)/(sqrt(2 pi) exp(-z) z^z).
Long logOfG(Long z) {
  const Long g = (-1 / 24.0L + 1 / (1152 * z)) / z;
  return logGamma(0.5L + z) / 2 - std::log(2.0L) / 2 - kLogPi / 4 - std::log(2 * z) / 4 + g * g / 8 * (1 - g);
}

struct Place {
  Long muSquared, t;
};

Place placeOf(double a, double x) {
  return {2 * std::abs(static_cast<Long>(a)), x / (2 * std::sqrt(std::abs(static_cast<Long>(a))))};
}

// log U and log V, a < 0, beyond the turning point.
Long logRightOfTurn(double a, double x, int direction) {
  const auto [muSquared, t] = placeOf(a, x);
  const Long q = t * t - 1, xi = (t * std::sqrt(q) - std::acosh(t)) / 2;
  const Long common = logOfG(muSquared / 2) - std::log(q) / 4;
  const Long series = sumOfSeries(muSquared, t, 1, direction);
  if (!(series > 0)) return common - direction * muSquared * xi;  // next to the turning point, where no value fits
  if (direction > 0) return common - muSquared * xi + std::log(series);
  return common + muSquared * xi + std::log(series) + std::log(2.0L) - logGamma(0.5L + muSquared / 2);
}

// log U, a > 0, for x of either sign: U(a, 0) = sqrt(pi)/(2^(a/2+1/4) gamma(a/2 + 3/4)) times the ratio of expansions.
Long logNoTurn(double a, double x) {
  const auto [muSquared, t] = placeOf(a, x);
  const Long half = static_cast<Long>(a) / 2, xi = (t * std::sqrt(t * t + 1) + std::asinh(t)) / 2;
  const Long start = kLogPi / 2 - (half + 0.25L) * std::numbers::ln2_v<Long> - logGamma(half + 0.75L);
  return start - muSquared * xi - std::log1p(t * t) / 4 +
         std::log(sumOfSeries(muSquared, t, -1, 1) / sumOfSeries(muSquared, 0, -1, 1));
}

}  // namespace

double signOfParabolicU(double a, double x) {
  const auto [muSquared, t] = placeOf(a, x);
  if (!(t < 1)) return 1;
  // Near the turning point the phase is that of Airy's function, -a_k for the zeros; elsewhere both agree.
  const Long phase = muSquared * (std::acos(t) - t * std::sqrt(1 - t * t)) / 2;
  if (phase < 1000) return std::copysign(1.0, calcAiryAi(-std::pow(1.5 * static_cast<double>(phase), 2.0 / 3)));
  return std::copysign(1.0, static_cast<double>(std::cos(phase - std::numbers::pi_v<Long> / 4)));
}

double parabolicUFar(double a, double x) {
  if (a > 0) return expOf(logNoTurn(a, x));
  const double cosine = cosPi(a), turning = 2 * std::sqrt(-a);
  if (std::abs(x) < turning) {
    // U(a, -x) = -sin(pi a) U(a, x) + pi V(a, x)/gamma(1/2 + a): the same wave on both sides.
    if (x >= 0) return signOfParabolicU(a, x) * HUGE_VAL;
    const auto [muSquared, t] = placeOf(a, x);
    const Long phase = muSquared * (std::acos(t) - t * std::sqrt(1 - t * t)) / 2;
    return std::copysign(HUGE_VAL, static_cast<double>(std::cos(phase - std::numbers::pi_v<Long> / 4)));
  }
  if (x > 0) return expOf(logRightOfTurn(a, x, 1));
  if (cosine == 0) return -sinPi(a) * expOf(logRightOfTurn(a, -x, 1));
  return cosine * HUGE_VAL;
}

double parabolicVFar(double a, double x) {
  const double cosine = cosPi(a), sine = sinPi(a);
  if (a > 0) {
    // V(a, x) = gamma(1/2 + a)/pi (sin(pi a) U(a, x) + U(a, -x)).
    if (x >= 0) return x == 0 && sine == -1 ? 0 : HUGE_VAL;
    return sine == 0 ? expOf(logNoTurn(a, -x) + logGamma(0.5L + static_cast<Long>(a)) - kLogPi) : sine * HUGE_VAL;
  }
  if (std::abs(x) < 2 * std::sqrt(-a)) return 0;
  if (x > 0) return expOf(logRightOfTurn(a, x, -1));
  return sine == 0 ? 0 * cosine : sine * expOf(logRightOfTurn(a, -x, -1));
}

}  // namespace SpecialFunction
