// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sym/store/store.h"

namespace Sym {

/// The derivative of that order of every element by the variable of that name, zeros when there is none. Null with a
/// message when an element refuses.
MatrixPtr diff(const SymMatrix2d_t& matrix, uint32_t order, const std::string& name, std::string& message);

/// A row for each element of a, a column for each of b; zeros for what is no plain variable in b.
MatrixPtr diffVector(const SymMatrix2d_t& a, const SymMatrix2d_t& b, std::string& message);

}  // namespace Sym
