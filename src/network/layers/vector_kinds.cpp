// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>
#include <span>

#include "network/layers/activation.h"
#include "network/layers/formula.h"
#include "network/layers/root_of_squares.h"
#include "orvane/network_layer.h"

namespace NetWork {
namespace {

using In = std::span<const double>;
using Out = std::span<double>;

/// One sample of a backward pass.
struct Sample {
  In x, y, dy;
  Out dx;
};

double dot(In a, In b) {
  double sum = 0;
  for (std::size_t i = 0; i < a.size(); ++i) sum += a[i] * b[i];
  return sum;
}

double sum(In x) {
  double total = 0;
  for (const double v : x) total += v;
  return total;
}

double mean(In x) { return sum(x) / static_cast<double>(x.size()); }

std::size_t largest(In x) { return static_cast<std::size_t>(std::ranges::max_element(x) - x.begin()); }
std::size_t smallest(In x) { return static_cast<std::size_t>(std::ranges::min_element(x) - x.begin()); }

double length(In x) {
  return rootOfSquares([=](const auto& f) { std::ranges::for_each(x, f); });
}

/// x/|x|.
struct SqrtNorm {
  static void forward(In x, Out y) {
    const double size = length(x);
    for (std::size_t i = 0; i < x.size(); ++i) y[i] = size == 0 ? 0 : x[i] / size;
  }
  static void backward(const Sample& s) {
    const double size = length(s.x), along = dot(s.y, s.dy);
    if (size == 0) return;
    for (std::size_t i = 0; i < s.x.size(); ++i) s.dx[i] += (s.dy[i] - s.y[i] * along) / size;
  }
};

/// x/|x|^2.
struct SquaredNorm {
  static void forward(In x, Out y) {
    const double size = length(x);
    for (std::size_t i = 0; i < x.size(); ++i) y[i] = size == 0 ? 0 : x[i] / size / size;
  }
  static void backward(const Sample& s) {
    const double size = length(s.x), along = 2 * dot(s.y, s.dy);
    if (size == 0) return;
    for (std::size_t i = 0; i < s.x.size(); ++i) s.dx[i] += (s.dy[i] / size - along * s.x[i] / size) / size;
  }
};

struct SoftMax {
  static void forward(In x, Out y) {
    const double top = x[largest(x)];
    vectorised([=] {
      for (std::size_t i = 0; i < x.size(); ++i) y[i] = quickExp(x[i] - top);
    });
    const double total = sum(y);
    for (double& v : y) v /= total;
  }
  static void backward(const Sample& s) {
    const double along = dot(s.y, s.dy);
    for (std::size_t i = 0; i < s.x.size(); ++i) s.dx[i] += s.y[i] * (s.dy[i] - along);
  }
};

/// (x - mean) F(sd), sd^2 = mean of (x - mean)^2.
template <class F>
struct Standardise {
  static double deviation(In x, double centre) {
    const auto visit = [=](const auto& f) {
      for (const double v : x) f(v - centre);
    };
    return rootOfSquares(visit) / std::sqrt(static_cast<double>(x.size()));
  }
  static void forward(In x, Out y) {
    const double centre = mean(x), scale = F::factor(deviation(x, centre));
    for (std::size_t i = 0; i < x.size(); ++i) y[i] = (x[i] - centre) * scale;
  }
  static void backward(const Sample& s) {
    const double sd = deviation(s.x, mean(s.x)), scale = F::factor(sd), centre = mean(s.dy);
    const double along = F::scales(sd) ? dot(s.y, s.dy) / static_cast<double>(s.x.size()) : 0;
    for (std::size_t i = 0; i < s.x.size(); ++i) s.dx[i] += (s.dy[i] - centre - s.y[i] * along) * scale;
  }
};

/// Equal entries have no scale.
struct Zscore {
  static constexpr double kLeast = 1e-16;
  static bool scales(double sd) { return !(sd < kLeast); }
  static double factor(double sd) { return scales(sd) ? 1 / sd : 1; }
};

/// Ba et al. 2016, without gain and bias.
struct Layer {
  static constexpr double kOffset = 1e-6;
  static bool scales(double) { return true; }
  static double factor(double sd) { return 1 / std::hypot(sd, kOffset); }
};

/// (x - min)/(max - min).
struct LineNorm {
  static constexpr double kLeast = 1e-16;
  static double span(In x) { return x[largest(x)] - x[smallest(x)]; }
  static void forward(In x, Out y) {
    const double low = x[smallest(x)], width = span(x);
    for (std::size_t i = 0; i < x.size(); ++i) y[i] = width < kLeast ? x[i] - low : (x[i] - low) / width;
  }
  static void backward(const Sample& s) {
    const bool scaled = !(span(s.x) < kLeast);
    const double width = scaled ? span(s.x) : 1, along = scaled ? dot(s.y, s.dy) : 0;
    for (std::size_t i = 0; i < s.x.size(); ++i) s.dx[i] += s.dy[i] / width;
    s.dx[smallest(s.x)] += (along - sum(s.dy)) / width;
    s.dx[largest(s.x)] -= along / width;
  }
};

struct Max {
  static void forward(In x, Out y) { y[0] = x[largest(x)]; }
  static void backward(const Sample& s) { s.dx[largest(s.x)] += s.dy[0]; }
};

struct Sum {
  static void forward(In x, Out y) { y[0] = sum(x); }
  static void backward(const Sample& s) {
    for (double& d : s.dx) d += s.dy[0];
  }
};

template <class F>
struct VectorLoops {
  static void forward(NetLayer_s& l) {
    const std::size_t m = l.input1->size(), n = l.size();
    for (std::size_t s = 0; s < static_cast<std::size_t>(l.samples); ++s)
      F::forward(In{l.input1->y + s * m, m}, Out{l.y + s * n, n});
  }
  static void backward(NetLayer_s& l) {
    const std::size_t m = l.input1->size(), n = l.size();
    for (std::size_t s = 0; s < static_cast<std::size_t>(l.samples); ++s)
      F::backward({{l.input1->y + s * m, m}, {l.y + s * n, n}, {l.dy + s * n, n}, {l.input1->dy + s * m, m}});
  }
};

template <class F>
consteval LayerKind vector(int32_t code, std::string_view name, Wiring wiring = Wiring::kElement) {
  return {code, name, wiring, VectorLoops<F>::forward, VectorLoops<F>::backward};
}

constexpr LayerKind kVectorKinds[] = {
    vector<SqrtNorm>(ORVANE_LAYER_SQRT_NORM, "SqrtNorm"),
    vector<SquaredNorm>(ORVANE_LAYER_SQUARED_NORM, "SquaredNorm"),
    vector<SoftMax>(ORVANE_LAYER_SOFT_MAX, "SoftMax"),
    vector<Standardise<Zscore>>(ORVANE_LAYER_ZSCORE_NORM, "ZscoreNorm"),
    vector<LineNorm>(ORVANE_LAYER_LINE_NORM, "LineNorm"),
    vector<Standardise<Layer>>(ORVANE_LAYER_LAYER_NORM, "LayerNorm", Wiring::kLayerNorm),
    vector<Max>(ORVANE_LAYER_MAX, "Max", Wiring::kReduce),
    vector<Sum>(ORVANE_LAYER_SUM, "Sum", Wiring::kReduce),
};

}  // namespace

std::span<const LayerKind> vectorKinds() { return kVectorKinds; }

}  // namespace NetWork
