// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <span>
#include <string>

#include "sym/node/node.h"
#include "sym/poly/poly_terms.h"

namespace Sym {

/// The polynomial form of a node in at most one variable, from the cache that it keeps in the node; null when the node
/// is none. A number has no variable, a variable has any coefficient. Otherwise only what normalisation leaves as a sum
/// of monomials counts: powers of x from 0 to 1000000 that are integers to 1e-15, with coefficients above 1e-15; a
/// smaller one makes the whole sum none.
const PolyForm* polynomialForm(SymObject& node);

/// The expression of the terms: a number, a multiple of a power, or a sum of such. It has them as its polynomial form
/// where that could not be read from the expression: the fit of a wide table has coefficients of any size.
NodePtr polynomialNode(const PolyTerms& terms, const VarPtr& variable);

/// The terms of coefficients and exponents; null when an exponent is no integer (to 1e-14) from 0 to 1e8 or occurs
/// twice.
std::optional<PolyTerms> termsOf(std::span<const double> coefficients, std::span<const double> exponents);

/// A polynomial as the product of its factors over the real numbers, such as "3*(x^2+x+1)*x^2*(x-1)^2": the leading
/// coefficient when it is not 1, zero roots, then (x-r) for a real root and (x^2+b*x+c) for a complex pair, in
/// ascending order of the roots, with "^" and the multiplicity above 1. Empty above the degree that roots are found
/// for.
std::string factorText(const PolyForm& form);

}  // namespace Sym
