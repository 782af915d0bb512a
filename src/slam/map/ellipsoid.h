// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>

#include "slam/matrix3.h"

namespace SLAM {

/// An ellipsoid of revolution by its semi-major axis in metres and its first eccentricity. Points are longitude and
/// latitude in degrees with the altitude in metres (LLA), or metres from the centre (ECEF).
class Ellipsoid {
 public:
  Ellipsoid(double a, double e) : a(a), square(e * e) {}

  Vector3 toECEF(const Vector3& lla) const;

  /// Turns up to kAtOnce points from ECEF to LLA in their places.
  void toLLA(std::span<Vector3> points) const;

  static constexpr std::size_t kAtOnce = 8;

 private:
  using Lanes = std::array<double, kAtOnce>;

  Lanes axisHeights(const Lanes& z, const Lanes& across) const;
  Vector3 geodetic(const Vector3& ecef, double across, double t) const;

  double a, square;
};

/// East, north and up at an origin.
class LocalFrame {
 public:
  LocalFrame(const Vector3& originLLA, const Ellipsoid& ellipsoid);

  Vector3 toENU(const Vector3& ecef) const;
  Vector3 toECEF(const Vector3& enu) const { return toEarth * enu + origin; }

 private:
  Vector3 origin;  // ECEF
  Matrix3 toLocal, toEarth;
};

/// Length of the path from p to q that runs straight in longitude, latitude and altitude, by its samples.
double lengthOfPath(const Vector3& p, const Vector3& q, const Ellipsoid& ellipsoid);

}  // namespace SLAM
