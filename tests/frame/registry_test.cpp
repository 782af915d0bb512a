// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "frame/handle.h"

namespace {

struct Counted : BaseData {
  explicit Counted(int& deaths) : deaths(deaths) {}
  ~Counted() override { ++deaths; }
  int& deaths;
};

TEST(Registry, SharedObjectOutlivesItsHandle) {
  MemoryManagement_c registry;
  int deaths = 0;
  auto object = std::make_shared<Counted>(deaths);
  registry.addShared(object.get(), object);
  registry.free(object.get());
  EXPECT_EQ(deaths, 0);
  object.reset();
  EXPECT_EQ(deaths, 1);
}

TEST(Registry, FreeAllDestroysEachObjectOnce) {
  int deaths = 0;
  {
    MemoryManagement_c registry;
    auto* owned = new Counted(deaths);
    registry.addRaw(owned);
    registry.addRaw(owned);
    auto shared = std::make_shared<Counted>(deaths);
    registry.addShared(shared.get(), shared);
    shared.reset();
    registry.freeAll();
    EXPECT_EQ(deaths, 2);
    registry.free(owned);  // the address is still known: no plain release of a dead object
  }
  EXPECT_EQ(deaths, 2);
}

}  // namespace
