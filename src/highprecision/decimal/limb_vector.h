// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <span>
#include <utility>

namespace HighPrecision {

/// In a loop over a few limbs: keeps the compiler from making it one over vectors, whose wide loads would wait for
/// narrow stores shortly before them.
[[gnu::always_inline]] inline void oneByOne() { asm volatile(""); }

inline void copyFewLimbs(const int64_t* from, std::size_t n, int64_t* to) {
  for (std::size_t i = 0; i < n; ++i) {
    to[i] = from[i];
    oneByOne();
  }
}

/// Copies limbs to other places, which may overlap below.
inline void copyLimbs(const int64_t* from, std::size_t n, int64_t* to) {
  constexpr std::size_t kFew = 12;
  if (n > kFew)
    std::copy_n(from, n, to);
  else
    copyFewLimbs(from, n, to);
}

/// The limbs of a number, least significant first. A few stand in the object itself: a short number is one block of
/// memory.
class LimbVector {
 public:
  LimbVector() = default;
  LimbVector(std::initializer_list<int64_t> limbs) : LimbVector(std::span(limbs.begin(), limbs.size())) {}
  explicit LimbVector(std::span<const int64_t> limbs) { assign(limbs); }
  LimbVector(const LimbVector& other) { assign(other); }
  LimbVector(LimbVector&& other) noexcept { take(other); }
  LimbVector& operator=(const LimbVector& other) {
    if (this != &other) assign(other);
    return *this;
  }
  LimbVector& operator=(LimbVector&& other) noexcept {
    if (this != &other) take(other);
    return *this;
  }
  ~LimbVector() = default;

  std::size_t size() const { return count; }
  bool empty() const { return count == 0; }
  int64_t* data() { return many ? many.get() : few; }
  const int64_t* data() const { return many ? many.get() : few; }
  int64_t* begin() { return data(); }
  int64_t* end() { return data() + count; }
  const int64_t* begin() const { return data(); }
  const int64_t* end() const { return data() + count; }
  int64_t& operator[](std::size_t i) { return data()[i]; }
  int64_t operator[](std::size_t i) const { return data()[i]; }
  int64_t front() const { return data()[0]; }
  int64_t back() const { return data()[count - 1]; }

  void push_back(int64_t limb) {
    if (count == room) grow(2 * room);
    data()[count++] = limb;
  }
  void pop_back() { --count; }
  void clear() { count = 0; }
  void reserve(std::size_t places) {
    if (places > room) grow(places);
  }
  /// The limbs must not be this vector's own.
  void assign(std::span<const int64_t> limbs) {
    count = 0;
    reserve(limbs.size());
    copyLimbs(limbs.data(), limbs.size(), data());
    count = limbs.size();
  }
  void dropTopZeros(std::size_t least = 0) {
    while (count > least && back() == 0) --count;
  }
  /// As many limbs, of any value.
  void makePlaces(std::size_t places) {
    count = 0;
    reserve(places);
    count = places;
  }
  /// Keeps `limbs` of them from one on. Memory that would be much more than they need is given back.
  void keep(std::size_t from, std::size_t limbs) {
    if (limbs + limbs / 2 + kFew < room) {
      *this = LimbVector(std::span(data() + from, limbs));
      return;
    }
    if (from > 0) copyLimbs(data() + from, limbs, data());
    count = limbs;
  }
  void dropLow(std::size_t limbs) { keep(limbs, count - limbs); }
  /// Times 10^(7 zeros).
  void insertLow(std::size_t zeros) {
    reserve(count + zeros);
    std::copy_backward(begin(), end(), end() + zeros);
    std::fill_n(begin(), zeros, 0);
    count += zeros;
  }

 private:
  static constexpr std::size_t kFew = 8;

  [[gnu::noinline]] void grow(std::size_t places);
  void take(LimbVector& other) {
    many = std::move(other.many);
    room = std::exchange(other.room, kFew);
    count = std::exchange(other.count, 0);
    if (!many) copyFewLimbs(other.few, count, few);
  }

  std::size_t count = 0, room = kFew;
  std::unique_ptr<int64_t[]> many;  // null while the few are enough
  int64_t few[kFew];
};

}  // namespace HighPrecision
