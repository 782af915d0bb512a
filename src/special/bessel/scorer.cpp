// SPDX-License-Identifier: Apache-2.0
// Scorer's functions Gi and Hi and their derivatives (DLMF 9.12).
#include <cmath>

#include "frame/numbers.h"
#include "special/bessel/precise_series.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kTwoPi = 6.283185307179586;
constexpr double kOverflow = 105;  // Bi and Hi, and their derivatives, leave the range of the doubles before

// The first terms over x^k, k = 0, 1, 2, of Gi 3^(2/3) 2 pi and of Hi' pi: gamma((k+1)/3) 3^(k/3)/k! and
// 3^(-1/3) gamma((k+2)/3) 3^(k/3)/k!.
const char* const kStart[3] = {"2.6789385347077476336556929409746776441286893779573011009504283",
                               "1.9529760162832792532189423390234219638328246804610471816913547",
                               "2.0800838230519041145300568243578853863378053403732621096975911"};
const char* const kDiffStart[3] = {"0.93889294010174456634118038002298321330742558343900843494143802", "1",
                                   "0.64394965842703454360034158001438857594009283127589482666435953"};

/// Gi(x) for large x > 0, -Hi(x) for large x < 0: 1/(pi x) sum (3k)!/(k! (3x^3)^k).
double asymptoticGi(double x) {
  double sum = 1, term = 1;
  const double cube = x * x * x;
  for (double k = 1, m = 3; m < 3000000; k += 1, m += 3) {
    term = term * (m - 2) * (m - 1) * m / (3 * k * cube);
    sum += term;
    if (std::abs(sum) < kEpsilon || std::abs(term) < std::abs(sum) * kEpsilon) break;
  }
  return sum / (x * pi);
}

/// The derivative of that sum: -1/(pi x^2) sum (3k+1)!/(k! (3x^3)^k).
double asymptoticDiffGi(double x) {
  double sum = 1, term = 1;
  const double cube = x * x * x;
  for (double k = 1, m = 3; m < 3000000; k += 1, m += 3) {
    term = term * (m - 1) * m * (m + 1) / (3 * k * cube);
    sum += term;
    if (std::abs(term) < std::abs(sum) * kEpsilon) break;
  }
  return -sum / (x * x * pi);
}

/// P = 1F2(1; 4/3, 5/3; x^3/9).
double seriesP(double x) {
  const double upper[] = {1}, lower[] = {4.0 / 3, 5.0 / 3};
  return calcHypergeometricPFQ(upper, 1, lower, 2, x * x * x / 9);
}

// a + b - c (or a - b + c) by thirds in doubles; no digits are lost for |x| <= 1 and none in sums of positive terms.
double thirds(double a, double b, double c, const int signs[3], bool derivative, double x) {
  const double cube = x * x * x;
  double sum = signs[0] * a + signs[1] * b + signs[2] * c;
  for (double k = 0; k < 300000; k += 3) {
    const double shift = derivative ? 1 : 2;
    a *= cube / ((k + shift) * (k + 3));
    b *= cube / ((k + 1 + shift) * (k + 4));
    c *= cube / ((k + 2 + shift) * (k + 5));
    const double add = signs[0] * a + signs[1] * b + signs[2] * c;
    sum += add;
    if (std::abs(a) + std::abs(b) + std::abs(c) <= std::abs(sum) * kEpsilon / 4) break;
  }
  return sum;
}

}  // namespace

double calcAiryGi(double x) {
  if (std::isnan(x)) return kNaN;
  if (x + 1e-15 > 17) return asymptoticGi(x);
  // Below -15 the series P is (Hi - 2/3 Bi) 2 pi/x^2 with Hi = -asymptoticGi: the same value, at no loss of digits.
  if (x < -14.999999999999998) return std::isinf(x) ? 0.0 : calcAiryBi(x) + asymptoticGi(x);
  if (x <= -1) return calcAiryBi(x) / 3 - (x * x / kTwoPi) * seriesP(x);
  constexpr int kSigns[3] = {1, 1, -1};
  constexpr double kDivisor = 13.069552114701665;  // 3^(2/3) 2 pi
  // Up to 17 Bi/3 and x^2 P/(2 pi) agree in up to 20 digits; their common power series in long floats holds the rest.
  if (x > 1) return preciseThirds(kStart, kSigns, false, x) / kDivisor;
  return thirds(2.6789385347077475, x * 1.3541179394264005 * 1.4422495703074083, x * x * 2.080083823051904, kSigns,
                false, x) /
         kDivisor;
}

double calcAiryHi(double x) {
  if (std::isnan(x)) return kNaN;
  if (x < -14.999999999999998) return -asymptoticGi(x);
  if (x > kOverflow) return kInfinity;
  const double bi = calcAiryBi(x);
  return std::isinf(bi) ? bi : 2 * bi / 3 + (x * x / kTwoPi) * seriesP(x);
}

double calcDiffAiryHi(double x) {
  if (std::isnan(x)) return kNaN;
  if (x > kOverflow) return kInfinity;
  if (x < -20) return -asymptoticDiffGi(x);  // before it the terms grow again too early
  constexpr int kSigns[3] = {1, 1, 1};
  if (x < -1) return preciseThirds(kDiffStart, kSigns, true, x) / pi;
  return thirds(0.9388929401017445, x, 0.6439496584270346 * x * x, kSigns, true, x) / pi;
}

double calcDiffAiryGi(double x) {
  if (std::isnan(x)) return kNaN;
  if (x + 1e-15 > 17) return asymptoticDiffGi(x);
  if (x < -1) return calcDiffAiryBi(x) - calcDiffAiryHi(x);
  // Bi' - Hi' term by term: the series of Hi' with the weights 1/2, -1, 1/2.
  constexpr int kSigns[3] = {1, -1, 1};
  const char* const weights[3] = {kDiffStart[0], "2", kDiffStart[2]};
  if (x > 1) return preciseThirds(weights, kSigns, true, x) / kTwoPi;
  return thirds(0.9388929401017445, 2 * x, 0.6439496584270346 * x * x, kSigns, true, x) / kTwoPi;
}

}  // namespace SpecialFunction
