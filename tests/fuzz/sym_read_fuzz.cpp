// SPDX-License-Identifier: Apache-2.0
#include <orvane/orvane.h>

#include <cstdlib>
#include <stdexcept>
#include <vector>

/// Reads any bytes as a block of the store and does with the matrices what a host might; then the store must still take
/// and give a block of its own.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  sym_read(data, static_cast<uint32_t>(size));
  while (SymMatrix2d* matrix = sym_getMatrixByID(0)) {
    int32_t dim[2];
    sym_getDataDim(matrix, dim);
    std::vector<double> values(static_cast<size_t>(dim[0]) * static_cast<size_t>(dim[1]));
    sym_calcValue(matrix, values.data());
    SymMatrix2d* clone = sym_cloneMatrix2d(matrix);
    sym_selfMul(clone, 2);
    SymMatrix2d* sum = sym_oneFun(clone, 206);
    for (int32_t i = 0; i < dim[0] && i < 3 && dim[1] > 0; ++i) {
      char text[64];
      sym_getSymStr(matrix, i, 0, text, sizeof text);
      sym_getLatexStr(matrix, i, 0, text, sizeof text);
      sym_isLineExpress(matrix, i, 0);
      sym_isQuadExpress(matrix, i, 0);
    }
    sym_isPoly(matrix);
    if (sum) sym_freeMatrix2d(sum);
    sym_freeMatrix2d(clone);
    sym_freeMatrix2d(matrix);
    SymMatrix2d* next = nullptr;
    for (int32_t id = 1; id < 8 && !next; ++id) next = sym_getMatrixByID(id);
    if (!next) break;
    sym_freeMatrix2d(next);
  }
  sym_clearTempVar();
  std::vector<uint8_t> block(sym_write());
  sym_getDataStr(block.data());
  if (block.size() < 8) std::abort();
  return 0;
}
