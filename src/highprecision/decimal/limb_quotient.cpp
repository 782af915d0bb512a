// SPDX-License-Identifier: Apache-2.0
#include "highprecision/decimal/limb_quotient.h"

#include <algorithm>
#include <cmath>

#include "frame/processor.h"
#include "highprecision/decimal/hp_number.h"

namespace HighPrecision {
namespace {

constexpr auto kRadix = static_cast<double>(kBase);

// Places of a calculation; a few need no memory of their own.
template <class Place>
class Room {
 public:
  explicit Room(std::size_t n) : many(n > kFew ? n : 0), places(many.empty() ? few : many.data()), size(n) {
    std::fill_n(places, n, Place{0});
  }
  operator std::span<Place>() { return {places, size}; }
  Place* data() { return places; }
  Place& operator[](std::size_t i) { return places[i]; }

 private:
  static constexpr std::size_t kFew = 64;
  Place few[kFew];
  std::vector<Place> many;
  Place* places;
  std::size_t size;
};

// columns -= factor * limbs, the same loop for every set of instructions; a product of 32 bits each is what vectors
// have.
[[gnu::always_inline]] inline void subtractLoop(uint64_t* columns, uint32_t factor, const uint32_t* limbs,
                                                std::size_t n) {
  const uint64_t wide = factor;
  for (std::size_t i = 0; i < n; ++i) columns[i] -= wide * limbs[i];
}

#if ORVANE_DISPATCH_AVX2
[[gnu::target("avx2")]] void subtractWide(uint64_t* columns, uint32_t factor, const uint32_t* limbs, std::size_t n) {
  subtractLoop(columns, factor, limbs, n);
}
#endif

void subtractMultiple(int64_t* columns, int64_t factor, const uint32_t* limbs, std::size_t n) {
  if (factor < 0) {  // an estimate was too high before: rare
    for (std::size_t i = 0; i < n; ++i) columns[i] -= factor * limbs[i];
    return;
  }
  auto* const words = reinterpret_cast<uint64_t*>(columns);
#if ORVANE_DISPATCH_AVX2
  if (hasAvx2()) return subtractWide(words, static_cast<uint32_t>(factor), limbs, n);
#endif
  subtractLoop(words, static_cast<uint32_t>(factor), limbs, n);
}

// x[n-1] + x[n-2] / 10^7 + ..., over the highest three places: what is left out is felt below 10^-3 of a limb.
template <class Place>
double lead(const Place* x, std::size_t n) {
  const double sum = static_cast<double>(x[n - 1]) + static_cast<double>(x[n - 2]) * (1 / kRadix);
  return n > 2 ? sum + static_cast<double>(x[n - 3]) * (1 / (kRadix * kRadix)) : sum;
}

// The last limb is the nearest one, so that the sign of the rest alone tells the floor; the others are cut.
int64_t limbOf(double estimate, bool last) { return last ? std::llround(estimate) : static_cast<int64_t>(estimate); }

// Makes places 0..9999999; returns the carry, which has the sign of the whole when it is negative.
int64_t carried(std::span<int64_t> places) {
  int64_t carry = 0;
  for (int64_t& place : places) {
    const int64_t sum = place + carry;
    carry = sum / kBase - (sum % kBase < 0);
    place = sum - carry * kBase;
  }
  return carry;
}

// The value that the estimates came to is the floor, or one more: the rest is negative then.
std::vector<int64_t> floored(std::vector<int64_t> value, std::span<int64_t> rest) {
  if (carried(rest) < 0) --value[0];
  carried(value);
  return value;
}

}  // namespace

std::vector<int64_t> quotientLimbs(std::span<const int64_t> a, std::size_t padding, std::span<const int64_t> b) {
  const std::size_t n = b.size(), length = a.size() + padding;
  if (length < n) return {};
  Room<int64_t> columns(length);
  std::copy(a.begin(), a.end(), columns.data() + padding);
  Room<uint32_t> divisor(n);
  std::copy(b.begin(), b.end(), divisor.data());
  const double inverse = 1 / lead(divisor.data(), n);
  std::vector<int64_t> quotient(length - n + 1);
  for (std::size_t k = quotient.size(); k-- > 0;) {
    if (k + n < length) columns[k + n - 1] += columns[k + n] * kBase;
    quotient[k] = limbOf(lead(columns.data() + k, n) * inverse, k == 0);
    subtractMultiple(columns.data() + k, quotient[k], divisor.data(), n);
  }
  return floored(std::move(quotient), std::span<int64_t>(columns).first(n));
}

std::vector<int64_t> rootLimbs(std::span<const int64_t> a, std::size_t padding) {
  const std::size_t n = (a.size() + padding + 1) / 2;
  Room<int64_t> columns(2 * n);
  std::copy(a.begin(), a.end(), columns.data() + padding);
  Room<uint32_t> root(n);
  // Two limbs at once: one alone would be too coarse a divisor for the next.
  const double start = std::sqrt(lead(columns.data(), 2 * n) * kRadix) * kRadix;
  const int64_t first = limbOf(start, n == 2);
  const int64_t high = first / kBase, low = first % kBase;
  root[n - 1] = static_cast<uint32_t>(high);
  root[n - 2] = static_cast<uint32_t>(low);
  columns[2 * n - 2] += columns[2 * n - 1] * kBase - high * high;
  columns[2 * n - 3] += columns[2 * n - 2] * kBase - 2 * high * low;
  columns[2 * n - 4] -= low * low;
  double weight = 1 / kRadix;  // of the limb in the highest one
  for (std::size_t k = n - 2; k-- > 0;) {
    columns[n - 1 + k] += columns[n + k] * kBase;
    weight /= kRadix;
    // (r + l)^2 = r^2 + 2 l r + l^2; the square is felt in the estimate of l by the third limb alone.
    const double twice = 2 * lead(root.data(), n), ratio = lead(columns.data(), n + k) / twice;
    const int64_t limb = limbOf(ratio - ratio * ratio * weight / twice, k == 0);
    subtractMultiple(columns.data() + 2 * k + 1, 2 * limb, root.data() + k + 1, n - 1 - k);
    columns[2 * k] -= limb * limb;
    root[k] = static_cast<uint32_t>(limb < 0 ? limb + kBase : limb);
    for (std::size_t i = k + 1, borrow = limb < 0; borrow != 0; ++i) {
      borrow = root[i] == 0;
      root[i] = borrow != 0 ? static_cast<uint32_t>(kBase) - 1 : root[i] - 1;
    }
  }
  const std::span<uint32_t> limbs(root);
  return floored({limbs.begin(), limbs.end()}, std::span<int64_t>(columns).first(n));
}

}  // namespace HighPrecision
