// SPDX-License-Identifier: Apache-2.0
#include "prog/quad/quad_prog_sym.h"

#include <algorithm>
#include <map>
#include <vector>

#include "prog/quad/quad_prog_solver.h"
#include "sym/normal/classify.h"

namespace QuadProg {

namespace {

using Sym::SymObject;
namespace Code = Sym::Code;

/// The terms of a line or a quad over numbered symbols.
class Terms {
 public:
  explicit Terms(std::span<Sym::BaseSym_s* const> symbols) {
    for (std::size_t k = 0; k < symbols.size(); ++k) numbers.try_emplace(symbols[k], static_cast<int32_t>(k));
  }

  /// False for an expression of another form, or with a symbol that is not listed.
  bool read(const SymObject& node) {
    i.clear(), j.clear(), quad.clear(), k.clear(), linear.clear();
    constant = 0;
    bool known = true;
    if (Sym::isLineExpress(node)) {
      for (const auto& [variable, coefficient] : Sym::getLineExpress(node)) known &= addLinear(variable, coefficient);
      readConstant(node);
      return known;
    }
    if (!Sym::isQuadExpress(node)) return false;
    if (node.kind != Code::Add) return addQuad(node, 1);
    for (const auto& term : node.args) {
      if (Sym::isQuadTerm(*term))
        known &= addQuad(*term, node.coef);
      else if (term->kind == Code::Variable)
        known &= addLinear(term->var, node.coef * term->coef);
    }
    readConstant(node);
    return known;
  }

  /// Of a listed symbol; where it stands twice, its first place.
  int32_t numberOf(const Sym::BaseSym_s* symbol) const { return numbers.at(symbol); }

  std::vector<int32_t> i, j, k;
  std::vector<double> quad, linear;
  double constant = 0;

 private:
  bool addLinear(const Sym::VarPtr& variable, double coefficient) {
    const auto found = numbers.find(variable.get());
    if (found == numbers.end()) return false;
    k.push_back(found->second);
    linear.push_back(coefficient);
    return true;
  }

  // x^2 or x y, with the coefficients of the node and of its factors.
  bool addQuad(const SymObject& node, double factor) {
    const SymObject& first = *node.args[0];
    const bool square = node.kind == Code::Pow;
    const SymObject& second = square ? first : *node.args[1];
    const auto a = numbers.find(first.var.get()), b = numbers.find(second.var.get());
    if (a == numbers.end() || b == numbers.end()) return false;
    i.push_back(a->second);
    j.push_back(b->second);
    quad.push_back(factor * node.coef * first.coef * second.coef);
    return true;
  }

  void readConstant(const SymObject& node) {
    if (node.kind == Code::Number) constant = node.coef;
    if (node.kind != Code::Add) return;
    for (const auto& term : node.args)
      if (term->kind == Code::Number) constant += node.coef * term->coef;
  }

  std::map<const Sym::BaseSym_s*, int32_t> numbers;  // asked by key alone: the addresses decide no order
};

}  // namespace

ResType_E solveSym(std::span<Sym::BaseSym_s* const> symbols, const Sym::SymMatrix2d_t& expressions, double* values) {
  if (expressions.rows() == 0 || expressions.cols() == 0 || !expressions.at(0, 0)) return kNoObjective;
  if (std::ranges::find(symbols, nullptr) != symbols.end()) return kSetupFailed;
  QuadProgSolver solver;
  solver.initTempVar(symbols.size());
  Terms terms(symbols);
  for (std::size_t row = 0; row < expressions.rows(); ++row) {
    for (std::size_t col = 0; col < expressions.cols(); ++col) {
      const Sym::NodePtr& element = expressions.at(row, col);
      if (!element) return kSetupFailed;
      const SymObject* node = element.get();
      const bool objective = row == 0 && col == 0;
      const bool equal = !objective && node->kind == Code::Abs && node->coef > 0;
      if (equal) node = node->args[0].get();
      if (!terms.read(*node)) return kSetupFailed;
      if (objective) {
        solver.setObjective(solver.turned({terms.i, terms.j, terms.quad, terms.k, terms.linear, terms.constant}));
      } else {
        if (!terms.quad.empty()) return kSetupFailed;
        solver.addConstraint(terms.k, terms.linear, -terms.constant, equal ? kEqual : kAtMost);
      }
    }
  }
  const ResType_E result = solver.solve();
  if (result != kSolved) return result;
  const std::vector<double> found = solver.values();
  for (std::size_t k = 0; k < symbols.size(); ++k) symbols[k]->value = values[k] = found[terms.numberOf(symbols[k])];
  return kSolved;
}

}  // namespace QuadProg
