// SPDX-License-Identifier: Apache-2.0
// Bulirsch's integrals, and Heuman's lambda and Jacobi's zeta through the complete one.
#include <cmath>

#include "frame/numbers.h"
#include "special/elliptic/elliptic.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kFar = 1e150;  // tangents whose squares leave the range: the angle is pi/2
constexpr int kMostLandenSteps = 10000;
constexpr double kThreeQuarterPi = 2.356194490192345;  // RJ(0, y, z, p) is 3 pi/4 times a sum over the means

// Bartky's transformation of the complete integral for p > 0 (R. Bulirsch, Numerical calculation of elliptic integrals
// and elliptic functions III, Numerische Mathematik 13, 1969). `root` is sqrt(p), `b` stands divided by p.
double bartky(double kc, double root, double a, double b) {
  double em = 1, e = kc;
  for (int round = 0; round < kMostLandenSteps; ++round) {
    const double f = a, g = e / root;
    a += b / root;
    b = 2 * (b + f * g);
    root += g;
    const double before = em;
    em += kc;
    // The next difference is the square of this one: it is at eps.
    const double difference = before - kc;
    if (difference * difference <= kEpsilon * before * before) break;
    kc = 2 * std::sqrt(e);
    e = kc * em;
  }
  return 2 * kThreeQuarterPi * (b + a * em) / (3 * (em * (em + root)));
}

double zetaPart(double r, double m) {
  const double sine = std::sin(r), cosine = std::cos(r), kc = std::sqrt(1 - m);
  const double p = m > 0 ? cosine * cosine + (1 - m) * sine * sine : 1 - m * sine * sine;
  // Z = m/(3 K) sin cos Delta RJ(0, 1 - m, 1, Delta^2), of which RJ/3 is cel(kc, Delta^2, 0, 1).
  return m * sine * cosine * std::sqrt(p) * calcBulirschCel(kc, p, 0, 1) / calcEllipticK(m);
}

}  // namespace

double calcBulirschCel(double kc, double p, double a, double b) {
  if (std::isnan(kc) || std::isnan(p) || std::isnan(a) || std::isnan(b)) return kNaN;
  kc = std::abs(kc);
  if (std::isinf(kc) || std::isinf(p)) return 0;
  if (p == 0 || kc == 0) {
    if (b != 0) return std::copysign(kInfinity, p < 0 ? -b : b);
    if (p != 0) return a * calcEllipticRC(1, p);
    return kc == 0 ? std::copysign(kInfinity, a) : a * (pi / 2 / meanOf(1, kc));
  }
  // The powers of kc stay in range; sine and cosine exchanged.
  if (kc > 1e100) return calcBulirschCel(1 / kc, 1 / p, b, a) / p / kc;
  if (p > 0) {
    const double root = std::sqrt(p);
    return bartky(kc, root, a, b / root);
  }
  // Cauchy's principal value: the pole is taken over to p' = (kc^2 - p)/(1 - p) > 0.
  const double g = 1 - p, other = (kc * kc - p) / g;
  const double newA = (a - b) / g, root = std::sqrt(other);
  const double newB = newA * other - (1 - kc) * (1 + kc) / g * ((b - a * p) / g);
  return bartky(kc, root, newA, newB / root);
}

double calcBulirschEl1(double x, double kc) {
  if (std::abs(x) > kFar) return std::copysign(calcBulirschCel(kc, 1, 1, 1), x);
  const double square = x * x;
  return x * calcEllipticRF(1, 1 + kc * kc * square, 1 + square);
}

double calcBulirschEl2(double x, double kc, double a, double b) {
  if (std::abs(x) > kFar) return x > 0 ? calcBulirschCel(kc, 1, a, b) : -calcBulirschCel(kc, 1, a, b);
  const double square = x * x, y = 1 + kc * kc * square, z = 1 + square;
  const double first = a * calcEllipticRF(1, y, z), second = (b - a) * square / 3 * calcEllipticRD(1, y, z);
  const double sum = first + second;
  if (!(std::abs(sum) < std::abs(first) / 4)) return x * sum;
  // The sum cancels: by the relation of RF to two RD (DLMF 19.21.7) in separate parts of a and b.
  const double partA = std::sqrt(1 / y) * std::sqrt(1 / z) + (y - 1) / 3 * calcEllipticRD(1, z, y);
  return x * (a * partA + b * square / 3 * calcEllipticRD(1, y, z));
}

double calcBulirschEl3(double x, double kc, double p) {
  if (std::abs(x) > kFar) return x > 0 ? calcBulirschCel(kc, p, 1, 1) : -calcBulirschCel(kc, p, 1, 1);
  const double square = x * x;
  return x * thirdKind(1, kc * kc * square, square, 1 + p * square, (1 - p) * square);
}

double calcHeumannLambda(double phi, double m) {
  if (!std::isfinite(phi) || !(m >= 0 && m <= 1)) return kNaN;
  const auto [s, r] = halfTurns(phi);
  if (m == 1) return 2 * s + 2 / pi * r;
  const double sine = std::sin(r), cosine = std::cos(r);
  if (m == 0) return 2 * s + sine;
  // (2/pi) kc^2 sin cos/Delta' Pi(m/Delta'^2, m) with Delta'^2 = 1 - (1 - m) sin^2 (Byrd and Friedman 150.03).
  const double kc = std::sqrt(1 - m), delta2 = cosine * cosine + m * sine * sine;
  const double p = (1 - m) * cosine * cosine / delta2;
  return 2 * s + 2 / pi * (1 - m) * sine * cosine / std::sqrt(delta2) * calcBulirschCel(kc, p, 1, 1);
}

double calcJacobiZeta(double phi, double m) {
  if (!std::isfinite(phi) || !(m <= 1)) return kNaN;
  const double r = halfTurns(phi).r;
  if (m == 1) return std::sin(r);
  if (m == 0 || std::isinf(m)) return m == 0 ? 0 : kNaN;
  return zetaPart(r, m);
}

}  // namespace SpecialFunction
