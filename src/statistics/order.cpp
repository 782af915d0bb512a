// SPDX-License-Identifier: Apache-2.0
#include "statistics/order.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "frame/numbers.h"
#include "statistics/quantile.h"

namespace Statistics {
namespace {

constexpr std::size_t kMany = 400;  // from here on the passes cost less than comparisons
constexpr unsigned kBits = 11, kPasses = 6, kDigits = 1U << kBits;
constexpr uint64_t kSign = uint64_t{1} << 63;

unsigned digit(uint64_t key, unsigned pass) { return static_cast<unsigned>(key >> (pass * kBits)) & (kDigits - 1); }

// Sorts by the digits of the keys, the last digit first; a digit that all keys share costs nothing.
void sortByDigits(std::vector<uint64_t>& keys) {
  std::vector<std::array<uint32_t, kDigits>> counts(kPasses);
  for (const uint64_t key : keys)
    for (unsigned pass = 0; pass < kPasses; ++pass) ++counts[pass][digit(key, pass)];
  std::vector<uint64_t> other(keys.size());
  for (unsigned pass = 0; pass < kPasses; ++pass) {
    if (counts[pass][digit(keys[0], pass)] == keys.size()) continue;
    uint32_t place = 0;
    for (uint32_t& count : counts[pass]) place += std::exchange(count, place);
    for (const uint64_t key : keys) other[counts[pass][digit(key, pass)]++] = key;
    keys.swap(other);
  }
}

}  // namespace

std::vector<double> sorted(std::span<const double> x) {
  std::vector<double> values(x.begin(), x.end());
  if (values.size() < kMany) {
    std::sort(values.begin(), values.end(), ascending);
    return values;
  }
  std::vector<uint64_t> keys(values.size());
  std::transform(values.begin(), values.end(), keys.begin(), [](double value) {
    return std::isnan(value) ? ~uint64_t{0} : static_cast<uint64_t>(placeOf(value)) ^ kSign;
  });
  sortByDigits(keys);
  std::transform(keys.begin(), keys.end(), values.begin(),
                 [](uint64_t key) { return key == ~uint64_t{0} ? kNaN : doubleAt(static_cast<int64_t>(key ^ kSign)); });
  return values;
}

}  // namespace Statistics
