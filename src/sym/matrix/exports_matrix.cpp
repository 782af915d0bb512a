// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "frame/text.h"
#include "orvane/sym.h"
#include "sym/handles.h"
#include "sym/matrix/matrix.h"
#include "sym/node/edit.h"

namespace {

using Sym::kept;
using Sym::NodePtr;

Sym::SymManger& store() { return Sym::SymManger::instance(); }

std::size_t index(int32_t i) { return static_cast<std::size_t>(i); }

// Calls write(place, element) for every element, row by row.
template <class Write>
void forEachElement(const Sym::SymMatrix2d_t& matrix, Write&& write) {
  std::size_t place = 0;
  for (const auto& row : matrix.data)
    for (const NodePtr& element : row) write(place++, element);
}

}  // namespace

SymMatrix2d* sym_createSymMatrix(uint32_t rows, uint32_t cols) {
  return kept(std::make_shared<Sym::SymMatrix2d_t>(rows, cols));
}

void sym_freeMatrix2d(SymMatrix2d* matrix) { store().matrices.erase(pointerOf(matrix)); }

SymMatrix2d* sym_cloneMatrix2d(const SymMatrix2d* matrix) { return kept(Sym::cloneMatrix(native(matrix))); }

void sym_getDataDim(const SymMatrix2d* matrix, int32_t* out) {
  out[0] = static_cast<int32_t>(native(matrix).rows());
  out[1] = static_cast<int32_t>(native(matrix).cols());
}

SymObject* sym_getSymMatrixData(SymMatrix2d* matrix, int32_t row, int32_t col) {
  return handleOf<SymObject>(native(matrix).at(index(row), index(col)).get());
}

void sym_setSymMatrixData(SymMatrix2d* matrix, int32_t row, int32_t col, SymObject* node) {
  native(matrix).at(index(row), index(col)) = store().find(pointerOf(node));
}

void sym_setSymMatrixData2(SymMatrix2d* matrix, int32_t row, int32_t col, const SymMatrix2d* source) {
  const NodePtr& element = native(source).at(0, 0);
  native(matrix).at(index(row), index(col)) = element ? Sym::cloneNode(*element) : nullptr;
}

void sym_setSymMatrixData3(SymMatrix2d* matrix, int32_t row, int32_t col, double value) {
  NodePtr& element = native(matrix).at(index(row), index(col));
  if (!element) element = Sym::makeNumber(value);
  Sym::setConstant(*element, value);
}

SymMatrix2d* sym_getRowCol(const SymMatrix2d* matrix, int32_t i, uint8_t row) {
  return kept(row != 0 ? Sym::rowOf(native(matrix), index(i)) : Sym::columnOf(native(matrix), index(i)));
}

void sym_getMatrixData(const SymMatrix2d* matrix, double* out) {
  forEachElement(native(matrix), [&](std::size_t i, const NodePtr& element) { out[i] = element ? element->coef : 0; });
}

void sym_calcValue(const SymMatrix2d* matrix, double* out) {
  forEachElement(native(matrix), [&](std::size_t i, const NodePtr& element) { out[i] = Sym::elementValue(element); });
}

double sym_calcExpressValue(const SymMatrix2d* matrix, int32_t row, int32_t col) {
  return Sym::elementValue(native(matrix).at(index(row), index(col)));
}

bool sym_toMatrix2dDouble(const SymMatrix2d* matrix, double* out) {
  sym_calcValue(matrix, out);
  return Sym::allNumbers(native(matrix));
}

SymMatrix2d* sym_fromMatrix2dDouble(const double* values, int32_t rows, int32_t cols) {
  auto matrix = std::make_shared<Sym::SymMatrix2d_t>(std::max(rows, 0), std::max(cols, 0));
  for (auto& row : matrix->data)
    for (NodePtr& element : row) element = Sym::makeNumber(*values++);
  return kept(std::move(matrix));
}

int32_t sym_getMatrixID(const SymMatrix2d* matrix) { return native(matrix).id; }

SymMatrix2d* sym_getMatrixByID(int32_t id) {
  const auto found = std::find_if(store().matrices.begin(), store().matrices.end(),
                                  [id](const auto& entry) { return entry.second->id == id; });
  return found == store().matrices.end() ? nullptr : handleOf<SymMatrix2d>(found->first);
}

bool sym_isConstant(const SymMatrix2d* matrix) { return Sym::allNumbers(native(matrix)); }

void sym_selfMul(SymMatrix2d* matrix, double factor) {
  forEachElement(native(matrix), [factor](std::size_t, const NodePtr& element) {
    if (element) Sym::scaleNode(*element, factor);
  });
}

SymMatrix2d* sym_dot(const SymMatrix2d* a, const SymMatrix2d* b) { return kept(Sym::dot(native(a), native(b))); }

SymMatrix2d* sym_cross(const SymMatrix2d* a, const SymMatrix2d* b) { return kept(Sym::cross(native(a), native(b))); }

SymMatrix2d* sym_sameTwoFun(const SymMatrix2d* a, const SymMatrix2d* b, uint8_t code) {
  return kept(Sym::elementWise(native(a), native(b), code));
}

SymMatrix2d* sym_oneFun(const SymMatrix2d* matrix, uint8_t code) { return kept(Sym::oneFun(native(matrix), code)); }

SymMatrix2d* sym_createSO3ByAxis(const char* name, uint8_t axis) {
  return kept(Sym::rotation(Sym::makeNamed(name), axis));
}

int32_t sym_getAllBaseSym(const SymMatrix2d* matrix, int32_t row, int32_t col, BaseSym** out, int32_t capacity) {
  std::vector<Sym::VarPtr> found;
  Sym::collectVariables(*native(matrix).at(index(row), index(col)), found);
  const auto count = static_cast<int32_t>(found.size());
  if (count <= capacity)
    std::transform(found.begin(), found.end(), out, [](const Sym::VarPtr& v) { return handleOf<BaseSym>(v.get()); });
  return count;
}

int32_t sym_getAllBaseSym2(SymMatrix2d* matrix, char* out, int32_t capacity) {
  std::string names;
  for (const Sym::VarPtr& variable : Sym::variablesOf(native(matrix))) names += variable->name + ",";
  return handOut(names, out, capacity);
}

int32_t sym_setAllBaseSym(SymMatrix2d* matrix, const int32_t* order, int32_t count) {
  Sym::reorderVariables(native(matrix), span(order, count));
  return 1;
}

void sym_setBaseSymValue(SymMatrix2d* matrix, const int32_t* indices, const double* values, int32_t count) {
  for (int32_t i = 0; i < count; ++i) native(matrix).baseSyms.at(index(indices[i]))->value = values[i];
}

void sym_updateSymValue(SymMatrix2d* matrix, int32_t snapshot) {
  Sym::SymMatrix2d_t& m = native(matrix);
  if (snapshot != 0) m.saved.resize(m.baseSyms.size());
  for (std::size_t i = 0; i < std::min(m.saved.size(), m.baseSyms.size()); ++i)
    (snapshot != 0 ? m.saved[i] : m.baseSyms[i]->value) = snapshot != 0 ? m.baseSyms[i]->value : m.saved[i];
}
