// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <thread>
#include <vector>

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

// Beside the standard set: growth, shrinking, and the moves that close the gap of what leaves.
TEST(Registry, AddressSetIsASet) {
  AddressSet ours;
  std::set<void*> expected;
  uint64_t state = 3;
  const auto drawn = [&state](uint64_t n) {
    state = state * 6364136223846793005u + 1442695040888963407u;
    return (state >> 33) % n;
  };
  for (const uint64_t crowd : {8, 3000, 20, 40000, 1})  // how many of them there are at most
    for (int round = 0; round < 60000; ++round) {
      // Blocks of 16 bytes, dense at first and then spread over pages: their homes meet often.
      auto* address = reinterpret_cast<void*>((drawn(2) != 0 ? 4096 : 16) * (1 + drawn(2 * crowd)));
      if (drawn(2) != 0 && expected.size() < crowd)
        ASSERT_EQ(ours.insert(address), expected.insert(address).second);
      else
        ASSERT_EQ(ours.erase(address), expected.erase(address) == 1);
      ASSERT_EQ(ours.size(), expected.size());
    }
  EXPECT_FALSE(ours.erase(nullptr));
  std::set<void*> left;
  ours.forEach([&](void* address) { left.insert(address); });
  EXPECT_EQ(left, expected);
}

TEST(Registry, ThreadsFreeWhatOthersMade) {
  MemoryManagement_c registry;
  constexpr int kThreads = 4, kObjects = 2000;
  std::vector<int> deaths(kThreads * kObjects);
  std::vector<Counted*> objects;
  for (int& each : deaths) objects.push_back(new Counted(each));
  const auto onEach = [&](auto work) {
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
      threads.emplace_back([&, t] {
        for (std::size_t i = 0; i < kObjects; ++i) work(objects[i * kThreads + static_cast<std::size_t>(t)]);
      });
    for (std::thread& thread : threads) thread.join();
  };
  onEach([&](Counted* object) { registry.addRaw(object); });
  std::rotate(objects.begin(), objects.begin() + 1, objects.end());
  onEach([&](Counted* object) {
    if (object != objects[0]) registry.free(object);
  });
  EXPECT_EQ(std::count(deaths.begin(), deaths.end(), 1), kThreads * kObjects - 1);
  registry.freeAll();
  EXPECT_EQ(std::count(deaths.begin(), deaths.end(), 1), kThreads * kObjects);
}

}  // namespace
