// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "highprecision/binary/hp_by_gmp.h"
#include "highprecision/decimal/hp_number.h"

namespace HighPrecision {

/// In the order of constants_data.inc.
enum class Constant { ln2, ln3, ln5, pi, atanOneHalf, atanThreeQuarters, atanThreeHalves, atanFour, e };
constexpr int kConstants = 9;

/// The first 357 decimals of a constant as 52 limbs with the exponent -51, built when the library is loaded.
const HPNumber_c& storedConstant(Constant which);

/// A constant with a relative error below 2^-bits: from the stored digits as far as they reach, from series beyond.
/// Each thread keeps the longest value that it has needed.
HP::HPByGMP constantOf(Constant which, mp_bitcnt_t bits);

}  // namespace HighPrecision
