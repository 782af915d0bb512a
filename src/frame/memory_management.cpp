// SPDX-License-Identifier: Apache-2.0
#include "frame/memory_management.h"

#include <cstdlib>
#include <vector>

namespace {
// Made while the library is loaded, so that it is there before and gone after every handle.
MemoryManagement_c registry;
}  // namespace

MemoryManagement_c& MemoryManagement_c::instance() { return registry; }

void MemoryManagement_c::addRaw(BaseData* object) {
  const std::lock_guard guard(lock);
  rawHandles.insert(object);
  destroyed.erase(object);  // the allocator may hand out the address of a destroyed object again
}

void MemoryManagement_c::addShared(void* address, std::shared_ptr<void> owner) {
  const std::lock_guard guard(lock);
  sharedHandles.try_emplace(address, std::move(owner));
}

void MemoryManagement_c::free(void* address) {
  std::unique_lock guard(lock);
  if (auto shared = sharedHandles.extract(address)) {
    guard.unlock();  // the owner goes with `shared`, outside the lock
    return;
  }
  auto* object = static_cast<BaseData*>(address);
  if (rawHandles.erase(object) == 0) {
    guard.unlock();
    std::free(address);  // a bare block; exports allocate those by malloc
    return;
  }
  const bool alive = destroyed.erase(object) == 0;
  guard.unlock();
  if (alive) delete object;
}

void MemoryManagement_c::freeAll() {
  std::vector<BaseData*> alive;
  decltype(sharedHandles) shared;
  {
    const std::lock_guard guard(lock);
    // KEPT: rawHandles keeps the addresses of what is destroyed here; expected: both tables emptied (kept.csv:
    // FreeAll_raw)
    for (BaseData* object : rawHandles)
      if (object != nullptr && destroyed.insert(object).second) alive.push_back(object);
    shared.swap(sharedHandles);
  }
  for (BaseData* object : alive) delete object;
}
