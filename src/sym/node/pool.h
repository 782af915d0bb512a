// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace Sym {

/// Small blocks for nodes and their arguments, kept in lists by size and used again: an expression is many small
/// objects of a few sizes, and most of the time of building one would go to the heap. The memory stays with the pool.
/// Like the store it serves one thread at a time.
void* poolTake(std::size_t bytes);
void poolGive(void* block, std::size_t bytes) noexcept;
std::size_t poolInUse();  ///< bytes taken and not given back

/// The pool as an allocator of the standard library.
template <class T>
struct PoolAllocator {
  using value_type = T;
  PoolAllocator() = default;
  template <class U>
  PoolAllocator(const PoolAllocator<U>&) noexcept {}
  T* allocate(std::size_t n) { return static_cast<T*>(poolTake(n * sizeof(T))); }
  void deallocate(T* p, std::size_t n) noexcept { poolGive(p, n * sizeof(T)); }
  template <class U>
  bool operator==(const PoolAllocator<U>&) const noexcept {
    return true;
  }
};

}  // namespace Sym
