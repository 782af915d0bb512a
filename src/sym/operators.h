// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sym/node.h"

namespace Sym {

// Collapsing operators: zeros, ones and numbers vanish as they arise. Each takes its operands over; a node that is
// needed twice is cloned by the caller.
NodePtr add(NodePtr a, NodePtr b);
NodePtr sub(NodePtr a, NodePtr b);
NodePtr mul(NodePtr a, NodePtr b);
NodePtr mul3(NodePtr a, NodePtr b, NodePtr c);
NodePtr div(NodePtr a, NodePtr b);
NodePtr pow(NodePtr a, double k);

}  // namespace Sym
