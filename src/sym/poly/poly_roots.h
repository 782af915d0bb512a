// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "sym/poly/poly_terms.h"

namespace Sym {

inline constexpr int64_t kRootDegreeLimit = 1000;

struct PolyRoot_t {
  double re, im;
  int32_t multiplicity;
};

/// The complex roots of a polynomial of degree 0 to kRootDegreeLimit with finite coefficients, ascending by real, then
/// by imaginary part; those of a complex pair have exactly opposite imaginary parts.
///
/// Up to degree 200 they are the correctly located roots of the polynomial as its doubles stand: multiplicities come
/// from the exact square-free decomposition (Yun 1976) of the integer polynomial that the doubles make, the roots of
/// each factor from Aberth's simultaneous iteration (Math. Comp. 27, 1973) in as many bits as it takes. Above, from the
/// same iteration in double precision, each root with the backward error of its evaluation; equal roots are then found
/// as a cluster.
std::vector<PolyRoot_t> polyRoots(const PolyTerms& terms);

}  // namespace Sym
