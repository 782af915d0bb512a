// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "orvane/line_programme.h"

namespace LineProg {

/// What a variable may be.
enum VarKind : uint8_t {
  kReal = ORVANE_VARIABLE_REAL,
  kInteger = ORVANE_VARIABLE_INTEGER,
  kBinary = ORVANE_VARIABLE_BINARY
};

/// What a constraint says of its sum and its right side.
enum Relation : uint8_t {
  kAtMost = ORVANE_RELATION_AT_MOST,
  kAtLeast = ORVANE_RELATION_AT_LEAST,
  kEqual = ORVANE_RELATION_EQUAL
};

/// A structural variable.
struct BaseVar {
  int32_t index = 0;
  uint8_t isFree = 1;
  uint8_t varKind = kReal;
  double value = 0;
  double maxValue = 1e300;
  double minValue = -1e300;
  uint8_t state = 255;
};

/// A linear sum over variables by their numbers, with its relation and right side: sum of coefs <relation> constCoef.
struct EquVar {
  std::vector<std::pair<int32_t, double>> coefs;  ///< by ascending number, each number once
  uint8_t relation = kAtMost;
  double constCoef = 0;
};

}  // namespace LineProg
