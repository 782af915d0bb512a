// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

/// A growing byte buffer with a read position. Numbers are little-endian and packed. A read beyond the end, or of what
/// cannot be true, makes the stream bad: it then gives zeros and is at its end.
class DataStream {
 public:
  uint64_t pos = 0;
  std::vector<uint8_t> bytes;

  uint64_t left() const { return bytes.size() - pos; }
  bool bad() const { return isBad; }
  void makeBad() {
    isBad = true;
    pos = bytes.size();
  }

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
    T value{};
    if (holds(sizeof(T))) {
      std::memcpy(&value, bytes.data() + pos, sizeof(T));
      pos += sizeof(T);
    }
    return value;
  }
  std::string takeText(uint64_t length) {
    if (!holds(length)) return {};
    pos += length;
    return {bytes.begin() + static_cast<std::ptrdiff_t>(pos - length),
            bytes.begin() + static_cast<std::ptrdiff_t>(pos)};
  }

 private:
  bool holds(uint64_t count) {
    if (count > left()) makeBad();
    return !isBad;
  }

  bool isBad = false;
};
