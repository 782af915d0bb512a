// SPDX-License-Identifier: Apache-2.0
#include "prog/paths/tsp.h"

#include <algorithm>
#include <cmath>
#include <thread>

namespace Prog {

namespace {

constexpr std::size_t kImproved = 16;  // grown tours that are improved

bool shorter(const TSPTour& a, const TSPTour& b) {
  return a.length < b.length || (a.length == b.length && a.start < b.start);
}

}  // namespace

TSPWeights::TSPWeights(std::vector<double> rowMajor, std::size_t size) : weight(std::move(rowMajor)), n(size) {
  for (double& w : weight)
    if (!(w < kNoEdge) || w == -INFINITY) w = INFINITY;
  symmetric = true;
  for (std::size_t i = 0; i < n && symmetric; ++i)
    for (std::size_t j = 0; j < i; ++j)
      if (weight[i * n + j] != weight[j * n + i]) symmetric = false;
  const auto sorted = [this](auto&& weightTo) {
    std::vector<std::pair<double, uint32_t>> near;
    for (uint32_t j = 0; j < n; ++j) {
      const double w = weightTo(j);
      if (w < kNoEdge) near.push_back({w, j});
    }
    std::sort(near.begin(), near.end());
    std::vector<uint32_t> order(near.size());
    std::transform(near.begin(), near.end(), order.begin(), [](const auto& entry) { return entry.second; });
    return order;
  };
  for (uint32_t i = 0; i < n; ++i) {
    out.push_back(sorted([&](uint32_t j) { return j == i ? kNoEdge : (*this)(i, j); }));
    if (!symmetric) in.push_back(sorted([&](uint32_t j) { return j == i ? kNoEdge : (*this)(j, i); }));
  }
}

bool TSPWeights::isSound() const {
  return n > 0 && std::none_of(out.begin(), out.end(), [](const auto& list) { return list.empty(); });
}

double TSPWeights::lengthOf(std::span<const uint32_t> tour) const {
  double sum = 0;
  for (std::size_t k = 0; k < tour.size(); ++k) sum += (*this)(tour[k], tour[k + 1 == tour.size() ? 0 : k + 1]);
  return sum;
}

TSP_c::TSP_c(std::shared_ptr<const TSPWeights> w) : weights(std::move(w)) { typeCode = 54; }

TSP_c::Worker::Worker(const TSP_c& from, uint32_t firstNode, uint32_t lastNode)
    : owner(from), weights(*from.weights), first(firstNode), last(lastNode), nodes(weights.size()) {
  for (uint32_t i = 0; i < nodes.size(); ++i) nodes[i].id = i;
}

void TSP_c::Worker::keep(TSPTour tour) {
  if (best.size() == kImproved && !shorter(tour, best.back())) return;
  best.insert(std::upper_bound(best.begin(), best.end(), tour, shorter), std::move(tour));
  if (best.size() > kImproved) best.pop_back();
}

void TSP_c::Worker::run() {
  for (uint32_t start = first; start < last && !owner.stopped; ++start) {
    const double length = grow(start);
    if (!(length < kNoTour)) continue;
    TSPTour tour{length, start, {}};
    if (best.size() == kImproved && !shorter(tour, best.back())) continue;
    uint32_t node = start;
    do {
      tour.order.push_back(node);
      node = nodes[node].next;
    } while (node != start);
    keep(std::move(tour));
  }
}

// Grows a tour at its head, over incoming weights, and its tail, over outgoing ones; the nearer of the two candidates
// is taken, the tail's when both are as near.
double TSP_c::Worker::grow(uint32_t start) {
  const auto known = lengths.find(start);
  if ((owner.options & kReuse) != 0 && known != lengths.end() && known->second < kNoEdge) return known->second;
  double& result = lengths[start] = kNoTour;
  const std::size_t n = weights.size();
  if (n < 2) return result;
  visited.assign(n, 0);
  visited[start] = 1;

  struct Side {
    uint32_t end;
    std::span<const uint32_t> near;
    std::size_t at = 0;
  };
  Side head{start, weights.incoming(start)}, tail{start, weights.outgoing(start)};
  const auto advance = [&](Side& side) {
    while (side.at < side.near.size() && visited[side.near[side.at]]) ++side.at;
    return side.at < side.near.size();
  };
  double length = 0;
  for (std::size_t round = 0; round + 2 < n; ++round) {
    if (owner.stopped) return result;
    if (!advance(head) || !advance(tail)) return result;
    const uint32_t before = head.near[head.at], after = tail.near[tail.at];
    const double headWeight = weights(before, head.end), tailWeight = weights(tail.end, after);
    if (tailWeight > headWeight) {
      nodes[before].next = head.end;
      nodes[head.end].previous = before;
      visited[before] = 1;
      length += headWeight;
      head = {before, weights.incoming(before)};
    } else {
      nodes[after].previous = tail.end;
      nodes[tail.end].next = after;
      visited[after] = 1;
      length += tailWeight;
      tail = {after, weights.outgoing(after)};
    }
  }
  // The last node joins the two ends.
  const auto left = static_cast<uint32_t>(std::find(visited.begin(), visited.end(), 0) - visited.begin());
  const double in = weights(tail.end, left), out = weights(left, head.end);
  nodes[tail.end].next = left;
  nodes[left] = {left, tail.end, head.end};
  nodes[head.end].previous = left;
  if (in < kNoEdge && out < kNoEdge) result = length + in + out;
  return result;
}

double TSP_c::solve(unsigned threads) {
  solved = true;
  length = kNoTour;
  nodes.clear();
  const auto n = static_cast<uint32_t>(weights->size());
  if (!weights->isSound()) return length;

  threads = std::clamp(threads, 1U, n);
  const uint32_t part = (n + threads - 1) / threads;
  std::vector<Worker> workers;
  for (uint32_t first = 0; first < n; first += part) workers.emplace_back(*this, first, std::min(first + part, n));
  const auto inParallel = [](std::size_t count, auto&& job) {
    std::vector<std::jthread> running;
    for (std::size_t i = 1; i < count; ++i) running.emplace_back([&job, i] { job(i); });
    job(0);
  };
  inParallel(workers.size(), [&](std::size_t i) { workers[i].run(); });

  // The best of all, whoever grew them: the choice, and with it the result, is the same for any number of threads.
  std::vector<TSPTour> best;
  for (Worker& worker : workers) std::move(worker.best.begin(), worker.best.end(), std::back_inserter(best));
  std::sort(best.begin(), best.end(), shorter);
  if (best.size() > kImproved) best.resize(kImproved);
  if (best.empty()) return length;
  const std::size_t shares = std::min<std::size_t>(threads, best.size());
  inParallel(shares, [&](std::size_t share) {
    for (std::size_t i = share; i < best.size(); i += shares)
      if (!stopped) improve(*weights, best[i]);
  });
  TSPTour& winner = *std::min_element(best.begin(), best.end(), shorter);
  improveFurther(*weights, winner, stopped);

  nodes.resize(n);
  for (std::size_t k = 0; k < n; ++k) {
    const uint32_t node = winner.order[k], next = winner.order[(k + 1) % n];
    nodes[node].id = node;
    nodes[node].next = next;
    nodes[next].previous = node;
  }
  length = weights->lengthOf(tour());
  return length;
}

std::vector<uint32_t> TSP_c::tour() const {
  std::vector<uint32_t> order;
  if (nodes.empty()) return order;
  uint32_t node = 0;
  do {
    order.push_back(node);
    node = nodes[node].next;
  } while (node != 0);
  return order;
}

void TSP_c::solveOnce() {
  if (!solved) solve(std::max(1U, std::thread::hardware_concurrency()));
}

double TSP_c::errorOf(std::span<const uint32_t> given) {
  solveOnce();
  if (nodes.empty() || given.size() != nodes.size()) return kNoTour;
  std::vector<uint8_t> seen(nodes.size(), 0);
  for (uint32_t node : given) {
    if (node >= nodes.size() || seen[node]) return kNoTour;
    seen[node] = 1;
  }
  const double itsLength = weights->lengthOf(given);
  return itsLength < kNoTour ? itsLength - length : kNoTour;
}

double lengthOf(const StridedRows& weights, std::span<const uint32_t> tour) {
  if (tour.size() <= 1) return 0;
  double sum = 0;
  for (std::size_t k = 0; k < tour.size(); ++k) {
    const uint32_t from = tour[k], to = tour[k + 1 == tour.size() ? 0 : k + 1];
    if (from >= static_cast<uint32_t>(weights.n) || to >= static_cast<uint32_t>(weights.n)) return kNoTour;
    sum += weights.rows[from][static_cast<std::size_t>(to) * static_cast<std::size_t>(weights.stride)];
  }
  return sum;
}

std::vector<double> distances(std::span<const double> positions, std::size_t dimensions) {
  const std::size_t n = positions.size() / dimensions;
  std::vector<double> weight(n * n, 0.0);
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t j = 0; j < n; ++j) {
      if (i == j) continue;
      double sum = 0;
      for (std::size_t d = 0; d < dimensions; ++d)
        sum += std::pow(positions[i * dimensions + d] - positions[j * dimensions + d], 2.0);
      weight[i * n + j] = std::sqrt(sum);
    }
  return weight;
}

}  // namespace Prog
