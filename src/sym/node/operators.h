// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sym/node/node.h"

namespace Sym {

// Collapsing operators: zeros, ones and numbers (within 1e-14) vanish as they arise. Each takes its operands over; a
// node that is needed twice is cloned by the caller.
NodePtr add(NodePtr a, NodePtr b);
NodePtr sub(NodePtr a, NodePtr b);
NodePtr mul(NodePtr a, NodePtr b);
NodePtr mul3(NodePtr a, NodePtr b, NodePtr c);  ///< numbers are folded first
NodePtr div(NodePtr a, NodePtr b);
NodePtr pow(NodePtr a, double k);
NodePtr addc(NodePtr a, double k);
NodePtr subc(NodePtr a, double k);

bool isNumber(const SymObject& node);
bool isNumber(const SymObject& node, double value);  ///< a number within 1e-14 of the value

}  // namespace Sym
