// SPDX-License-Identifier: Apache-2.0
// Symmetric integrals RF, RD and RC by duplication (B. C. Carlson, Computing elliptic integrals by duplication,
// Numerische Mathematik 33, 1979), with the expansions in sums of powers S_k = (X^k + Y^k + ...)/(2k) of that paper.
#include <algorithm>
#include <cmath>
#include <limits>

#include "frame/numbers.h"
#include "special/elliptic/elliptic.h"
#include "special/special_function.h"

namespace SpecialFunction {
namespace {

constexpr double kSmall = 0.001;  // of the relative differences: the expansion's error is their sixth power
constexpr int kRoundsRF = 128;
constexpr int kRoundsRD = 100000;
constexpr int kRoundsRC = 128;

// Above this the sums of the duplication could overflow; a power of 4 brings the arguments down.
constexpr double kHuge = 0x1p1000;
constexpr double kDown = 0x1p-8;

double largest(double x, double y, double z) { return std::max({std::abs(x), std::abs(y), std::abs(z)}); }

double expansionRF(double A, double X, double Y, double Z) {
  const double X2 = X * X, Y2 = Y * Y, Z2 = Z * Z;
  const double S2 = (X2 + Y2 + Z2) / 4, S3 = (X2 * X + Y2 * Y + Z2 * Z) / 6;
  return std::sqrt(A) * (1 + S2 / 5 + S3 / 7 + S2 * S2 / 6 + 0.2727272727272727 * S2 * S3 +
                         0.19230769230769232 * S2 * S2 * S2 + 0.11538461538461539 * S3 * S3);
}

}  // namespace

double duplicateRF(double x, double y, double z) {
  if (largest(x, y, z) == kInfinity) return 0;
  if (largest(x, y, z) > kHuge) return duplicateRF(x * kDown, y * kDown, z * kDown) * 0x1p-4;
  double A = 0, X = 0, Y = 0, Z = 0;
  for (int round = 0; round < kRoundsRF; ++round) {
    A = 3 / (x + y + z);
    X = 1 - A * x;
    Y = 1 - A * y;
    Z = 1 - A * z;
    if (largest(X, Y, Z) <= kSmall) break;
    const double rx = std::sqrt(x), ry = std::sqrt(y), rz = std::sqrt(z);
    const double lambda = rx * ry + rx * rz + ry * rz;
    x = (x + lambda) / 4;
    y = (y + lambda) / 4;
    z = (z + lambda) / 4;
  }
  return expansionRF(A, X, Y, Z);
}

double calcEllipticRF(double x, double y, double z) {
  if (!(x >= 0 && y >= 0 && z >= 0)) return kNaN;
  // KEPT: two small arguments count as 0; expected: about log(16 z/x)/(2 sqrt(z)) (kept.csv: RF_small)
  if (x < kEpsilon && y < kEpsilon) return kInfinity;
  // KEPT: a small x counts as 0 when y = z; expected: sqrt(x)/y less than pi/2/sqrt(y) (kept.csv: RF_equal)
  if (x < kEpsilon && std::abs(y - z) < kEpsilon) return y < kEpsilon ? kInfinity : pi / 2 / std::sqrt(y);
  if (y < kEpsilon && std::abs(x - z) < kEpsilon) return x < kEpsilon ? kInfinity : pi / 2 / std::sqrt(x);
  if (z == 0 && (x == 0 || y == 0)) return kInfinity;
  if (std::isinf(x) || std::isinf(y) || std::isinf(z)) return 0;
  return duplicateRF(x, y, z);
}

namespace {

/// Carlson's expansion of RD at the last differences.
double expansionRD(double A, double X, double Y, double Z, double sum, double power) {
  const double X2 = X * X, Y2 = Y * Y, Z2 = Z * Z;
  const double S2 = (X2 + Y2 + 3 * Z2) / 4, S3 = (X2 * X + Y2 * Y + 3 * Z2 * Z) / 6;
  const double S4 = (X2 * X2 + Y2 * Y2 + 3 * Z2 * Z2) / 8;
  const double S5 = (X2 * X2 * X + Y2 * Y2 * Y + 3 * Z2 * Z2 * Z) / 10;
  const double expansion = 1 + 3 * S2 / 7 + S3 / 3 + 3 * S2 * S2 / 22 + 3 * S4 / 11 + 3 * S2 * S3 / 13 + 3 * S5 / 13;
  return 3 * sum + power * A * std::sqrt(A) * expansion;
}

}  // namespace

double duplicateRD(double x, double y, double z) {
  if (largest(x, y, z) == kInfinity) return 0;
  if (largest(x, y, z) > kHuge) return duplicateRD(x * kDown, y * kDown, z * kDown) * 0x1p-12;
  double A = 0, X = 0, Y = 0, Z = 0, sum = 0, power = 1;
  for (int round = 0; round < kRoundsRD; ++round) {
    A = 5 / (x + y + 3 * z);
    X = 1 - A * x;
    Y = 1 - A * y;
    Z = 1 - A * z;
    if (largest(X, Y, Z) < kSmall) break;
    const double rx = std::sqrt(x), ry = std::sqrt(y), rz = std::sqrt(z);
    const double lambda = rx * ry + rx * rz + ry * rz;
    sum += power / (rz * (z + lambda));
    power /= 4;
    x = (x + lambda) / 4;
    y = (y + lambda) / 4;
    z = (z + lambda) / 4;
  }
  return expansionRD(A, X, Y, Z, sum, power);
}

RFAndRD duplicateRFAndRD(double x, double y, double z, bool swapped) {
  if (!(largest(x, y, z) <= kHuge))
    return {duplicateRF(x, y, z), swapped ? duplicateRD(x, z, y) : duplicateRD(x, y, z)};
  double first = 0, sum = 0, power = 1;
  bool firstStands = false;
  for (int round = 0;; ++round) {
    if (!firstStands) {
      const double A = 3 / (x + y + z), X = 1 - A * x, Y = 1 - A * y, Z = 1 - A * z;
      if (largest(X, Y, Z) <= kSmall || round == kRoundsRF - 1) {
        firstStands = true;
        first = expansionRF(A, X, Y, Z);
      }
    }
    const double v = swapped ? z : y, w = swapped ? y : z;
    const double A = 5 / (x + v + 3 * w), X = 1 - A * x, Y = 1 - A * v, Z = 1 - A * w;
    const bool secondStands = largest(X, Y, Z) < kSmall || round == kRoundsRD - 1;
    if (secondStands && firstStands) return {first, expansionRD(A, X, Y, Z, sum, power)};
    if (secondStands) return {duplicateRF(x, y, z), expansionRD(A, X, Y, Z, sum, power)};
    const double rx = std::sqrt(x), ry = std::sqrt(y), rz = std::sqrt(z);
    const double lambda = rx * ry + rx * rz + ry * rz;
    sum += power / ((swapped ? ry : rz) * (w + lambda));
    power /= 4;
    x = (x + lambda) / 4;
    y = (y + lambda) / 4;
    z = (z + lambda) / 4;
  }
}

double calcEllipticRD(double x, double y, double z) {
  if (!(x >= 0 && y >= 0 && z >= 0)) return kNaN;
  if (z == 0 || (x == 0 && y == 0)) return kInfinity;
  if (std::isinf(x) || std::isinf(y) || std::isinf(z)) return 0;
  return duplicateRD(x, y, z);
}

namespace {

double duplicateRC(double x, double y) {
  if (largest(x, y, 0) > kHuge) return duplicateRC(x * kDown, y * kDown) * 0x1p-4;
  constexpr double kStop = 0.0013960034614031425;  // 7.401486830834377e-18 to the power of 1/6
  double D = 0, e = 0;
  for (int round = 0; round < kRoundsRC; ++round) {
    D = (2 * y + x) / 3;
    e = (D + y) / D - 2;
    if (std::abs(e) < kStop) break;
    const double lambda = 2 * std::sqrt(x) * std::sqrt(y) + y;
    x = (x + lambda) / 4;
    y = (y + lambda) / 4;
  }
  return (1 + e * e * (0.3 + e * (1.0 / 7 + e * (0.375 + e * 9 / 22)))) / std::sqrt(D);
}

}  // namespace

double calcEllipticRC(double x, double y) {
  if (!(x >= 0) || std::isnan(y)) return kNaN;
  if (x == 0) return y < 0 ? 0 : y == 0 ? kInfinity : pi / 2 / std::sqrt(y);
  if (y == 0) return std::isinf(x) ? kNaN : kInfinity;
  if (std::isinf(x) || std::isinf(y)) return 0;
  if (y < 0) {
    // Cauchy's principal value. Halves where the difference would overflow.
    if (x - y > std::numeric_limits<double>::max()) return calcEllipticRC(x / 4, y / 4) / 2;
    return std::sqrt(x / (x - y)) * calcEllipticRC(x - y, -y);
  }
  if (x < 0.1 || y < 0.1) return duplicateRC(x, y);
  if (x == y) return 1 / std::sqrt(x);
  if (y - x >= 0.1 * y) return std::acos(std::sqrt(x / y)) / std::sqrt(y - x);
  // log((sqrt(x) + sqrt(x - y))/sqrt(y)), which cancels when x - y is small beside y, is asinh(sqrt((x - y)/y)).
  if (x - y >= 0.1) return std::asinh(std::sqrt(x - y) / std::sqrt(y)) / std::sqrt(x - y);
  return duplicateRC(x, y);
}

}  // namespace SpecialFunction
