// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>

#include "network/layers/formula.h"
#include "network/layers/product.h"
#include "orvane/network_layer.h"

namespace NetWork {
namespace {

/// y = a x.
struct WDotX {
  static void forward(NetLayer_s& l) {
    multiplyRows(l.input1->y, samples(l), l.input1->size(), l.var1->value.data(), l.size(), l.y);
  }
  static void backward(NetLayer_s& l) {
    NetLayer_s& x = *l.input1;
    const std::size_t n = l.size(), m = x.size();
    addProduct(l.var1->grad.data(), n, m, l.dy, 1, n, samples(l), x.y);
    if (x.wantsDelta) addProduct(x.dy, samples(l), m, l.dy, n, 1, n, l.var1->value.data());
  }
};

/// sum_j (a_j - x_j)^2.
double squaredDistance(const double* a, const double* x, std::size_t m) {
  double sum = 0;
  for (std::size_t j = 0; j < m; ++j) sum += (a[j] - x[j]) * (a[j] - x[j]);
  return sum;
}

/// Adds the gradient of f(sum_j (a_j - x_j)^2), given f' times the gradient by f.
void addDistanceGradient(double slope, const double* a, const double* x, std::size_t m, double* __restrict da,
                         double* __restrict dx) {
  for (std::size_t j = 0; j < m; ++j) {
    const double term = 2 * slope * (a[j] - x[j]);
    da[j] += term;
    dx[j] -= term;
  }
}

/// f(squared distance, i) of every row i of a and every sample; gradient(distance, s, i) is the slope by the distance.
template <class F>
void forDistances(NetLayer_s& l, const F& f) {
  const std::size_t n = l.size(), m = l.input1->size();
  for (std::size_t s = 0; s < samples(l); ++s)
    for (std::size_t i = 0; i < n; ++i) f(s * n + i, i, squaredDistance(l.var1->value.row(i), l.input1->y + s * m, m));
}

template <class Slope>
void addDistanceGradients(NetLayer_s& l, const Slope& slope) {
  const std::size_t n = l.size(), m = l.input1->size();
  for (std::size_t s = 0; s < samples(l); ++s)
    for (std::size_t i = 0; i < n; ++i) {
      const double *a = l.var1->value.row(i), *x = l.input1->y + s * m;
      addDistanceGradient(l.dy[s * n + i] * slope(s * n + i, i, a, x, m), a, x, m, l.var1->grad.row(i),
                          l.input1->dy + s * m);
    }
}

struct WSubXSquared {
  static void forward(NetLayer_s& l) {
    forDistances(l, [&](std::size_t place, std::size_t, double distance) { l.y[place] = distance; });
  }
  static void backward(NetLayer_s& l) {
    addDistanceGradients(l, [](std::size_t, std::size_t, const double*, const double*, std::size_t) { return 1.0; });
  }
};

/// y_i = F::value(b_i, squared distance), with F::byDistance(b, y) and F::byB(b, y, distance).
template <class F>
struct Radial {
  static void forward(NetLayer_s& l) {
    const double* b = l.var2->value.data();
    forDistances(l, [&](std::size_t place, std::size_t i, double distance) { l.y[place] = F::value(b[i], distance); });
  }
  static void backward(NetLayer_s& l) {
    const double* b = l.var2->value.data();
    double* db = l.var2->grad.data();
    forDistances(l, [&](std::size_t place, std::size_t i, double distance) {
      db[i] += l.dy[place] * F::byB(b[i], l.y[place], distance);
    });
    addDistanceGradients(l, [&](std::size_t place, std::size_t i, const double*, const double*, std::size_t) {
      return F::byDistance(b[i], l.y[place]);
    });
  }
};

struct Gaussian {
  static double value(double b, double d) { return std::exp(-b * d); }
  static double byDistance(double b, double y) { return -b * y; }
  static double byB(double, double y, double d) { return -d * y; }
};

struct InverseQuadratic {
  static double value(double b, double d) { return 1 / (1 + b * b * d); }
  static double byDistance(double b, double y) { return -b * b * y * y; }
  static double byB(double b, double y, double d) { return -2 * b * (d * y) * y; }
};

struct InverseMultiquadric {
  static double value(double b, double d) { return 1 / std::sqrt(1 + b * b * d); }
  static double byDistance(double b, double y) { return -0.5 * b * b * y * y * y; }
  static double byB(double b, double y, double d) { return -b * (d * y) * y * y; }
};

const std::vector<NetVar_s*>& varsOf(const NetLayer_s& layer) {
  return static_cast<const NetMulVarLayer_s&>(layer).vars;
}

/// y_k = x' A_k x, row after row of A_k.
struct Quadratic {
  static double row(const double* a, const double* x, std::size_t m) {
    double sum = 0;
    for (std::size_t j = 0; j < m; ++j) sum += a[j] * x[j];
    return sum;
  }
  static void forward(NetLayer_s& l) {
    const std::size_t n = l.size(), m = l.input1->size();
    for (std::size_t s = 0; s < samples(l); ++s)
      for (std::size_t k = 0; k < n; ++k) {
        const double* x = l.input1->y + s * m;
        double sum = 0;
        for (std::size_t i = 0; i < m; ++i) sum += x[i] * row(varsOf(l)[k]->value.row(i), x, m);
        l.y[s * n + k] = sum;
      }
  }
  static void backward(NetLayer_s& l) {
    const std::size_t n = l.size(), m = l.input1->size();
    for (std::size_t s = 0; s < samples(l); ++s)
      for (std::size_t k = 0; k < n; ++k)
        add(l.dy[s * n + k], *varsOf(l)[k], l.input1->y + s * m, m, l.input1->dy + s * m);
  }
  static void add(double d, NetVar_s& var, const double* x, std::size_t m, double* __restrict dx) {
    for (std::size_t i = 0; i < m; ++i) {
      const double *a = var.value.row(i), scaled = d * x[i];
      double* __restrict da = var.grad.row(i);
      for (std::size_t j = 0; j < m; ++j) {
        da[j] += scaled * x[j];
        dx[j] += scaled * a[j];
      }
      dx[i] += d * row(a, x, m);
    }
  }
  static bool fits(const NetLayer_s& l) {
    const std::size_t m = l.input1->size();
    return varsOf(l).size() == l.size() &&
           std::ranges::all_of(varsOf(l), [&](const NetVar_s* var) { return var->hasShape(m, m); });
  }
};

/// c0 + c1 x + c2 x^2 + c3 x^3, entry by entry.
struct Poly3 {
  static constexpr std::size_t kTerms = 4;
  static void forward(NetLayer_s& l) {
    const std::size_t n = l.size();
    for (std::size_t p = 0; p < samples(l) * n; ++p) {
      const double x = l.input1->y[p];
      l.y[p] = ((at(l, 3, p % n) * x + at(l, 2, p % n)) * x + at(l, 1, p % n)) * x + at(l, 0, p % n);
    }
  }
  static void backward(NetLayer_s& l) {
    const std::size_t n = l.size();
    for (std::size_t p = 0; p < samples(l) * n; ++p) {
      const double x = l.input1->y[p], d = l.dy[p];
      l.input1->dy[p] += d * ((3 * at(l, 3, p % n) * x + 2 * at(l, 2, p % n)) * x + at(l, 1, p % n));
      double power = d;
      for (std::size_t k = 0; k < kTerms; ++k, power *= x) {
        NetVar_s& var = *varsOf(l)[k];
        var.grad.data()[var.value.size() == 1 ? 0 : p % n] += power;
      }
    }
  }
  static double at(const NetLayer_s& l, std::size_t term, std::size_t i) {
    const NetVar_s& var = *varsOf(l)[term];
    return var.value.data()[var.value.size() == 1 ? 0 : i];
  }
  static bool fits(const NetLayer_s& l) {
    return l.input1->size() == l.size() && varsOf(l).size() == kTerms &&
           std::ranges::all_of(varsOf(l), [&](const NetVar_s* var) { return var->isRow(1) || var->isRow(l.size()); });
  }
};

constexpr LayerKind kProductKinds[] = {
    kind<WDotX>(ORVANE_LAYER_W_DOT_X, "W_dot_x", Wiring::kProduct),
    kind<WSubXSquared>(ORVANE_LAYER_W_SUB_X_SQUARED, "W_sub_x_squared", Wiring::kProduct),
    {ORVANE_LAYER_QUADRATIC, "Quadratic", Wiring::kVarList, Quadratic::forward, Quadratic::backward, Quadratic::fits},
    {ORVANE_LAYER_POLY3, "Poly3", Wiring::kVarList, Poly3::forward, Poly3::backward, Poly3::fits},
    kind<Radial<Gaussian>>(ORVANE_LAYER_RBF1, "RBF1", Wiring::kRadial),
    kind<Radial<InverseQuadratic>>(ORVANE_LAYER_RBF2, "RBF2", Wiring::kRadial),
    kind<Radial<InverseMultiquadric>>(ORVANE_LAYER_RBF3, "RBF3", Wiring::kRadial),
};

}  // namespace

std::span<const LayerKind> productKinds() { return kProductKinds; }

}  // namespace NetWork
