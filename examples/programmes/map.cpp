// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>

#include "svg_plot.h"
#include "tour.h"

namespace {

constexpr double kWidth = 760;
constexpr double kMargin = 40;

std::string fixed(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f", value);
  return text;
}

/// Degrees to the plane: equidistant, true to scale at the middle latitude.
struct Projection {
  explicit Projection(const std::vector<City>& cities) {
    const auto [south, north] = std::minmax_element(
        cities.begin(), cities.end(), [](const City& a, const City& b) { return a.latitude < b.latitude; });
    const auto [west, east] = std::minmax_element(
        cities.begin(), cities.end(), [](const City& a, const City& b) { return a.longitude < b.longitude; });
    low = south->latitude, high = north->latitude, left = west->longitude, right = east->longitude;
    shrink = std::cos((low + high) / 2 * std::numbers::pi / 180);
    scale = (kWidth - 2 * kMargin) / std::max((right - left) * shrink, 1e-9);
  }
  double x(double longitude) const { return kMargin + (longitude - left) * shrink * scale; }
  double y(double latitude) const { return kMargin + (high - latitude) * scale; }
  double height() const { return y(low) + kMargin; }

  double low, high, left, right, shrink, scale;
};

}  // namespace

std::string drawnMap(const std::vector<City>& cities, const Tour& tour) {
  const Projection at(cities);
  std::string svg = "<svg class=\"plot\" viewBox=\"0 0 " + fixed(kWidth) + " " + fixed(at.height()) +
                    "\" role=\"img\" aria-label=\"Map of the tour\">\n<title>Map of the tour</title>\n";
  for (const double longitude : ticks(at.left, at.right, 6))
    svg += "<path class=\"grid\" d=\"M" + fixed(at.x(longitude)) + " 0V" + fixed(at.height()) + "\"/><text x=\"" +
           fixed(at.x(longitude) + 3) + "\" y=\"" + fixed(at.height() - 5) + "\">" + shortNumber(longitude) +
           "°</text>\n";
  for (const double latitude : ticks(at.low, at.high, 5))
    svg += "<path class=\"grid\" d=\"M0 " + fixed(at.y(latitude)) + "H" + fixed(kWidth) + "\"/><text x=\"3\" y=\"" +
           fixed(at.y(latitude) - 4) + "\">" + shortNumber(latitude) + "°</text>\n";
  std::string path;
  for (const uint32_t node : tour.order)
    path += (path.empty() ? "M" : "L") + fixed(at.x(cities[node].longitude)) + " " + fixed(at.y(cities[node].latitude));
  svg += "<path class=\"line s1\" d=\"" + path + "Z\"/>\n";
  for (const City& city : cities) {
    const double x = at.x(city.longitude), y = at.y(city.latitude);
    svg += "<circle class=\"dots s2\" cx=\"" + fixed(x) + "\" cy=\"" + fixed(y) + "\" r=\"3.4\"/>";
    const bool outside = x > kWidth - 90;
    svg += "<text class=\"name\" x=\"" + fixed(outside ? x - 6 : x + 6) + "\" y=\"" + fixed(y - 5) + "\"" +
           (outside ? " text-anchor=\"end\"" : "") + ">" + escaped(city.name) + "</text>\n";
  }
  return svg + "</svg>\n";
}
