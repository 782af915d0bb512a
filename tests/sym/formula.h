// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <orvane/sym.h>
#include <orvane/sym_diff.h>
#include <orvane/sym_text.h>

#include <memory>
#include <string>
#include <vector>

/// Formulas over the exports, as a host in C++ might write them.
struct Formula {
  Formula(double value) : node(sym_createDouble(value)) {}
  Formula(const char* name) : node(sym_createBaseSymVar(name)) {}
  explicit Formula(SymObject* built) : node(built) {}
  SymObject* node;
};

inline Formula call(uint8_t code, const std::vector<Formula>& args) {
  std::vector<SymObject*> nodes;
  for (const Formula& arg : args) nodes.push_back(arg.node);
  return Formula(sym_funMulParam(nodes.data(), static_cast<int32_t>(nodes.size()), code));
}

inline Formula operator+(Formula a, Formula b) { return Formula(sym_funTwoParam(a.node, b.node, 2)); }
inline Formula operator-(Formula a, Formula b) { return Formula(sym_funTwoParam(a.node, b.node, 7)); }
inline Formula operator*(Formula a, Formula b) { return Formula(sym_funTwoParam(a.node, b.node, 3)); }
inline Formula operator/(Formula a, Formula b) { return Formula(sym_funTwoParam(a.node, b.node, 8)); }
inline Formula operator^(Formula a, Formula b) { return Formula(sym_funTwoParam(a.node, b.node, 5)); }

using Matrix = std::unique_ptr<SymMatrix2d, decltype(&sym_freeMatrix2d)>;

inline Matrix owned(SymMatrix2d* matrix) { return {matrix, &sym_freeMatrix2d}; }

inline Matrix row(const std::vector<Formula>& elements) {
  Matrix matrix = owned(sym_createSymMatrix(1, static_cast<uint32_t>(elements.size())));
  for (std::size_t i = 0; i < elements.size(); ++i)
    sym_setSymMatrixData(matrix.get(), 0, static_cast<int32_t>(i), elements[i].node);
  return matrix;
}

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
inline std::string textOf(Formula f) { return textOf(row({f}).get()); }
inline std::string latexOf(Formula f) { return handedOut(sym_getLatexStr, row({f}).get(), 0, 0); }

/// The derivative, or what the refusal says.
struct Derivative {
  Derivative(Formula f, const char* name, uint32_t order = 1)
      : matrix(owned(sym_diff(row({f}).get(), order, name, buffer))), message(matrix ? "" : buffer) {}

  double value() const { return matrix ? sym_calcExpressValue(matrix.get(), 0, 0) : 0.0 / 0.0; }
  std::string text() const { return matrix ? textOf(matrix.get()) : "refused"; }

  char buffer[256] = {};
  Matrix matrix;
  std::string message;
};
