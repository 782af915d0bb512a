// SPDX-License-Identifier: Apache-2.0
#include "frame/handle.h"
#include "frame/numbers.h"
#include "orvane/mesh.h"
#include "stores/mesh/mesh_file.h"

using namespace Simulation;

namespace {

Mesh2D& mesh() { return Mesh2D::instance(); }

template <class Items>
int32_t handOutIds(const Items& items, int32_t* out) {
  for (const auto& [id, item] : items) *out++ = id;
  return static_cast<int32_t>(items.size());
}

void handOutRange(const Range& range, double* xMin, double* xMax, double* yMin, double* yMax) {
  *xMin = range.xMin;
  *xMax = range.xMax;
  *yMin = range.yMin;
  *yMax = range.yMax;
}

// Half a mesh is no mesh.
bool loadedOrEmpty(bool loaded) {
  if (!loaded) mesh().clear();
  return loaded;
}

const char* textOf(const char* text) { return text != nullptr ? text : ""; }

}  // namespace

bool mesh2D_addNode(int32_t id, double x, double y) { return mesh().addNode(id, x, y); }

bool mesh2D_addElement(int32_t id, const int32_t* nodeIds, int32_t count) {
  return mesh().addElement(id, span(nodeIds, count));
}

int32_t mesh2D_getNodeSize(void) { return static_cast<int32_t>(mesh().nodes().size()); }

int32_t mesh2D_getElementSize(void) { return static_cast<int32_t>(mesh().elements().size()); }

int32_t mesh2D_getAllNodeID(int32_t* out) { return handOutIds(mesh().nodes(), out); }

int32_t mesh2D_getAllElementID(int32_t* out) { return handOutIds(mesh().elements(), out); }

int32_t mesh2D_getAllElementNodeID(int32_t* out) {
  int32_t count = 0;
  for (const auto& [id, element] : mesh().elements())
    count += mesh2D_getElementNodeID(id, out != nullptr ? out + count : nullptr);
  return count;
}

bool mesh2D_getNodePosition(const int32_t* ids, int32_t count, double* out) {
  bool known = true;
  for (const int32_t id : span(ids, count)) {
    const auto place = mesh().nodes().find(id);
    const bool found = place != mesh().nodes().end();
    *out++ = found ? place->second.x : kNaN;
    *out++ = found ? place->second.y : kNaN;
    known = known && found;
  }
  return known;
}

int32_t mesh2D_getElementNodeID(int32_t id, int32_t* out) {
  const auto place = mesh().elements().find(id);
  if (place == mesh().elements().end()) return 0;
  const std::vector<int32_t>& nodes = place->second.nodes;
  if (out != nullptr) std::copy(nodes.begin(), nodes.end(), out);
  return static_cast<int32_t>(nodes.size());
}

bool mesh2D_getNodeIndex(const int32_t* ids, int32_t count, int32_t* out) {
  for (const int32_t id : span(ids, count)) {
    const int64_t place = mesh().placeOf(id);
    if (place < 0) return false;
    *out++ = static_cast<int32_t>(place);
  }
  return true;
}

void mesh2D_getRange(double* xMin, double* xMax, double* yMin, double* yMax) {
  handOutRange(mesh().range(), xMin, xMax, yMin, yMax);
}

void mesh2D_getCurrentRange(double* xMin, double* xMax, double* yMin, double* yMax) {
  handOutRange(mesh().currentRange(), xMin, xMax, yMin, yMax);
}

void mesh2D_setCurrentRange(double xMin, double xMax, double yMin, double yMax) {
  mesh().setCurrentRange({xMin, xMax, yMin, yMax});
}

int32_t mesh2D_getSortNodePosition(double* outX, double* outY) {
  const auto nodes = mesh().visibleNodes();
  if (outX != nullptr && outY != nullptr)
    for (const Node_t* node : nodes) {
      *outX++ = node->x;
      *outY++ = node->y;
    }
  return static_cast<int32_t>(nodes.size());
}

void mesh2D_initBuild(void) { mesh().initBuild(); }

int32_t mesh2D_findNearestNodeID(double x, double y, double* distance) {
  const Mesh2D::Nearest found = mesh().findNearestNode(x, y);
  *distance = found.distance;
  return found.id;
}

bool mesh2D_loadNode(const char* path, int32_t skipLines, int32_t count) {
  return loadedOrEmpty(loadNodes(mesh(), textOf(path), skipLines, count));
}

bool mesh2D_loadElement(const char* path, int32_t skipLines, int32_t count, int32_t nodesPerElement) {
  return loadedOrEmpty(loadElements(mesh(), textOf(path), skipLines, count, nodesPerElement));
}

bool mesh2D_saveNode(const char* path) { return saveNodes(mesh(), textOf(path)); }

bool mesh2D_saveElement(const char* path) { return saveElements(mesh(), textOf(path)); }
