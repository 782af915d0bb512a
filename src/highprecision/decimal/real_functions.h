// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "frame/function_ref.h"
#include "highprecision/binary/float_ops.h"

namespace HP {

// Elementary functions on GMP floats, written on GMP's float primitives. An argument counts as exact, whatever its
// precision; a result has a relative error below 2^-bits, also close to a root and for tiny arguments.

/// Beyond this size exp is not taken: its value would leave the exponents of GMP's floats.
constexpr int64_t kExpBits = 61;

/// exp(x) for |x| < 2^kExpBits: e^n exp(f).
HPByGMP realExp(const HPByGMP& x, mp_bitcnt_t bits);
/// exp(x) - 1
HPByGMP realExpm1(const HPByGMP& x, mp_bitcnt_t bits);
/// ln x for x > 0, by 2^p 3^q 5^r m with m near 1.
HPByGMP realLog(const HPByGMP& x, mp_bitcnt_t bits);
/// ln(1 + d) for d > -1
HPByGMP realLog1p(const HPByGMP& d, mp_bitcnt_t bits);
HPByGMP realAtan(const HPByGMP& x, mp_bitcnt_t bits);

/// An angle as quarter turns and a rest: x = quarters pi/2 + rest, |rest| <= pi/4 and a little.
struct ReducedAngle {
  unsigned quarters;  // mod 4
  HPByGMP rest;
};

/// Reads an argument with a relative error below 2^-bits.
using RealReader = FunctionRef<HPByGMP(mp_bitcnt_t bits)>;

/// The rest comes with a relative error below 2^-bits; the argument is read again, longer, when the rest is close to 0.
ReducedAngle reducedAngle(RealReader read, mp_bitcnt_t bits);

struct SineCosine {
  HPByGMP sine, cosine;
};

/// Both of a reduced angle.
SineCosine sineCosine(const ReducedAngle& angle, mp_bitcnt_t bits);

// Of an exact argument.
SineCosine realSineCosine(const HPByGMP& x, mp_bitcnt_t bits);

struct SinhCosh {
  HPByGMP sinh, cosh;
};
SinhCosh realSinhCosh(const HPByGMP& x, mp_bitcnt_t bits);

HPByGMP realAsinh(const HPByGMP& x, mp_bitcnt_t bits);
/// acosh(1 + d) for d >= 0
HPByGMP realAcosh1p(const HPByGMP& d, mp_bitcnt_t bits);
/// atanh(x) for |x| < 1, given 1 - |x| too.
HPByGMP realAtanh(const HPByGMP& x, const HPByGMP& oneMinus, mp_bitcnt_t bits);

}  // namespace HP
