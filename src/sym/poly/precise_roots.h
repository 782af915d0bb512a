// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <complex>
#include <vector>

#include "sym/poly/squarefree.h"

namespace Sym {

/// The roots of a square-free integer polynomial, rounded to doubles, from approximations that may be poor: Aberth's
/// iteration in ever more bits, until each root lies in a disc of relative radius 2^-56 (n |p/p'| with the rounding
/// error of p, Henrici's bound). Conjugate pairs come out exact, real roots real.
std::vector<std::complex<double>> preciseRoots(const IntegerPoly& p, std::vector<std::complex<double>> start);

}  // namespace Sym
