// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <utility>
#include <vector>

#include "sym/node/node.h"

namespace Sym {

/// A number, a variable, or a sum of numbers and variables, each variable with a factor.
bool isLineExpress(const SymObject& node);

/// A product of two variables or the square of one, or a sum of such terms (one at least), variables and numbers.
bool isQuadExpress(const SymObject& node);

/// x y or x^2 of variables, whatever its coefficient.
bool isQuadTerm(const SymObject& node);

/// Variables of a linear node with their coefficients, in the order of the terms; empty for a node that is not linear.
/// The constant is not among them: it is the value with all variables 0.
std::vector<std::pair<VarPtr, double>> getLineExpress(const SymObject& node);

}  // namespace Sym
