// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sym/node/node.h"

/// Update columns of the table of kinds: each brings a node whose arguments are normal to its normal form, in place. A
/// rule never changes the value of the node; where it does not apply, the node stays as built.
namespace Sym {

void updateNumber(SymObject& node);
void updateVariable(SymObject& node);  ///< throws std::invalid_argument for one that was built by its code alone

/// The rule of most kinds, driven by the row: folding of numbers, cancelling of the inverse kind, parity.
void updateCommon(SymObject& node);

void updateLn(SymObject& node);
void updateExp(SymObject& node);
void updateSin(SymObject& node);
void updateCos(SymObject& node);
void updateTan(SymObject& node);
void updateCot(SymObject& node);
void updateHyperbolic(SymObject& node);  ///< Sinh, Cosh, Tanh, Coth
void updateSqrt(SymObject& node);
void updatePow(SymObject& node);
void updateAdd(SymObject& node);
void updateMul(SymObject& node);

}  // namespace Sym
