// SPDX-License-Identifier: Apache-2.0
#include <orvane/map_coordinates.h>
#include <orvane/rotation.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>

#include "draw.h"
#include "handle.h"
#include "page.h"
#include "sections.h"

namespace {

constexpr double kGravity = 3.986004418e14;     // of the earth, m^3/s^2
constexpr double kEarthTurn = 7.2921158553e-5;  // rad/s
constexpr double kDay = 86400, kStep = 10;      // seconds
constexpr double kLowest = 10;                  // degrees above the horizon from which a pass counts
constexpr double kDegree = std::numbers::pi / 180;

/// The satellite at each step of a day.
struct Track {
  std::vector<double> ecef, lla, enu;  // three numbers a step
  size_t size() const { return ecef.size() / 3; }
  double elevation(size_t k) const {
    return std::atan2(enu[3 * k + 2], std::hypot(enu[3 * k], enu[3 * k + 1])) / kDegree;
  }
};

// On a circle in a plane that is inclined to the equator and stands still among the stars, while the earth turns.
Track trackOf(double radius, double inclination, const double* station) {
  Track track;
  const double rate = std::sqrt(kGravity / (radius * radius * radius));
  const Owned<SO3> plane(slam_SO3_create());
  for (double t = 0; t <= kDay; t += kStep) {
    const double tilt[] = {inclination * kDegree, 0, 0}, turn[] = {0, 0, -kEarthTurn * t};
    slam_SO3_setByAxis(plane.get(), tilt);
    slam_SO3_updateLeftDx(plane.get(), turn);
    double R[9];
    slam_SO3_toR(plane.get(), R);
    const double x = radius * std::cos(rate * t), y = radius * std::sin(rate * t);
    for (int k = 0; k < 9; k += 3) track.ecef.push_back(R[k] * x + R[k + 1] * y);
  }
  track.lla.resize(track.ecef.size());
  track.enu.resize(track.ecef.size());
  const auto count = static_cast<int32_t>(track.size());
  slam_coorECEFtoLLA(track.ecef.data(), track.lla.data(), count, kSemiMajor, kEccentricity);
  slam_coorECEFtoENU(station, track.ecef.data(), track.enu.data(), count, kSemiMajor, kEccentricity);
  return track;
}

struct Pass {
  size_t rise, set, highest;
};

std::vector<Pass> passesOf(const Track& track) {
  std::vector<Pass> passes;
  for (size_t k = 0; k < track.size(); ++k) {
    if (track.elevation(k) < kLowest) continue;
    if (passes.empty() || passes.back().set + 1 < k) passes.push_back({k, k, k});
    Pass& pass = passes.back();
    pass.set = k;
    if (track.elevation(k) > track.elevation(pass.highest)) pass.highest = k;
  }
  return passes;
}

std::string clock(size_t step) {
  const int seconds = static_cast<int>(static_cast<double>(step) * kStep);
  char text[32];
  std::snprintf(text, sizeof text, "%02d:%02d:%02d", seconds / 3600, seconds / 60 % 60, seconds % 60);
  return text;
}

std::string groundTrack(const Track& track, const std::vector<City>& cities, const City& station, double period) {
  Strokes line;
  const auto steps = std::min(track.size(), static_cast<size_t>(3 * period / kStep));
  for (size_t k = 0; k < steps; ++k) {
    if (k > 0 && std::abs(track.lla[3 * k] - track.lla[3 * k - 3]) > 180) line.gap();
    line.add(track.lla[3 * k], track.lla[3 * k + 1]);
  }
  std::vector<double> xs, ys;
  for (const City& city : cities) xs.push_back(city.longitude), ys.push_back(city.latitude);
  SvgPlot plot("Ground track", {-180, 180, "longitude, degrees"}, {-90, 90, "latitude, degrees"});
  plot.line(line.xs, line.ys, "s6");
  plot.dots(xs, ys, "s2");
  plot.dots({station.longitude}, {station.latitude}, "mark");
  return figure(
      "track", legend({{"s6", "point under the satellite"}, {"s2", "cities"}}), plot.svg(),
      "Three revolutions. The earth turns under the orbit, so that each one runs further west. The station is "
      "the ring.");
}

std::string skyPath(const Track& track, const Pass& pass, const City& station) {
  Strokes path, circle;
  for (size_t k = pass.rise; k <= pass.set; ++k) path.add(track.enu[3 * k] / 1000, track.enu[3 * k + 1] / 1000);
  double reach = 0;
  for (size_t k = 0; k < path.xs.size(); ++k) reach = std::max({reach, std::abs(path.xs[k]), std::abs(path.ys[k])});
  const auto [x, y] = mapAxes({-reach, reach, "east, kilometres"}, {-reach, reach, "north, kilometres"}, 1);
  SvgPlot plot("Highest pass", x, y);
  plot.line(path.xs, path.ys, "s6");
  plot.dots({0}, {0}, "mark");
  return figure("pass", "", plot.svg(),
                "The highest pass of the day in the local frame of " + escaped(station.name) + ", seen from above.");
}

// From the station to each city, along the path that is straight in longitude and latitude, and in the local frame.
std::string ways(const std::vector<City>& cities, const City& station) {
  const double from[] = {station.longitude, station.latitude, 0};
  const auto kilometres = [](double metres) { return shortNumber(std::round(metres / 100) / 10, 6) + " km"; };
  std::vector<std::vector<std::string>> rows;
  for (const City& city : cities) {
    const double to[] = {city.longitude, city.latitude, 0};
    double enu[3];
    slam_coorLLAtoENU(from, to, enu, 1, kSemiMajor, kEccentricity);
    rows.push_back({city.name, kilometres(slam_coorDistByLLA(from, to, kSemiMajor, kEccentricity)), kilometres(enu[0]),
                    kilometres(enu[1]), kilometres(enu[2])});
  }
  return "<details><summary>The cities from " + escaped(station.name) +
         "</summary><p>The path runs straight in longitude and latitude. Up is below 0: the earth bends away.</p>" +
         table({"City", "Path", "East", "North", "Up"}, rows) + "</details>\n";
}

}  // namespace

std::string satelliteSection(const std::vector<City>& cities, const City& station, double kilometres,
                             double inclination) {
  const double radius = kSemiMajor + 1000 * kilometres;
  const double period = 2 * std::numbers::pi * std::sqrt(radius * radius * radius / kGravity);
  const double place[] = {station.longitude, station.latitude, 0};
  const Track track = trackOf(radius, inclination, place);
  const std::vector<Pass> passes = passesOf(track);
  double north = 0;
  for (size_t k = 0; k < track.size(); ++k) north = std::max(north, track.lla[3 * k + 1]);

  std::vector<std::vector<std::string>> rows;
  const Pass* highest = nullptr;
  for (const Pass& pass : passes) {
    const double* enu = &track.enu[3 * pass.highest];
    const double azimuth = std::fmod(std::atan2(enu[0], enu[1]) / kDegree + 360, 360);
    rows.push_back({clock(pass.rise), clock(pass.set), shortNumber(std::round(track.elevation(pass.highest)), 3) + "°",
                    shortNumber(std::round(azimuth), 3) + "°",
                    shortNumber(std::round(std::hypot(enu[0], enu[1], enu[2]) / 1000), 5) + " km"});
    if (highest == nullptr || track.elevation(pass.highest) > track.elevation(highest->highest)) highest = &pass;
  }
  std::printf("satellite:  period %.2f min, northernmost %.3f degrees, %zu passes over %s\n", period / 60, north,
              passes.size(), station.name.c_str());

  std::string html =
      "<h2 id=\"satellite\">A satellite over the cities</h2>\n<p>A circular orbit " + shortNumber(kilometres) +
      " km above the equator, inclined by " + shortNumber(inclination) +
      " degrees: made by formula, without the flattening's drift. A rotation puts its plane among the stars, another "
      "one turns the earth below; the positions are then brought to longitude, latitude and altitude and to east, "
      "north and up of a station.</p>\n" +
      formula(
          "x(t) = \\exp(-\\omega t\\, [e_z]_\\times)\\, \\exp(i\\, [e_x]_\\times)\\,"
          " r \\begin{pmatrix} \\cos n t \\\\ \\sin n t \\\\ 0 \\end{pmatrix},\\qquad n = \\sqrt{GM/r^3}") +
      "<p class=\"answer\">One revolution takes <strong>" + shortNumber(period / 60, 4) +
      " minutes</strong>; <strong>" + std::to_string(passes.size()) + "</strong> passes rise above " +
      shortNumber(kLowest) + "° over " + escaped(station.name) + " within a day.</p>\n";
  html += groundTrack(track, cities, station, period);
  if (highest != nullptr) {
    html += skyPath(track, *highest, station);
    html += table({"Rises", "Sets", "Highest", "Azimuth then", "Distance then"}, rows);
  }
  return html + ways(cities, station);
}
