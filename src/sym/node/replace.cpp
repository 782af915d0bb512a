// SPDX-License-Identifier: Apache-2.0
#include "sym/node/replace.h"

#include <locale>
#include <sstream>
#include <utility>

#include "sym/node/edit.h"

namespace Sym {
namespace {

struct Visited {
  SymObject* node;
  std::size_t parent;
  bool changed;
};

double numberOf(const std::string& text) {
  if (text == "inf") return 1e300;
  if (text == "-inf") return -1e300;
  std::istringstream stream(text);
  stream.imbue(std::locale::classic());
  double value = 0;
  stream >> value;
  return value;
}

}  // namespace

void replaceVariable(SymObject& root, const VarPtr& old, const VarPtr& record, double number) {
  // Parents stand before their arguments; walked backwards, every node is updated after all below it.
  std::vector<Visited> order{{&root, 0, false}};
  for (std::size_t i = 0; i < order.size(); ++i)
    for (const NodePtr& arg : order[i].node->args)
      if (arg) order.push_back({arg.get(), i, false});
  for (std::size_t i = order.size(); i-- > 0;) {
    Visited& at = order[i];
    if (at.node->kind == Code::Variable && at.node->var == old) {
      if (record)
        at.node->var = record;
      else
        setConstant(*at.node, at.node->coef * number);
      at.changed = true;
    } else if (at.changed) {
      at.node->text.clear();
      at.node->fnUpdate();
    }
    if (!at.changed) continue;
    at.node->text.clear();
    at.node->poly.reset();
    order[at.parent].changed = true;
  }
}

void replaceSym(SymMatrix2d_t& matrix, const std::string& name, const std::string& replacement, bool isName) {
  SymManger& store = SymManger::instance();
  const VarPtr old = store.variable(name);
  const VarPtr record = isName ? store.variable(replacement) : nullptr;
  const double number = isName ? 0 : numberOf(replacement);
  for (auto& row : matrix.data)
    for (const NodePtr& element : row)
      if (element) replaceVariable(*element, old, record, number);
}

}  // namespace Sym
