// SPDX-License-Identifier: Apache-2.0
#include "highprecision/decimal/limb_quotient.h"

#include <algorithm>
#include <cmath>

#include "highprecision/decimal/hp_number.h"
#include "highprecision/decimal/limb_product.h"
#include "highprecision/decimal/room.h"

namespace HighPrecision {
namespace {

constexpr auto kRadix = static_cast<double>(kBase);

// x[n-1] + x[n-2] / 10^7 + ..., over the highest three places: of columns, what is left out is felt below 10^-3 of a
// limb.
double lead(const int64_t* x, std::size_t n) {
  const double sum = static_cast<double>(x[n - 1]) + static_cast<double>(x[n - 2]) * (1 / kRadix);
  return n > 2 ? sum + static_cast<double>(x[n - 3]) * (1 / (kRadix * kRadix)) : sum;
}

// The last limb is the nearest one, so that the sign of the rest alone tells the floor; the others are cut.
int64_t limbOf(double estimate, bool last) {
  return static_cast<int64_t>(last ? estimate + std::copysign(0.5, estimate) : estimate);
}

// True when a sum over columns is negative.
bool isNegative(std::span<int64_t> columns) {
  const double size = lead(columns.data(), columns.size());
  if (std::abs(size) > 2e-3) return size < 0;  // the columns below cannot turn that
  int64_t carry = 0;
  for (const int64_t column : columns) {
    const int64_t sum = column + carry;
    carry = sum / kBase - (sum % kBase < 0);
  }
  return carry < 0;
}

// The value that the estimates came to is the floor, or one more: the rest is negative then. Its limbs lie within
// -10^7 and 10^7, or a little outside.
void makeFloor(std::span<int64_t> value, std::span<int64_t> rest) {
  int64_t carry = isNegative(rest) ? -1 : 0;
  for (int64_t& limb : value) {
    const int64_t sum = limb + carry;
    carry = int64_t{sum >= kBase} - int64_t{sum < 0} - int64_t{sum < -kBase};
    limb = sum - carry * kBase;
  }
}

// A long division by four limbs of the quotient at a time: the highest limbs of the divisor alone reach their estimates
// and are subtracted at once, the others by four rows together.
class Division {
 public:
  // A shorter divisor is filled up by zeros below, and the dividend with it.
  static constexpr std::size_t kShortest = 6;

  // `divisor` has three zeros before it.
  Division(std::span<const int64_t> divisor, std::span<int64_t> columns)
      : divisor(divisor), columns(columns), inverse(1 / lead(divisor.data(), divisor.size())) {
    std::reverse_copy(divisor.end() - kShortest, divisor.end(), top);
  }

  // The limb at place k alone.
  int64_t one(std::size_t k, bool last) {
    const std::size_t n = divisor.size();
    if (k + n < columns.size()) columns[k + n - 1] += columns[k + n] * kBase;
    const int64_t limb = limbOf(lead(columns.data() + k, n) * inverse, last);
    subtractMultiple(columns.data() + k, limb, divisor.data(), n);
    return limb;
  }

  // The limbs at the places k to k + 3.
  void four(std::size_t k, int64_t* quotient, bool last) {
    const std::size_t n = divisor.size();
    const int64_t* const highest = columns.data() + k + n + 2;
    uint64_t rest[kShortest];  // of the columns from the highest one down; sums beyond 64 bits on the way do not matter
    for (std::size_t i = 0; i < kShortest; ++i) rest[i] = static_cast<uint64_t>(*(highest - i));
    if (k + 3 + n < columns.size()) rest[0] += static_cast<uint64_t>(highest[1] * kBase);
    int64_t factors[kRows];
    for (std::size_t s = 0; s < kRows; ++s) {
      const bool final = s + 1 == kRows;
      const uint64_t carried = rest[s + 1] + rest[s] * static_cast<uint64_t>(kBase);
      const int64_t limb = limbOf(estimate(rest + s), last && final);
      for (std::size_t i = s; i < kShortest; ++i) rest[i] -= static_cast<uint64_t>(limb * top[i - s]);
      if (!final) rest[s + 1] = carried - static_cast<uint64_t>(limb * (top[1] + top[0] * kBase));
      quotient[kRows - 1 - s] = limb;
      factors[kRows - 1 - s] = -limb;
    }
    for (std::size_t i = kRows - 1; i < kShortest; ++i) columns[k + n + 2 - i] = static_cast<int64_t>(rest[i]);
    addRows(divisor.data(), factors, columns.data() + k, n - 3);
  }

 private:
  double estimate(const uint64_t* rest) const {
    const auto place = [&](int i) { return static_cast<double>(static_cast<int64_t>(rest[i])); };
    return place(0) * inverse + (place(1) * (inverse / kRadix) + place(2) * (inverse / kRadix / kRadix));
  }

  const std::span<const int64_t> divisor;
  const std::span<int64_t> columns;
  const double inverse;
  int64_t top[kShortest];
};

}  // namespace

void quotientLimbs(std::span<const int64_t> a, std::size_t padding, std::span<const int64_t> b,
                   std::span<int64_t> quotient) {
  constexpr std::size_t kBefore = kRows - 1;
  const std::size_t n = std::max(b.size(), Division::kShortest), filled = n - b.size();
  Room<int64_t> columns(a.size() + padding + filled), divisor(kBefore + n);
  fillPlaces(a, padding + filled, columns);
  fillPlaces(b, kBefore + filled, divisor);
  Division division(std::span<const int64_t>(divisor).subspan(kBefore), columns);
  std::size_t k = quotient.size();
  while (k % kRows != 0) {
    --k;
    quotient[k] = division.one(k, k == 0);
  }
  while (k > 0) {
    k -= kRows;
    division.four(k, quotient.data() + k, k == 0);
  }
  makeFloor(quotient, std::span(columns).first(n));
}

void rootLimbs(std::span<const int64_t> a, std::size_t padding, std::span<int64_t> root) {
  const std::size_t n = root.size();
  Room<int64_t> columns(2 * n);
  fillPlaces(a, padding, columns);
  // Two limbs at once: one alone would be too coarse for the correction of the next.
  // Its precision is that of all estimates, so that five places count: the highest may be 0.
  const int64_t* const below = columns.data() + 2 * n - 4;
  const double tail = n > 2 ? static_cast<double>(below[0]) * kRadix + static_cast<double>(below[-1]) : 0;
  const double whole =
      std::sqrt((lead(columns.data(), 2 * n) + tail * (1 / (kRadix * kRadix * kRadix * kRadix))) * kRadix);
  const double inverse = 0.5 / whole;
  const int64_t first = limbOf(whole * kRadix, n == 2);
  const int64_t high = first / kBase, low = first % kBase;
  root[n - 1] = high;
  root[n - 2] = low;
  columns[2 * n - 2] += columns[2 * n - 1] * kBase - high * high;
  columns[2 * n - 3] += columns[2 * n - 2] * kBase - 2 * high * low;
  columns[2 * n - 4] -= low * low;
  for (std::size_t k = n - 2; k-- > 0;) {
    columns[n - 1 + k] += columns[n + k] * kBase;
    // With the root R and what is missing l, R^2 - (R - l)^2 = 2 R l - l^2; the square is felt at the third limb alone.
    double estimate = lead(columns.data(), n + k) * inverse;
    if (k == n - 3) estimate += estimate * estimate * inverse * (1 / (kRadix * kRadix));
    const int64_t limb = limbOf(estimate, k == 0);
    subtractMultiple(columns.data() + 2 * k + 1, 2 * limb, root.data() + k + 1, n - 1 - k);
    columns[2 * k] -= limb * limb;
    root[k] = limb < 0 ? limb + kBase : limb;
    for (std::size_t i = k + 1, borrow = limb < 0; borrow != 0; ++i) {
      borrow = root[i] == 0;
      root[i] = borrow != 0 ? kBase - 1 : root[i] - 1;
    }
  }
  makeFloor(root, std::span(columns).first(n));
}

}  // namespace HighPrecision
