// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>
#include <limits>

#include "network/layers/kind_table.h"
#include "network/layers/root_of_squares.h"
#include "orvane/network_layer.h"

namespace NetWork {
namespace {

/// A window layer during a pass, in the types of indices.
struct Grid {
  explicit Grid(NetLayer_s& layer) : l(static_cast<NetPoolLayer_s&>(layer)) {}

  NetPoolLayer_s& l;
  std::size_t start = size(l.startIndex);
  std::size_t width = size(l.inputCol), windowRow = size(l.windowRow), windowCol = size(l.windowCol);
  std::size_t moveRow = size(l.moveRow), moveCol = size(l.moveCol);
  std::size_t cols = (width - windowCol) / moveCol + 1, rows = l.size() / cols;
  std::size_t cells = windowRow * windowCol;

  static std::size_t size(int32_t n) { return static_cast<std::size_t>(n); }

  /// f(place of the output in all samples, first cell of its window in those of the input).
  template <class F>
  void forOutputs(const F& f) const {
    std::size_t place = 0;
    for (std::size_t s = 0; s < size(l.samples); ++s)
      for (std::size_t r = 0; r < rows; ++r)
        for (std::size_t c = 0; c < cols; ++c)
          f(place++, s * l.input1->size() + start + r * moveRow * width + c * moveCol);
  }

  /// f(cell of the input) for the window that begins at `first`.
  template <class F>
  void forWindow(std::size_t first, const F& f) const {
    for (std::size_t r = 0; r < windowRow; ++r)
      for (std::size_t c = 0; c < windowCol; ++c) f(first + r * width + c);
  }
};

/// Row by row of the output, one cell of the kernel after another, so that the inner loop runs along the row.
struct Convolution {
  /// f(first output of a row, first cell of the input under kernel entry k, k).
  template <class F>
  static void forRows(const Grid& g, const F& f) {
    for (std::size_t s = 0; s < Grid::size(g.l.samples); ++s)
      for (std::size_t r = 0; r < g.rows; ++r)
        for (std::size_t k = 0; k < g.cells; ++k)
          f(s * g.l.size() + r * g.cols,
            s * g.l.input1->size() + g.start + (r * g.moveRow + k / g.windowCol) * g.width + k % g.windowCol, k);
  }
  static void forward(NetLayer_s& layer) {
    const Grid g(layer);
    const double *x = layer.input1->y, *kernel = layer.var1->value.data();
    std::fill_n(layer.y, layer.size() * Grid::size(layer.samples), *layer.var2->value.data());
    forRows(g, [&](std::size_t out, std::size_t in, std::size_t k) {
      double* __restrict y = layer.y + out;
      for (std::size_t c = 0; c < g.cols; ++c) y[c] += kernel[k] * x[in + c * g.moveCol];
    });
  }
  static void backward(NetLayer_s& layer) {
    const Grid g(layer);
    const double *x = layer.input1->y, *kernel = layer.var1->value.data(), *dy = layer.dy;
    double *dx = layer.input1->dy, *dKernel = layer.var1->grad.data();
    forRows(g, [&](std::size_t out, std::size_t in, std::size_t k) {
      double sum = 0;
      for (std::size_t c = 0; c < g.cols; ++c) {
        sum += dy[out + c] * x[in + c * g.moveCol];
        dx[in + c * g.moveCol] += dy[out + c] * kernel[k];
      }
      dKernel[k] += sum;
    });
    for (std::size_t p = 0; p < layer.size() * Grid::size(layer.samples); ++p) *layer.var2->grad.data() += dy[p];
  }
};

/// Pools that take one cell: `chosen` keeps which.
template <class Choose>
struct PoolOne {
  static void forward(NetLayer_s& layer) {
    const Grid g(layer);
    const double* x = layer.input1->y;
    g.forOutputs([&](std::size_t place, std::size_t first) {
      const std::size_t cell = Choose::cell(g, x, first);
      g.l.chosen[place] = static_cast<int32_t>(cell - first);
      layer.y[place] = x[cell];
    });
  }
  static void backward(NetLayer_s& layer) {
    const Grid g(layer);
    g.forOutputs([&](std::size_t place, std::size_t first) {
      layer.input1->dy[first + Grid::size(g.l.chosen[place])] += layer.dy[place];
    });
  }
};

template <class Better>
struct Extreme {
  static std::size_t cell(const Grid& g, const double* x, std::size_t first) {
    std::size_t best = first;
    g.forWindow(first, [&](std::size_t p) {
      if (Better{}(x[p], x[best])) best = p;
    });
    return best;
  }
};

/// The window in the records of the layer, each with its distance from the first cell.
void gather(const Grid& g, const double* x, std::size_t first) {
  auto cell = g.l.windowCells.begin();
  g.forWindow(first, [&](std::size_t p) { **cell++ = {x[p], static_cast<int32_t>(p - first)}; });
}

struct Median {
  /// A total order: NaN above all numbers, the first of equals first.
  static bool below(const std::unique_ptr<NetPoolLayer_s::Cell>& a, const std::unique_ptr<NetPoolLayer_s::Cell>& b) {
    const bool aNaN = std::isnan(a->value), bNaN = std::isnan(b->value);
    if (aNaN || bNaN || a->value == b->value) return aNaN == bNaN ? a->index < b->index : bNaN;
    return a->value < b->value;
  }
  static std::size_t cell(const Grid& g, const double* x, std::size_t first) {
    gather(g, x, first);
    const auto middle = g.l.windowCells.begin() + static_cast<std::ptrdiff_t>((g.cells - 1) / 2);
    std::nth_element(g.l.windowCells.begin(), middle, g.l.windowCells.end(), below);
    return first + Grid::size((*middle)->index);
  }
};

struct Stochastic {
  static std::size_t cell(const Grid& g, const double*, std::size_t first) {
    const std::size_t k = (uint64_t{(*g.l.rng)()} * g.cells) >> 32;
    return first + k / g.windowCol * g.width + k % g.windowCol;
  }
};

/// Pools over all cells: F is made from a window and gives its value and the derivative by a cell.
template <class F>
struct PoolAll {
  static void forward(NetLayer_s& layer) {
    const Grid g(layer);
    g.forOutputs([&](std::size_t place, std::size_t first) { layer.y[place] = F(g, layer.input1->y, first).value(); });
  }
  static void backward(NetLayer_s& layer) {
    const Grid g(layer);
    const double* x = layer.input1->y;
    g.forOutputs([&](std::size_t place, std::size_t first) {
      const F window(g, x, first);
      g.forWindow(first, [&](std::size_t p) { layer.input1->dy[p] += layer.dy[place] * window.slope(x[p]); });
    });
  }
};

class Mean {
 public:
  Mean(const Grid& g, const double* x, std::size_t first) : count(static_cast<double>(g.cells)) {
    g.forWindow(first, [&](std::size_t p) { sum += x[p]; });
  }
  double value() const { return sum / count; }
  double slope(double) const { return 1 / count; }

 private:
  double count, sum = 0;
};

class Norm2 {
 public:
  Norm2(const Grid& g, const double* x, std::size_t first)
      : count(static_cast<double>(g.cells)),
        norm(rootOfSquares([&](const auto& f) { g.forWindow(first, [&](std::size_t p) { f(x[p]); }); })) {}
  double value() const { return norm / count; }
  double slope(double x) const { return norm == 0 ? 0 : x / norm / count; }

 private:
  double count, norm;
};

class Variance {
 public:
  Variance(const Grid& g, const double* x, std::size_t first)
      : count(static_cast<double>(g.cells)), mean(Mean(g, x, first).value()) {
    g.forWindow(first, [&](std::size_t p) { squares += (x[p] - mean) * (x[p] - mean); });
  }
  double value() const { return squares / count; }
  double slope(double x) const { return 2 * (x - mean) / count; }

 private:
  double count, mean, squares = 0;
};

template <class F>
consteval LayerKind pool(int32_t code, std::string_view name) {
  return {code, name, Wiring::kPool, F::forward, F::backward};
}

constexpr LayerKind kWindowKinds[] = {
    {ORVANE_LAYER_CONVOLUTION, "Convolution", Wiring::kConvolution, Convolution::forward, Convolution::backward},
    pool<PoolOne<Extreme<std::greater<>>>>(ORVANE_LAYER_POOL_MAX, "PoolMax"),
    pool<PoolAll<Mean>>(ORVANE_LAYER_POOL_MEAN, "PoolMean"),
    pool<PoolOne<Extreme<std::less<>>>>(ORVANE_LAYER_POOL_MIN, "PoolMin"),
    pool<PoolAll<Norm2>>(ORVANE_LAYER_POOL_NORM2, "PoolNorm2"),
    pool<PoolOne<Stochastic>>(ORVANE_LAYER_POOL_STOCHASTIC, "PoolStochastic"),
    pool<PoolOne<Median>>(ORVANE_LAYER_POOL_MEDIAN, "PoolMedian"),
    pool<PoolAll<Variance>>(ORVANE_LAYER_POOL_VAR, "PoolVar"),
};

}  // namespace

std::span<const LayerKind> windowKinds() { return kWindowKinds; }

}  // namespace NetWork
