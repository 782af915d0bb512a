// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>

/// A number that a run writes and that another thread may read for its progress display. Relaxed order: the reader
/// wants a whole value, not a consistent set. On common machines this is a plain load and store.
template <class T>
class SharedValue {
 public:
  SharedValue(T start) : value(start) {}
  SharedValue(const SharedValue& other) : value(other.get()) {}
  SharedValue& operator=(const SharedValue& other) { return *this = other.get(); }
  SharedValue& operator=(T next) {
    value.store(next, std::memory_order_relaxed);
    return *this;
  }
  T get() const { return value.load(std::memory_order_relaxed); }
  operator T() const { return get(); }

 private:
  std::atomic<T> value;
};
