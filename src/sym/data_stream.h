// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace Sym {

/// A growing byte buffer with a read position. Numbers are little-endian and packed.
class DataStream {
 public:
  /// A read beyond the end.
  struct Short : std::runtime_error {
    Short() : std::runtime_error("short block") {}
  };

  uint64_t pos = 0;
  std::vector<uint8_t> bytes;

  uint64_t left() const { return bytes.size() - pos; }

  template <class T>
  void put(T value) {
    static_assert(std::endian::native == std::endian::little);
    uint8_t raw[sizeof(T)];
    std::memcpy(raw, &value, sizeof(T));
    bytes.insert(bytes.end(), raw, raw + sizeof(T));
  }
  void putText(const std::string& text) { bytes.insert(bytes.end(), text.begin(), text.end()); }

  template <class T>
  T take() {
    T value;
    std::memcpy(&value, next(sizeof(T)), sizeof(T));
    return value;
  }
  std::string takeText(uint64_t length) {
    const uint8_t* from = next(length);
    return {from, from + length};
  }

 private:
  const uint8_t* next(uint64_t count) {
    if (count > left()) throw Short();
    const uint8_t* from = bytes.data() + pos;
    pos += count;
    return from;
  }
};

}  // namespace Sym
