// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <vector>

#include "stores/mesh/point_grid.h"

namespace Simulation {

struct Element_t {
  int32_t id;
  std::vector<int32_t> nodes;
};

struct Node_t {
  int32_t id;
  double x, y;
  std::vector<const Element_t*> elements;  ///< those of the last build
};

struct Range {
  double xMin = 0, xMax = 0, yMin = 0, yMax = 0;

  bool holds(const Node_t& node) const { return xMin <= node.x && node.x <= xMax && yMin <= node.y && node.y <= yMax; }
};

/// The one mesh of the process: nodes and elements by id, and what the build step derives from them. The visible nodes
/// stand in ascending order of id.
class Mesh2D {
 public:
  static Mesh2D& instance();

  bool addNode(int32_t id, double x, double y);
  bool addElement(int32_t id, std::span<const int32_t> nodes);
  void clear();

  void initBuild();
  void setCurrentRange(const Range& range);

  const std::map<int32_t, Node_t>& nodes() const { return nodeMap; }
  const std::map<int32_t, Element_t>& elements() const { return elementMap; }
  const Range& range() const { return fullRange; }
  const Range& currentRange() const { return shownRange; }
  std::span<const Node_t* const> visibleNodes() const { return visible; }

  int64_t placeOf(int32_t id) const;  ///< among the visible nodes; -1 when it is not there

  struct Nearest {
    int32_t id;
    double distance;
  };
  Nearest findNearestNode(double x, double y) const;  ///< id 0 when no node is near

 private:
  template <class Shows>
  void show(Shows&& shows);

  std::map<int32_t, Node_t> nodeMap;
  std::map<int32_t, Element_t> elementMap;
  Range fullRange, shownRange;
  std::vector<const Node_t*> visible;
  PointGrid grid;
};

}  // namespace Simulation
