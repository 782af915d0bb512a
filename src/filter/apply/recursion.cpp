// SPDX-License-Identifier: Apache-2.0
#include "filter/apply/recursion.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "filter/apply/blow_up.h"
#include "filter/apply/convolution.h"

namespace Filter {

namespace {

constexpr int32_t kChunk = 512;        // samples whose part in x is summed at once
constexpr std::size_t kUnrolled = 16;  // orders with a loop of their own

/// The recursive part over y[0..count), which holds the part in x; `before` values stand in front of y. Only the term
/// of y[i-1] comes last, so that a step waits for one product and one difference. Returns how many values are sound.
template <std::size_t kOrder>
int32_t feedBack(const double* a, std::size_t, double* y, int32_t count) {
  double past[kOrder + 1], weight[kOrder + 1];
  for (std::size_t k = 1; k <= kOrder; ++k) {
    past[k] = y[-static_cast<std::ptrdiff_t>(k)];
    weight[k] = a[k];
  }
  for (int32_t i = 0; i < count; ++i) {
    double value = y[i];
    for (std::size_t k = kOrder; k >= 1; --k) value -= weight[k] * past[k];
    if (blownUp(value)) return i;
    for (std::size_t k = kOrder; k > 1; --k) past[k] = past[k - 1];
    if constexpr (kOrder > 0) past[1] = value;
    y[i] = value;
  }
  return count;
}

int32_t feedBackAny(const double* a, std::size_t order, double* y, int32_t count) {
  for (int32_t i = 0; i < count; ++i) {
    double value = y[i];
    for (std::size_t k = order; k >= 1; --k) value -= a[k] * y[i - static_cast<std::ptrdiff_t>(k)];
    if (blownUp(value)) return i;
    y[i] = value;
  }
  return count;
}

using FeedBack = int32_t (*)(const double*, std::size_t, double*, int32_t);

FeedBack feedBackOf(std::size_t order) {
  static constexpr auto table = []<std::size_t... k>(std::index_sequence<k...>) {
    return std::array<FeedBack, sizeof...(k)>{feedBack<k>...};
  }
  (std::make_index_sequence<kUnrolled + 1>());
  return order < table.size() ? table[order] : feedBackAny;
}

}  // namespace

bool recurse(std::span<const double> b, std::span<const double> a, const double* x, double* y, int32_t from,
             int32_t to) {
  if (to <= from) return true;
  const int32_t end = std::min(soundEnd(b, to), soundEnd(a, to));
  if (end <= from) return false;
  b = finitePart(b);
  a = finitePart(a);
  const std::size_t reach = b.size() - 1, order = a.size() - 1;
  const std::vector<double> reversed(b.rbegin(), b.rend());
  // Zeros before the first sample, or what stands before it.
  std::vector<double> inputs(reach + kChunk, 0.0), outputs(order + kChunk, 0.0);
  const auto before = [](const double* values, int32_t first, std::size_t count, double* into) {
    for (std::size_t k = 1; k <= count; ++k)
      into[count - k] = static_cast<std::size_t>(first) >= k ? values[first - static_cast<std::ptrdiff_t>(k)] : 0.0;
  };
  const FeedBack run = feedBackOf(order);
  for (int32_t i = from; i < end;) {
    const int32_t count = std::min(kChunk, end - i);
    before(x, i, reach, inputs.data());
    before(y, i, order, outputs.data());
    std::copy_n(x + i, count, inputs.data() + reach);
    double* values = outputs.data() + order;
    correlate(inputs.data(), reversed, values, static_cast<std::size_t>(count));
    const int32_t sound = run(a.data(), order, values, count);
    std::copy_n(values, sound, y + i);
    if (sound < count) return false;
    i += count;
  }
  return end == to;
}

}  // namespace Filter
