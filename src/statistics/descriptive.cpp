// SPDX-License-Identifier: Apache-2.0
#include "statistics/descriptive.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "frame/numbers.h"
#include "statistics/families.h"
#include "statistics/order.h"

namespace Statistics {
namespace {

double square(double x) { return x * x; }
double sizeOf(std::span<const double> x) { return static_cast<double>(x.size()); }

double reducedAngle(double angle) {
  constexpr double kTurn = 2 * std::numbers::pi;
  const double rest = std::remainder(angle, kTurn);
  return rest < 0 ? std::abs(rest + kTurn) : rest;
}

}  // namespace

double calcMean(std::span<const double> x) {
  double sum = 0;
  for (const double value : x) sum += value;
  return sum / sizeOf(x);
}

CentralSums::CentralSums(std::span<const double> x) : mean(calcMean(x)) {
  for (const double value : x) {
    const double d = value - mean, d2 = d * d;
    second += d2;
    third += d2 * d;
    fourth += d2 * d2;
  }
}

double calcDeviation(std::span<const double> x) {
  return x.size() < 2 ? 0 : std::sqrt(CentralSums(x).second / (sizeOf(x) - 1));
}

double calcMedian(std::span<const double> x) {
  if (x.empty()) return 0;
  std::vector<double> copy(x.begin(), x.end());
  // KEPT: the upper one of two middle values; expected: their mean (kept.csv: Median_upper)
  const auto middle = copy.begin() + static_cast<std::ptrdiff_t>(copy.size() / 2);
  std::nth_element(copy.begin(), middle, copy.end(), ascending);
  return *middle;
}

double calcSkewness(std::span<const double> x) {
  const CentralSums sums(x);
  if (sums.second < 1e-32) return 0;
  const double variance = sums.second / sizeOf(x);
  return sums.third / (sizeOf(x) * variance * std::sqrt(variance));
}

double calcKurtosis(std::span<const double> x) {
  const CentralSums sums(x);
  return sums.fourth / (square(sums.second / sizeOf(x)) * sizeOf(x));
}

// With the angles below a cut one turn further, their sum grows by a turn each: the spread for each cut follows from
// running sums of the distances from the mean.
double calcMeanAngle(std::span<const double> angles) {
  if (angles.empty()) return kNaN;
  constexpr double kTurn = 2 * std::numbers::pi;
  std::vector<double> reduced(angles.size());
  std::transform(angles.begin(), angles.end(), reduced.begin(), reducedAngle);
  reduced = sorted(reduced);
  const double n = sizeOf(reduced), mean = calcMean(reduced);
  double below = 0, leastChange = 0, best = mean;  // the sum of the distances of the angles below the cut
  for (std::size_t cut = 1; cut < reduced.size(); ++cut) {
    below += reduced[cut - 1] - mean;
    const auto moved = static_cast<double>(cut);
    const double change = kTurn * (2 * below + kTurn * moved * (1 - moved / n));
    if (change < leastChange) {
      leastChange = change;
      best = mean + kTurn * moved / n;
    }
  }
  return reducedAngle(best);
}

void sortWithIndex(std::span<double> x, uint32_t* index, bool ascendingOrder) {
  struct Entry {
    double value;
    uint32_t place;
  };
  std::vector<Entry> entries(x.size());
  for (std::size_t i = 0; i < x.size(); ++i) entries[i] = {x[i], static_cast<uint32_t>(i)};
  std::stable_sort(entries.begin(), entries.end(), [ascendingOrder](const Entry& a, const Entry& b) {
    if (ascendingOrder || std::isnan(a.value) || std::isnan(b.value)) return ascending(a.value, b.value);
    return a.value > b.value;
  });
  for (std::size_t i = 0; i < x.size(); ++i) {
    x[i] = entries[i].value;
    index[i] = entries[i].place;
  }
}

void countSegments(std::span<const double> x, std::span<double> centres, std::span<double> counts) {
  if (centres.empty()) return;
  std::fill(counts.begin(), counts.end(), 0.0);
  double low = kInfinity, high = -kInfinity;
  for (const double value : x) {
    low = std::min(low, value);
    high = std::max(high, value);
  }
  const double width = std::max(1e-12, (high - low) / static_cast<double>(centres.size()));
  const std::span<double> edges = centres;  // the upper ends, until the counting is done
  edges[0] = low + width;
  for (std::size_t k = 1; k < edges.size(); ++k) edges[k] = edges[k - 1] + width;
  edges.back() = width + high;
  for (const double value : x) {
    const auto edge = std::upper_bound(edges.begin(), edges.end(), value);
    if (edge != edges.end()) ++counts[static_cast<std::size_t>(edge - edges.begin())];
  }
  centres[0] = low + width / 2;
  for (std::size_t k = 1; k < centres.size(); ++k) centres[k] = width + centres[k - 1];
}

std::size_t normalQQ(std::span<const double> x, double* values, double* ranks, double* normal) {
  constexpr double kSame = 1e-8;
  if (x.size() < 2) return 0;
  const std::vector<double> all = sorted(x);
  std::size_t distinct = 0;
  for (std::size_t from = 0, to; from < all.size(); from = to, ++distinct) {
    to = from + 1;
    while (to < all.size() && all[to] - all[from] < kSame) ++to;
    values[distinct] = all[from];
    ranks[distinct] = static_cast<double>(from + to) / 2 / sizeOf(x);  // the middle of its step
  }
  const CentralSums sums({values, distinct});
  const auto count = static_cast<double>(distinct);
  const double deviation = std::sqrt(sums.second / (distinct >= 5 ? count - 1 : count));
  for (std::size_t i = 0; i < distinct; ++i) normal[i] = normalCDF((values[i] - sums.mean) / deviation);
  return distinct;
}

}  // namespace Statistics
