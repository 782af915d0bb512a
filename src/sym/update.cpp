// SPDX-License-Identifier: Apache-2.0
#include "sym/update.h"

#include <algorithm>

#include "sym/edit.h"
#include "sym/kind.h"

namespace Sym {

void updateNothing(SymObject&) {}

void updateCommon(SymObject& node) {
  const Kind& row = node.bound();
  const auto isNumber = [](const NodePtr& arg) { return arg->kind == Code::Number; };
  if (std::all_of(node.args.begin(), node.args.end(), isNumber)) return setConstant(node, node.fnValue());
  SymObject& inner = *node.args[0];
  if (row.undoes != 0 && inner.kind == row.undoes && within(inner.coef, 1, kTol)) {
    const NodePtr argument = inner.args[0];
    return copyFrom(node, *argument, node.coef);
  }
  if (inner.coef < 0 && (row.is(Property::odd) || row.is(Property::even)) && !inner.bound().is(Property::bare)) {
    multiplyValue(inner, -1);
    node.text.clear();
    if (row.is(Property::odd)) node.coef = -node.coef;
  }
}

}  // namespace Sym
namespace Sym {
// Special rules, not written yet: the common rule stands in, sums and products stay as built.
void updateLn(SymObject& node) { updateCommon(node); }
void updateExp(SymObject& node) { updateCommon(node); }
void updateSin(SymObject& node) { updateCommon(node); }
void updateCos(SymObject& node) { updateCommon(node); }
void updateTan(SymObject& node) { updateCommon(node); }
void updateCot(SymObject& node) { updateCommon(node); }
void updateHyperbolic(SymObject& node) { updateCommon(node); }
void updateSqrt(SymObject& node) { updateCommon(node); }
void updatePow(SymObject&) {}
void updateAdd(SymObject&) {}
void updateMul(SymObject&) {}
}  // namespace Sym
