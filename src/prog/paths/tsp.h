// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <vector>

#include "frame/base_data.h"

namespace Prog {

inline constexpr double kNoTour = 1e300;
inline constexpr double kNoEdge = 1e100;  // from here on a weight is no edge

/// Weights between n nodes, and the neighbours of each by ascending weight. Read by all workers, written by none.
class TSPWeights {
 public:
  /// What is no edge, with NaN and minus infinity, is held as plus infinity: no change can make up for it.
  TSPWeights(std::vector<double> rowMajor, std::size_t n);

  double operator()(uint32_t from, uint32_t to) const { return weight[from * n + to]; }
  std::size_t size() const { return n; }
  bool isSymmetric() const { return symmetric; }
  /// Every node has an edge to another one.
  bool isSound() const;
  std::span<const uint32_t> outgoing(uint32_t node) const { return out[node]; }
  std::span<const uint32_t> incoming(uint32_t node) const { return symmetric ? out[node] : in[node]; }
  double lengthOf(std::span<const uint32_t> tour) const;

 private:
  std::vector<double> weight;
  std::size_t n;
  bool symmetric;
  std::vector<std::vector<uint32_t>> out, in;
};

struct TSPNode {
  uint32_t id = 0, previous = 0, next = 0;
};

struct TSPTour {
  double length = kNoTour;
  uint32_t start = 0;  ///< the node it was grown from
  std::vector<uint32_t> order;
};

/// A round tour: grown at both ends from each start node, then improved.
class TSP_c final : public BaseData {
 public:
  explicit TSP_c(std::shared_ptr<const TSPWeights> weights);

  /// Finds the tour; the result does not depend on the number of threads.
  double solve(unsigned threads);
  /// The tour from node 0 on; empty when there is none.
  std::vector<uint32_t> tour() const;
  double bestLength() const { return length; }
  /// Solves on first use.
  void solveOnce();
  double errorOf(std::span<const uint32_t> tour);

  void stop() { stopped = 1; }

  /// Options: with this bit a length that was found from a start node before is not computed again.
  static constexpr uint32_t kReuse = 64;

  /// The working state of one thread: a part of the start nodes.
  class Worker {
   public:
    Worker(const TSP_c& owner, uint32_t first, uint32_t last);
    void run();
    double grow(uint32_t start);

    std::vector<TSPTour> best;  ///< by ascending length, then start

   private:
    void keep(TSPTour tour);

    const TSP_c& owner;
    const TSPWeights& weights;
    uint32_t first, last;
    std::vector<TSPNode> nodes;
    std::vector<uint8_t> visited;
    std::map<uint32_t, double> lengths;  ///< by start node
  };

 private:
  std::shared_ptr<const TSPWeights> weights;
  std::vector<TSPNode> nodes;  ///< the best tour
  double length = kNoTour;
  uint32_t options = 0;
  bool solved = false;
  std::atomic<uint8_t> stopped{0};
};

/// Two-edge exchanges and moves of pieces of up to three nodes, until none shortens the tour. Never longer.
void improve(const TSPWeights& weights, TSPTour& tour);

/// The same after many small local changes, of which those that shorten the tour stay.
void improveFurther(const TSPWeights& weights, TSPTour& tour, const std::atomic<uint8_t>& stopped);

/// A host's matrix by rows; neighbouring weights lie `stride` apart.
struct StridedRows {
  const double* const* rows;
  int32_t stride, n;
};

/// Length of a round tour: 0 up to one node, 1e300 for a node out of range.
double lengthOf(const StridedRows& weights, std::span<const uint32_t> tour);

/// Matrix of distances of points with `dimensions` coordinates each.
std::vector<double> distances(std::span<const double> positions, std::size_t dimensions);

}  // namespace Prog
