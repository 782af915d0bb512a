// SPDX-License-Identifier: Apache-2.0
#include "sym/diff/diff.h"

#include <algorithm>

#include "frame/text.h"
#include "sym/kinds/kind.h"
#include "sym/node/edit.h"

namespace Sym {
namespace {

bool anyHolds(const SymObject& node, const std::vector<int>& positions, const VarPtr& variable) {
  if (positions.empty())
    return std::any_of(node.args.begin(), node.args.end(),
                       [&](const ConstNodePtr& a) { return containsVar(*a, variable); });
  return std::any_of(positions.begin(), positions.end(), [&](int i) {
    return i < static_cast<int>(node.args.size()) && containsVar(*node.args[i], variable);
  });
}

std::vector<int> refusedPositions(const Rule& rule) {
  std::vector<int> positions;
  for (int i = 0; i < rule.count; ++i)
    if (!rule.partial[i]) positions.push_back(i);
  return positions;
}

}  // namespace

bool refuseDiff(const SymObject& node, const char* word, const std::vector<int>& positions, const VarPtr& variable,
                std::string& message) {
  if (!anyHolds(node, positions, variable)) return false;
  message = word;
  if (positions.empty() || positions.size() >= node.args.size()) {
    message += toGBK("不支持求导");
    return true;
  }
  message += toGBK("的第");
  for (std::size_t i = 0; i < positions.size(); ++i) message += (i > 0 ? "," : "") + std::to_string(positions[i] + 1);
  message += toGBK("个参数不支持求导");
  return true;
}

NodePtr differentiate(const SymObject& node, const Rule& rule, const VarPtr& variable, std::string& message) {
  if (rule.fewer != nullptr && node.args.size() < rule.count)
    return differentiate(node, *rule.fewer, variable, message);
  if (rule.whole != nullptr) return rule.whole(node, variable, message);

  const std::vector<int> refused = refusedPositions(rule);
  if ((rule.count == 0 || !refused.empty()) && refuseDiff(node, node.bound().name, refused, variable, message))
    return nullptr;

  NodePtr sum;
  const std::size_t count = std::min<std::size_t>(rule.count, node.args.size());
  for (std::size_t i = 0; i < count; ++i) {
    if (!rule.partial[i]) continue;
    NodePtr inner = node.args[i]->fnDiff(variable, message);
    if (inner == nullptr) return nullptr;
    if (isNumber(*inner, 0)) continue;
    multiplyValue(*inner, node.coef);
    NodePtr term = mul(rule.partial[i](node), std::move(inner));
    sum = sum == nullptr ? std::move(term) : add(std::move(sum), std::move(term));
  }
  return sum != nullptr ? sum : makeNumber(0);
}

}  // namespace Sym
