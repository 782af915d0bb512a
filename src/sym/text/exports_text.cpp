// SPDX-License-Identifier: Apache-2.0
#include "frame/text.h"
#include "orvane/sym_text.h"
#include "sym/handles.h"
#include "sym/text/writers.h"

int32_t sym_getSymStr(SymMatrix2d* matrix, int32_t row, int32_t col, char* out, int32_t capacity) {
  return handOut(Sym::plainText(*native(matrix).at(row, col)), out, capacity);
}

int32_t sym_getLatexStr(SymMatrix2d* matrix, int32_t row, int32_t col, char* out, int32_t capacity) {
  return handOut(native(matrix).at(row, col)->fnLatex(), out, capacity);
}
