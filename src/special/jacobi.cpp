// SPDX-License-Identifier: Apache-2.0
// Jacobi's elliptic functions by the descending Landen transformation (Abramowitz and Stegun 16.4).
#include <algorithm>
#include <cmath>
#include <limits>

#include "special/elliptic.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kStop = 1e-15;
constexpr int kRounds = 64;

// The amplitude for 0 <= m < 1.
double amplitude(double u, double m) {
  double ratio[kRounds];  // (a - b)/(a + b) of each level
  double a = 1, b = std::sqrt(1 - m), scale = u;
  int count = 0;
  for (; count < kRounds && std::abs(a - b) > kStop; ++count) {
    ratio[count] = (a - b) / (a + b);
    const double next = (a + b) / 2;
    b = std::sqrt(a * b);
    a = next;
    scale *= 2;
  }
  double phi = a * scale;
  while (count-- > 0) phi = (phi + std::asin(std::clamp(ratio[count] * std::sin(guardAngle(phi)), -1.0, 1.0))) / 2;
  return phi;
}

struct Values {
  double am, sn, cn, dn;
};

// dn = cos(phi)/cos(phi' - phi) with the level before, phi', is 0/0 where cn is 0; the root has the same value.
double delta(double sn, double cn, double m) { return std::sqrt(cn * cn + (1 - m) * sn * sn); }

Values jacobi(double u, double m) {
  if (!(m >= 0) || !std::isfinite(u) || std::isinf(m)) return {kNaN, kNaN, kNaN, kNaN};
  if (m == 1) {  // the means do not meet: Gudermann's function
    const double sech = 1 / std::cosh(u);
    return {std::atan(std::sinh(u)), std::tanh(u), sech, sech};
  }
  if (m < 1) {
    const double phi = amplitude(u, m), angle = guardAngle(phi), sn = std::sin(angle), cn = std::cos(angle);
    return {phi, sn, cn, delta(sn, cn, m)};
  }
  // Jacobi's real transformation: modulus 1/k at k u.
  const double k = std::sqrt(m);
  const Values inner = jacobi(u * k, 1 / m);
  const double sn = inner.sn / k;
  return {std::asin(sn), sn, inner.dn, inner.cn};
}

}  // namespace

double calcJacobiEllipticAm(double u, double m) { return jacobi(u, m).am; }

double calcJacobiEllipticSn(double u, double m) { return jacobi(u, m).sn; }

double calcJacobiEllipticCn(double u, double m) { return jacobi(u, m).cn; }

double calcJacobiEllipticDn(double u, double m) { return jacobi(u, m).dn; }

}  // namespace SpecialFunction
