// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "sym/store/store.h"

namespace Sym {

/// Every variable node of the old record becomes the new record, or the number for a null record; each parent of a
/// changed node is brought to normal form again.
void replaceVariable(SymObject& root, const VarPtr& old, const VarPtr& record, double number);

/// Replaces in every element: the text names a variable (flag) or is a number, "inf" or "-inf".
void replaceSym(SymMatrix2d_t& matrix, const std::string& name, const std::string& replacement, bool isName);

}  // namespace Sym
