// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "sym/node/node.h"

namespace Sym {

/// The order of terms and factors: negative, 0 or positive. Negative coefficients come last, then kind, coefficient,
/// name, number of arguments and the arguments decide.
int compareNodes(const SymObject& a, const SymObject& b);

/// Equal trees, terms and factors in any order; the coefficients of a and b themselves count when asked for.
bool sameNode(const SymObject& a, const SymObject& b, bool withCoefficient);

/// Equal for nodes that are the same but for their coefficient. Coefficients further down enter rounded, so that
/// two that sameNode takes for equal differ in it only at the rim of a step of 1e-6, with a chance of about 1e-10.
uint64_t hashOf(const SymObject& node);

/// The same with the node's own coefficient.
uint64_t hashWithCoefficient(const SymObject& node);

/// Sorts by compareNodes; equal ones keep their order.
void sortNodes(Args& nodes);

/// True when the value is never negative (or not defined) by the form of the node alone.
bool neverNegative(const SymObject& node);

}  // namespace Sym
