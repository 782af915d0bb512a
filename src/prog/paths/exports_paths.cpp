// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "frame/handle.h"
#include "orvane/paths.h"
#include "prog/line/shapes.h"
#include "prog/paths/minimum_distance.h"
#include "prog/paths/tsp.h"

template <>
struct NativeOf<ShortestPath> {
  using type = Path::MinimumDistance;
};

template <>
struct NativeOf<TravellingSalesman> {
  using type = Prog::TSP_c;
};

namespace {

Path::EdgeList edgeList(const uint32_t* from, const uint32_t* to, const double* weight, int32_t edges) {
  return {from, to, weight, static_cast<std::size_t>(std::max(edges, 0))};
}

uint8_t handOutPath(const Path::MinimumDistance& search, uint32_t* path, uint32_t* pathLength, double* cost) {
  *cost = search.bestCost();
  if (!search.found()) return 0;
  std::ranges::copy(search.path(), path);
  *pathLength = static_cast<uint32_t>(search.path().size());
  return 1;
}

std::shared_ptr<Prog::TSP_c> tspOf(std::vector<double> weights, std::size_t n) {
  return std::make_shared<Prog::TSP_c>(std::make_shared<const Prog::TSPWeights>(std::move(weights), n));
}

std::shared_ptr<Prog::TSP_c> tspOf(const double* const* rows, std::size_t n) {
  std::vector<double> weights;
  weights.reserve(n * n);
  for (std::size_t i = 0; i < n; ++i) weights.insert(weights.end(), rows[i], rows[i] + n);
  return tspOf(std::move(weights), n);
}

TravellingSalesman* tspAt(const double* positions, int32_t n, int32_t dimensions) {
  const auto at = block(positions, n, dimensions);
  return registeredShared<TravellingSalesman>(tspOf(Prog::distances(at, static_cast<std::size_t>(dimensions)),
                                                    at.size() / static_cast<std::size_t>(dimensions)));
}

}  // namespace

uint8_t progMinimumDistance1(const uint32_t* from, const uint32_t* to, const double* weight, int32_t edges,
                             uint32_t start, uint32_t end, uint32_t* path, uint32_t* pathLength, double* cost) {
  const Path::MinimumDistance search(edgeList(from, to, weight, edges), start, end);
  return handOutPath(search, path, pathLength, cost);
}

uint8_t progMinimumDistance2(const double* matrix, uint32_t n, uint32_t, uint32_t start, uint32_t end, uint32_t* path,
                             uint32_t* pathLength, double* cost) {
  const Path::MinimumDistance search(Path::Matrix{matrix, n}, start, end);
  return handOutPath(search, path, pathLength, cost);
}

ShortestPath* progSP_Create(const uint32_t* from, const uint32_t* to, const double* weight, int32_t edges,
                            uint32_t start, uint32_t end) {
  return registeredShared<ShortestPath>(
      std::make_shared<Path::MinimumDistance>(edgeList(from, to, weight, edges), start, end));
}

ShortestPath* progSP_Create2(const double* matrix, uint32_t n, uint32_t start, uint32_t end) {
  return registeredShared<ShortestPath>(std::make_shared<Path::MinimumDistance>(Path::Matrix{matrix, n}, start, end));
}

double progSP_calcWeight(const ShortestPath* search, const double* weight) { return native(search).costUnder(weight); }

int32_t progSP_getPath(const ShortestPath* search, uint32_t* path) {
  if (path != nullptr) std::ranges::copy(native(search).path(), path);
  return static_cast<int32_t>(native(search).path().size());
}

double progSP_calcSPError(const ShortestPath* search, const uint32_t* path, int32_t count) {
  return native(search).errorOf(span(path, count));
}

TravellingSalesman* api_TSP_initByWeight(const double* const* rows, uint32_t n) {
  return registeredShared<TravellingSalesman>(tspOf(rows, rows == nullptr ? 0 : n));
}

TravellingSalesman* api_TSP_initBy2DPosition(const double* positions, int32_t n) { return tspAt(positions, n, 2); }

TravellingSalesman* api_TSP_initBy3DPosition(const double* positions, int32_t n) { return tspAt(positions, n, 3); }

double api_TSP_calcTSPError(TravellingSalesman* tsp, const uint32_t* tour, int32_t len) {
  return native(tsp).errorOf(span(tour, len));
}

int32_t api_TSP_getPath(TravellingSalesman* tsp, uint32_t* path) {
  native(tsp).solveOnce();
  const std::vector<uint32_t> tour = native(tsp).tour();
  std::ranges::copy(tour, path);
  return static_cast<int32_t>(tour.size());
}

double api_TSP_clacTSP(const double* const* rows, int32_t stride, int32_t n, const uint32_t* tour, int32_t len) {
  return Prog::lengthOf({rows, std::max(stride, 1), std::max(n, 0)}, span(tour, len));
}

double api_Prog_SolveTSP(const double* const* rows, int32_t n, int32_t threads, uint32_t* tour) {
  const auto tsp = tspOf(rows, rows == nullptr ? 0 : static_cast<std::size_t>(std::max(n, 0)));
  const double length = tsp->solve(static_cast<unsigned>(std::max(threads, 1)));
  std::ranges::copy(tsp->tour(), tour);
  return length;
}
