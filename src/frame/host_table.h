// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <memory>
#include <mutex>

/// What a host holds of one family: objects by their address, with a test of the address at every use.
template <class T>
class HostTable {
 public:
  T* enter(std::shared_ptr<T> object) {
    const std::lock_guard<std::mutex> lock(mutex);
    T* address = object.get();
    if (address != nullptr) objects[address] = std::move(object);
    return address;
  }
  /// Null for an unknown address.
  std::shared_ptr<T> find(const T* address) const {
    const std::lock_guard<std::mutex> lock(mutex);
    const auto entry = objects.find(address);
    return entry == objects.end() ? nullptr : entry->second;
  }
  bool erase(const T* address) {
    const std::lock_guard<std::mutex> lock(mutex);
    return objects.erase(address) != 0;
  }

 private:
  mutable std::mutex mutex;
  std::map<const T*, std::shared_ptr<T>> objects;
};
