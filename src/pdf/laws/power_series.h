// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "pdf/for_points.h"
#include "pdf/plain_pdf_fun.h"

namespace PDF {

/// A power series of positive terms 1 + r_0 t + r_0 r_1 t^2 + ... on [low, high], with its coefficients at hand. How
/// many terms a point needs depends on the sixteenth of [0, high] in which it lies, and on nothing else, so that a
/// point has the same bits alone and in a block.
class PowerSeries {
 public:
  /// No series: it contains no point.
  void clear() { high = -1; }

  /// Takes the ratios r_k = ratio(k), falling from some k on; contains nothing when too many terms were needed.
  template <class Ratio>
  void build(double from, double to, const Ratio& ratio) {
    clear();
    if (!(from >= 0 && to > from)) return;
    std::array<double, kParts> term, sum;
    term.fill(1), sum.fill(1);
    std::size_t done = 0;  // parts that need no further term
    coefficients.assign(1, 1.0);
    for (double k = 0; done < kParts; k += 1) {
      if (coefficients.size() > kMostTerms || !(coefficients.back() < 1e300)) return;
      const double r = ratio(k);
      coefficients.push_back(coefficients.back() * r);
      for (std::size_t part = done; part < kParts; ++part) {
        const double step = r * to * static_cast<double>(part + 1) / kParts;
        term[part] *= step;
        sum[part] += term[part];
        if (part == done && step < 0.75 && term[part] < sum[part] * 1e-18) terms[done++] = coefficients.size();
      }
    }
    low = from, high = to;
  }

  bool contains(double t) const { return t >= low && t <= high; }

  double operator()(double t) const {
    double sum = 0;
    for (std::size_t k = terms[static_cast<std::size_t>(part(t))]; k-- > 0;) sum = sum * t + coefficients[k];
    return sum;
  }

  bool containsAll(const double* t, std::size_t n) const {
    bool all = true;
    for (std::size_t i = 0; i < n; ++i) all &= contains(t[i]);
    return all;
  }

  static constexpr std::size_t kBlock = 128;

  /// sums[i] = (*this)(t[i]) for at most kBlock contained points.
  void values(const double* t, double* sums, std::size_t n) const {
    std::array<int32_t, kBlock> parts;
    for (std::size_t i = 0; i < n; ++i) parts[i] = part(t[i]);
    for (std::size_t from = 0, to = 0; from < n; from = to) {
      const auto mine = static_cast<std::size_t>(parts[from]);
      for (to = from + 1; to < n && parts[to] == parts[from];) ++to;
      std::size_t at = from;
      for (; at + kLanes < to; at += 2 * kLanes) some<2 * kLanes>(terms[mine], t + at, sums + at, to - at);
      if (at < to) some<kLanes>(terms[mine], t + at, sums + at, to - at);
    }
  }

 private:
  static constexpr std::size_t kParts = 16, kMostTerms = 4000;
  static constexpr std::size_t kLanes = 16;  // of a short rest; twice as many keep the multipliers busy

  int32_t part(double t) const {
    return std::min(static_cast<int32_t>(kParts) - 1, static_cast<int32_t>(t * (static_cast<double>(kParts) / high)));
  }

  template <std::size_t kWidth>
  [[gnu::always_inline]] static inline void hornerLoop(const double* c, std::size_t count, const double* t,
                                                       double* out) {
    double sum[kWidth] = {};
    for (std::size_t k = count; k-- > 0;)
      for (std::size_t i = 0; i < kWidth; ++i) sum[i] = sum[i] * t[i] + c[k];
    std::copy_n(sum, kWidth, out);
  }
#if ORVANE_DISPATCH_AVX2
  template <std::size_t kWidth>
  [[gnu::target("avx2")]] static void hornerAvx2(const double* c, std::size_t count, const double* t, double* out) {
    hornerLoop<kWidth>(c, count, t, out);
  }
#endif
  template <std::size_t kWidth>
  void horner(std::size_t count, const double* t, double* out) const {
#if ORVANE_DISPATCH_AVX2
    if (hasAvx2()) return hornerAvx2<kWidth>(coefficients.data(), count, t, out);
#endif
    hornerLoop<kWidth>(coefficients.data(), count, t, out);
  }

  /// The first min(n, kWidth) points.
  template <std::size_t kWidth>
  void some(std::size_t count, const double* t, double* sums, std::size_t n) const {
    if (n >= kWidth) return horner<kWidth>(count, t, sums);
    std::array<double, kWidth> points{}, results;
    std::copy_n(t, n, points.begin());
    horner<kWidth>(count, points.data(), results.data());
    std::copy_n(results.begin(), n, sums);
  }

  std::vector<double> coefficients;
  std::array<std::size_t, kParts> terms{};
  double low = 0, high = -1;
};

/// A distribution whose function is a factor times a power series where that is the same value: Self gives
/// `double argument(x)` of the series, `double near(x, t, sum)` where `series` contains t and `double far(x)`
/// elsewhere.
template <class Self>
class SeriesPDFFun : public PlainPDFFun<Self> {
 public:
  double distribution(double x) const {
    const double t = self().argument(x);
    return series.contains(t) ? self().near(x, t, series(t)) : self().far(x);
  }

  void distributions(const double* x, double* y, std::size_t n) const {
    constexpr std::size_t kBlock = PowerSeries::kBlock;
    std::array<double, kBlock> points, t, sums;
    std::array<std::size_t, kBlock> places;
    for (std::size_t from = 0; from < n; from += kBlock) {
      const std::size_t size = std::min(kBlock, n - from);
      forPoints([this](double point) { return self().argument(point); }, x + from, t.data(), size);
      if (series.containsAll(t.data(), size)) {
        series.values(t.data(), sums.data(), size);
        finish(x + from, t.data(), sums.data(), size);
        std::copy_n(sums.begin(), size, y + from);
        continue;
      }
      std::size_t inside = 0;
      for (std::size_t i = 0; i < size; ++i) {
        if (series.contains(t[i]))
          points[inside] = x[from + i], places[inside] = from + i, t[inside++] = t[i];
        else
          y[from + i] = self().far(x[from + i]);
      }
      series.values(t.data(), sums.data(), inside);
      finish(points.data(), t.data(), sums.data(), inside);
      for (std::size_t i = 0; i < inside; ++i) y[places[i]] = sums[i];
    }
  }

 protected:
  PowerSeries series;

 private:
  const Self& self() const { return static_cast<const Self&>(*this); }

  [[gnu::always_inline]] inline void finishLoop(const double* x, const double* t, double* sums, std::size_t n) const {
    for (std::size_t i = 0; i < n; ++i) sums[i] = self().near(x[i], t[i], sums[i]);
  }
#if ORVANE_DISPATCH_AVX2
  [[gnu::target("avx2"), gnu::flatten]] void finishAvx2(const double* x, const double* t, double* sums,
                                                        std::size_t n) const {
    finishLoop(x, t, sums, n);
  }
#endif
  void finish(const double* x, const double* t, double* sums, std::size_t n) const {
#if ORVANE_DISPATCH_AVX2
    if (hasAvx2()) return finishAvx2(x, t, sums, n);
#endif
    finishLoop(x, t, sums, n);
  }
};

}  // namespace PDF
