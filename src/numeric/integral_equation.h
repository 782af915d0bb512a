// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "frame/function_ref.h"

namespace Integral {

using Kernel = FunctionRef<double(double x, double t)>;
using FreeTerm = FunctionRef<double(double x)>;

/// y(x) = f(x) + integral from a to x of K(x, t) y(t) dt, by collocation at four Gauss points an interval and the
/// iterated solution behind it (Brunner, Collocation Methods for Volterra Equations, 2004, section 2.2): of order 8 in
/// the width of the intervals for smooth K and f.
class IntegralEquByVolterra {
 public:
  IntegralEquByVolterra(Kernel kernel, FreeTerm freeTerm, double a) : kernel(kernel), freeTerm(freeTerm), a(a) {}
  virtual ~IntegralEquByVolterra() = default;

  /// y(x) from a grid of the given number of equal intervals between a and x.
  virtual double solve(double x, int intervals);

  /// y(x) on grids of |x-a|/0.1, at least 20, intervals, refined until two values agree to 1e-12; on one grid of 6000
  /// for what is farther away. NaN when x or a is not finite.
  virtual double value(double x);

 private:
  Kernel kernel;
  FreeTerm freeTerm;
  double a;
};

/// y(x) = f(x) + integral from a to b of K(x, t) y(t) dt, by Nystrom's method (Atkinson, The Numerical Solution of
/// Integral Equations of the Second Kind, 1997, chapter 4) on panels of eight Gauss-Legendre points. The panel of x is
/// split there, so that a kernel with a kink on x = t, such as a Green's function, costs no accuracy.
class IntegralEquByFredholm {
 public:
  IntegralEquByFredholm(Kernel kernel, FreeTerm freeTerm, double a, double b)
      : kernel(kernel), freeTerm(freeTerm), a(a), b(b) {}
  virtual ~IntegralEquByFredholm() = default;

  /// Solves with 2, 4, ... 64 panels, until the values in a set of places agree to 1e-13 of their size.
  virtual void prepare();

  /// y(x), x inside [a, b] or not; needs prepare.
  virtual double solve(double x);

 private:
  void solveAt(int panelCount);
  std::vector<double> weightsAt(double x) const;  ///< of each value in the integral of K(x, t) y(t)

  Kernel kernel;
  FreeTerm freeTerm;
  double a, b;
  int panels = 0;
  std::vector<double> values;  ///< y at the points, panel by panel
};

}  // namespace Integral
