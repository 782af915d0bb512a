// SPDX-License-Identifier: Apache-2.0
#include "stores/mesh/mesh2d.h"

#include <algorithm>
#include <cmath>

#include "frame/numbers.h"

namespace Simulation {

Mesh2D& Mesh2D::instance() {
  static Mesh2D mesh;
  return mesh;
}

bool Mesh2D::addNode(int32_t id, double x, double y) {
  const std::size_t before = nodeMap.size();
  nodeMap.try_emplace(nodeMap.end(), id, Node_t{id, x, y, {}});  // the ids of a file mostly ascend
  return nodeMap.size() > before;
}

bool Mesh2D::addElement(int32_t id, std::span<const int32_t> nodes) {
  const std::size_t before = elementMap.size();
  elementMap.try_emplace(elementMap.end(), id, Element_t{id, {nodes.begin(), nodes.end()}});
  return elementMap.size() > before;
}

void Mesh2D::clear() { *this = Mesh2D(); }

void Mesh2D::initBuild() {
  fullRange = nodeMap.empty() ? Range{} : Range{kInfinity, -kInfinity, kInfinity, -kInfinity};
  for (auto& [id, node] : nodeMap) {
    node.elements.clear();
    fullRange.xMin = std::min(fullRange.xMin, node.x);
    fullRange.xMax = std::max(fullRange.xMax, node.x);
    fullRange.yMin = std::min(fullRange.yMin, node.y);
    fullRange.yMax = std::max(fullRange.yMax, node.y);
  }
  for (const auto& [id, element] : elementMap)
    for (const int32_t node : element.nodes)
      if (const auto place = nodeMap.find(node); place != nodeMap.end()) place->second.elements.push_back(&element);
  shownRange = fullRange;
  show([](const Node_t&) { return true; });
}

void Mesh2D::setCurrentRange(const Range& range) {
  shownRange = {std::min(range.xMin, range.xMax), std::max(range.xMin, range.xMax), std::min(range.yMin, range.yMax),
                std::max(range.yMin, range.yMax)};
  show([this](const Node_t& node) { return shownRange.holds(node); });
}

template <class Shows>
void Mesh2D::show(Shows&& shows) {
  visible.clear();
  std::vector<PointGrid::Point> points;
  for (const auto& [id, node] : nodeMap) {
    if (!shows(node)) continue;
    points.push_back({node.x, node.y, static_cast<uint32_t>(visible.size())});
    visible.push_back(&node);
  }
  grid = PointGrid(std::move(points));
}

int64_t Mesh2D::placeOf(int32_t id) const {
  const auto place =
      std::lower_bound(visible.begin(), visible.end(), id, [](const Node_t* node, int32_t i) { return node->id < i; });
  return place != visible.end() && (*place)->id == id ? place - visible.begin() : -1;
}

Mesh2D::Nearest Mesh2D::findNearestNode(double x, double y) const {
  constexpr double kFarthest = 1.449459118e+308;  // of a square
  const PointGrid::Nearest found = grid.nearest(x, y, kFarthest);
  return {found.index == PointGrid::kNone ? 0 : visible[found.index]->id, std::sqrt(found.square)};
}

}  // namespace Simulation
