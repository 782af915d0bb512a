// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <utility>

namespace Sym {

/// A polynomial in one variable: exponent to coefficient. No entry means zero.
using PolyTerms = std::map<int64_t, double>;

/// What the operations leave out of a result, in absolute size.
inline constexpr double kTermLimit = 1e-14;
/// No operation makes a polynomial of a higher degree: its result is empty then.
inline constexpr int64_t kDegreeLimit = 1000000;

inline int64_t degree(const PolyTerms& p) { return p.empty() ? -1 : p.rbegin()->first; }

PolyTerms sum(const PolyTerms& a, const PolyTerms& b, double factorOfB = 1.0);
PolyTerms product(const PolyTerms& a, const PolyTerms& b);
PolyTerms derivative(const PolyTerms& a);

/// Quotient and remainder; both empty when the divisor is.
std::pair<PolyTerms, PolyTerms> divide(const PolyTerms& a, const PolyTerms& b);

/// Monic greatest common divisor by Euclid's algorithm, a remainder counting as zero when it is so small beside its
/// dividend that rounding explains it; of two zero polynomials: empty.
PolyTerms greatestCommonDivisor(const PolyTerms& a, const PolyTerms& b);

/// a b / gcd(a, b), monic; empty when either is.
PolyTerms leastCommonMultiple(const PolyTerms& a, const PolyTerms& b);

PolyTerms composition(const PolyTerms& a, const PolyTerms& b);  ///< a(b(x))
PolyTerms power(const PolyTerms& a, int64_t exponent);

/// Resultant: the product over the roots of a and b of their differences, times the powers of the leading coefficients;
/// 0 when they share a root. From the remainders of Euclid's algorithm.
double resultant(const PolyTerms& a, const PolyTerms& b);

/// The operation of sym_runPolyFun by its code, with terms under the limit dropped; empty for an unknown code.
PolyTerms runPolyOperation(const PolyTerms& a, const PolyTerms& b, uint8_t operation);

/// Sum of pow(x, exponent) times coefficient from 0.0 in ascending exponents.
double value(const PolyTerms& p, double x);

}  // namespace Sym
