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
    for (std::size_t i = node->args.size(); i-- > 0;)
      if (node->args[i]) pending.push_back(node->args[i].get());
  }
}

}  // namespace Sym
