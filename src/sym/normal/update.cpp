// SPDX-License-Identifier: Apache-2.0
#include "sym/normal/update.h"

#include <algorithm>
#include <stdexcept>

#include "sym/kinds/kind.h"
#include "sym/node/edit.h"

namespace Sym {

void updateNumber(SymObject&) {}

void updateVariable(SymObject& node) {
  if (!node.var) throw std::invalid_argument("a variable is made by its name");
}

void updateCommon(SymObject& node) {
  const Kind& row = node.bound();
  const auto isNumber = [](const ConstNodePtr& arg) { return arg->kind == Code::Number; };
  if (std::all_of(node.args.read().begin(), node.args.read().end(), isNumber)) return setConstant(node, node.fnValue());
  SymObject& inner = *node.args[0];
  if (row.undoes != 0 && inner.kind == row.undoes && within(inner.coef, 1, kTol)) {
    const NodePtr argument = inner.args[0];
    return copyFrom(node, *argument, node.coef);
  }
  if ((row.is(Property::odd) || row.is(Property::even)) && coefficientOf(inner) < 0) {
    multiplyValue(inner, -1);
    node.text.clear();
    if (row.is(Property::odd)) node.coef = -node.coef;
  }
}

}  // namespace Sym
