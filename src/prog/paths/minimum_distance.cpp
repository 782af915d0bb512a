// SPDX-License-Identifier: Apache-2.0
#include "prog/paths/minimum_distance.h"

#include <algorithm>
#include <tuple>

namespace Path {

namespace {

constexpr uint32_t kNone = 0xffffffff;

/// A heap of four children a node: flatter than two, and its sift reads neighbours in memory.
class Heap {
 public:
  bool empty() const { return items.empty(); }

  void push(PathNode item) {
    std::size_t i = items.size();
    items.push_back(item);
    while (i > 0) {
      const std::size_t parent = (i - 1) / 4;
      if (!(item.cost < items[parent].cost)) break;
      items[i] = items[parent];
      i = parent;
    }
    items[i] = item;
  }

  PathNode pop() {
    const PathNode top = items.front(), last = items.back();
    items.pop_back();
    const std::size_t n = items.size();
    if (n == 0) return top;
    std::size_t i = 0;
    for (;;) {
      const std::size_t first = 4 * i + 1;
      if (first >= n) break;
      std::size_t least = first;
      if (first + 4 <= n) {  // by sums, not by jumps, which nothing could foretell
        const std::size_t left = first + (items[first + 1].cost < items[first].cost),
                          right = first + 2 + (items[first + 3].cost < items[first + 2].cost);
        least = items[right].cost < items[left].cost ? right : left;
      } else {
        for (std::size_t child = first + 1; child < n; ++child)
          if (items[child].cost < items[least].cost) least = child;
      }
      if (!(items[least].cost < last.cost)) break;
      items[i] = items[least];
      i = least;
    }
    items[i] = last;
    return top;
  }

 private:
  std::vector<PathNode> items;
};

}  // namespace

MinimumDistance::MinimumDistance(const EdgeList& list, uint32_t start, uint32_t end) {
  if (list.count > 0 && list.from != nullptr && list.to != nullptr && list.weight != nullptr) {
    // Ids so dense that a table by id is no larger than the edges need none of the sorting.
    uint32_t largest = 0;
    bool sound = true;
    for (std::size_t e = 0; e < list.count; ++e) {
      largest = std::max({largest, list.from[e], list.to[e]});
      sound &= list.weight[e] >= 0;
    }
    if (sound) {
      std::vector<uint32_t> all;
      if (largest / 4 < list.count) {
        places.assign(static_cast<std::size_t>(largest) + 1, kNone);
        for (std::size_t e = 0; e < list.count; ++e) places[list.from[e]] = places[list.to[e]] = 0;
        for (uint32_t id = 0; id < places.size(); ++id) {
          if (places[id] == kNone) continue;
          places[id] = static_cast<uint32_t>(vertices.size());
          vertices.push_back({id, 0});
        }
        plain = vertices.size() == places.size();
      } else {
        all.assign(list.from, list.from + list.count);
        all.insert(all.end(), list.to, list.to + list.count);
        std::sort(all.begin(), all.end());
        all.erase(std::unique(all.begin(), all.end()), all.end());
        for (uint32_t id : all) vertices.push_back({id, 0});
      }
      read(list.count, [&](std::size_t e) {
        return std::tuple{placeOf(list.from[e]), placeOf(list.to[e]), list.weight[e]};
      });
    }
  }
  run(start, end);
}

MinimumDistance::MinimumDistance(const Matrix& matrix, uint32_t start, uint32_t end) {
  const std::size_t n = matrix.weight == nullptr ? 0 : matrix.n, count = n * n;
  bool sound = true;
  for (std::size_t e = 0; e < count; ++e) sound &= matrix.weight[e] >= 0;
  if (sound && count > 0) {
    for (uint32_t id = 0; id < n; ++id) vertices.push_back({id, 0});
    plain = true;
    read(count, [&](std::size_t e) {
      return std::tuple{static_cast<uint32_t>(e / n), static_cast<uint32_t>(e % n), matrix.weight[e]};
    });
  }
  run(start, end);
}

// Sorts the edges by the vertex that they leave, by counting.
template <class Edges>
void MinimumDistance::read(std::size_t count, const Edges& edgeAt) {
  vertices.push_back({kNone, 0});
  for (std::size_t e = 0; e < count; ++e) {
    const auto [from, to, weight] = edgeAt(e);
    if (weight < kNoEdge) ++vertices[from + 1].firstEdge;
  }
  for (std::size_t v = 1; v < vertices.size(); ++v) vertices[v].firstEdge += vertices[v - 1].firstEdge;
  edges.resize(vertices.back().firstEdge);
  std::vector<std::size_t> next(vertices.size());
  for (std::size_t v = 0; v < vertices.size(); ++v) next[v] = vertices[v].firstEdge;
  for (std::size_t e = 0; e < count; ++e) {
    const auto [from, to, weight] = edgeAt(e);
    if (weight < kNoEdge) edges[next[from]++] = {weight, to, static_cast<uint32_t>(e)};
  }
}

uint32_t MinimumDistance::placeOf(uint32_t id) const {
  if (plain) return static_cast<std::size_t>(id) + 1 < vertices.size() ? id : kNone;
  if (!places.empty()) return id < places.size() ? places[id] : kNone;
  if (vertices.empty()) return kNone;
  const auto end = vertices.back().id == kNone ? vertices.end() - 1 : vertices.end();
  const auto found = std::lower_bound(vertices.begin(), end, id,
                                      [](const BasePathVertex& vertex, uint32_t wanted) { return vertex.id < wanted; });
  return found != end && found->id == id ? static_cast<uint32_t>(found - vertices.begin()) : kNone;
}

void MinimumDistance::run(uint32_t start, uint32_t end) {
  if (start == end) {
    cost = 0;
    ids = {start, start};
    return;
  }
  const uint32_t source = placeOf(start), target = placeOf(end);
  if (source != kNone && target != kNone) search(source, target);
}

// Label setting (Dijkstra 1959): a vertex is settled when it leaves the heap for the first time.
void MinimumDistance::search(uint32_t source, uint32_t target) {
  std::vector<BasePath> best(vertices.size() - 1);
  best[source].cost = 0;
  Heap heap;
  heap.push({0, source});
  while (!heap.empty()) {
    const PathNode node = heap.pop();
    if (node.cost > best[node.vertex].cost) continue;  // settled before, at less
    if (node.vertex == target) break;
    const std::size_t last = vertices[node.vertex + 1].firstEdge;
    for (std::size_t e = vertices[node.vertex].firstEdge; e < last; ++e) {
      const double reached = node.cost + edges[e].weight;
      BasePath& there = best[edges[e].to];
      if (!(reached < there.cost)) continue;
      there = {reached, node.vertex, edges[e].index};
      heap.push({reached, edges[e].to});
    }
  }
  cost = best[target].cost;
  if (!found()) return;
  for (uint32_t at = target; at != source; at = best[at].previous) {
    ids.push_back(vertices[at].id);
    used.push_back(best[at].edge);
  }
  ids.push_back(vertices[source].id);
  std::reverse(ids.begin(), ids.end());
  std::reverse(used.begin(), used.end());
}

double MinimumDistance::costUnder(const double* weight) const {
  if (!found()) return kNoPath;
  double sum = 0;
  for (uint32_t edge : used) {
    if (!(weight[edge] < kNoEdge)) return kNoPath;
    sum += weight[edge];
  }
  return sum;
}

double MinimumDistance::errorOf(std::span<const uint32_t> path) const {
  if (!found() || path.empty() || path.front() != ids.front() || path.back() != ids.back()) return kNoPath;
  double sum = 0;
  for (std::size_t k = 1; k < path.size(); ++k) {
    if (path[k] == path[k - 1]) continue;
    const uint32_t from = placeOf(path[k - 1]), to = placeOf(path[k]);
    if (from == kNone || to == kNone) return kNoPath;
    double least = kNoPath;
    for (std::size_t e = vertices[from].firstEdge; e < vertices[from + 1].firstEdge; ++e)
      if (edges[e].to == to) least = std::min(least, edges[e].weight);
    if (!(least < kNoEdge)) return kNoPath;
    sum += least;
  }
  return sum - cost;
}

}  // namespace Path
