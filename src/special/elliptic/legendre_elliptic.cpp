// SPDX-License-Identifier: Apache-2.0
// Legendre's integrals of the parameter m = k^2, complete and incomplete.
#include <cmath>

#include "frame/numbers.h"
#include "special/elliptic/elliptic.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kUnderOne = 0.9999999999999998;
constexpr double kOverOne = 1.0000000000000002;
constexpr double kSmallAngle = 1e-8;
constexpr double kSeriesReach = 1e-3;  // of m phi^2 and n phi^2: the first neglected term is below 1e-19

#include "special/elliptic/elliptic_series_data.inc"

// K and 1 - E/K for the complementary modulus kc by one sequence of means (Abramowitz and Stegun 17.6); c0^2 = m.
struct Complete {
  double k, defect;
};

Complete complete(double m, double kc) {
  double a = 1, b = kc, weight = 1, defect = m / 2, c = 0;
  do {
    c = (a - b) / 2;
    const double next = (a + b) / 2;
    b = std::sqrt(a * b);
    a = next;
    defect += weight * c * c;
    weight *= 2;
  } while (c > 1e-8 * a);
  return {pi / 2 / a, defect};
}

// A polynomial in m within a polynomial in phi^2, as make/elliptic_series.py lays them out.
double series(const double* coefficients, double phi, double m) {
  const double square = phi * phi;
  double sum = 0, power = phi;
  for (int k = 0; k <= kSeriesOrder; ++k, power *= square, coefficients += k) {
    double inner = coefficients[k];
    for (int j = k - 1; j >= 0; --j) inner = coefficients[j] + m * inner;
    sum += power * inner;
  }
  return sum;
}

double seriesPi(double n, double phi, double m) {
  const double square = phi * phi;
  const double* c = kSeriesPi;
  double sum = 0, power = phi;
  for (int k = 0; k <= kSeriesOrder; ++k, power *= square) {
    double inN = 1;
    for (int i = 0; i <= k; ++i, inN *= n) {
      double inner = c[k - i];
      for (int j = k - i - 1; j >= 0; --j) inner = c[j] + m * inner;
      c += k - i + 1;
      sum += power * inN * inner;
    }
  }
  return sum;
}

bool seriesReaches(double r, double m, double n) {
  return std::abs(r) <= kSmallAngle && std::abs(m) * r * r <= kSeriesReach && std::abs(n) * r * r <= kSeriesReach;
}

// 1 - m sin^2 without cancellation on either side of 0.
double squareDelta(double m, double sine, double cosine) {
  return m > 0 ? cosine * cosine + (1 - m) * sine * sine : 1 - m * sine * sine;
}

// The integrals for |r| <= pi/2.
double firstKind(double r, double m) {
  if (seriesReaches(r, m, 0)) return series(kSeriesF, r, m);
  if (m > kOverOne) return kNaN;
  // KEPT: the modulus is 1 in a band around 1; expected: NaN above 1 (kept.csv: EllipticF_band)
  if (m >= kUnderOne) return std::asinh(std::tan(r));
  if (m == 0) return r;
  if (std::isinf(m)) return 0;
  const double sine = std::sin(r), cosine = std::cos(r);
  return sine * duplicateRF(cosine * cosine, squareDelta(m, sine, cosine), 1);
}

double secondKind(double r, double m) {
  if (seriesReaches(r, m, 0)) return series(kSeriesE, r, m);
  if (m > 1) return kNaN;
  if (m == 0) return r;
  const double sine = std::sin(r), cosine = std::cos(r);
  if (m == 1) return sine;
  const double square = cosine * cosine, delta2 = squareDelta(m, sine, cosine);
  if (std::isinf(delta2)) return std::copysign(kInfinity, r);
  const double cube = sine * sine * sine;
  const RFAndRD both = duplicateRFAndRD(square, delta2, 1, m > 0);
  if (m < 0) return sine * both.first - m / 3 * cube * both.second;
  // The sum of positive terms (DLMF 19.25.10): F - m/3 RD cancels towards m = 1.
  return (1 - m) * (sine * both.first + m / 3 * cube * both.second) + m * sine * cosine / std::sqrt(delta2);
}

double thirdKindOf(double n, double r, double m) {
  if (seriesReaches(r, m, n)) return seriesPi(n, r, m);
  if (m > 1) return kNaN;
  if (std::isinf(n) || std::isinf(m)) return 0;
  if (n == 0) return firstKind(r, m);
  const double sine = std::sin(r), cosine = std::cos(r), square = sine * sine;
  const double p = n > 0 ? cosine * cosine + (1 - n) * square : 1 - n * square;
  return sine * thirdKind(cosine * cosine, (1 - m) * square, square, p, n * square);
}

double completeF(double m) {
  if (m > kOverOne) return kNaN;
  return m >= kUnderOne ? kInfinity : calcEllipticK(m);
}

// 2 s times the complete integral and the integral of the rest; s = 0 must not see an infinite complete one.
double whole(double s, double completeValue, double rest) { return s == 0 ? rest : 2 * s * completeValue + rest; }

}  // namespace

HalfTurns halfTurns(double angle) {
  constexpr double kPiLow = 1.2246467991473532e-16;  // pi - pi
  if (std::abs(angle) <= pi / 2) return {0, angle};
  double r = std::remainder(angle, pi);
  const double s = std::nearbyint((angle - r) / pi);
  if (std::abs(s) < 0x1p52) r -= s * kPiLow;  // beyond, the angle itself is known to no part of a turn
  return {s, r};
}

double calcEllipticK(double m) {
  // KEPT: NaN at m = 1 as the standard library's integral gives; expected: infinity (kept.csv: EllipticK_one)
  if (!(m < 1)) return kNaN;
  return pi / 2 / meanOf(1, std::sqrt(1 - m));
}

double calcEllipticE(double m) {
  // KEPT: 1 in a band around m = 1; expected: NaN above 1 (kept.csv: EllipticE_band)
  if (!(m <= kOverOne)) return kNaN;
  if (m >= kUnderOne) return 1;
  if (m < 0) return 2 * calcEllipticRG(0, 1 - m, 1);
  const Complete direct = complete(m, std::sqrt(1 - m));
  if (m <= 0.9) return direct.k * (1 - direct.defect);
  // 1 - E/K loses digits towards m = 1. Legendre's relation E K' + E' K - K K' = pi/2 gives E by positive terms.
  const Complete other = complete(1 - m, std::sqrt(m));
  return pi / (2 * other.k) + direct.k * other.defect;
}

double calcEllipticPI2(double n, double m) {
  if (!(m <= 1) || std::isnan(n)) return kNaN;
  if (std::isinf(n) || std::isinf(m)) return 0;
  if (m == 1 || n == 1) return n <= 1 ? kInfinity : -kInfinity;
  return calcBulirschCel(std::sqrt(1 - m), 1 - n, 1, 1);
}

double calcEllipticF(double phi, double m) {
  if (!std::isfinite(phi) || std::isnan(m)) return kNaN;
  const auto [s, r] = halfTurns(phi);
  return whole(s, s == 0 ? 0 : completeF(m), firstKind(r, m));
}

double calcEllipticE2(double phi, double m) {
  if (!std::isfinite(phi) || std::isnan(m)) return kNaN;
  const auto [s, r] = halfTurns(phi);
  return whole(s, s == 0 ? 0 : m > 1 ? kNaN : calcEllipticE(m), secondKind(r, m));
}

double calcEllipticPI(double n, double phi, double m) {
  if (!std::isfinite(phi) || std::isnan(m) || std::isnan(n)) return kNaN;
  const auto [s, r] = halfTurns(phi);
  return whole(s, s == 0 ? 0 : calcEllipticPI2(n, m), thirdKindOf(n, r, m));
}

}  // namespace SpecialFunction
