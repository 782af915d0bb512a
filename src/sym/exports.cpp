// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "frame/handle.h"
#include "frame/text.h"
#include "orvane/sym.h"
#include "sym/handles.h"
#include "sym/matrix/matrix.h"
#include "sym/node/edit.h"
#include "sym/node/replace.h"
#include "sym/normal/classify.h"

namespace {

using Sym::kept;
using Sym::native;
using Sym::NodePtr;
using Sym::SymManger;

SymManger& store() { return SymManger::instance(); }

NodePtr find(SymObject* node) { return store().find(native(node)); }

std::size_t index(int32_t i) { return static_cast<std::size_t>(i); }

// Calls write(place, element) for every element, row by row.
template <class Write>
void forEachElement(const Sym::SymMatrix2d_t& matrix, Write&& write) {
  std::size_t place = 0;
  for (const auto& row : matrix.data)
    for (const NodePtr& element : row) write(place++, element);
}

}  // namespace

SymObject* sym_createDouble(double value) { return kept(Sym::makeNumber(value)); }

SymObject* sym_createBaseSymVar(const char* name) { return kept(Sym::makeNamed(name)); }

SymObject* sym_funOneParam(SymObject* node, uint8_t code) { return kept(Sym::applyOne(find(node), code)); }

SymObject* sym_funTwoParam(SymObject* a, SymObject* b, uint8_t code) {
  return kept(Sym::applyTwo(find(a), find(b), code));
}

SymObject* sym_funMulParam(SymObject* const* nodes, int32_t count, uint8_t code) {
  Sym::Args clones;
  clones.reserve(span(nodes, count).size());
  for (SymObject* node : span(nodes, count)) {
    const NodePtr* known = store().tempNodes.find(native(node));
    clones.push_back(known == nullptr ? nullptr : Sym::cloneNode(**known));
  }
  return kept(Sym::applyMany(std::move(clones), code));
}

void sym_clearTempVar(void) { store().tempNodes.clear(); }

double sym_calcExpress(const SymObject* node) { return native(node)->fnValue(); }

SymMatrix2d* sym_createSymMatrix(uint32_t rows, uint32_t cols) {
  return kept(std::make_shared<Sym::SymMatrix2d_t>(rows, cols));
}

void sym_freeMatrix2d(SymMatrix2d* matrix) { store().matrices.erase(&native(matrix)); }

SymMatrix2d* sym_cloneMatrix2d(const SymMatrix2d* matrix) { return kept(Sym::cloneMatrix(native(matrix))); }

void sym_getDataDim(const SymMatrix2d* matrix, int32_t* out) {
  out[0] = static_cast<int32_t>(native(matrix).rows());
  out[1] = static_cast<int32_t>(native(matrix).cols());
}

SymObject* sym_getSymMatrixData(SymMatrix2d* matrix, int32_t row, int32_t col) {
  return Sym::handle(native(matrix).at(index(row), index(col)).get());
}

void sym_setSymMatrixData(SymMatrix2d* matrix, int32_t row, int32_t col, SymObject* node) {
  native(matrix).at(index(row), index(col)) = find(node);
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
  return found == store().matrices.end() ? nullptr : Sym::handle(found->first);
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

void sym_setSymValue(const char* name, double value) {
  const auto entry = store().symbols.find(name);
  if (entry != store().symbols.end()) entry->second->value = value;
}

double sym_getBaseSymValue(const BaseSym* variable) { return native(variable).value; }

int32_t sym_getBaseSymName(const BaseSym* variable, char* out, int32_t capacity) {
  return handOut(native(variable).name, out, capacity);
}

int32_t sym_getAllBaseSym(const SymMatrix2d* matrix, int32_t row, int32_t col, BaseSym** out, int32_t capacity) {
  std::vector<Sym::VarPtr> found;
  Sym::collectVariables(*native(matrix).at(index(row), index(col)), found);
  const auto count = static_cast<int32_t>(found.size());
  if (count <= capacity)
    std::transform(found.begin(), found.end(), out, [](const Sym::VarPtr& v) { return Sym::handle(v.get()); });
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

SymMatrix2d* sym_replaceSym(const SymMatrix2d* matrix, const char* const* names, const char* const* replacements,
                            const uint8_t* flags, int32_t count) {
  const Sym::MatrixPtr result = Sym::cloneMatrix(native(matrix));
  for (int32_t i = 0; i < count; ++i) Sym::replaceSym(*result, names[i], replacements[i], flags[i] != 0);
  return kept(result);
}

bool sym_isLineExpress(const SymMatrix2d* matrix, int32_t row, int32_t col) {
  return Sym::isLineExpress(*native(matrix).at(index(row), index(col)));
}

bool sym_isQuadExpress(const SymMatrix2d* matrix, int32_t row, int32_t col) {
  return Sym::isQuadExpress(*native(matrix).at(index(row), index(col)));
}

int32_t sym_getLineExpress(const SymMatrix2d* matrix, int32_t row, int32_t col, BaseSym** variables,
                           double* coefficients) {
  const auto terms = Sym::getLineExpress(*native(matrix).at(index(row), index(col)));
  for (const auto& [variable, coefficient] : terms) {
    *variables++ = Sym::handle(variable.get());
    *coefficients++ = coefficient;
  }
  return static_cast<int32_t>(terms.size());
}
