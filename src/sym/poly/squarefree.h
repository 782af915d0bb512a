// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gmpxx.h>

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace Sym {

/// Coefficients in ascending exponents, the last one not 0.
using IntegerPoly = std::vector<mpz_class>;

/// The polynomial of finite doubles times the power of two that makes all coefficients integers.
IntegerPoly integerPoly(std::span<const double> ascending);

/// Above this degree the integers of the decomposition grow too large: a polynomial then counts as square-free.
inline constexpr size_t kExactDegreeLimit = 200;

/// The square-free factors of degree 1 and above, each with its multiplicity, by Yun's algorithm (1976) over the
/// integers. Most polynomials are square-free: a common divisor with the derivative modulo one prime tells that first.
std::vector<std::pair<IntegerPoly, int32_t>> squareFreeFactors(const IntegerPoly& p);

}  // namespace Sym
