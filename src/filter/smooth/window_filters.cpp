// SPDX-License-Identifier: Apache-2.0
#include "filter/smooth/window_filters.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <queue>
#include <vector>

#include "filter/apply/convolution.h"
#include "filter/apply/sliding_window.h"

namespace Filter {

namespace {

bool copied(std::span<const double> in, double* out, int32_t width) {
  if (width >= 1 && static_cast<std::size_t>(width) < in.size()) return false;
  if (out != in.data()) std::ranges::copy(in, out);
  return true;
}

/// The greater by an order, a NaN passed over.
template <class Order>
auto preferred(Order before) {
  return [before](double a, double b) { return before(a, b) || std::isnan(a) ? b : a; };
}

template <class Op>
void fold(std::span<const double> in, double* out, int32_t width, Op op) {
  if (copied(in, out, width)) return;
  const auto size = static_cast<std::size_t>(width);
  slidingFold(clampedBorder(in, size), size, out, in.size(), op);
}

/// The median of ever more values: the lower half below the upper one, as long or one longer.
class GrowingMedian {
 public:
  void add(double x) {
    lower.push(x);
    upper.push(lower.top());
    lower.pop();
    if (upper.size() > lower.size()) {
      lower.push(upper.top());
      upper.pop();
    }
  }
  double value() const { return lower.size() > upper.size() ? lower.top() : std::midpoint(lower.top(), upper.top()); }

 private:
  // NaN behind every number, so that the order is one.
  static bool less(double a, double b) { return a < b || (std::isnan(b) && !std::isnan(a)); }
  struct Less {
    bool operator()(double a, double b) const { return less(a, b); }
  };
  struct Greater {
    bool operator()(double a, double b) const { return less(b, a); }
  };
  std::priority_queue<double, std::vector<double>, Less> lower;
  std::priority_queue<double, std::vector<double>, Greater> upper;
};

class GrowingMean {
 public:
  void add(double x) {
    sum += x;
    ++count;
  }
  double value() const { return sum / count; }

 private:
  double sum = 0.0, count = 0.0;
};

/// Inner points by `inner`; point i < half by the first i + 1 values and its mirror by the last.
template <class Growing>
void shrinkingEdges(std::span<const double> in, double* out, int32_t width,
                    void (*inner)(std::span<const double>, double*, int32_t)) {
  const std::vector<double> x(in.begin(), in.end());
  const std::size_t half = static_cast<std::size_t>(std::max(width, 0)) / 2, n = x.size();
  if (half < 1 || static_cast<std::size_t>(width) + 1 >= n) return void(std::ranges::copy(x, out));
  inner(x, out, width);
  // KEPT: an edge point takes the values from the end up to itself; expected: as many on either side (kept.csv:
  // Window_edges)
  Growing first, last;
  for (std::size_t i = 0; i < half; ++i) {
    first.add(x[i]);
    last.add(x[n - 1 - i]);
    out[i] = first.value();
    out[n - 1 - i] = last.value();
  }
}

}  // namespace

void slidingMax(std::span<const double> in, double* out, int32_t width) {
  fold(in, out, width, preferred(std::less<>()));
}

void slidingMin(std::span<const double> in, double* out, int32_t width) {
  fold(in, out, width, preferred(std::greater<>()));
}

void slidingMean(std::span<const double> in, double* out, int32_t width) {
  if (copied(in, out, width)) return;
  fold(in, out, width, std::plus<>());
  for (std::size_t i = 0; i < in.size(); ++i) out[i] /= width;
}

void slidingMeanSquared(std::span<const double> in, double* out, int32_t width) {
  if (copied(in, out, width)) return;
  // KEPT: measured from the least value where that is negative; expected: from 0 (kept.csv: MeanSquared_least)
  const double least = std::accumulate(in.begin(), in.end(), 0.0, preferred(std::greater<>()));
  std::vector<double> squares(in.begin(), in.end());
  for (double& value : squares) value = (value - least) * (value - least);
  slidingMean(squares, out, width);
  for (std::size_t i = 0; i < in.size(); ++i) out[i] = std::sqrt(out[i]);
}

void slidingMedian(std::span<const double> in, double* out, int32_t width) {
  if (copied(in, out, width)) return;
  const auto size = static_cast<std::size_t>(width);
  slidingMedian(clampedBorder(in, size), size, out, in.size());
}

void windowMean(std::span<const double> in, double* out, int32_t width) {
  shrinkingEdges<GrowingMean>(in, out, width, slidingMean);
}

void windowMedian(std::span<const double> in, double* out, int32_t width) {
  shrinkingEdges<GrowingMedian>(in, out, width, slidingMedian);
}

void weightedMean(std::span<const double> in, double* out, std::span<const double> weights) {
  const auto n = static_cast<std::ptrdiff_t>(in.size()), size = static_cast<std::ptrdiff_t>(weights.size());
  const std::vector<double> x(in.begin(), in.end());
  if (size == 0) return void(std::ranges::copy(x, out));
  const std::ptrdiff_t half = (size - 1) / 2;
  for (std::ptrdiff_t i = 0; i < n; ++i) {
    if (i >= half && i - half + size <= n) continue;
    const std::ptrdiff_t from = std::max<std::ptrdiff_t>(0, half - i), to = std::min(size, n - i + half);
    double sum = 0.0, total = 0.0;
    for (std::ptrdiff_t k = from; k < to; ++k) {
      sum += weights[static_cast<std::size_t>(k)] * x[static_cast<std::size_t>(i - half + k)];
      total += weights[static_cast<std::size_t>(k)];
    }
    out[i] = sum / total;
  }
  if (size > n) return;
  const double total = std::accumulate(weights.begin(), weights.end(), 0.0);
  const auto inner = static_cast<std::size_t>(n - size + 1);
  correlate(x.data(), weights, out + half, inner);
  for (std::size_t i = 0; i < inner; ++i) out[static_cast<std::size_t>(half) + i] /= total;
}

void weightedMeanReflected(std::span<const double> in, double* out, std::span<const double> weights) {
  const std::size_t n = in.size();
  if (weights.empty() || n == 0) return void(std::ranges::copy(in, out));
  const std::size_t half = (weights.size() - 1) / 2;
  std::vector<double> padded(n + weights.size() - 1);
  for (std::size_t i = 0; i < padded.size(); ++i) {
    const std::size_t at = (i + 2 * n - half % (2 * n)) % (2 * n);
    padded[i] = in[at < n ? at : 2 * n - 1 - at];
  }
  correlate(padded.data(), weights, out, n);
  const double total = std::accumulate(weights.begin(), weights.end(), 0.0);
  for (std::size_t i = 0; i < n; ++i) out[i] /= total;
}

}  // namespace Filter
