// SPDX-License-Identifier: Apache-2.0
#include "sym/diff/matrix_diff.h"

#include "sym/node/edit.h"
#include "sym/node/operators.h"

namespace Sym {
namespace {

std::vector<NodePtr> flattened(const SymMatrix2d_t& matrix) {
  std::vector<NodePtr> elements;
  for (const auto& row : matrix.data) elements.insert(elements.end(), row.begin(), row.end());
  return elements;
}

NodePtr diffOfOrder(const SymObject& element, uint32_t order, const VarPtr& variable, std::string& message) {
  NodePtr result = element.fnDiff(variable, message);
  for (uint32_t k = 1; k < order && result != nullptr; ++k) {
    if (isNumber(*result)) return makeNumber(0);
    result = result->fnDiff(variable, message);
  }
  return result;
}

}  // namespace

MatrixPtr diff(const SymMatrix2d_t& matrix, uint32_t order, const std::string& name, std::string& message) {
  const auto& symbols = SymManger::instance().symbols;
  const auto found = symbols.find(name);
  auto result = std::make_shared<SymMatrix2d_t>(matrix.rows(), matrix.cols());
  for (std::size_t i = 0; i < matrix.rows(); ++i)
    for (std::size_t j = 0; j < matrix.cols(); ++j) {
      result->at(i, j) =
          found == symbols.end() ? makeNumber(0) : diffOfOrder(*matrix.at(i, j), order, found->second, message);
      if (result->at(i, j) == nullptr) return nullptr;
    }
  return result;
}

MatrixPtr diffVector(const SymMatrix2d_t& a, const SymMatrix2d_t& b, std::string& message) {
  const std::vector<NodePtr> functions = flattened(a), variables = flattened(b);
  auto result = std::make_shared<SymMatrix2d_t>(functions.size(), variables.size());
  for (std::size_t i = 0; i < functions.size(); ++i)
    for (std::size_t j = 0; j < variables.size(); ++j) {
      const SymObject& by = *variables[j];
      const bool plain = by.kind == Code::Variable && within(by.coef, 1, kTol);
      result->at(i, j) = plain ? functions[i]->fnDiff(by.var, message) : makeNumber(0);
      if (result->at(i, j) == nullptr) return nullptr;
    }
  return result;
}

}  // namespace Sym
