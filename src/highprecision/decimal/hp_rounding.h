// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "frame/function_ref.h"
#include "highprecision/binary/hp_by_gmp.h"
#include "highprecision/decimal/hp_number.h"

namespace HighPrecision {

/// A finite number as a binary float with a relative error below 2^-bits.
HP::HPByGMP toFloat(const HPNumber_c& x, mp_bitcnt_t bits);

/// floor(log2 |x|) to within one, of a number other than 0; a good guess of its size in bits.
int64_t sizeInBits(const HPNumber_c& x);

/// A real value with a relative error below 2^-bits, for any number of bits.
using Approximation = FunctionRef<HP::HPByGMP(mp_bitcnt_t bits)>;

/// The value, correctly rounded: longer approximations are taken until the digits behind the rounding place are not
/// those of a tie (Ziv, ACM Trans. Math. Software 17 (1991) 410). A value that a tie cannot be told from with
/// `tieLimbs` limbs more than the precision is one.
HPNumber_c correctlyRounded(Approximation value, int32_t precision, std::size_t tieLimbs);

}  // namespace HighPrecision
