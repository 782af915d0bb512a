// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "slam/matrix3.h"

/// The shifted map datums GCJ-02 and BD-09: longitude and latitude in degrees; the third number stays as it is.
namespace SLAM {

Vector3 toBD09(const Vector3& gcj);
Vector3 fromBD09(const Vector3& bd);

/// GCJ-02 around the centre of a map, on an ellipsoid of semi-major axis a and first eccentricity e.
class ShiftedDatum {
 public:
  ShiftedDatum(double lonCentre, double latCentre, double a, double e);

  Vector3 toGCJ02(const Vector3& lla) const;
  Vector3 fromGCJ02(const Vector3& gcj) const;

 private:
  struct Offset {
    double lon, lat;
  };
  Offset offset(double lon, double lat) const;

  double lonCentre, latCentre, square, k1, k2;
};

}  // namespace SLAM
