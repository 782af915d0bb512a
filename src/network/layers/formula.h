// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "frame/processor.h"
#include "network/layers/kind_table.h"

/// Kinds that work entry by entry: a formula and its derivatives, from which the templates here make the loops over all
/// entries and samples. A formula of the derivatives may use the value y as well.
namespace NetWork {

/// An operand of one entry: of a vector, or one number for all entries.
template <bool kVector>
[[gnu::always_inline]] inline double entry(const double* p, std::size_t i) {
  return kVector ? p[i] : *p;
}

/// Adds the terms of one sample to the gradient of an operand.
template <bool kVector, class Term>
[[gnu::always_inline]] inline void addTerms(double* __restrict d, std::size_t n, const Term& term) {
  if constexpr (kVector) {
    for (std::size_t i = 0; i < n; ++i) d[i] += term(i);
  } else {
    double sum = 0;
    for (std::size_t i = 0; i < n; ++i) sum += term(i);
    *d += sum;
  }
}

/// The gradient that passes an entry. None passes where none comes in, infinite slopes or not.
[[gnu::always_inline]] inline double passed(double dy, double slope) {
  const double product = dy * slope;
  return dy == 0 ? 0 : product;
}

/// y = value(x); slope(x, y) is the derivative.
template <auto value, auto slope>
struct ElementLoops {
  static void forward(NetLayer_s& layer) {
    const double* x = layer.input1->y;
    double* __restrict y = layer.y;
    const std::size_t n = layer.size() * static_cast<std::size_t>(layer.samples);
    vectorised([=] {
      for (std::size_t i = 0; i < n; ++i) y[i] = value(x[i]);
    });
  }

  static void backward(NetLayer_s& layer) {
    const double *x = layer.input1->y, *y = layer.y, *dy = layer.dy;
    double* __restrict dx = layer.input1->dy;
    const std::size_t n = layer.size() * static_cast<std::size_t>(layer.samples);
    vectorised([=] {
      for (std::size_t i = 0; i < n; ++i) dx[i] += passed(dy[i], slope(x[i], y[i]));
    });
  }
};

/// Where the loops find an operand: sample after sample `step` apart.
struct Operand {
  const double* value;
  double* delta;
  std::size_t step;
  bool vector;
};

inline Operand operand(const NetLayer_s& input, std::size_t n) {
  return {input.y, input.dy, input.size(), input.size() == n};
}

inline Operand operand(NetVar_s& var, std::size_t n) {
  return {var.value.data(), var.grad.data(), 0, var.value.size() == n};
}

/// y = F::value(x, a), with the derivatives F::byX(x, a, y) and F::byA(x, a, y). An operand may be stretched.
template <class F>
struct PairLoops {
  template <bool kX, bool kA>
  [[gnu::always_inline]] static void valueLoop(const NetLayer_s& layer, Operand x, Operand a) {
    const std::size_t n = layer.size();
    for (std::size_t s = 0; s < static_cast<std::size_t>(layer.samples); ++s) {
      const double *xs = x.value + s * x.step, *as = a.value + s * a.step;
      double* __restrict y = layer.y + s * n;
      for (std::size_t i = 0; i < n; ++i) y[i] = F::value(entry<kX>(xs, i), entry<kA>(as, i));
    }
  }

  // First x, then a: they may be one layer.
  template <bool kX, bool kA>
  [[gnu::always_inline]] static void slopeLoop(const NetLayer_s& layer, Operand x, Operand a) {
    const std::size_t n = layer.size();
    for (std::size_t s = 0; s < static_cast<std::size_t>(layer.samples); ++s) {
      const double *xs = x.value + s * x.step, *as = a.value + s * a.step, *y = layer.y + s * n, *dy = layer.dy + s * n;
      addTerms<kX>(x.delta + s * x.step, n,
                   [=](std::size_t i) { return passed(dy[i], F::byX(entry<kX>(xs, i), entry<kA>(as, i), y[i])); });
      addTerms<kA>(a.delta + s * a.step, n,
                   [=](std::size_t i) { return passed(dy[i], F::byA(entry<kX>(xs, i), entry<kA>(as, i), y[i])); });
    }
  }

  static void forward(NetLayer_s& layer, Operand x, Operand a) {
    const NetLayer_s* l = &layer;
    if (!x.vector) return vectorised([=] { valueLoop<false, true>(*l, x, a); });
    if (!a.vector) return vectorised([=] { valueLoop<true, false>(*l, x, a); });
    vectorised([=] { valueLoop<true, true>(*l, x, a); });
  }

  static void backward(NetLayer_s& layer, Operand x, Operand a) {
    const NetLayer_s* l = &layer;
    if (!x.vector) return vectorised([=] { slopeLoop<false, true>(*l, x, a); });
    if (!a.vector) return vectorised([=] { slopeLoop<true, false>(*l, x, a); });
    vectorised([=] { slopeLoop<true, true>(*l, x, a); });
  }
};

/// y = F::value(x, a, b), with the derivatives F::byX, F::byA and F::byB, which take (x, a, b, y).
template <class F>
struct TripleLoops {
  static void forward(NetLayer_s& layer) {
    const double *x = layer.input1->y, *a = layer.var1->value.data(), *b = layer.var2->value.data();
    double* __restrict y = layer.y;
    const std::size_t n = layer.size(), samples = static_cast<std::size_t>(layer.samples);
    vectorised([=] {
      for (std::size_t s = 0; s < samples * n; s += n)
        for (std::size_t i = 0; i < n; ++i) y[s + i] = F::value(x[s + i], a[i], b[i]);
    });
  }

  static void backward(NetLayer_s& layer) {
    const double *x = layer.input1->y, *a = layer.var1->value.data(), *b = layer.var2->value.data(), *y = layer.y;
    double *dx = layer.input1->dy, *da = layer.var1->grad.data(), *db = layer.var2->grad.data();
    const double* dy = layer.dy;
    const std::size_t n = layer.size(), samples = static_cast<std::size_t>(layer.samples);
    vectorised([=] {
      for (std::size_t s = 0; s < samples * n; s += n) {
        const auto by = [=](auto slope) {
          return [=](std::size_t i) { return passed(dy[s + i], slope(x[s + i], a[i], b[i], y[s + i])); };
        };
        addTerms<true>(dx + s, n, by(F::byX));
        addTerms<true>(da, n, by(F::byA));
        addTerms<true>(db, n, by(F::byB));
      }
    });
  }
};

/// The rows of such kinds.
template <auto value, auto slope>
consteval LayerKind element(int32_t code, std::string_view name) {
  using Loops = ElementLoops<value, slope>;
  return {code, name, Wiring::kElement, Loops::forward, Loops::backward};
}

template <class F>
consteval LayerKind withVar(int32_t code, std::string_view name) {
  return {code, name, Wiring::kWithVar,
          [](NetLayer_s& l) { PairLoops<F>::forward(l, operand(*l.input1, l.size()), operand(*l.var1, l.size())); },
          [](NetLayer_s& l) { PairLoops<F>::backward(l, operand(*l.input1, l.size()), operand(*l.var1, l.size())); }};
}

template <class F>
consteval LayerKind pair(int32_t code, std::string_view name) {
  return {code, name, Wiring::kPair,
          [](NetLayer_s& l) { PairLoops<F>::forward(l, operand(*l.input1, l.size()), operand(*l.input2, l.size())); },
          [](NetLayer_s& l) { PairLoops<F>::backward(l, operand(*l.input1, l.size()), operand(*l.input2, l.size())); }};
}

template <class F>
consteval LayerKind withTwoVars(int32_t code, std::string_view name) {
  return {code, name, Wiring::kWithTwoVars, TripleLoops<F>::forward, TripleLoops<F>::backward};
}

}  // namespace NetWork
