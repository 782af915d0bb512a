// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What the files of the elliptic functions share beside the routines of special_function.h.
namespace SpecialFunction {

/// Arithmetic-geometric mean of positive numbers to full relative precision, without a cap that matters.
double meanOf(double a, double b);

/// RF and RD by duplication alone, without the special cases of the public routines. All arguments are
/// non-negative, at most one of x, y, z is 0 (not z of RD).
double duplicateRF(double x, double y, double z);
double duplicateRD(double x, double y, double z);

/// RF(x, y, z) and RD(x, y, z), or RD(x, z, y) if swapped, by one duplication: their arguments take the same way.
struct RFAndRD {
  double first, second;
};
RFAndRD duplicateRFAndRD(double x, double y, double z, bool swapped);

/// RF(a, b, c) + (c - p)/3 RJ(a, b, c, p) for any p, where a + ba = b, a + ca = c, p + cp = c, c >= a, b >= a: an
/// integral of the third kind without the cancellation of that sum. Cauchy's principal value for p < 0.
double thirdKind(double a, double ba, double ca, double p, double cp);

/// The angle as s pi + r with an integer s and |r| <= pi/2, pi to twice the precision of a double.
struct HalfTurns {
  double s, r;
};
HalfTurns halfTurns(double angle);

}  // namespace SpecialFunction
