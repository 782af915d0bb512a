// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "highprecision/binary/hp_by_gmp.h"
#include "highprecision/decimal/integer.h"

namespace HP {

// Arithmetic that gives new floats. A result has the precision `bits` and a relative error below 2^(2-bits), however
// precise the arguments are; sums and differences may lose more by cancellation of what the arguments carry as errors.

HPByGMP sum(const HPByGMP& a, const HPByGMP& b, mp_bitcnt_t bits);
HPByGMP difference(const HPByGMP& a, const HPByGMP& b, mp_bitcnt_t bits);
HPByGMP product(const HPByGMP& a, const HPByGMP& b, mp_bitcnt_t bits);
/// For b other than 0.
HPByGMP quotient(const HPByGMP& a, const HPByGMP& b, mp_bitcnt_t bits);
/// For x >= 0.
HPByGMP root(const HPByGMP& x, mp_bitcnt_t bits);
/// a + n
HPByGMP plus(const HPByGMP& a, long n, mp_bitcnt_t bits);
HPByGMP minus(const HPByGMP& a);
HPByGMP absolute(const HPByGMP& a);
/// a 2^shift
HPByGMP scaled(const HPByGMP& a, int64_t shift);
/// The same value with another precision.
HPByGMP held(const HPByGMP& a, mp_bitcnt_t bits);
HPByGMP number(long n);
/// base^n
HPByGMP power(const HPByGMP& base, uint64_t n, mp_bitcnt_t bits);

inline int sign(const HPByGMP& a) { return mpf_sgn(a.get()); }
/// e with 2^(e-1) <= |a| < 2^e; 0 for 0.
int64_t exponentOf(const HPByGMP& a);

/// floor towards zero of x 2^point.
Integer fixedOf(const HPByGMP& x, int64_t point);
/// x / 2^point
HPByGMP floatOf(const Integer& x, int64_t point, mp_bitcnt_t bits);

}  // namespace HP
