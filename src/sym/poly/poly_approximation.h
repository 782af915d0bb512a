// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sym/node/node.h"

namespace Sym {

/// Chebyshev interpolation of an element in one variable at degree + 1 nodes on [a, b], written in powers of the
/// variable; a clone of an element without variables. Null for another interval or degree, for more variables, and
/// where a sample or a coefficient is not finite.
NodePtr chebyshevApproximation(const SymObject& element, double a, double b, int32_t degree);

}  // namespace Sym
