// SPDX-License-Identifier: Apache-2.0
#include "sym/kinds/values.h"

namespace Sym {

double numberValue(const SymObject& node) { return node.coef; }

double variableValue(const SymObject& node) { return node.coef * node.var->value; }

double addValue(const SymObject& node) {
  double sum = 0;
  for (const ConstNodePtr& term : node.args) sum += valueOf(*term);
  return node.coef * sum;
}

double mulValue(const SymObject& node) {
  double product = node.coef;
  for (const ConstNodePtr& factor : node.args) product *= valueOf(*factor);
  return product;
}

}  // namespace Sym
