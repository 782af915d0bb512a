// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <type_traits>

namespace LineProg {

/// What a bound or the sign of a reduced cost may be missed by, in the scaled problem: the rounding of the numbers
/// stays below.
template <class Real>
inline constexpr Real kTolerance = std::is_same_v<Real, double> ? Real(1e-9) : Real(1e-12);
/// Entries of a column or row below this part of the greatest are no pivots, unless there is no other;
template <class Real>
inline constexpr Real kPivot = std::is_same_v<Real, double> ? Real(1e-9) : Real(1e-12);
/// those below this are what rounding left of 0.
template <class Real>
inline constexpr Real kNoise = std::is_same_v<Real, double> ? Real(1e-11) : Real(1e-14);
inline constexpr double kDoubtful = 1e-5;  ///< a pivot as small as that is looked at again with new factors
inline constexpr int kStalled = 100;       ///< steps of length 0 before bounds are perturbed
inline constexpr long kMostTurns = 50;     ///< times the variables

}  // namespace LineProg
