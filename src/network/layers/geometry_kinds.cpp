// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "frame/numbers.h"
#include "network/layers/kind_table.h"
#include "orvane/network_layer.h"

namespace NetWork {
namespace {

using Vector3 = std::array<double, 3>;

Vector3 vectorAt(const double* p) { return {p[0], p[1], p[2]}; }
double dot(const Vector3& a, const Vector3& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
Vector3 cross(const Vector3& a, const Vector3& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

/// Rotation by the vector a, t = |a| (Rodrigues): y = cos t x + s1 a x x + s2 (a.x) a, s1 = sin t/t,
/// s2 = (1 - cos t)/t^2. Their derivatives by t, divided by t, are -s1, t1 and t2.
class Turn {
 public:
  explicit Turn(const Vector3& a) : a(a) {
    const double square = dot(a, a), t = std::sqrt(square);
    c = std::cos(t);
    if (square < 1) {
      nearZero(square);
      return;
    }
    s1 = std::sin(t) / t;
    s2 = (1 - c) / square;
    t1 = (c - s1) / square;
    t2 = (s1 - 2 * s2) / square;
  }

  Vector3 of(const Vector3& x) const { return mix(x, s1); }
  /// The gradient by x of d.y: the inverse rotation of d.
  Vector3 byX(const Vector3& d) const { return mix(d, -s1); }
  Vector3 byA(const Vector3& x, const Vector3& d) const {
    const Vector3 side = cross(x, d);
    const double ax = dot(a, x), ad = dot(a, d), along = -s1 * dot(d, x) + t1 * dot(a, side) + t2 * ax * ad;
    Vector3 grad;
    for (std::size_t i = 0; i < 3; ++i) grad[i] = along * a[i] + s1 * side[i] + s2 * (ad * x[i] + ax * d[i]);
    return grad;
  }

 private:
  Vector3 mix(const Vector3& x, double sine) const {
    const Vector3 side = cross(a, x);
    const double along = s2 * dot(a, x);
    Vector3 y;
    for (std::size_t i = 0; i < 3; ++i) y[i] = c * x[i] + sine * side[i] + along * a[i];
    return y;
  }

  /// Series in t^2: term k of s1 is (-1)^k t^2k/(2k+1)!, of s2 that over 2k+2; t1 and t2 take the next ones.
  void nearZero(double square) {
    double term = 1;  // (-1)^k t^2k/(2k+1)!
    for (int k = 0; k < 12; ++k) {
      const double n = 2.0 * k;
      s1 += term;
      s2 += term / (n + 2);
      const double next = -term / ((n + 2) * (n + 3));  // without the factor t^2
      t1 += next * (n + 2);
      t2 += next * (n + 2) / (n + 4);
      term = next * square;
    }
  }

  Vector3 a;
  double c, s1 = 0, s2 = 0, t1 = 0, t2 = 0;
};

struct Rotation3D {
  static void forward(NetLayer_s& l) {
    const Turn turn(vectorAt(l.var1->value.data()));
    for (std::size_t p = 0; p < 3 * static_cast<std::size_t>(l.samples); p += 3)
      std::ranges::copy(turn.of(vectorAt(l.input1->y + p)), l.y + p);
  }
  static void backward(NetLayer_s& l) {
    const Turn turn(vectorAt(l.var1->value.data()));
    for (std::size_t p = 0; p < 3 * static_cast<std::size_t>(l.samples); p += 3) {
      const Vector3 d = vectorAt(l.dy + p), dx = turn.byX(d), da = turn.byA(vectorAt(l.input1->y + p), d);
      for (std::size_t i = 0; i < 3; ++i) {
        l.input1->dy[p + i] += dx[i];
        l.var1->grad.data()[i] += da[i];
      }
    }
  }
};

/// Where a row or column of the output lies among those of the input: between low and low + 1, `share` of the way.
struct Position {
  std::size_t low, high;
  double share;
  double byZoom;  ///< derivative of the place by the factor
};

/// n cells from m by the factor z about the centre: place = (i - (n-1)/2)/z + (m-1)/2, held in the grid.
Position position(std::size_t i, std::size_t n, std::size_t m, double z) {
  const double offset = static_cast<double>(i) - 0.5 * static_cast<double>(n - 1), last = static_cast<double>(m - 1);
  const double place = offset / z + 0.5 * last;
  if (!(place > 0)) return {0, 0, place <= 0 ? 0 : kNaN, 0};
  if (place >= last) return {m - 1, m - 1, 0, 0};
  const auto low = static_cast<std::size_t>(place);
  return {low, low + 1, place - static_cast<double>(low), -offset / (z * z)};
}

struct Zoom {
  /// Rows and columns of both grids.
  struct Shape {
    std::size_t rows, cols, newRows, newCols;
  };

  static std::optional<std::size_t> whole(double v, std::size_t divides) {
    if (!(v >= 1 && v <= static_cast<double>(divides)) || v != std::floor(v)) return std::nullopt;
    const auto n = static_cast<std::size_t>(v);
    return divides % n == 0 ? std::optional(n) : std::nullopt;
  }

  static std::optional<Shape> shape(const NetLayer_s& l) {
    const std::size_t m = l.input1->size(), n = l.size();
    const bool square = l.var1->value.size() < 4;
    const double* a = l.var1->value.data();
    const auto rows = whole(square ? std::sqrt(static_cast<double>(m)) : a[2], m);
    const auto newRows = whole(square ? std::sqrt(static_cast<double>(n)) : a[3], n);
    if (!rows || !newRows) return std::nullopt;
    return Shape{*rows, m / *rows, *newRows, n / *newRows};
  }

  static bool fits(const NetLayer_s& l) {
    const std::size_t entries = l.var1->value.size();
    return (entries == 1 || entries == 2 || entries == 4) && shape(l).has_value();
  }

  static std::size_t colFactor(const NetLayer_s& l) { return l.var1->value.size() == 1 ? 0 : 1; }

  /// f(place of the output, first cell of the sample's input, row position, column position).
  template <class F>
  static void forOutputs(const NetLayer_s& l, const Shape& g, const F& f) {
    const double* a = l.var1->value.data();
    std::size_t place = 0;
    for (std::size_t s = 0; s < static_cast<std::size_t>(l.samples); ++s)
      for (std::size_t r = 0; r < g.newRows; ++r)
        for (std::size_t c = 0; c < g.newCols; ++c)
          f(place++, s * l.input1->size(), position(r, g.newRows, g.rows, a[0]),
            position(c, g.newCols, g.cols, a[colFactor(l)]));
  }

  static void forward(NetLayer_s& l) {
    const auto grid = shape(l);
    if (!grid) return static_cast<void>(std::fill_n(l.y, l.size() * static_cast<std::size_t>(l.samples), kNaN));
    const double* x = l.input1->y;
    forOutputs(l, *grid, [&](std::size_t place, std::size_t first, const Position& r, const Position& c) {
      const double *top = x + first + r.low * grid->cols, *bottom = x + first + r.high * grid->cols;
      l.y[place] = (1 - r.share) * ((1 - c.share) * top[c.low] + c.share * top[c.high]) +
                   r.share * ((1 - c.share) * bottom[c.low] + c.share * bottom[c.high]);
    });
  }

  static void backward(NetLayer_s& l) {
    const auto grid = shape(l);
    if (!grid) return;
    const double* x = l.input1->y;
    double *dx = l.input1->dy, *da = l.var1->grad.data();
    forOutputs(l, *grid, [&](std::size_t place, std::size_t first, const Position& r, const Position& c) {
      const std::size_t top = first + r.low * grid->cols, bottom = first + r.high * grid->cols;
      const double d = l.dy[place];
      dx[top + c.low] += d * (1 - r.share) * (1 - c.share);
      dx[top + c.high] += d * (1 - r.share) * c.share;
      dx[bottom + c.low] += d * r.share * (1 - c.share);
      dx[bottom + c.high] += d * r.share * c.share;
      const double down =
          (1 - c.share) * (x[bottom + c.low] - x[top + c.low]) + c.share * (x[bottom + c.high] - x[top + c.high]);
      const double across =
          (1 - r.share) * (x[top + c.high] - x[top + c.low]) + r.share * (x[bottom + c.high] - x[bottom + c.low]);
      da[0] += d * down * r.byZoom;
      da[colFactor(l)] += d * across * c.byZoom;
    });
  }
};

constexpr LayerKind kGeometryKinds[] = {
    {ORVANE_LAYER_ROTATION3D, "Rotation3D", Wiring::kRotation, Rotation3D::forward, Rotation3D::backward},
    {ORVANE_LAYER_ZOOM, "Zoom", Wiring::kZoom, Zoom::forward, Zoom::backward, Zoom::fits},
};

}  // namespace

std::span<const LayerKind> geometryKinds() { return kGeometryKinds; }

}  // namespace NetWork
