// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "sym/node/node.h"

namespace Sym {

/// A term that has an identity with another one of the same argument, such as sin(u)^2 with cos(u)^2.
struct IdentityForm {
  enum class Name { none, sinSquared, cosSquared, sinhSquared, coshSquared, erf, erfc, sinh, cosh };

  Name name;
  const SymObject* argument;
  uint64_t hash;  ///< of the argument
};

IdentityForm identityFormOf(const SymObject& term);

/// What is left of coefficients that cancel. A sum that is small because its parts are is no rounding residue and
/// stays.
inline bool isResidue(double sum, double largest) {
  return sum == 0 || ((sum < 0 ? -sum : sum) < kEpsilon && (sum < 0 ? -sum : sum) <= 4 * kEpsilon * largest);
}

/// Writes the coefficient into the node of a term.
void settleTerm(SymObject& term, double coef);

}  // namespace Sym
