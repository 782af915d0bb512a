// SPDX-License-Identifier: Apache-2.0
#include <orvane/mesh.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

#include "complaint.h"
#include "csv.h"
#include "draw.h"
#include "page.h"
#include "sections.h"

namespace {

constexpr int32_t kDrawn = 900;
constexpr unsigned kMapSeed = 14;
constexpr int32_t kAllLines = std::numeric_limits<int32_t>::max();

// The library says only whether a file is good: what is wrong, and where, is found here.
void load(const std::string& nodes, const std::string& elements) {
  static constexpr double kMost = std::numeric_limits<double>::max(), kIds = kAllLines;
  readRows(nodes, ',', {"id", "x", "y"}, [](const CsvReader& reader, const auto& cells) {
    reader.number(cells[0], -kIds, kIds, "id");
    for (size_t k = 1; k < 3; ++k) reader.number(cells[k], -kMost, kMost, "coordinate");
  });
  readRows(elements, ',', {"id", "first node", "second node", "third node"},
           [](const CsvReader& reader, const auto& cells) {
             for (size_t k = 0; k < 4; ++k) reader.number(cells[k], -kIds, kIds, "id");
           });
  if (!mesh2D_loadNode(nodes.c_str(), 1, kAllLines)) throw Complaint(nodes + ": has an id twice");
  if (!mesh2D_loadElement(elements.c_str(), 1, kAllLines, 3)) throw Complaint(elements + ": has an id twice");
  mesh2D_initBuild();
}

// Each edge of the triangles once; a triangle without one of its nodes is left out.
Strokes edgesOfMesh() {
  std::vector<int32_t> ids(static_cast<size_t>(mesh2D_getElementSize()));
  mesh2D_getAllElementID(ids.data());
  std::vector<std::pair<int32_t, int32_t>> edges;
  for (const int32_t id : ids) {
    int32_t corners[3];
    double places[6];
    mesh2D_getElementNodeID(id, corners);
    if (!mesh2D_getNodePosition(corners, 3, places)) continue;
    for (int k = 0; k < 3; ++k) edges.push_back(std::minmax(corners[k], corners[(k + 1) % 3]));
  }
  std::sort(edges.begin(), edges.end());
  edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
  Strokes strokes;
  for (const auto& [from, to] : edges) {
    const int32_t pair[] = {from, to};
    double p[4];
    mesh2D_getNodePosition(pair, 2, p);
    strokes.segment(p[0], p[1], p[2], p[3]);
  }
  return strokes;
}

}  // namespace

std::string meshSection(const std::vector<City>& cities, const std::string& nodes, const std::string& elements) {
  load(nodes, elements);
  double west, east, south, north;
  mesh2D_getRange(&west, &east, &south, &north);
  const double width = east - west, height = north - south;
  const double left = west + 0.3 * width, right = west + 0.85 * width;
  const double low = south + 0.2 * height, high = south + 0.75 * height;
  mesh2D_setCurrentRange(left, right, low, high);
  std::vector<double> xs(static_cast<size_t>(mesh2D_getNodeSize())), ys(xs.size());
  const auto visible = static_cast<size_t>(mesh2D_getSortNodePosition(xs.data(), ys.data()));
  xs.resize(visible);
  ys.resize(visible);
  if (visible == 0) throw Complaint(nodes + ": no node in the middle of the mesh");

  Strokes ways, box;
  std::mt19937 generator(kMapSeed);
  std::uniform_real_distribution<double> unit(0, 1);
  double farthest = 0;
  for (int32_t k = 0; k < kDrawn; ++k) {
    const double x = left + (right - left) * unit(generator), y = low + (high - low) * unit(generator);
    double distance, place[2];
    const int32_t id = mesh2D_findNearestNodeID(x, y, &distance);
    mesh2D_getNodePosition(&id, 1, place);
    ways.segment(x, y, place[0], place[1]);
    farthest = std::max(farthest, distance);
  }
  for (const auto& [x, y] : {std::pair(left, low), {right, low}, {right, high}, {left, high}, {left, low}})
    box.add(x, y);

  std::vector<std::vector<std::string>> rows;
  for (const City& city : cities) {
    double distance, place[2];
    const int32_t id = mesh2D_findNearestNodeID(city.longitude, city.latitude, &distance);
    mesh2D_getNodePosition(&id, 1, place);
    const bool inside =
        city.longitude >= left && city.longitude <= right && city.latitude >= low && city.latitude <= high;
    rows.push_back({city.name, inside ? "yes" : "no", std::to_string(id), shortNumber(place[0], 5),
                    shortNumber(place[1], 5), shortNumber(distance, 3) + "°"});
  }
  const int32_t nodeCount = mesh2D_getNodeSize(), elementCount = mesh2D_getElementSize();
  std::printf("mesh:       %d nodes, %d triangles, %zu nodes in the current range\n", nodeCount, elementCount, visible);

  const auto [xAxis, yAxis] =
      mapAxes({west - 2, east + 2, "longitude, degrees"}, {south - 2, north + 2, "latitude, degrees"},
              1 / std::cos((south + north) / 2 * std::acos(-1) / 180));
  const Strokes edges = edgesOfMesh();
  SvgPlot plot("Mesh with the nearest nodes", xAxis, yAxis);
  plot.line(ways.xs, ways.ys, "s7");
  plot.line(edges.xs, edges.ys, "s6");
  plot.line(box.xs, box.ys, "s8");
  plot.dots(xs, ys, "mark");
  return "<h2 id=\"mesh\">A mesh and its nearest nodes</h2>\n<p>" + std::to_string(nodeCount) + " nodes and " +
         std::to_string(elementCount) +
         " triangles are loaded from text files. Only the nodes in the current range are visible, and only they are "
         "found: each of " +
         std::to_string(kDrawn) +
         " drawn places is joined to the visible node that is nearest in degrees.</p>\n<p class=\"answer\"><strong>" +
         std::to_string(visible) + "</strong> nodes are in the range; no drawn place is further than <strong>" +
         shortNumber(farthest, 3) + "°</strong> from one.</p>\n" +
         figure("mesh", legend({{"s6", "triangles"}, {"s8", "current range"}, {"s7", "from a place to its node"}}),
                plot.svg(), "Where two fans meet, two nodes are equally near.") +
         "<details><summary>Nearest visible node of each city</summary>" +
         table({"City", "In the range", "Node", "Longitude", "Latitude", "Distance"}, rows) + "</details>\n";
}
