// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include "sym/store/store.h"

/// Operations on matrices of expressions. Results hold clones; an element that is null stays null where it is only
/// copied.
namespace Sym {

MatrixPtr makeMatrix(NodePtr element);  ///< 1 by 1
MatrixPtr cloneMatrix(const SymMatrix2d_t& matrix);
MatrixPtr rowOf(const SymMatrix2d_t& matrix, std::size_t row);
MatrixPtr columnOf(const SymMatrix2d_t& matrix, std::size_t col);
MatrixPtr transpose(const SymMatrix2d_t& matrix);

MatrixPtr trace(const SymMatrix2d_t& matrix);
MatrixPtr sumOfAll(const SymMatrix2d_t& matrix);
MatrixPtr determinant(const SymMatrix2d_t& matrix);
MatrixPtr inverse(const SymMatrix2d_t& matrix);
MatrixPtr skew(const SymMatrix2d_t& vector);

MatrixPtr dot(const SymMatrix2d_t& a, const SymMatrix2d_t& b);
MatrixPtr cross(const SymMatrix2d_t& a, const SymMatrix2d_t& b);  ///< of the shape of a

/// Element-wise kind of two arguments; a 1-by-1 side is paired with every element of the other.
MatrixPtr elementWise(const SymMatrix2d_t& a, const SymMatrix2d_t& b, uint8_t code);

/// The operation of a code, ORVANE_SYM_TRACE to ORVANE_SYM_SKEW; null for another.
MatrixPtr oneFun(const SymMatrix2d_t& matrix, uint8_t code);

MatrixPtr rotation(const NodePtr& angle, uint8_t axis);  ///< about axis 1, 2 or 3; null for another

/// Value of an element, NaN for one that is null.
double elementValue(const NodePtr& element);

bool allNumbers(const SymMatrix2d_t& matrix);

/// The distinct variables below the node, added to those found before, ordered by the address of the record.
void collectVariables(const SymObject& node, std::vector<VarPtr>& found);

/// The matrix's own list of variables, made and ordered by name when it is empty.
const std::vector<VarPtr>& variablesOf(SymMatrix2d_t& matrix);

/// Position i of the list takes the old entry at order[i]; a position whose index lies outside stays.
void reorderVariables(SymMatrix2d_t& matrix, std::span<const int32_t> order);

}  // namespace Sym
