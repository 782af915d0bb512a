// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "frame/numbers.h"
#include "sym/node/node.h"

namespace Sym {

inline constexpr double kTol = 1e-14;

inline bool within(double x, double value, double bound) { return x - value < bound && value - x < bound; }

// In-place edits of a node. All clear the cached text and the polynomial form; a change of kind rebinds.

void setConstant(SymObject& node, double value);

/// The node becomes kind(arg), keeping its coef, and is updated.
void setUnary(SymObject& node, NodePtr arg, uint8_t kind);

/// The same with two arguments; 7 subtracts and 8 divides.
void setBinary(SymObject& node, NodePtr a, NodePtr b, uint8_t kind);

/// The node becomes scale times the source, whose arguments it takes over.
void copyFrom(SymObject& node, SymObject& source, double scale);

/// Multiplies the coefficient of a sum into its terms, all the way down.
void distributeCoef(SymObject& node);

/// Multiplies the value, also of a kind that ignores its coefficient: that one becomes a product.
void multiplyValue(SymObject& node, double factor);
NodePtr scaledClone(const SymObject& node, double factor);

/// The factor with which the coefficient enters the value: coef, or 1 for a kind that ignores it.
double coefficientOf(const SymObject& node);

/// Takes the coefficient out: returns it and leaves the node with 1.
double takeCoefficient(SymObject& node);

}  // namespace Sym
