// SPDX-License-Identifier: Apache-2.0
#include <orvane/orvane.h>

#include <cstdlib>
#include <vector>

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

/// Number of different ids from 0 on; the store holds nothing but what a block brought in.
int32_t countIds() {
  int32_t count = 0;
  while (sym_getMatrixByID(count)) ++count;
  return count;
}

std::vector<uint8_t> written() {
  std::vector<uint8_t> block(sym_write());
  sym_getDataStr(block.data());
  return block;
}

void release(SymMatrix2d* matrix) {
  if (matrix) sym_freeMatrix2d(matrix);
}

/// What a host might do with a matrix.
void use(SymMatrix2d* matrix) {
  int32_t dim[2];
  sym_getDataDim(matrix, dim);
  std::vector<double> values(static_cast<size_t>(dim[0]) * static_cast<size_t>(dim[1]));
  sym_calcValue(matrix, values.data());
  sym_getMatrixData(matrix, values.data());
  sym_isConstant(matrix);
  sym_getAllBaseSym2(matrix, nullptr, 0);
  sym_updateSymValue(matrix, 1);
  SymMatrix2d* clone = sym_cloneMatrix2d(matrix);
  sym_selfMul(clone, 2);
  release(sym_oneFun(clone, 204));
  release(sym_oneFun(clone, 206));
  release(sym_taylor(clone, "x", 0, 1));
  sym_freeMatrix2d(clone);
  for (int32_t i = 0; i < dim[0] && i < 3 && dim[1] > 0; ++i) {
    char text[64];
    sym_getSymStr(matrix, i, 0, text, sizeof text);
    sym_getLatexStr(matrix, i, 0, text, sizeof text);
    sym_isLineExpress(matrix, i, 0);
    sym_isQuadExpress(matrix, i, 0);
    BaseSym* variable;
    double coefficient;
    require(sym_getLineExpress(matrix, i, 0, &variable, &coefficient) <= 1);  // a node read back has no arguments
  }
  sym_isPoly(matrix);
  sym_polyFactor(matrix, nullptr, 0);
  release(sym_polyApp(matrix, 0, 1, 2));
}

}  // namespace

/// Reads any bytes as a block of the store and does with every matrix what a host might. What was read can be written
/// and read again, and then the store takes and gives a block of its own.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  sym_read(data, static_cast<uint32_t>(size));
  const int32_t count = countIds();
  if (count > 0) {
    const std::vector<uint8_t> block = written();
    sym_read(block.data(), static_cast<uint32_t>(block.size()));
    require(countIds() == count + 1);  // the new ones, and one id for all that were there
  }
  for (int32_t id = 0; id < count; ++id) {
    SymMatrix2d* matrix = sym_getMatrixByID(id);
    use(matrix);
    sym_freeMatrix2d(matrix);
  }
  while (SymMatrix2d* matrix = sym_getMatrixByID(count)) sym_freeMatrix2d(matrix);
  sym_clearTempVar();
  require(written() == std::vector<uint8_t>(8));
  return 0;
}
