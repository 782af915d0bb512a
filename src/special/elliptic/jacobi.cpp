// SPDX-License-Identifier: Apache-2.0
// Jacobi's elliptic functions by the descending Landen transformation (Abramowitz and Stegun 16.4).
#include <algorithm>
#include <cmath>

#include "frame/numbers.h"
#include "special/elliptic/elliptic.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kLevelStop = 1e-15;
constexpr int kMostLevels = 64;

// The amplitude for 0 <= m < 1.
double amplitude(double u, double m) {
  double ratio[kMostLevels];  // (a - b)/(a + b) of each level
  double a = 1, b = std::sqrt(1 - m), scale = u;
  int count = 0;
  for (; count < kMostLevels && std::abs(a - b) > kLevelStop; ++count) {
    ratio[count] = (a - b) / (a + b);
    const double next = (a + b) / 2;
    b = std::sqrt(a * b);
    a = next;
    scale *= 2;
  }
  double phi = a * scale;
  if (std::isinf(phi)) return a * u;  // far beyond any known part of a turn
  while (count-- > 0) phi = (phi + std::asin(std::clamp(ratio[count] * std::sin(guardAngle(phi)), -1.0, 1.0))) / 2;
  return phi;
}

struct Values {
  double sn, cn, dn;
};

// sn, cn and dn for 0 <= m < 1 by the same means with Gauss's transformation of the cotangent of the amplitude
// (R. Bulirsch, Numerical calculation of elliptic integrals and elliptic functions, Numerische Mathematik 7, 1965): the
// cosine of the amplitude has few digits where cn is small, and cos(phi)/cos(phi' - phi) for dn is 0/0 where cn is 0.
Values functions(double u, double m) {
  if (std::abs(u) < 1e-100) return {u, 1, 1};  // the squares of the cotangent leave the range
  double as[kMostLevels], bs[kMostLevels];
  double a = 1, b = std::sqrt(1 - m);
  int count = 0;
  for (;; ++count) {
    as[count] = a;
    bs[count] = b;
    const double mean = (a + b) / 2;
    if (count == kMostLevels - 1 || std::abs(a - b) <= 1e-8 * a) {  // the next difference is the square
      a = mean;
      break;
    }
    b = std::sqrt(a * b);
    a = mean;
  }
  const double angle = guardAngle(a * u), sine = std::sin(angle), cosine = std::cos(angle);
  if (sine == 0) return {sine, cosine, 1};
  double cotangent = cosine / sine, c = a * cotangent, dn = 1;
  for (; count >= 0; --count) {
    cotangent *= c;
    c *= dn;
    dn = (bs[count] + cotangent) / (as[count] + cotangent);
    cotangent = c / as[count];
  }
  const double sn = std::copysign(1 / std::sqrt(c * c + 1), sine);
  return {sn, c * sn, dn};
}

Values jacobi(double u, double m) {
  if (!(m >= 0) || !std::isfinite(u) || std::isinf(m)) return {kNaN, kNaN, kNaN};
  if (m == 1) {  // the means do not meet: Gudermann's function
    const double sech = 1 / std::cosh(u);
    return {std::tanh(u), sech, sech};
  }
  if (m < 1) return functions(u, m);
  // Jacobi's real transformation: modulus 1/k at k u.
  const double k = std::sqrt(m);
  const Values inner = jacobi(u * k, 1 / m);
  return {inner.sn / k, inner.dn, inner.cn};
}

}  // namespace

double calcJacobiEllipticAm(double u, double m) {
  // KEPT: NaN for m < 0, here and in the others; expected: the continuation (kept.csv: Jacobi_negative)
  if (!(m >= 0) || !std::isfinite(u)) return kNaN;
  if (m == 1) return std::atan(std::sinh(u));
  return m < 1 ? amplitude(u, m) : std::asin(jacobi(u, m).sn);
}

double calcJacobiEllipticSn(double u, double m) { return jacobi(u, m).sn; }

double calcJacobiEllipticCn(double u, double m) { return jacobi(u, m).cn; }

double calcJacobiEllipticDn(double u, double m) { return jacobi(u, m).dn; }

}  // namespace SpecialFunction
