// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace HighPrecision {

/// Places of one calculation, not cleared; a few hundred need no memory of their own.
template <class Place>
class Room {
 public:
  explicit Room(std::size_t n) : many(n > kFew ? std::make_unique_for_overwrite<Place[]>(n) : nullptr), count(n) {}
  Room(const Room&) = delete;
  Room& operator=(const Room&) = delete;

  Place* data() { return many ? many.get() : few; }
  Place* begin() { return data(); }
  Place* end() { return data() + count; }
  std::size_t size() const { return count; }
  Place& operator[](std::size_t i) { return data()[i]; }

 private:
  static constexpr std::size_t kFew = 256;
  std::unique_ptr<Place[]> many;
  std::size_t count;
  Place few[kFew];
};

/// `limbs` in the midst of zeros: `below` of them first, as many places as there are in all.
inline void fillPlaces(std::span<const int64_t> limbs, std::size_t below, std::span<int64_t> places) {
  std::fill_n(places.begin(), below, 0);
  const auto end = std::copy(limbs.begin(), limbs.end(), places.begin() + static_cast<std::ptrdiff_t>(below));
  std::fill(end, places.end(), 0);
}

}  // namespace HighPrecision
