// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "special/table.h"
#include "sym/node/node.h"
#include "sym/text/writers.h"

namespace Sym {

struct Rule;  // diff.h

/// What the common update rule and the merges read of a kind; a row joins them with |.
namespace Property {
inline constexpr uint8_t none = 0;
inline constexpr uint8_t odd = 1;   ///< f(-u) = -f(u): the sign moves out
inline constexpr uint8_t even = 2;  ///< f(-u) = f(u): the sign goes
inline constexpr uint8_t bare = 4;  ///< the value ignores coef
}  // namespace Property

/// What a node of one kind does. The table of kinds (kind_table.cpp) has one row a kind.
struct Kind {
  uint8_t code;
  const char* name;  ///< also the word of the text form
  uint8_t minArgs;
  uint8_t maxArgs;  ///< kAnyArgs for sums and products
  uint8_t properties;
  uint8_t undoes;  ///< the kind g with f(g(u)) = u that the common update rule cancels; 0 for none
  double (*value)(const SymObject& node);
  void (*update)(SymObject& node);
  void (*text)(const SymObject& node);
  LatexForm latex;
  const Rule* diff;
  const SpecialFunction::Routine *fewest = nullptr, *most = nullptr;  ///< what value calls; null for the structures

  bool is(uint8_t property) const { return (properties & property) != 0; }
};

inline constexpr uint8_t kAnyArgs = 255;

const Kind* findKind(uint8_t code);  ///< null for a code without a row

}  // namespace Sym
