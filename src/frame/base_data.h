// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

/// Root of every object that a host may hold. `typeCode` tags the class at run time: 255 unless a class writes its own
/// in its constructor (the most derived class writes last).
class BaseData {
 public:
  virtual ~BaseData() = default;
  BaseData(const BaseData&) = default;
  BaseData& operator=(const BaseData&) = default;

  uint8_t typeCode = 255;

 protected:
  BaseData() = default;
};
