// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "sym/node.h"

namespace Sym {

/// What a node of one kind does. The table of kinds (kind_table.cpp) has one row a kind.
struct Kind {
  uint8_t code;
  const char* name;  ///< also the word of the text form
  uint8_t minArgs;
  uint8_t maxArgs;  ///< kAnyArgs for sums and products
  double (*value)(const SymObject& node);
  void (*update)(SymObject& node);
  void (*text)(SymObject& node);
  std::string (*latex)(SymObject& node);
  NodePtr (*diff)(const SymObject& node, const VarPtr& variable, std::string& message);
};

inline constexpr uint8_t kAnyArgs = 255;

const Kind* findKind(uint8_t code);  ///< null for a code without a row

}  // namespace Sym
