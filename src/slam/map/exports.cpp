// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <functional>

#include "orvane/map_coordinates.h"
#include "slam/map/datum.h"
#include "slam/map/ellipsoid.h"

using namespace SLAM;

namespace {

Vector3 pointAt(const double* points) { return {points[0], points[1], points[2]}; }

// Each point is read before its place is written, so that a batch may be turned in place.
template <class Map>
void forPoints(const double* in, double* out, int32_t count, Map&& map) {
  for (int32_t i = 0; i < count; ++i, in += 3, out += 3) {
    const Vector3 image = map(pointAt(in));
    std::copy(image.begin(), image.end(), out);
  }
}

// To LLA a few points at once, each first brought to ECEF.
template <class Map>
void toLLA(const double* in, double* out, int32_t count, const Ellipsoid& ellipsoid, Map&& toECEF) {
  std::array<Vector3, Ellipsoid::kAtOnce> points;
  for (int32_t left = count; left > 0;) {
    const auto some = std::min<int32_t>(left, Ellipsoid::kAtOnce);
    const std::span<Vector3> block(points.data(), static_cast<std::size_t>(some));
    for (Vector3& p : block) p = toECEF(pointAt(in)), in += 3;
    ellipsoid.toLLA(block);
    for (const Vector3& p : block) out = std::copy(p.begin(), p.end(), out);
    left -= some;
  }
}

}  // namespace

void slam_coorLLAtoECEF(const double* in, double* out, int32_t count, double a, double e) {
  forPoints(in, out, count, [ellipsoid = Ellipsoid(a, e)](const Vector3& p) { return ellipsoid.toECEF(p); });
}

void slam_coorECEFtoLLA(const double* in, double* out, int32_t count, double a, double e) {
  toLLA(in, out, count, Ellipsoid(a, e), std::identity());
}

void slam_coorECEFtoENU(const double* origin, const double* in, double* out, int32_t count, double a, double e) {
  const LocalFrame frame(pointAt(origin), Ellipsoid(a, e));
  forPoints(in, out, count, [&](const Vector3& p) { return frame.toENU(p); });
}

void slam_coorENUtoECEF(const double* origin, const double* in, double* out, int32_t count, double a, double e) {
  const LocalFrame frame(pointAt(origin), Ellipsoid(a, e));
  forPoints(in, out, count, [&](const Vector3& p) { return frame.toECEF(p); });
}

void slam_coorLLAtoENU(const double* origin, const double* in, double* out, int32_t count, double a, double e) {
  const Ellipsoid ellipsoid(a, e);
  const LocalFrame frame(pointAt(origin), ellipsoid);
  forPoints(in, out, count, [&](const Vector3& p) { return frame.toENU(ellipsoid.toECEF(p)); });
}

void slam_coorENUtoLLA(const double* origin, const double* in, double* out, int32_t count, double a, double e) {
  const Ellipsoid ellipsoid(a, e);
  const LocalFrame frame(pointAt(origin), ellipsoid);
  toLLA(in, out, count, ellipsoid, [&](const Vector3& p) { return frame.toECEF(p); });
}

void slam_coorGCJ02ToBD09(const double* in, double* out, int32_t count) { forPoints(in, out, count, toBD09); }

void slam_coorBD09ToGCJ02(const double* in, double* out, int32_t count) { forPoints(in, out, count, fromBD09); }

void slam_coorLLAtoGCJ02(const double* in, double* out, int32_t count, double lonCentre, double latCentre, double a,
                         double e) {
  forPoints(in, out, count,
            [datum = ShiftedDatum(lonCentre, latCentre, a, e)](const Vector3& p) { return datum.toGCJ02(p); });
}

void slam_coorGCJ02toLLA(const double* in, double* out, int32_t count, double lonCentre, double latCentre, double a,
                         double e) {
  forPoints(in, out, count,
            [datum = ShiftedDatum(lonCentre, latCentre, a, e)](const Vector3& p) { return datum.fromGCJ02(p); });
}

double slam_coorDistByLLA(const double* p, const double* q, double a, double e) {
  return lengthOfPath(pointAt(p), pointAt(q), Ellipsoid(a, e));
}
