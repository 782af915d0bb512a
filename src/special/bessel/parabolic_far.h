// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace SpecialFunction {

/// U(a, x) and V(a, x) for |a| from 1000 on, by their expansions in elementary functions for large |a| (DLMF 12.10).
/// Where x lies between the turning points, values are infinite or 0 there, and only the sign is taken.
double parabolicUFar(double a, double x);
double parabolicVFar(double a, double x);

/// The sign of U(a, x), a < 0, x >= 0, for large -a (DLMF 12.10.7); 1 beyond the turning point 2 sqrt(-a).
double signOfParabolicU(double a, double x);

}  // namespace SpecialFunction
