// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <map>
#include <memory>

#include "frame/address_set.h"
#include "frame/base_data.h"
#include "frame/brief_lock.h"

/// The registries of what the host holds: objects that the library owns outright (`rawHandles`) and objects that
/// other objects of the library may own too (`sharedHandles`). Every operation is safe on any thread; destructors run
/// outside the locks. Addresses are spread over sections with a lock each, so that threads rarely wait for each other.
class MemoryManagement_c final : public BaseData {
 public:
  MemoryManagement_c() { typeCode = 0; }
  ~MemoryManagement_c() override { freeAll(); }
  MemoryManagement_c(const MemoryManagement_c&) = delete;
  MemoryManagement_c& operator=(const MemoryManagement_c&) = delete;

  /// The one instance of the process.
  static MemoryManagement_c& instance();

  /// Takes ownership; an address that is known already is left as it is.
  void addRaw(BaseData* object);
  /// Enters a shared owner; an address that is known already keeps its old entry.
  void addShared(void* address, std::shared_ptr<void> owner);

  void free(void* address);
  void freeAll();

 private:
  struct alignas(64) Section {
    BriefLock lock;
    AddressSet rawHandles;
    AddressSet destroyed;  // members of rawHandles that freeAll has destroyed
    std::map<void*, std::shared_ptr<void>, std::less<>> sharedHandles;
  };
  static constexpr std::size_t kSections = 16;

  Section& sectionOf(const void* address);

  std::array<Section, kSections> sections;
};
