// SPDX-License-Identifier: Apache-2.0
#include "slam/map/datum.h"

#include <cmath>

#include "special/special_function.h"

namespace SLAM {
namespace {

using SpecialFunction::guardAngle;

constexpr double kTurn = 52.35987755982988;  // 3000 pi/180

double sine(double angle) { return std::sin(guardAngle(angle)); }
double cosine(double angle) { return std::cos(guardAngle(angle)); }

/// The two waves in x that both offsets have.
struct Common {
  explicit Common(double x) : a(sine(6.283185307179586 * x)), b(sine(18.84955592153876 * x)) {}
  double a, b;
};

// The waves that longitude and latitude share, in the coordinate that is shifted; they differ in the two slow ones.
double waves(double v, const Common& common, double slow, double slowest) {
  return ((sine(3.141592653589793 * v) + common.a + common.b) * 20 + sine(1.0471975511965976 * v) * 40 +
          sine(0.2617993877991494 * v) * slow + sine(0.10471975511965977 * v) * slowest) *
         (2.0 / 3.0);
}

}  // namespace

Vector3 toBD09(const Vector3& gcj) {
  const double x = gcj[0], y = gcj[1];
  const double z = std::sqrt(x * x + y * y) + 2e-5 * sine(y * kTurn);
  const double theta = std::atan2(y, x) + 3e-6 * cosine(x * kTurn);
  return {z * cosine(theta) + 0.0065, z * sine(theta) + 0.006, gcj[2]};
}

Vector3 fromBD09(const Vector3& bd) {
  Vector3 w = bd;
  for (int round = 0; round < 16; ++round) {
    const Vector3 image = toBD09(w);
    const double lon = w[0] + (bd[0] - image[0]), lat = w[1] + (bd[1] - image[1]);
    const double change = std::abs(lat - w[1]) + std::abs(lon - w[0]);
    if (!(change < 1e300)) break;
    w[0] = lon;
    w[1] = lat;
    if (change < 1e-12) break;
  }
  return w;
}

ShiftedDatum::ShiftedDatum(double lonCentre, double latCentre, double a, double e)
    : lonCentre(lonCentre), latCentre(latCentre), square(e * e), k1(57.29577951308232 / a), k2(k1 / (1 - square)) {}

ShiftedDatum::Offset ShiftedDatum::offset(double lon, double lat) const {
  const double x = lon - lonCentre, y = lat - latCentre;
  const double c = cosine(lat * 0.017453292519943295);
  const double s = std::sqrt(1 - (1 - c * c) * square);
  const Common common(x);
  const double root = std::sqrt(std::abs(x));
  const double dLon = waves(x, common, 150, 300) + (y + y + (x + 300) + ((y + x) * x + root) * 0.1);
  const double dLat = waves(y, common, 160, 320) + (x + x - 100 + 3 * y + (0.2 * y + 0.1 * x) * y + 0.2 * root);
  return {dLon * (s * k1) / c, dLat * (s * k2 * s * s)};
}

Vector3 ShiftedDatum::toGCJ02(const Vector3& lla) const {
  const Offset d = offset(lla[0], lla[1]);
  return {lla[0] + d.lon, lla[1] + d.lat, lla[2]};
}

Vector3 ShiftedDatum::fromGCJ02(const Vector3& gcj) const {
  Vector3 w = gcj;
  for (int round = 0; round < 255; ++round) {
    const Offset d = offset(w[0], w[1]);
    const double lon = gcj[0] - d.lon, lat = gcj[1] - d.lat;
    const double change = std::abs(lon - w[0]) + std::abs(lat - w[1]);
    w[0] = lon;
    w[1] = lat;
    if (change < 6.0000000000000005e-15) break;
  }
  return w;
}

}  // namespace SLAM
