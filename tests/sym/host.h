// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>
#include <orvane/orvane.h>

#include <cstdint>
#include <string>
#include <vector>

/// Short forms in which a host would build expressions.
namespace host {

using Node = SymObject*;

enum Code : uint8_t {
  Number = 0,
  Variable = 1,
  Add = 2,
  Mul = 3,
  Pow = 5,
  Sign = 6,
  Subtract = 7,
  Divide = 8,
  Sqrt = 10,
  Ln = 11,
  Exp = 12,
  Abs = 13,
  Sin = 20,
  Cos,
  Tan,
  Cot,
  Asin,
  Acos,
  Atan,
  Acot,
  Sinh = 30,
  Cosh,
  Tanh,
  Coth,
  Asinh,
  Acosh,
  Atanh,
  Acoth,
  Erf = 50,
  Gamma,
  Beta,
  LnGamma,
  BesselI,
  BesselJ,
  BesselK,
  BesselY,
  InverseErf = 84,
  Erfc = 98,
  StepFun = 107,
  InverseGamma = 138,
  ConSelect = 157
};

inline Node num(double x) { return sym_createDouble(x); }
inline Node var(const char* name) { return sym_createBaseSymVar(name); }
inline Node f(uint8_t code, Node a) { return sym_funOneParam(a, code); }
inline Node f(uint8_t code, Node a, Node b) { return sym_funTwoParam(a, b, code); }
inline Node f(uint8_t code, const std::vector<Node>& a) {
  return sym_funMulParam(a.data(), static_cast<int32_t>(a.size()), code);
}

/// A 1-by-1 matrix that is released at the end of the scope.
class Matrix {
 public:
  explicit Matrix(SymMatrix2d* m) : matrix(m) {}
  explicit Matrix(Node node) : matrix(sym_createSymMatrix(1, 1)) { sym_setSymMatrixData(matrix, 0, 0, node); }
  Matrix(uint32_t rows, uint32_t cols, const std::vector<Node>& nodes) : matrix(sym_createSymMatrix(rows, cols)) {
    for (std::size_t i = 0; i < nodes.size(); ++i)
      sym_setSymMatrixData(matrix, static_cast<int32_t>(i / cols), static_cast<int32_t>(i % cols), nodes[i]);
  }
  Matrix(const Matrix&) = delete;
  Matrix& operator=(const Matrix&) = delete;
  ~Matrix() { sym_freeMatrix2d(matrix); }

  operator SymMatrix2d*() const { return matrix; }

  double value(int32_t row = 0, int32_t col = 0) const { return sym_calcExpressValue(matrix, row, col); }
  double coef() const {
    double c = 0;
    sym_getMatrixData(matrix, &c);
    return c;
  }
  std::vector<double> values() const {
    int32_t dim[2];
    sym_getDataDim(matrix, dim);
    std::vector<double> out(static_cast<std::size_t>(dim[0] * dim[1]));
    sym_calcValue(matrix, out.data());
    return out;
  }
  std::string names() const {
    std::string text(static_cast<std::size_t>(sym_getAllBaseSym2(matrix, nullptr, 0)), ' ');
    sym_getAllBaseSym2(matrix, text.data(), static_cast<int32_t>(text.size()));
    return text;
  }

 private:
  SymMatrix2d* matrix;
};

/// True when the expression has been folded to a number.
inline bool isNumber(Node node) { return sym_isConstant(Matrix(node)); }

}  // namespace host
