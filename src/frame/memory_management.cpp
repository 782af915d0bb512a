// SPDX-License-Identifier: Apache-2.0
#include "frame/memory_management.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <mutex>
#include <utility>
#include <vector>

namespace {
// Made while the library is loaded, so that it is there before and gone after every handle.
MemoryManagement_c registry;
}  // namespace

MemoryManagement_c& MemoryManagement_c::instance() { return registry; }

// By higher bits than those that a set of addresses finds its places by.
MemoryManagement_c::Section& MemoryManagement_c::sectionOf(const void* address) {
  return sections[reinterpret_cast<uintptr_t>(address) * 0x9e3779b97f4a7c15u >> 60];
}

void MemoryManagement_c::addRaw(BaseData* object) {
  Section& section = sectionOf(object);
  const std::lock_guard guard(section.lock);
  section.rawHandles.insert(object);
  section.destroyed.erase(object);  // the allocator may hand out the address of a destroyed object again
}

void MemoryManagement_c::addShared(void* address, std::shared_ptr<void> owner) {
  Section& section = sectionOf(address);
  const std::lock_guard guard(section.lock);
  section.sharedHandles.try_emplace(address, std::move(owner));
}

void MemoryManagement_c::free(void* address) {
  Section& section = sectionOf(address);
  std::unique_lock guard(section.lock);
  if (!section.sharedHandles.empty())
    if (auto shared = section.sharedHandles.extract(address)) {
      guard.unlock();  // the owner goes with `shared`, outside the lock
      return;
    }
  if (!section.rawHandles.erase(address)) {
    guard.unlock();
    std::free(address);  // a bare block; exports allocate those by malloc
    return;
  }
  const bool alive = !section.destroyed.erase(address);
  guard.unlock();
  if (alive) delete static_cast<BaseData*>(address);
}

void MemoryManagement_c::freeAll() {
  std::vector<void*> alive;
  decltype(Section::sharedHandles) shared;
  for (Section& section : sections) {
    const std::lock_guard guard(section.lock);
    // KEPT: rawHandles keeps the addresses of what is destroyed here; expected: both tables emptied (kept.csv:
    // FreeAll_raw)
    section.rawHandles.forEach([&](void* object) {
      if (section.destroyed.insert(object)) alive.push_back(object);
    });
    shared.merge(section.sharedHandles);
  }
  std::ranges::sort(alive, std::less<>());  // from the smallest address to the largest
  for (void* object : alive) delete static_cast<BaseData*>(object);
}
