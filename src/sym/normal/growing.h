// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "sym/node/node.h"

/// Sums and products that a host makes longer call by call. To bring each partial result to its normal form would take
/// time with the square of their length. So a partial result is the list of what it was made of, and shares that list
/// with the partial results before and after it. It is built when someone looks at it: part by part, with the rules
/// and in the order of the calls, so that it is the node that the calls would have made.
namespace Sym {

/// What the partial results of one chain of calls share.
struct Growth {
  uint8_t kind;                ///< Add or Mul
  NodePtr base;                ///< the normal form at which the chain starts; never changed
  std::vector<NodePtr> parts;  ///< never changed; only appended to
};

/// A node that is handed out before it is built: its flag says so.
class GrownNode final : public SymObject {
 public:
  GrownNode(std::shared_ptr<Growth> of, std::size_t parts);

  std::shared_ptr<Growth> growth;  ///< empty once the node is built
  std::size_t count;               ///< the parts of the growth that belong to the node
};

inline constexpr uint8_t kToBuild = 2;  ///< flag of a node that is not built yet

/// The node of code on clones of a and b, to be built later; null where it has to be made at once: code or a are no
/// sum or product, or a has few parts. a need not be built, b must be.
NodePtr grow(const SymObject& a, const SymObject& b, uint8_t code);

void buildGrownNode(SymObject& node);

/// Builds the node where that is still to be done.
inline void buildGrown(SymObject& node) {
  if (node.flag == kToBuild) buildGrownNode(node);
}
inline const SymObject& built(const SymObject& node) {
  buildGrown(const_cast<SymObject&>(node));  // it is the same node to everyone who can see it
  return node;
}

/// What a factor is a power of: itself, or what stands under a root or in a power.
const SymObject* baseOf(const SymObject& factor);

}  // namespace Sym
