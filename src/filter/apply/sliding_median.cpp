// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <utility>

#include "filter/apply/sliding_window.h"
#include "frame/wide_registers.h"

namespace Filter {

namespace {

/// Integers in the order of the numbers, NaN last.
uint64_t keyOf(double x) {
  constexpr uint64_t kSign = uint64_t{1} << 63;
  if (std::isnan(x)) return ~uint64_t{0};
  const auto bits = std::bit_cast<uint64_t>(x);
  return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

/// A set of small integers as bits, with the words that are not 0 as bits above them and so on: every step looks at a
/// word or two.
class RankSet {
 public:
  explicit RankSet(std::size_t size) {
    do levels.emplace_back(size = (size + 63) / 64, 0);
    while (size > 1);
  }

  void insert(std::size_t r) {
    for (std::vector<uint64_t>& words : levels) {
      uint64_t& word = words[r / 64];
      const bool known = word != 0;
      word |= bit(r);
      if (known) return;
      r /= 64;
    }
  }

  void erase(std::size_t r) {
    for (std::vector<uint64_t>& words : levels) {
      if ((words[r / 64] &= ~bit(r)) != 0) return;
      r /= 64;
    }
  }

  /// The neighbours in the set of an r that need not be in it; they must be there.
  std::size_t next(std::size_t r) const {
    std::size_t level = 0;
    for (;; ++level, r /= 64)
      if (const uint64_t above = levels[level][r / 64] & ~(bit(r) | (bit(r) - 1)); above != 0) {
        r = r / 64 * 64 + static_cast<std::size_t>(std::countr_zero(above));
        break;
      }
    while (level-- > 0) r = r * 64 + static_cast<std::size_t>(std::countr_zero(levels[level][r]));
    return r;
  }
  std::size_t previous(std::size_t r) const {
    std::size_t level = 0;
    for (;; ++level, r /= 64)
      if (const uint64_t below = levels[level][r / 64] & (bit(r) - 1); below != 0) {
        r = r / 64 * 64 + top(below);
        break;
      }
    while (level-- > 0) r = r * 64 + top(levels[level][r]);
    return r;
  }

 private:
  static uint64_t bit(std::size_t r) { return uint64_t{1} << (r % 64); }
  static std::size_t top(uint64_t word) { return 63 - static_cast<std::size_t>(std::countl_zero(word)); }

  std::vector<std::vector<uint64_t>> levels;
};

/// Ranks of a run of values, each a rank of its own, NaN last: sorted by the leading bits in three passes over counted
/// digits, what these leave equal by comparison.
class Ranks {
 public:
  explicit Ranks(std::span<const double> x) : order(x.size()), rank(x.size()) {
    const std::size_t n = x.size();
    std::vector<uint64_t> keys(n), packed(n), other(n);
    std::ranges::transform(x, keys.begin(), keyOf);
    const auto [least, greatest] = std::ranges::minmax(keys);
    const int shift = least == greatest ? 0 : std::countl_zero(greatest - least);
    // The leading bits over the place: no two words are equal.
    for (std::size_t i = 0; i < n; ++i) packed[i] = ((keys[i] - least) << shift & kLeading) | i;
    std::vector<uint32_t> counts(std::size_t{kPasses} << kDigit);
    const auto count = [&](int pass, uint64_t word) -> uint32_t& {
      const int from = 64 - (kPasses - pass) * kDigit;
      return counts[static_cast<std::size_t>(pass) << kDigit | (word >> from & ((1U << kDigit) - 1))];
    };
    for (const uint64_t word : packed)
      for (int pass = 0; pass < kPasses; ++pass) ++count(pass, word);
    for (int pass = 0; pass < kPasses; ++pass) {
      uint32_t place = 0;
      for (std::size_t k = 0; k < 1U << kDigit; ++k) {
        uint32_t& c = counts[static_cast<std::size_t>(pass) << kDigit | k];
        place += std::exchange(c, place);
      }
      for (const uint64_t word : packed) other[count(pass, word)++] = word;
      packed.swap(other);
    }
    for (std::size_t r = 0; r < n; ++r) order[r] = static_cast<uint32_t>(packed[r] & ~kLeading);
    for (std::size_t first = 0, last; first < n; first = last) {
      bool differ = false;  // equal values stay in the order of their places
      for (last = first + 1; last < n && ((packed[last] ^ packed[first]) & kLeading) == 0; ++last)
        differ = differ || keys[order[last]] != keys[order[first]];
      if (differ)
        std::sort(order.begin() + static_cast<std::ptrdiff_t>(first), order.begin() + static_cast<std::ptrdiff_t>(last),
                  [&keys](uint32_t a, uint32_t b) { return keys[a] < keys[b]; });
    }
    for (std::size_t r = 0; r < n; ++r) rank[order[r]] = static_cast<uint32_t>(r);
  }

  std::vector<uint32_t> order;  ///< place by rank
  std::vector<uint32_t> rank;   ///< rank by place

 private:
  static constexpr int kPasses = 3, kDigit = 11;
  static constexpr uint64_t kLeading = ~uint64_t{0} << (64 - kPasses * kDigit);
};

/// The medians of the n windows over x, n + width - 1 values: the ranks of a window as a set, and the rank of its
/// middle, which goes on by a neighbour at most when the window does.
void medianByRanks(std::span<const double> x, std::size_t width, double* out, std::size_t n) {
  const Ranks all(x);
  RankSet held(x.size());
  std::vector<uint32_t> first(all.rank.begin(), all.rank.begin() + static_cast<std::ptrdiff_t>(width));
  for (const uint32_t r : first) held.insert(r);
  const auto half = static_cast<std::ptrdiff_t>((width - 1) / 2);
  std::nth_element(first.begin(), first.begin() + half, first.end());
  std::size_t middle = first[static_cast<std::size_t>(half)];
  const auto valueAt = [&](std::size_t r) { return x[all.order[r]]; };
  for (std::size_t i = 0;; ++i) {
    const double value = valueAt(middle);
    out[i] = width % 2 == 0 ? std::midpoint(value, valueAt(held.next(middle))) : value;
    if (i + 1 == n) return;
    const std::size_t leaving = all.rank[i], entering = all.rank[i + width];
    held.insert(entering);
    held.erase(leaving);
    if (entering < middle && leaving >= middle)
      middle = held.previous(middle);
    else if (entering > middle && leaving <= middle)
      middle = held.next(middle);
  }
}

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
  // In parts whose ranks stay in the cache; a part's values hold at most 64 windows, so that neighbours are near.
  const std::size_t part = std::max(4 * width, std::min<std::size_t>(64 * width, 8192));
  for (std::size_t start = 0; start < n; start += part) {
    const std::size_t count = std::min(part, n - start);
    medianByRanks(padded.subspan(start, count + width - 1), width, out + start, count);
  }
}

}  // namespace Filter
