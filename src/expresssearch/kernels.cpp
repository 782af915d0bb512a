// SPDX-License-Identifier: Apache-2.0
#include "expresssearch/kernels.h"

#include <cstring>

#include "frame/processor.h"

namespace Search {
namespace {

using Lanes [[gnu::vector_size(64)]] = double;
static_assert(sizeof(Lanes) == sizeof(LaneSums));

/// The loop as wide as the processor's vectors. The instructions differ, the rounding does not: nothing is fused.
#if ORVANE_DISPATCH_AVX2
template <class Loop>
[[gnu::target("avx2"), gnu::flatten]] void runWide(const Loop& loop) {
  loop();
}
#endif

template <class Loop>
void run(const Loop& loop) {
#if ORVANE_DISPATCH_AVX2
  if (hasAvx2()) return runWide(loop);
#endif
  loop();
}

/// step(i, count) for rows i to i + count - 1: full vectors, then what is left.
template <class Step>
[[gnu::always_inline]] inline void overRows(std::size_t n, const Step& step) {
  std::size_t i = 0;
  for (; i + kLanes <= n; i += kLanes) step(i, kLanes);
  if (i < n) step(i, n - i);
}

[[gnu::always_inline]] inline void load(Lanes& lanes, const double* from, std::size_t count, double pad = 0.0) {
  if (count < kLanes) lanes = Lanes{} + pad;
  std::memcpy(&lanes, from, count * sizeof(double));
}

/// value += the form's terms at the rows from i on.
[[gnu::always_inline]] inline void addTerms(const LinearForm& form, std::size_t i, std::size_t count, Lanes& value) {
  for (std::size_t k = 0; k < form.factors.size(); ++k) {
    Lanes x;
    load(x, form.columns[k] + i, count);
    value += form.factors[k] * x;
  }
}

}  // namespace

double total(const LaneSums& sums) {
  return ((sums[0] + sums[4]) + (sums[2] + sums[6])) + ((sums[1] + sums[5]) + (sums[3] + sums[7]));
}

double sum(std::span<const double> x) {
  LaneSums sums{};
  run([&] {
    Lanes all{}, value;
    overRows(x.size(), [&](std::size_t i, std::size_t count) {
      load(value, &x[i], count);
      all += value;
    });
    std::memcpy(&sums, &all, sizeof(all));
  });
  return total(sums);
}

double dot(std::span<const double> x, std::span<const double> y) {
  LaneSums sums{};
  run([&] {
    Lanes all{}, left, right;
    overRows(x.size(), [&](std::size_t i, std::size_t count) {
      load(left, &x[i], count);
      load(right, &y[i], count);
      all += left * right;
    });
    std::memcpy(&sums, &all, sizeof(all));
  });
  return total(sums);
}

void addSquaredError(std::span<const double> x, std::span<const double> y, LaneSums& sums) {
  run([&] {
    Lanes all, left, right;
    std::memcpy(&all, &sums, sizeof(all));
    overRows(x.size(), [&](std::size_t i, std::size_t count) {
      load(left, &x[i], count);
      load(right, &y[i], count);
      left -= right;
      all += left * left;
    });
    std::memcpy(&sums, &all, sizeof(all));
  });
}

CentredSums centredSums(std::span<const double> x, double mx, std::span<const double> y, double my) {
  LaneSums xy{}, yy{};
  run([&] {
    Lanes allXY{}, allYY{}, left, right;
    overRows(x.size(), [&](std::size_t i, std::size_t count) {
      load(left, &x[i], count, mx);
      load(right, &y[i], count, my);
      left -= mx;
      right -= my;
      allXY += left * right;
      allYY += right * right;
    });
    std::memcpy(&xy, &allXY, sizeof(allXY));
    std::memcpy(&yy, &allYY, sizeof(allYY));
  });
  return {total(xy), total(yy)};
}

void rationalValues(const LinearForm& top, const LinearForm& bottom, std::size_t from, std::span<double> out) {
  run([&] {
    overRows(out.size(), [&](std::size_t i, std::size_t count) {
      Lanes value = Lanes{} + top.constant;
      addTerms(top, from + i, count, value);
      if (!bottom.factors.empty()) {
        Lanes under = Lanes{} + bottom.constant;
        addTerms(bottom, from + i, count, under);
        value /= under;
      }
      std::memcpy(&out[i], &value, count * sizeof(double));
    });
  });
}

}  // namespace Search
