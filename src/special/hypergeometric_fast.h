// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

namespace SpecialFunction {

/// The double that the GMP series gives, got in double-double arithmetic; nothing when its error bound cannot tell it
/// or the arguments are outside its range (then the next wider arithmetic decides). Lower parameters are not poles.
std::optional<double> calcHypergeometricPFQByDoubleDouble(const double* a, int32_t p, const double* b, int32_t q,
                                                          double z);

}  // namespace SpecialFunction
