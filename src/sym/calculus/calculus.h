// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "sym/kinds/program.h"
#include "sym/store/store.h"

namespace Sym {

/// An expression as a function of one variable. It writes the variable's value, which stays at the last argument.
class SymFun {
 public:
  SymFun(const SymObject& node, const VarPtr& variable) : program(node), variable(variable) {}
  double operator()(double x) const {
    variable->value = x;
    return program.value();
  }

 private:
  Program program;
  const VarPtr& variable;
};

/// Each element becomes the sum over k from 0 to order of its k-th derivative at the centre, divided by k!, times
/// (x - centre)^k; other variables enter with their present values. Null when a derivative refuses. An unknown name
/// gives clones.
MatrixPtr taylorMatrix(const SymMatrix2d_t& matrix, const std::string& name, double centre, int32_t order);

/// Integral of each element over [a, b], which may be infinite, by Integral::integralByRange; of a constant for an
/// unknown name.
void integrals(const SymMatrix2d_t& matrix, const std::string& name, double a, double b, double* out);

/// y' = f(t, y), f the elements of a matrix in row-major order, `names` the independent variable and then the dependent
/// ones, separated by commas; y at each position into out, [positions * dimension].
void solveODE(const SymMatrix2d_t& rightSide, std::string_view names, double start, std::span<const double> initial,
              std::span<const double> positions, double* out, double tolerance);

/// y(x) = f(x) + integral from a to x of K(x, t) y(t) dt.
void solveVolterra(const SymObject& kernel, const SymObject& freeTerm, double a, std::span<const double> xs,
                   double* ys);

/// y(x) = f(x) + integral from a to b of K(x, t) y(t) dt.
void solveFredholm(const SymObject& kernel, const SymObject& freeTerm, double a, double b, std::span<const double> xs,
                   double* ys);

}  // namespace Sym
