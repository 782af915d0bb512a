// SPDX-License-Identifier: Apache-2.0
#include <bit>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <utility>

#include "filter/apply/sliding_window.h"
#include "filter/apply/wide_registers.h"
#include "frame/numbers.h"

namespace Filter {

namespace {

constexpr uint64_t kSign = uint64_t{1} << 63, kNanKey = ~uint64_t{0} - 1, kEnd = ~uint64_t{0};

/// Integers in the order of the numbers.
uint64_t keyOf(double x) {
  if (std::isnan(x)) return kNanKey;
  const auto bits = std::bit_cast<uint64_t>(x);
  return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

double numberOf(uint64_t key) {
  if (key >= kNanKey) return kNaN;
  return std::bit_cast<double>((key & kSign) != 0 ? key & ~kSign : ~key);
}

/// One block of the data as a sorted linked list from which values are taken in the order of their places and put back
/// in the same order (Suomela 2014: median filtering is sorting, and the rest is linear). Nodes are named by rank; the
/// list splits into `small` values below the node `middle` and the others.
class SortedBlock {
 public:
  explicit SortedBlock(std::size_t width)
      : end(static_cast<uint32_t>(width)), sorted(width), rank(width), next(width + 1), prev(width + 1) {}

  /// The full block, with `below` values below the middle.
  void load(const uint64_t* keys, uint32_t below) {
    for (uint32_t i = 0; i < end; ++i) sorted[i] = {keys[i], i};
    std::ranges::sort(sorted);
    for (uint32_t r = 0; r < end; ++r) rank[sorted[r].second] = r;
    for (uint32_t r = 0; r <= end; ++r) {
      next[r] = r == end ? 0 : r + 1;
      prev[r] = r == 0 ? end : r - 1;
    }
    middle = small = below;
  }

  /// Takes all values out, the last place first.
  void unload() {
    for (uint32_t i = end; i-- > 0;) unlink(rank[i]);
    middle = end;
    small = 0;
  }

  void take(uint32_t place) {
    const uint32_t r = rank[place];
    unlink(r);
    if (r < middle) {
      --small;
      return;
    }
    if (r == middle) middle = next[middle];
    if (small > 0) {
      middle = prev[middle];
      --small;
    }
  }

  void putBack(uint32_t place) {
    const uint32_t r = rank[place];
    next[prev[r]] = r;
    prev[next[r]] = r;
    if (r < middle) middle = prev[middle];
  }

  void advance() {
    middle = next[middle];
    ++small;
  }

  uint32_t below() const { return small; }
  uint64_t first() const { return keyAt(middle); }
  uint64_t second() const { return middle == end ? kEnd : keyAt(next[middle]); }

 private:
  uint64_t keyAt(uint32_t r) const { return r == end ? kEnd : sorted[r].first; }
  void unlink(uint32_t r) {
    next[prev[r]] = next[r];
    prev[next[r]] = prev[r];
  }

  uint32_t end, middle = 0, small = 0;
  std::vector<std::pair<uint64_t, uint32_t>> sorted;
  std::vector<uint32_t> rank, next, prev;
};

constexpr std::size_t kNarrow = 15;

/// kCount windows side by side in registers: of a few values the least and the greatest are dropped and the next value
/// taken in, until the middle is left (about 3/4 width^2 minima and maxima). No NaN.
template <std::size_t kCount>
__attribute__((always_inline)) inline void narrowBlock(const double* x, std::size_t width, double* out) {
  double held[kNarrow / 2 + 2][kCount];
  const auto order = [&](std::size_t a, std::size_t b) __attribute__((always_inline)) {
    for (std::size_t q = 0; q < kCount; ++q) {
      const double low = held[a][q] < held[b][q] ? held[a][q] : held[b][q];
      held[b][q] = held[a][q] < held[b][q] ? held[b][q] : held[a][q];
      held[a][q] = low;
    }
  };
  std::size_t size = width / 2 + 1;  // beyond it no value can be dropped without another taken in
  for (std::size_t k = 0; k < size; ++k) std::copy_n(x + k, kCount, held[k]);
  for (std::size_t next = size; next < width; ++next, --size) {
    std::copy_n(x + next, kCount, held[size]);
    // The least to the front, the greatest to the end; then the end and the front leave.
    for (std::size_t k = 0; k < size; ++k) order(k, k + 1);
    for (std::size_t k = size - 1; k > 0; --k) order(k - 1, k);
    std::copy_n(held[size - 1], kCount, held[0]);
  }
  // What is left holds the middle: one value, or two for an even width.
  if (size == 2) order(0, 1);
  for (std::size_t q = 0; q < kCount; ++q) out[q] = size == 2 ? std::midpoint(held[0][q], held[1][q]) : held[0][q];
}

void narrowMedian(std::span<const double> padded, std::size_t width, double* out, std::size_t n) {
  onWidest([=]() __attribute__((always_inline)) {
    std::size_t i = 0;
    for (; i + 8 <= n; i += 8) narrowBlock<8>(padded.data() + i, width, out + i);
    for (; i < n; ++i) narrowBlock<1>(padded.data() + i, width, out + i);
  });
}

}  // namespace

void slidingMedian(std::span<const double> padded, std::size_t width, double* out, std::size_t n) {
  if (width <= kNarrow && std::ranges::none_of(padded, [](double x) { return std::isnan(x); }))
    return narrowMedian(padded, width, out, n);
  const bool even = width % 2 == 0;
  const auto half = static_cast<uint32_t>((width - 1) / 2);
  std::vector<uint64_t> keys((n + width - 1) / width * width + width, kEnd);
  std::ranges::transform(padded, keys.begin(), keyOf);
  SortedBlock leaving(width), entering(width);
  const auto median = [&] {
    const bool left = leaving.first() <= entering.first();
    const SortedBlock &low = left ? leaving : entering, &other = left ? entering : leaving;
    const double value = numberOf(low.first());
    return even ? std::midpoint(value, numberOf(std::min(low.second(), other.first()))) : value;
  };
  entering.load(keys.data(), half);
  for (std::size_t start = 0; start < n; start += width) {
    std::swap(leaving, entering);
    entering.load(keys.data() + start + width, 0);
    entering.unload();
    for (uint32_t i = 0; i < width && start + i < n; ++i) {
      out[start + i] = median();
      leaving.take(i);
      entering.putBack(i);
      if (leaving.below() + entering.below() < half)
        (leaving.first() <= entering.first() ? leaving : entering).advance();
    }
  }
}

}  // namespace Filter
