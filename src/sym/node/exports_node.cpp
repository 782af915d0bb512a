// SPDX-License-Identifier: Apache-2.0
#include "frame/handle.h"
#include "orvane/sym.h"
#include "sym/handles.h"
#include "sym/matrix/matrix.h"
#include "sym/node/replace.h"
#include "sym/normal/growing.h"

namespace {

using Sym::kept;
using Sym::NodePtr;
using Sym::SymManger;

SymManger& store() { return SymManger::instance(); }

NodePtr find(SymObject* node) { return store().find(pointerOf(node)); }

}  // namespace

SymObject* sym_createDouble(double value) { return kept(Sym::makeNumber(value)); }

SymObject* sym_createBaseSymVar(const char* name) { return kept(Sym::makeNamed(name)); }

SymObject* sym_funOneParam(SymObject* node, uint8_t code) { return kept(Sym::applyOne(find(node), code)); }

SymObject* sym_funTwoParam(SymObject* a, SymObject* b, uint8_t code) {
  return kept(Sym::combine(pointerOf(a), pointerOf(b), code));
}

SymObject* sym_funMulParam(SymObject* const* nodes, int32_t count, uint8_t code) {
  if (count == 2 && (code == ORVANE_KIND_ADD || code == ORVANE_KIND_MUL))
    return sym_funTwoParam(nodes[0], nodes[1], code);
  Sym::Args clones;
  clones.reserve(span(nodes, count).size());
  for (SymObject* node : span(nodes, count)) {
    const NodePtr known = find(node);
    clones.push_back(known ? Sym::cloneNode(*known) : nullptr);
  }
  return kept(Sym::applyMany(std::move(clones), code));
}

void sym_clearTempVar(void) { store().tempNodes.clear(); }

double sym_calcExpress(const SymObject* node) { return Sym::built(native(node)).fnValue(); }

SymMatrix2d* sym_replaceSym(const SymMatrix2d* matrix, const char* const* names, const char* const* replacements,
                            const uint8_t* flags, int32_t count) {
  const Sym::MatrixPtr result = Sym::cloneMatrix(native(matrix));
  for (int32_t i = 0; i < count; ++i) Sym::replaceSym(*result, names[i], replacements[i], flags[i] != 0);
  return kept(result);
}
