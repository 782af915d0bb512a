// SPDX-License-Identifier: Apache-2.0
// Symmetric integrals of the third kind RJ and of the second kind RG, and the complete ones RE and RM.
#include <algorithm>
#include <cmath>
#include <limits>

#include "frame/numbers.h"
#include "special/elliptic/elliptic.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kSmallRJ = 0.001;
constexpr int kRoundsRJ = 128;

bool coincide(double u, double v) { return std::abs(u - v) <= kEpsilon * std::max(std::abs(u), std::abs(v)); }

void order(double& x, double& y, double& z) {
  if (x > y) std::swap(x, y);
  if (y > z) std::swap(y, z);
  if (x > y) std::swap(x, y);
}

// Carlson 1979, algorithm for RJ. RC(alpha, beta) there has alpha = a^2, beta = b^2: taken as RC((a/b)^2, 1)/b, which
// keeps the squares in range.
double duplicateRJ(double x, double y, double z, double p) {
  double A = 0, X = 0, Y = 0, Z = 0, P = 0, sum = 0, power = 1;
  for (int round = 0; round < kRoundsRJ; ++round) {
    A = 5 / (x + y + z + 2 * p);
    X = 1 - A * x;
    Y = 1 - A * y;
    Z = 1 - A * z;
    P = 1 - A * p;
    if (std::max({std::abs(X), std::abs(Y), std::abs(Z), std::abs(P)}) < kSmallRJ) break;
    const double rx = std::sqrt(x), ry = std::sqrt(y), rz = std::sqrt(z), rp = std::sqrt(p);
    const double lambda = rx * ry + rx * rz + ry * rz;
    const double a = p * (rx + ry + rz) + rx * ry * rz, b = rp * (p + lambda), ratio = a / b;
    sum += power * (calcEllipticRC(ratio * ratio, 1) / b);
    power /= 4;
    x = (x + lambda) / 4;
    y = (y + lambda) / 4;
    z = (z + lambda) / 4;
    p = (p + lambda) / 4;
  }
  const double X2 = X * X, Y2 = Y * Y, Z2 = Z * Z, P2 = P * P;
  const double S2 = (X2 + Y2 + Z2 + 2 * P2) / 4, S3 = (X2 * X + Y2 * Y + Z2 * Z + 2 * P2 * P) / 6;
  const double S4 = (X2 * X2 + Y2 * Y2 + Z2 * Z2 + 2 * P2 * P2) / 8;
  const double S5 = (X2 * X2 * X + Y2 * Y2 * Y + Z2 * Z2 * Z + 2 * P2 * P2 * P) / 10;
  const double expansion = 1 + 3 * S2 / 7 + S3 / 3 + 3 * S2 * S2 / 22 + 3 * S4 / 11 + 3 * S2 * S3 / 13 + 3 * S5 / 13;
  return 3 * sum + power * A * std::sqrt(A) * expansion;
}

// RJ(x, y, y, p) by the difference of two RC, for p well apart from y.
double twoEqual(double x, double y, double p) { return 3 / (p - y) * (calcEllipticRC(x, y) - calcEllipticRC(x, p)); }

// Far enough apart that the difference of two RC keeps its digits.
bool apart(double u, double v) { return std::max(u, v) > 1.2 * std::min(u, v); }

// Cauchy's principal value (W. H. Press et al. after D. G. Zill, B. C. Carlson, 1970) for x <= y <= z, p = -q.
double principalRJ(double x, double y, double z, double q) {
  const double P = (z * (x + y + q) - x * y) / (z + q);
  const double front = -((z - x) * ((z - y) / (z + q)));  // P - z
  const double product = x * y + P * q;
  const double rc = std::sqrt(x * y * z / product) * calcEllipticRC(product, P * q);
  return (front * calcEllipticRJ(x, y, z, P) - 3 * duplicateRF(x, y, z) + 3 * rc) / (z + q);
}

}  // namespace

double calcEllipticRJ(double x, double y, double z, double p) {
  if (std::isnan(x) || std::isnan(y) || std::isnan(z) || std::isnan(p)) return kNaN;
  order(x, y, z);
  if (!(x >= 0 && y > 0)) return kNaN;
  if (p == 0) return kInfinity;
  if (std::isinf(z) || std::isinf(p)) return 0;
  // Products of three arguments stay in range between these powers of 2.
  const int exponent = std::ilogb(std::max(z, std::abs(p)));
  if (std::abs(exponent) > 302) {
    const int half = ((exponent > 0 ? 300 : -300) - exponent) / 2;
    const auto scaled = [&](double t) {
      const double moved = std::ldexp(t, 2 * half);
      return t != 0 && moved == 0 ? std::copysign(std::numeric_limits<double>::min(), t) : moved;
    };
    return std::ldexp(calcEllipticRJ(scaled(x), scaled(y), scaled(z), scaled(p)), 3 * half);
  }
  if (p < 0) return principalRJ(x, y, z, -p);
  const bool low = coincide(x, y), high = coincide(y, z);
  if (low && high && coincide(z, p)) return 1 / (x * std::sqrt(x));
  if (high && coincide(y, p)) return duplicateRD(x, y, p);
  if (high && apart(y, p)) return twoEqual(x, y, p);
  if (low && apart(y, p)) return twoEqual(z, y, p);
  if (coincide(z, p)) return duplicateRD(x, y, z);
  if (coincide(y, p)) return duplicateRD(x, z, y);
  if (coincide(x, p)) return duplicateRD(y, z, x);
  return duplicateRJ(x, y, z, p);
}

double calcEllipticRG(double x, double y, double z) {
  if (!(x >= 0 && y >= 0 && z >= 0)) return kNaN;
  // The middle one as z: then no term of the sum is negative.
  order(x, y, z);
  std::swap(y, z);
  if (std::isinf(y)) return kInfinity;
  if (z == 0) return std::sqrt(y) / 2;
  if (y > 0x1p500) return calcEllipticRG(x * 0x1p-400, y * 0x1p-400, z * 0x1p-400) * 0x1p200;
  if (y < 0x1p-500) return calcEllipticRG(x * 0x1p400, y * 0x1p400, z * 0x1p400) * 0x1p-200;
  if (x == y) return std::sqrt(x);
  const RFAndRD r = duplicateRFAndRD(x, y, z, false);
  return (z * r.first - (x - z) * (y - z) * r.second / 3 + std::sqrt(x * y / z)) / 2;
}

double calcEllipticRE(double x, double y) { return 4 / pi * calcEllipticRG(x, y, 0); }

double calcEllipticRM(double x, double y, double p) { return 4 / (3 * pi) * calcEllipticRJ(x, y, 0, p); }

// Carlson's relation between RJ at p and at q where (p - x)(q - x) = (y - x)(z - x), x being any of the three (DLMF
// 19.21.12), turns the sum into one of positive terms: with x = a for p > c, with x = c for p < 0.
double thirdKind(double a, double ba, double ca, double p, double cp) {
  const double b = a + ba, c = a + ca;
  if (std::isnan(a + ba + ca + p + cp)) return kNaN;
  if (p == 0) return kInfinity;
  if (cp == 0) return duplicateRF(a, b, c);
  if (p < 0) {
    const double shift = ca * ((ca - ba) / -cp), q = c + shift;
    return calcEllipticRC(a * (b / c), p * (q / c)) + shift / 3 * calcEllipticRJ(a, b, c, q);
  }
  if (cp > 0) return duplicateRF(a, b, c) + cp / 3 * calcEllipticRJ(a, b, c, p);
  const double pa = ca - cp, q = a + ba * (ca / pa);
  const double rc = a == 0 ? 0 : std::sqrt(a) * calcEllipticRC(b * c, p * q);
  const double rest = rc + ba * (ca / pa) / 3 * (ba == 0 ? 0 : calcEllipticRJ(a, b, c, q));
  return duplicateRF(a, b, c) * (ca / pa) - cp / pa * rest;
}

}  // namespace SpecialFunction
