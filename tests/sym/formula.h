// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>
#include <orvane/orvane.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// Formulas over the exports, as a host in C++ might write them.
namespace host {

// Short names for the kinds that many tests take.
enum Code : uint8_t {
  Number = ORVANE_KIND_NUMBER,
  Variable = ORVANE_KIND_VARIABLE,
  Add = ORVANE_KIND_ADD,
  Mul = ORVANE_KIND_MUL,
  Pow = ORVANE_KIND_POW,
  Sign = ORVANE_KIND_SIGN,
  Subtract = ORVANE_KIND_SUBTRACT,
  Divide = ORVANE_KIND_DIVIDE,
  Sqrt = ORVANE_KIND_SQRT,
  Ln = ORVANE_KIND_LN,
  Exp = ORVANE_KIND_EXP,
  Abs = ORVANE_KIND_ABS,
  Sin = ORVANE_KIND_SIN,
  Cos = ORVANE_KIND_COS,
  Tan = ORVANE_KIND_TAN,
  Cot = ORVANE_KIND_COT,
  Asin = ORVANE_KIND_ASIN,
  Acos = ORVANE_KIND_ACOS,
  Atan = ORVANE_KIND_ATAN,
  Acot = ORVANE_KIND_ACOT,
  Sinh = ORVANE_KIND_SINH,
  Cosh = ORVANE_KIND_COSH,
  Tanh = ORVANE_KIND_TANH,
  Coth = ORVANE_KIND_COTH,
  Asinh = ORVANE_KIND_ASINH,
  Acosh = ORVANE_KIND_ACOSH,
  Atanh = ORVANE_KIND_ATANH,
  Acoth = ORVANE_KIND_ACOTH,
  Erf = ORVANE_KIND_ERF,
  Gamma = ORVANE_KIND_GAMMA,
  Beta = ORVANE_KIND_BETA,
  LnGamma = ORVANE_KIND_LN_GAMMA,
  BesselI = ORVANE_KIND_BESSEL_I,
  BesselJ = ORVANE_KIND_BESSEL_J,
  BesselK = ORVANE_KIND_BESSEL_K,
  BesselY = ORVANE_KIND_BESSEL_Y,
  InverseErf = ORVANE_KIND_INVERSE_ERF,
  Erfc = ORVANE_KIND_ERFC,
  StepFun = ORVANE_KIND_STEP_FUN,
  InverseGamma = ORVANE_KIND_INVERSE_GAMMA,
  ConSelect = ORVANE_KIND_CON_SELECT,
};

/// A node of the store.
struct Formula {
  Formula(double value) : node(sym_createDouble(value)) {}
  Formula(const char* name) : node(sym_createBaseSymVar(name)) {}
  explicit Formula(SymObject* built) : node(built) {}
  SymObject* node;
};

inline Formula num(double x) { return x; }
inline Formula var(const char* name) { return name; }

inline Formula call(uint8_t code, Formula a) { return Formula(sym_funOneParam(a.node, code)); }
inline Formula call(uint8_t code, Formula a, Formula b) { return Formula(sym_funTwoParam(a.node, b.node, code)); }
inline Formula call(uint8_t code, const std::vector<Formula>& args) {
  std::vector<SymObject*> nodes;
  for (const Formula& arg : args) nodes.push_back(arg.node);
  return Formula(sym_funMulParam(nodes.data(), static_cast<int32_t>(nodes.size()), code));
}

inline Formula operator+(Formula a, Formula b) { return call(Add, a, b); }
inline Formula operator-(Formula a, Formula b) { return call(Subtract, a, b); }
inline Formula operator*(Formula a, Formula b) { return call(Mul, a, b); }
inline Formula operator/(Formula a, Formula b) { return call(Divide, a, b); }
inline Formula operator^(Formula a, Formula b) { return call(Pow, a, b); }

inline double valueOf(Formula f) { return sym_calcExpress(f.node); }

/// A matrix that is released at the end of the scope. May hold none.
class Matrix {
 public:
  explicit Matrix(SymMatrix2d* m) : matrix(m) {}
  explicit Matrix(Formula element) : Matrix(1, 1, {element}) {}
  /// Row by row; what is not given stays null.
  Matrix(uint32_t rows, uint32_t cols, const std::vector<Formula>& elements) : matrix(sym_createSymMatrix(rows, cols)) {
    for (std::size_t i = 0; i < elements.size(); ++i)
      sym_setSymMatrixData(matrix, static_cast<int32_t>(i / cols), static_cast<int32_t>(i % cols), elements[i].node);
  }
  Matrix(Matrix&& other) noexcept : matrix(std::exchange(other.matrix, nullptr)) {}
  Matrix& operator=(Matrix&& other) noexcept {
    std::swap(matrix, other.matrix);
    return *this;
  }
  ~Matrix() {
    if (matrix != nullptr) sym_freeMatrix2d(matrix);
  }

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

inline Matrix row(const std::vector<Formula>& elements) {
  return Matrix(1, static_cast<uint32_t>(elements.size()), elements);
}

/// True when the expression has been folded to a number.
inline bool isNumber(Formula f) { return sym_isConstant(Matrix(f)); }

/// Both calls of the two-call string pattern.
template <class Get>
std::string handedOut(Get get, SymMatrix2d* matrix, int32_t row, int32_t col) {
  std::string text(static_cast<std::size_t>(get(matrix, row, col, nullptr, 0)), '\0');
  get(matrix, row, col, text.data(), static_cast<int32_t>(text.size()));
  return text;
}

inline std::string textOf(SymMatrix2d* matrix, int32_t row = 0, int32_t col = 0) {
  return handedOut(sym_getSymStr, matrix, row, col);
}
inline std::string textOf(Formula f) { return textOf(Matrix(f)); }
inline std::string latexOf(Formula f) { return handedOut(sym_getLatexStr, Matrix(f), 0, 0); }

/// The derivative, or what the refusal says.
struct Derivative {
  Derivative(Formula f, const char* name, uint32_t order = 1)
      : matrix(sym_diff(Matrix(f), order, name, buffer)), message(matrix != nullptr ? "" : buffer) {}

  double value() const { return matrix != nullptr ? matrix.value() : 0.0 / 0.0; }
  std::string text() const { return matrix != nullptr ? textOf(matrix) : "refused"; }

  char buffer[256] = {};
  Matrix matrix;
  std::string message;
};

}  // namespace host
