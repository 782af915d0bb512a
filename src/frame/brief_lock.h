// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <thread>

/// A lock for a few instructions, such as a look-up: entering takes one exchange and leaving one store. Who finds it
/// taken gives the processor away until it is free.
class BriefLock {
 public:
  void lock() {
    while (taken.test_and_set(std::memory_order_acquire))
      while (taken.test(std::memory_order_relaxed)) std::this_thread::yield();
  }
  void unlock() { taken.clear(std::memory_order_release); }

 private:
  std::atomic_flag taken;
};
