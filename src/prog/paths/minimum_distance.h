// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "frame/base_data.h"

namespace Path {

inline constexpr double kNoPath = 1e300;
inline constexpr double kNoEdge = 1e100;  // from here on a weight is no edge

/// A directed edge, among those that leave its vertex.
struct BasePathEdge {
  double weight;
  uint32_t to;     ///< vertex by its place
  uint32_t index;  ///< of the edge as the host gave it
};

/// A vertex: its edges are those from firstEdge to the next vertex's.
struct BasePathVertex {
  uint32_t id;
  std::size_t firstEdge;
};

/// The end of a found path: its cost, and the edge over which it came.
struct BasePath {
  double cost = kNoPath;
  uint32_t previous = 0;  ///< vertex by its place
  uint32_t edge = 0;      ///< as the host gave it
};

/// What waits to be settled.
struct PathNode {
  double cost;
  uint32_t vertex;
};

struct EdgeList {
  const uint32_t *from, *to;
  const double* weight;
  std::size_t count;
};

struct Matrix {
  const double* weight;
  uint32_t n;
};

/// The shortest path between two vertices of a directed graph with non-negative weights. A negative weight or a NaN
/// makes a graph without a path.
class MinimumDistance final : public BaseData {
 public:
  MinimumDistance(const EdgeList& edges, uint32_t start, uint32_t end);
  MinimumDistance(const Matrix& matrix, uint32_t start, uint32_t end);

  bool found() const { return cost < kNoPath; }
  double bestCost() const { return cost; }
  /// Ids from start to end; twice the vertex when both are one.
  const std::vector<uint32_t>& path() const { return ids; }
  /// Cost of the found path under other weights, by the host's numbers of the edges.
  double costUnder(const double* weight) const;
  /// Cost of a path over the cheapest edges between its vertices, less that of the best; 1e300 if it does not lead from
  /// start to end along edges.
  double errorOf(std::span<const uint32_t> path) const;

 private:
  template <class Edges>
  void read(std::size_t count, const Edges& edgeAt);
  uint32_t placeOf(uint32_t id) const;
  void search(uint32_t source, uint32_t target);
  void run(uint32_t start, uint32_t end);

  std::vector<BasePathVertex> vertices;  ///< by ascending id, one more at the end
  std::vector<uint32_t> places;          ///< by id where the ids are dense enough, else empty
  bool plain = false;                    ///< the ids are 0, 1, 2...: each is its vertex's place
  std::vector<BasePathEdge> edges;
  std::vector<uint32_t> ids, used;  ///< of the path: ids of its vertices, host's numbers of its edges
  double cost = kNoPath;
};

}  // namespace Path
