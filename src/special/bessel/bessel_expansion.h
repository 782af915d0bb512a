// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Expansions of the Bessel functions for the arguments at which the standard library's functions throw, run for
/// minutes or lose their digits. Order nu >= 0, x > 0.
namespace SpecialFunction {

struct BesselPair {
  double first;   ///< J or I
  double second;  ///< Y or K
};

/// x below 1e-300, where x/2 and 1/x leave the range of the normal numbers: the leading terms.
BesselPair besselJYTiny(double nu, double x);
BesselPair besselIKTiny(double nu, double x);

/// The second function alone for x < 2 and orders within 1e-3 of an integer: Temme's series.
double besselYNearInteger(double nu, double x);
double besselKNearInteger(double nu, double x);

/// Debye's expansions in 1/nu: J and Y for |nu - x| above 8 nu^(1/3), I and K for nu >= 30.
BesselPair besselJYDebye(double nu, double x);
BesselPair besselIKDebye(double nu, double x);

/// Hankel's expansions in 1/x: nu^2 < 2x, x > 25. `rest` is what the phase x has lost by rounding.
BesselPair besselJYHankel(double nu, double x, double rest = 0);
BesselPair besselIKHankel(double nu, double x);

/// For nu near x above 1e6 the expansion by Airy functions.
BesselPair besselJYTransition(double nu, double x);

}  // namespace SpecialFunction
