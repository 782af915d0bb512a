// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "sym/node/node.h"

namespace Sym {

/// Calls visit on the node and all below it, parents first and arguments from left to right, without recursion.
template <class Node, class Visit>
void forEachNode(Node& root, Visit&& visit) {
  std::vector<Node*> pending{&root};
  while (!pending.empty()) {
    Node* node = pending.back();
    pending.pop_back();
    visit(*node);
    for (auto arg = node->args.rbegin(); arg != node->args.rend(); ++arg)
      if (*arg) pending.push_back(arg->get());
  }
}

}  // namespace Sym
