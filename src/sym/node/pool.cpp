// SPDX-License-Identifier: Apache-2.0
#include "sym/node/pool.h"

#include <new>

namespace Sym {
namespace {

constexpr std::size_t kStep = 8, kLargest = 256, kSlab = 1 << 16;

struct Block {
  Block* next;
};

// No constructor and no destructor: the lists outlive every node of every static store.
Block* freeBlocks[kLargest / kStep + 1];
char* slab;
std::size_t slabLeft;
std::size_t inUse;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kPooled = false;  // the sanitizer must see every release
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kPooled = false;
#else
constexpr bool kPooled = true;
#endif
#else
constexpr bool kPooled = true;
#endif

}  // namespace

void* poolTake(std::size_t bytes) {
  if (!kPooled || bytes > kLargest) return ::operator new(bytes);
  const std::size_t size = (bytes + kStep - 1) / kStep;
  inUse += size * kStep;
  if (Block* block = freeBlocks[size]) {
    freeBlocks[size] = block->next;
    return block;
  }
  if (slabLeft < size * kStep) {
    slab = static_cast<char*>(::operator new(kSlab));  // what was left is too small to matter
    slabLeft = kSlab;
  }
  slabLeft -= size * kStep;
  return slab + slabLeft;
}

void poolGive(void* block, std::size_t bytes) noexcept {
  if (!kPooled || bytes > kLargest) return ::operator delete(block);
  const std::size_t size = (bytes + kStep - 1) / kStep;
  inUse -= size * kStep;
  freeBlocks[size] = new (block) Block{freeBlocks[size]};
}

std::size_t poolInUse() { return inUse; }

}  // namespace Sym
