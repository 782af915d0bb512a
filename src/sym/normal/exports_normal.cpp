// SPDX-License-Identifier: Apache-2.0
#include "orvane/sym.h"
#include "sym/handles.h"
#include "sym/normal/classify.h"

namespace {

const Sym::SymObject& element(const SymMatrix2d* matrix, int32_t row, int32_t col) {
  return *native(matrix).at(static_cast<std::size_t>(row), static_cast<std::size_t>(col));
}

}  // namespace

bool sym_isLineExpress(const SymMatrix2d* matrix, int32_t row, int32_t col) {
  return Sym::isLineExpress(element(matrix, row, col));
}

bool sym_isQuadExpress(const SymMatrix2d* matrix, int32_t row, int32_t col) {
  return Sym::isQuadExpress(element(matrix, row, col));
}

int32_t sym_getLineExpress(const SymMatrix2d* matrix, int32_t row, int32_t col, BaseSym** variables,
                           double* coefficients) {
  const auto terms = Sym::getLineExpress(element(matrix, row, col));
  for (const auto& [variable, coefficient] : terms) {
    *variables++ = handleOf<BaseSym>(variable.get());
    *coefficients++ = coefficient;
  }
  return static_cast<int32_t>(terms.size());
}
