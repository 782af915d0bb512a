// SPDX-License-Identifier: Apache-2.0
#include <orvane/map_coordinates.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "draw.h"
#include "page.h"
#include "sections.h"

namespace {

// The customary centre of the map and the ellipsoid of Krasovsky.
constexpr double kLongitude = 105, kLatitude = 35, kKrasovsky = 6378245, kFlat = 0.081813333333334;

/// One place in both datums, and back.
struct Shifted {
  explicit Shifted(double longitude, double latitude) : lla{longitude, latitude, 0} {
    slam_coorLLAtoGCJ02(lla, gcj, 1, kLongitude, kLatitude, kKrasovsky, kFlat);
    slam_coorGCJ02ToBD09(gcj, bd, 1);
    double half[3];
    slam_coorBD09ToGCJ02(bd, half, 1);
    slam_coorGCJ02toLLA(half, back, 1, kLongitude, kLatitude, kKrasovsky, kFlat);
  }
  double metres(const double* to) const {
    double enu[3];
    slam_coorLLAtoENU(lla, to, enu, 1, kSemiMajor, kEccentricity);
    return std::hypot(enu[0], enu[1]);
  }
  double lla[3], gcj[3], bd[3], back[3];
};

}  // namespace

std::string datumSection() {
  constexpr double kWest = 75, kEast = 135, kSouth = 18, kNorth = 53, kGrid = 2.5, kMagnified = 150;
  Strokes toGCJ, toBD;
  double least = 1e300, most = 0, error = 0;
  for (double latitude = kSouth; latitude <= kNorth; latitude += kGrid)
    for (double longitude = kWest; longitude <= kEast; longitude += kGrid) {
      const Shifted place(longitude, latitude);
      const auto draw = [&](Strokes& strokes, const double* to) {
        strokes.segment(longitude, latitude, longitude + kMagnified * (to[0] - longitude),
                        latitude + kMagnified * (to[1] - latitude));
      };
      draw(toGCJ, place.gcj);
      draw(toBD, place.bd);
      least = std::min(least, place.metres(place.gcj));
      most = std::max(most, place.metres(place.gcj));
      error = std::max(error, place.metres(place.back));
    }
  const auto [x, y] =
      mapAxes({kWest - 2, kEast + 2, "longitude, degrees"}, {kSouth - 2, kNorth + 2, "latitude, degrees"},
              1 / std::cos(kLatitude * std::acos(-1) / 180));
  SvgPlot plot("Offsets of the map datums", x, y);
  plot.line(toBD.xs, toBD.ys, "s8");
  plot.line(toGCJ.xs, toGCJ.ys, "s6");

  std::vector<std::vector<std::string>> rows;
  const struct {
    const char* name;
    double latitude, longitude;
  } towns[] = {{"Beijing", 39.9042, 116.4074},
               {"Shanghai", 31.2304, 121.4737},
               {"Guangzhou", 23.1291, 113.2644},
               {"Chengdu", 30.5728, 104.0668},
               {"Urumqi", 43.8256, 87.6168}};
  for (const auto& town : towns) {
    const Shifted place(town.longitude, town.latitude);
    rows.push_back({town.name, shortNumber(town.longitude, 7), shortNumber(town.latitude, 6),
                    shortNumber(place.metres(place.gcj), 4) + " m", shortNumber(place.metres(place.bd), 4) + " m",
                    shortNumber(std::round(1e9 * place.metres(place.back))) + " nm"});
  }
  std::printf("datums:     offsets of %.0f to %.0f m, there and back within %.1f nm\n", least, most, 1e9 * error);
  return "<h2 id=\"datums\">Two map datums side by side</h2>\n<p>Maps of China show places shifted by waves of some "
         "hundred metres: GCJ-02, and BD-09 on top of it. The way back is an iteration.</p>\n<p class=\"answer\">"
         "GCJ-02 shifts by <strong>" +
         shortNumber(std::round(least)) + " to " + shortNumber(std::round(most)) +
         " m</strong>; through both datums and back a place is off by <strong>" + shortNumber(std::round(1e9 * error)) +
         " nm</strong> at most.</p>\n" +
         figure("datums", legend({{"s6", "GCJ-02"}, {"s8", "BD-09"}}), plot.svg(),
                "Offsets from the true place, " + shortNumber(kMagnified) + " times as long as they are.") +
         table({"Place", "Longitude", "Latitude", "GCJ-02", "BD-09", "There and back"}, rows);
}
