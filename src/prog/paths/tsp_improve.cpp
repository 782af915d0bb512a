// SPDX-License-Identifier: Apache-2.0
// Improvement of tours: 2-opt with neighbour lists and don't-look bits (Bentley 1992), or-opt (Or 1976), and an
// iterated local search with double bridges of short reach (Martin, Otto, Felten 1991; segment lengths as in Johnson
// and McGeoch 1997). Every change of a symmetric tour is a chain of reversals, so that a failed attempt is undone by
// reversing back.
#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <random>

#include "prog/paths/tsp.h"

namespace Prog {

namespace {

constexpr std::size_t kNeighbours = 10;
constexpr double kGain = 1e-10;  // relative to the tour: what rounding may feign
constexpr double kRounding = 2e-15;
constexpr uint32_t kLongestPiece = 3;
constexpr uint32_t kReach = 50;
constexpr std::size_t kKicksPerNode = 20;
constexpr std::size_t kMostKicks = 200000;
constexpr uint32_t kSeed = 20200923;

/// True when the edges that come are shorter than those that go by more than rounding. The length of a tour whose
/// weights cancel says nothing of it: without this check a search would go round for ever.
bool shorten(std::initializer_list<double> come, std::initializer_list<double> go) {
  long double change = 0, size = 0;
  for (double w : come) change += w, size += std::abs(w);
  for (double w : go) change -= w, size += std::abs(w);
  return std::isinf(change) ? change < 0 : change < -kRounding * size;
}

/// A tour as an array with places and a direction in which it is read.
class Ring {
 public:
  explicit Ring(std::vector<uint32_t>& nodes) : order(nodes), n(static_cast<uint32_t>(nodes.size())), place(n) {
    for (uint32_t k = 0; k < n; ++k) place[order[k]] = k;
  }

  uint32_t next(uint32_t node) const { return turned ? back(node) : forth(node); }
  uint32_t previous(uint32_t node) const { return turned ? forth(node) : back(node); }
  uint32_t ahead(uint32_t node, uint32_t steps) const {
    return order[(place[node] + (turned ? n - steps % n : steps)) % n];
  }
  void turn() { turned = !turned; }

  /// Reverses the path from a on to b. Its complement is reversed instead when that is shorter, and read backwards.
  void reverse(uint32_t a, uint32_t b) {
    uint32_t from = place[turned ? b : a], to = place[turned ? a : b];
    uint32_t count = (to + n - from) % n + 1;
    if (2 * count > n) {
      const uint32_t last = from;
      from = to + 1 == n ? 0 : to + 1;
      to = last == 0 ? n - 1 : last - 1;
      count = n - count;
      turned = !turned;
    }
    for (uint32_t k = count / 2; k > 0; --k) {
      std::swap(order[from], order[to]);
      place[order[from]] = from;
      place[order[to]] = to;
      from = from + 1 == n ? 0 : from + 1;
      to = to == 0 ? n - 1 : to - 1;
    }
  }

  uint32_t size() const { return n; }
  uint32_t at(uint32_t k) const { return order[k]; }

 private:
  uint32_t forth(uint32_t node) const { return order[place[node] + 1 == n ? 0 : place[node] + 1]; }
  uint32_t back(uint32_t node) const { return order[place[node] == 0 ? n - 1 : place[node] - 1]; }

  std::vector<uint32_t>& order;
  uint32_t n;
  std::vector<uint32_t> place;
  bool turned = false;
};

class LocalSearch {
 public:
  LocalSearch(const TSPWeights& w, TSPTour& tour)
      : weights(w),
        ring(tour.order),
        waiting(tour.order.size(), 0),
        least(kGain * std::abs(tour.length) / ring.size()) {}

  void wake(uint32_t node) {
    if (waiting[node]) return;
    waiting[node] = 1;
    queue.push_back(node);
  }

  /// Improves around the woken nodes until nothing helps; the change of the length.
  double run() {
    double change = 0;
    for (std::size_t k = 0; k < queue.size(); ++k) {
      const uint32_t node = queue[k];
      waiting[node] = 0;
      for (double step = improveAt(node); step < 0; step = improveAt(node)) change += step;
    }
    queue.clear();
    return change;
  }

  /// Exchanges two neighbouring pieces behind a node, of lengths p and q; the change of the length.
  double exchange(uint32_t node, uint32_t p, uint32_t q) {
    const uint32_t a = ring.next(node), b = ring.ahead(node, p), c = ring.next(b), d = ring.ahead(node, p + q),
                   after = ring.next(d);
    const double change =
        weights(node, c) + weights(d, a) + weights(b, after) - weights(node, a) - weights(b, c) - weights(d, after);
    reverse(a, d);  // d..c b..a
    reverse(d, c);
    reverse(b, a);
    for (uint32_t end : {node, a, b, c, d, after}) wake(end);
    return change;
  }

  void forget() { undo.clear(); }
  void takeBack() {
    for (; !undo.empty(); undo.pop_back()) {
      const Reversal& last = undo.back();
      if (last.facing != facing) turn();
      ring.reverse(last.b, last.a);
    }
  }

 private:
  /// The path from a to b, as read in the direction `facing`.
  struct Reversal {
    uint32_t a, b;
    bool facing;
  };

  void turn() {
    ring.turn();
    facing = !facing;
  }

  void reverse(uint32_t a, uint32_t b) {
    undo.push_back({a, b, facing});
    ring.reverse(a, b);
  }

  double improveAt(uint32_t node) {
    for (int direction = 0; direction < 2; ++direction) {
      const double change = improveForward(node);
      if (change < 0) return change;
      turn();
    }
    return 0;
  }

  double improveForward(uint32_t a) {
    const uint32_t b = ring.next(a);
    const double old = weights(a, b);
    const auto near = weights.outgoing(a);
    for (std::size_t k = 0; k < std::min(kNeighbours, near.size()); ++k) {
      const uint32_t c = near[k];
      const double gain = old - weights(a, c);
      if (gain <= least) break;
      const uint32_t d = ring.next(c);
      const double change = weights(b, d) - weights(c, d) - gain;
      if (change < -least && shorten({weights(b, d), weights(a, c)}, {weights(c, d), old})) {
        reverse(b, c);
        for (uint32_t end : {a, b, c, d}) wake(end);
        return change;
      }
      const double moved = movePiece(a, b, c, gain);
      if (moved < 0) return moved;
    }
    return 0;
  }

  // The piece e..a, of up to three nodes, goes beside c so that a touches it.
  double movePiece(uint32_t a, uint32_t b, uint32_t c, double gain) {
    uint32_t e = a;
    for (uint32_t count = 1; count <= kLongestPiece && count + 3 <= ring.size(); ++count, e = ring.previous(e)) {
      if (e == c) return 0;
      const uint32_t p = ring.previous(e), d = ring.next(c), f = ring.previous(c);
      const double closed = weights(p, b) - weights(p, e) - gain;
      if (c != p) {  // c a..e d
        const double change = closed + weights(e, d) - weights(c, d);
        if (change < -least &&
            shorten({weights(p, b), weights(a, c), weights(e, d)}, {weights(a, b), weights(p, e), weights(c, d)})) {
          reverse(e, c);
          reverse(c, b);
          for (uint32_t end : {p, b, c, d, e, a}) wake(end);
          return change;
        }
      }
      if (c != b && c != p) {  // f e..a c
        const double change = closed + weights(f, e) - weights(f, c);
        if (change < -least &&
            shorten({weights(p, b), weights(a, c), weights(f, e)}, {weights(a, b), weights(p, e), weights(f, c)})) {
          reverse(e, f);
          reverse(f, b);
          reverse(a, e);
          for (uint32_t end : {p, b, c, f, e, a}) wake(end);
          return change;
        }
      }
    }
    return 0;
  }

  const TSPWeights& weights;
  Ring ring;
  std::vector<uint8_t> waiting;
  std::vector<uint32_t> queue;
  std::vector<Reversal> undo;
  bool facing = false;
  double least;
};

// Moves of pieces alone, their direction kept, for weights that differ by direction.
void improveDirected(const TSPWeights& weights, std::vector<uint32_t>& order) {
  const std::size_t n = order.size();
  const double least = kGain * std::abs(weights.lengthOf(order)) / static_cast<double>(n);
  std::vector<std::size_t> place(n);
  const auto number = [&] {
    for (std::size_t k = 0; k < n; ++k) place[order[k]] = k;
  };
  number();
  for (bool changed = true; changed;) {
    changed = false;
    for (uint32_t a = 0; a < n; ++a) {
      const auto near = weights.outgoing(a);
      for (std::size_t k = 0; k < std::min(kNeighbours, near.size()); ++k) {
        const uint32_t c = near[k];
        for (std::size_t count = 1; count <= kLongestPiece && count + 2 < n; ++count) {
          // p e..a b ... f c: the piece e..a goes between f and c.
          const auto at = [&](std::size_t from, std::size_t steps) { return order[(from + steps) % n]; };
          const std::size_t first = (place[a] + n - (count - 1)) % n;
          const uint32_t e = order[first], p = at(first, n - 1), b = at(place[a], 1), f = at(place[c], n - 1);
          if ((place[c] + n - first) % n <= count) continue;  // c lies in the piece, or follows it
          const double change =
              weights(p, b) + weights(f, e) + weights(a, c) - weights(p, e) - weights(a, b) - weights(f, c);
          if (!(change < -least &&
                shorten({weights(p, b), weights(f, e), weights(a, c)}, {weights(p, e), weights(a, b), weights(f, c)})))
            continue;
          std::rotate(order.begin(), order.begin() + static_cast<std::ptrdiff_t>(first), order.end());
          number();
          std::rotate(order.begin(), order.begin() + static_cast<std::ptrdiff_t>(count),
                      order.begin() + static_cast<std::ptrdiff_t>(place[c]));
          number();
          changed = true;
          break;
        }
      }
    }
  }
}

}  // namespace

void improve(const TSPWeights& weights, TSPTour& tour) {
  if (tour.order.size() < 4) return;
  const TSPTour before = tour;
  if (weights.isSymmetric()) {
    LocalSearch search(weights, tour);
    for (uint32_t node : before.order) search.wake(node);
    search.run();
  } else {
    improveDirected(weights, tour.order);
  }
  tour.length = weights.lengthOf(tour.order);
  if (!(tour.length < before.length)) tour = before;
}

void improveFurther(const TSPWeights& weights, TSPTour& tour, const std::atomic<uint8_t>& stopped) {
  const auto n = static_cast<uint32_t>(tour.order.size());
  if (n < 8 || !weights.isSymmetric()) return;
  const TSPTour before = tour;
  LocalSearch search(weights, tour);
  std::mt19937 random(kSeed);
  const auto below = [&random](uint32_t limit) { return static_cast<uint32_t>(random() % limit); };
  const double least = kGain * std::abs(tour.length);
  const uint32_t reach = std::min(kReach, (n - 2) / 2);
  const std::size_t kicks = std::min(kMostKicks, kKicksPerNode * n);
  for (std::size_t kick = 0; kick < kicks && !stopped; ++kick) {
    search.forget();
    const uint32_t node = below(n), p = 1 + below(reach), q = 1 + below(reach);
    double change = search.exchange(node, p, q);
    change += search.run();
    if (!(change < -least)) search.takeBack();
  }
  tour.length = weights.lengthOf(tour.order);
  if (!(tour.length < before.length)) tour = before;
}

}  // namespace Prog
