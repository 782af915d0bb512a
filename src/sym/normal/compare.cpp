// SPDX-License-Identifier: Apache-2.0
#include "sym/normal/compare.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "sym/node/edit.h"

namespace Sym {
namespace {

bool isInteger(double x) { return std::abs(x) < 0x1p63 && x == std::nearbyint(x); }

uint64_t mix(uint64_t h) {
  h ^= h >> 32;
  h *= 0xd6e8feb86659fd93u;
  h ^= h >> 32;
  return h;
}

uint64_t hashNumber(double x) {
  constexpr double kShift = 0.381966;  // no round number lies on a rim
  const double scaled = std::floor(x * 0x1p20 + kShift);
  if (!(std::abs(scaled) < 0x1p62)) return std::hash<double>{}(x);
  return mix(static_cast<uint64_t>(static_cast<int64_t>(scaled)));
}

bool sameArguments(const SymObject& a, const SymObject& b) {
  for (std::size_t i = 0; i < a.args.size(); ++i)
    if (!sameNode(*a.args[i], *b.args[i], true)) return false;
  return true;
}

// Every argument of a against one of b that is still free; normal forms have them in the same order, mostly.
bool sameMembers(const SymObject& a, const SymObject& b) {
  const std::size_t n = a.args.size();
  std::size_t first = 0;
  while (first < n && sameNode(*a.args[first], *b.args[first], true)) ++first;
  if (first == n) return true;
  constexpr std::size_t kFew = 64;  // a mask of bits says which are taken; more than these need a list
  uint64_t mask = 0;
  std::vector<bool> list(n > kFew ? n : 0);
  for (std::size_t i = first; i < n; ++i) {
    std::size_t j = first;
    for (; j < n; ++j) {
      const bool taken = n > kFew ? list[j] : (mask >> j & 1) != 0;
      if (!taken && sameNode(*a.args[i], *b.args[j], true)) break;
    }
    if (j == n) return false;
    if (n > kFew)
      list[j] = true;
    else
      mask |= uint64_t{1} << j;
  }
  return true;
}

}  // namespace

int compareNodes(const SymObject& a, const SymObject& b) {
  if ((a.coef < 0) != (b.coef < 0)) return a.coef < 0 ? 1 : -1;
  if (a.kind != b.kind) return a.kind < b.kind ? -1 : 1;
  if (std::abs(a.coef - b.coef) > kEpsilon) return a.coef < b.coef ? -1 : 1;
  if (a.kind == Code::Number) return 0;
  if (a.kind == Code::Variable) return a.var == b.var ? 0 : a.var->name.compare(b.var->name);
  if (a.args.size() != b.args.size()) return a.args.size() < b.args.size() ? -1 : 1;
  for (std::size_t i = 0; i < a.args.size(); ++i)
    if (const int order = compareNodes(*a.args[i], *b.args[i]); order != 0) return order;
  return 0;
}

bool sameNode(const SymObject& a, const SymObject& b, bool withCoefficient) {
  if (a.kind != b.kind || a.args.size() != b.args.size()) return false;
  if (withCoefficient && !(a.coef == b.coef || std::abs(a.coef - b.coef) < kEpsilon)) return false;
  if (a.kind == Code::Number) return true;
  if (a.kind == Code::Variable) return a.var == b.var;
  if (a.kind == Code::Add || a.kind == Code::Mul) return sameMembers(a, b);
  return sameArguments(a, b);
}

uint64_t hashOf(const SymObject& node) {
  uint64_t h = mix(node.kind + 0x9e3779b97f4a7c15u * (node.args.size() + 1));
  if (node.kind == Code::Variable) return mix(h ^ reinterpret_cast<uintptr_t>(node.var.get()));
  if (node.kind == Code::Add || node.kind == Code::Mul) {
    uint64_t members = 0;
    for (const ConstNodePtr& arg : node.args) members += hashWithCoefficient(*arg);
    return mix(h ^ members);
  }
  for (const ConstNodePtr& arg : node.args) h = mix(h * 31 + hashWithCoefficient(*arg));
  return h;
}

uint64_t hashWithCoefficient(const SymObject& node) { return mix(hashOf(node) ^ hashNumber(node.coef)); }

void sortNodes(Args& nodes) {
  // Equality within a bound is no equivalence: a merge sort bears that, a quick sort would not.
  const auto before = [](const NodePtr& a, const NodePtr& b) { return compareNodes(*a, *b) < 0; };
  if (!std::is_sorted(nodes.begin(), nodes.end(), before)) std::stable_sort(nodes.begin(), nodes.end(), before);
}

bool neverNegative(const SymObject& node) {
  if (!(node.coef >= 0)) return false;
  const auto all = [&] {
    return std::all_of(node.args.begin(), node.args.end(), [](const ConstNodePtr& arg) { return neverNegative(*arg); });
  };
  switch (node.kind) {
    case Code::Number:
    case Code::Sqrt:
    case Code::Exp:
    case Code::Abs:
    case Code::Acos:
    case Code::Cosh:
    case Code::Acosh:
    case Code::Erfc:
      return true;
    case Code::Add:
    case Code::Mul:
      return all();
    case Code::Pow: {
      const SymObject& e = *node.args[1];
      return neverNegative(*node.args[0]) || (e.kind == Code::Number && isInteger(e.coef / 2)) ||
             (e.kind == Code::Number && !isInteger(e.coef));
    }
    default:
      return false;
  }
}

}  // namespace Sym
