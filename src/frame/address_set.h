// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

/// A set of addresses in one array: open addressing with linear probing, at most half full, so that entering and
/// leaving touch one or two lines of the cache and no allocator. Null is never a member.
class AddressSet {
 public:
  /// False when the address is there already.
  bool insert(void* address) {
    if (count >= most)
      resize(slots.empty() ? kFewest : 2 * slots.size());
    else if (count < least)
      resize(slots.size() / 4);  // here and not in `erase`, which so never allocates
    std::size_t i = homeOf(address);
    for (; slots[i] != nullptr; i = next(i))
      if (slots[i] == address) return false;
    slots[i] = address;
    ++count;
    return true;
  }

  /// False when the address is not there.
  bool erase(void* address) {
    if (count == 0 || address == nullptr) return false;
    std::size_t gap = homeOf(address);
    for (; slots[gap] != address; gap = next(gap))
      if (slots[gap] == nullptr) return false;
    // What stands behind moves up where its home does not lie behind the gap (Knuth, TAOCP 3, 6.4, algorithm R).
    for (std::size_t i = next(gap); slots[i] != nullptr; i = next(i))
      if (distance(homeOf(slots[i]), i) >= distance(gap, i)) {
        slots[gap] = slots[i];
        gap = i;
      }
    slots[gap] = nullptr;
    --count;
    return true;
  }

  std::size_t size() const { return count; }

  template <class Work>
  void forEach(const Work& work) const {
    for (void* address : slots)
      if (address != nullptr) work(address);
  }

 private:
  static constexpr std::size_t kFewest = 64;

  std::size_t next(std::size_t i) const { return (i + 1) & mask; }
  std::size_t distance(std::size_t from, std::size_t to) const { return (to - from) & mask; }
  // Fibonacci hashing: neighbours in memory land far apart, the alignment of blocks does not matter.
  std::size_t homeOf(const void* address) const {
    return static_cast<std::size_t>(reinterpret_cast<uintptr_t>(address) * 0x9e3779b97f4a7c15u >> 20) & mask;
  }

  void resize(std::size_t places) {
    std::vector<void*> old(places, nullptr);
    old.swap(slots);
    mask = places - 1;
    most = places / 2;
    least = places > kFewest ? places / 16 : 0;
    for (void* address : old)
      if (address != nullptr) {
        std::size_t i = homeOf(address);
        while (slots[i] != nullptr) i = next(i);
        slots[i] = address;
      }
  }

  std::vector<void*> slots;  // a power of two of them; null where nobody is
  std::size_t count = 0, mask = 0;
  std::size_t most = 0, least = 0;  // members before one more is entered that fit
};
