// SPDX-License-Identifier: Apache-2.0
#include "slam/map/ellipsoid.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "special/special_function.h"

namespace SLAM {
namespace {

using SpecialFunction::guardAngle;
using std::numbers::pi;

double radians(double degrees) { return degrees * pi / 180; }
double degrees(double radians) { return radians * 180 / pi; }

struct SineCosine {
  explicit SineCosine(double angle) : sine(std::sin(guardAngle(angle))), cosine(std::cos(guardAngle(angle))) {}
  double sine, cosine;
};

double normalLongitude(double longitude) {
  const double rest = std::fmod(longitude, 360);
  return rest > 180 ? rest - 360 : rest < -180 ? rest + 360 : rest;
}

}  // namespace

Vector3 Ellipsoid::toECEF(const Vector3& lla) const {
  const SineCosine lambda(radians(lla[0])), phi(radians(lla[1]));
  const double n = a / std::sqrt(1 - square * (phi.sine * phi.sine));
  const double across = (n + lla[2]) * phi.cosine;
  return {across * lambda.cosine, across * lambda.sine, ((1 - square) * n + lla[2]) * phi.sine};
}

// Fixed-point iteration for t = Z + e^2 N sin(phi), the height above the point where the normal meets the axis. Points
// are taken together, as the divisions of one would wait for each other; each stops by itself.
Ellipsoid::Lanes Ellipsoid::axisHeights(const Lanes& z, const Lanes& across) const {
  Lanes t = z;
  std::array<int64_t, kAtOnce> stopped{};  // as wide as the numbers, for the vectoriser
  for (int round = 0; round < 16; ++round) {
    int64_t all = 1;
    for (std::size_t i = 0; i < kAtOnce; ++i) {
      const double next = z[i] + t[i] * (square * a) / std::sqrt((1 - square) * t[i] * t[i] + across[i]);
      const double change = std::abs(t[i] - next);
      t[i] = stopped[i] ? t[i] : next;
      stopped[i] = stopped[i] | static_cast<int64_t>(change < 1e-15);
      all &= stopped[i];
    }
    if (all) break;
  }
  return t;
}

Vector3 Ellipsoid::geodetic(const Vector3& ecef, double across, double t) const {
  constexpr double kNearPole = 1.3744467859455345;  // 78.75 degrees: beyond, p loses the digits of the altitude
  const double r = std::sqrt(t * t + across);
  const double latitude = std::atan2(t, std::sqrt(across));
  const double sine = t / r;
  const double n = a / std::sqrt(1 - sine * sine * square);
  const double altitude = std::abs(latitude) < kNearPole ? r - n : r * ecef[2] / t - (1 - square) * n;
  return {degrees(std::atan2(ecef[1], ecef[0])), degrees(latitude), altitude};
}

void Ellipsoid::toLLA(std::span<Vector3> points) const {
  Lanes z{}, across;
  across.fill(1);  // places without a point stop at once
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Vector3& p = points[i];
    z[i] = p[2];
    across[i] = p[0] * p[0] + p[1] * p[1];
  }
  const Lanes t = axisHeights(z, across);
  for (std::size_t i = 0; i < points.size(); ++i) points[i] = geodetic(points[i], across[i], t[i]);
}

LocalFrame::LocalFrame(const Vector3& originLLA, const Ellipsoid& ellipsoid) : origin(ellipsoid.toECEF(originLLA)) {
  const SineCosine lambda(radians(originLLA[0])), phi(radians(originLLA[1]));
  toLocal = {-lambda.sine,
             lambda.cosine,
             0,
             -phi.sine * lambda.cosine,
             -phi.sine * lambda.sine,
             phi.cosine,
             phi.cosine * lambda.cosine,
             phi.cosine * lambda.sine,
             phi.sine};
  toEarth = inverse(toLocal);
}

// East has no part of z, also where z is no finite number.
Vector3 LocalFrame::toENU(const Vector3& ecef) const {
  const Vector3 d = ecef - origin;
  const Matrix3& m = toLocal;
  return {m[0] * d[0] + m[1] * d[1], m[3] * d[0] + m[4] * d[1] + m[5] * d[2], m[6] * d[0] + m[7] * d[1] + m[8] * d[2]};
}

double lengthOfPath(const Vector3& p, const Vector3& q, const Ellipsoid& ellipsoid) {
  const Vector3 first = {normalLongitude(p[0]), std::clamp(p[1], -90.0, 90.0), p[2]};
  const Vector3 last = {normalLongitude(q[0]), std::clamp(q[1], -90.0, 90.0), q[2]};
  const Vector3 way = last - first;
  const double size = std::sqrt(way[0] * way[0] + way[1] * way[1]);  // degrees
  const int32_t segments = size >= 1 ? static_cast<int32_t>(250 * size) : 160;

  const LocalFrame frame(first, ellipsoid);
  Vector3 before = frame.toENU(ellipsoid.toECEF(first));
  double length = 0;
  for (int32_t i = 1; i <= segments; ++i) {
    const double share = static_cast<double>(i) / segments;
    const Vector3 here = frame.toENU(ellipsoid.toECEF(first + share * way));
    const Vector3 step = here - before;
    length += std::sqrt(dot(step, step));
    before = here;
  }
  return length;
}

}  // namespace SLAM
