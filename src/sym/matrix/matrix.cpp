// SPDX-License-Identifier: Apache-2.0
#include "sym/matrix/matrix.h"

#include <algorithm>
#include <map>
#include <utility>

#include "frame/code_table.h"
#include "frame/numbers.h"
#include "orvane/sym.h"
#include "sym/node/edit.h"
#include "sym/node/walk.h"

namespace Sym {
namespace {

NodePtr cloneOrNull(const NodePtr& node) { return node ? cloneNode(*node) : nullptr; }

NodePtr sum(std::vector<NodePtr> terms) { return makeNode(Code::Add, std::move(terms)); }

NodePtr product(const NodePtr& a, const NodePtr& b) { return makeBinary(Code::Mul, cloneNode(*a), cloneNode(*b)); }

using Places = std::vector<std::size_t>;

Places allBut(std::size_t n, std::size_t left) {
  Places indices;
  for (std::size_t i = 0; i < n; ++i)
    if (i != left) indices.push_back(i);
  return indices;
}

// Minors of a matrix, each kept by its rows and columns, so that equal ones are computed once.
class Minors {
 public:
  explicit Minors(const SymMatrix2d_t& from) : matrix(from) {}

  // Expansion along the first of the rows.
  NodePtr of(const Places& rows, const Places& cols) { return cloneNode(*kept(rows, cols)); }
  NodePtr whole() {
    const Places all = allBut(matrix.rows(), matrix.rows());
    return all.empty() ? makeNumber(1) : of(all, all);
  }

 private:
  const SymMatrix2d_t& matrix;
  std::map<std::pair<Places, Places>, NodePtr> done;

  const NodePtr& kept(const Places& rows, const Places& cols) {
    if (cols.size() == 1) return matrix.at(rows[0], cols[0]);
    NodePtr& value = done[{rows, cols}];
    if (value) return value;
    const Places below(rows.begin() + 1, rows.end());
    std::vector<NodePtr> terms;
    for (std::size_t j = 0; j < cols.size(); ++j) {
      const NodePtr& element = matrix.at(rows[0], cols[j]);
      if (element->kind == Code::Number && element->coef == 0) continue;
      Places rest = cols;
      rest.erase(rest.begin() + static_cast<std::ptrdiff_t>(j));
      NodePtr term = makeBinary(Code::Mul, cloneNode(*element), of(below, rest));
      if (j % 2 == 1) multiplyValue(*term, -1);
      terms.push_back(std::move(term));
    }
    return value = sum(std::move(terms));
  }
};

// The elements of a vector, lying or standing.
std::vector<NodePtr> elements(const SymMatrix2d_t& vector) {
  std::vector<NodePtr> list;
  for (const auto& row : vector.data) list.insert(list.end(), row.begin(), row.end());
  return list;
}

}  // namespace

MatrixPtr makeMatrix(NodePtr element) {
  auto result = std::make_shared<SymMatrix2d_t>(1, 1);
  result->at(0, 0) = std::move(element);
  return result;
}

MatrixPtr cloneMatrix(const SymMatrix2d_t& matrix) {
  auto result = std::make_shared<SymMatrix2d_t>();
  for (const auto& row : matrix.data) {
    auto& copy = result->data.emplace_back();
    for (const NodePtr& element : row) copy.push_back(cloneOrNull(element));
  }
  return result;
}

MatrixPtr rowOf(const SymMatrix2d_t& matrix, std::size_t row) {
  auto result = std::make_shared<SymMatrix2d_t>(1, matrix.cols());
  for (std::size_t j = 0; j < matrix.cols(); ++j) result->at(0, j) = cloneOrNull(matrix.at(row, j));
  return result;
}

MatrixPtr columnOf(const SymMatrix2d_t& matrix, std::size_t col) {
  auto result = std::make_shared<SymMatrix2d_t>(matrix.rows(), 1);
  for (std::size_t i = 0; i < matrix.rows(); ++i) result->at(i, 0) = cloneOrNull(matrix.at(i, col));
  return result;
}

MatrixPtr transpose(const SymMatrix2d_t& matrix) {
  auto result = std::make_shared<SymMatrix2d_t>(matrix.cols(), matrix.rows());
  for (std::size_t i = 0; i < matrix.rows(); ++i)
    for (std::size_t j = 0; j < matrix.cols(); ++j) result->at(j, i) = cloneOrNull(matrix.at(i, j));
  return result;
}

MatrixPtr trace(const SymMatrix2d_t& matrix) {
  std::vector<NodePtr> terms;
  for (std::size_t i = 0; i < std::min(matrix.rows(), matrix.cols()); ++i) terms.push_back(cloneNode(*matrix.at(i, i)));
  return makeMatrix(terms.size() == 1 ? terms[0] : sum(std::move(terms)));
}

MatrixPtr sumOfAll(const SymMatrix2d_t& matrix) {
  std::vector<NodePtr> terms;
  for (const NodePtr& element : elements(matrix)) terms.push_back(cloneNode(*element));
  return makeMatrix(sum(std::move(terms)));
}

MatrixPtr determinant(const SymMatrix2d_t& matrix) { return makeMatrix(Minors(matrix).whole()); }

MatrixPtr inverse(const SymMatrix2d_t& matrix) {
  const std::size_t n = matrix.rows();
  Minors minors(matrix);
  const NodePtr whole = minors.whole();
  auto result = std::make_shared<SymMatrix2d_t>(n, n);
  for (std::size_t i = 0; i < n; ++i) {
    const Places rows = allBut(n, i);
    for (std::size_t j = 0; j < n; ++j) {
      NodePtr cofactor = n == 1 ? makeNumber(1) : minors.of(rows, allBut(n, j));
      if ((i + j) % 2 == 1) multiplyValue(*cofactor, -1);
      distributeCoef(*cofactor);
      result->at(j, i) = makeNode2(*cofactor, *whole, Code::Divide);
    }
  }
  return result;
}

MatrixPtr skew(const SymMatrix2d_t& vector) {
  const std::vector<NodePtr> v = elements(vector);
  const auto plus = [&](std::size_t i) { return cloneNode(*v.at(i)); };
  const auto minus = [&](std::size_t i) {
    NodePtr node = scaledClone(*v.at(i), -1);
    distributeCoef(*node);
    return node;
  };
  auto result = std::make_shared<SymMatrix2d_t>();
  result->data.push_back({makeNumber(0), minus(2), plus(1)});
  result->data.push_back({plus(2), makeNumber(0), minus(0)});
  result->data.push_back({minus(1), plus(0), makeNumber(0)});
  return result;
}

MatrixPtr dot(const SymMatrix2d_t& a, const SymMatrix2d_t& b) {
  auto result = std::make_shared<SymMatrix2d_t>(a.rows(), b.cols());
  for (std::size_t i = 0; i < a.rows(); ++i)
    for (std::size_t j = 0; j < b.cols(); ++j) {
      std::vector<NodePtr> terms;
      for (std::size_t k = 0; k < a.cols(); ++k) terms.push_back(product(a.at(i, k), b.at(k, j)));
      result->at(i, j) = sum(std::move(terms));
    }
  return result;
}

MatrixPtr cross(const SymMatrix2d_t& a, const SymMatrix2d_t& b) {
  const std::vector<NodePtr> u = elements(a), v = elements(b);
  std::vector<NodePtr> components;
  for (std::size_t i = 0; i < 3; ++i) {
    const std::size_t j = (i + 1) % 3, k = (i + 2) % 3;
    components.push_back(makeNode2(*product(u.at(j), v.at(k)), *product(u.at(k), v.at(j)), Code::Subtract));
  }
  const bool lying = a.rows() == 1;
  auto result = std::make_shared<SymMatrix2d_t>(lying ? 1 : 3, lying ? 3 : 1);
  for (std::size_t i = 0; i < 3; ++i) result->at(lying ? 0 : i, lying ? i : 0) = std::move(components[i]);
  return result;
}

MatrixPtr elementWise(const SymMatrix2d_t& a, const SymMatrix2d_t& b, uint8_t code) {
  const bool singleA = a.rows() == 1 && a.cols() == 1;
  const bool singleB = b.rows() == 1 && b.cols() == 1;
  const SymMatrix2d_t& shape = singleA ? b : a;
  auto result = std::make_shared<SymMatrix2d_t>(shape.rows(), shape.cols());
  for (std::size_t i = 0; i < shape.rows(); ++i)
    for (std::size_t j = 0; j < shape.cols(); ++j) {
      const NodePtr& left = singleA ? a.at(0, 0) : a.at(i, j);
      const NodePtr& right = singleB ? b.at(0, 0) : b.at(i, j);
      result->at(i, j) = applyTwo(left, right, code);
    }
  return result;
}

namespace {

struct Operation {
  uint8_t code;
  MatrixPtr (*run)(const SymMatrix2d_t&);
};

constexpr Operation kOperations[] = {
    {ORVANE_SYM_TRACE, trace},         {ORVANE_SYM_INVERSE, inverse}, {ORVANE_SYM_DETERMINANT, determinant},
    {ORVANE_SYM_TRANSPOSE, transpose}, {ORVANE_SYM_SUM, sumOfAll},    {ORVANE_SYM_SKEW, skew},
};

}  // namespace

MatrixPtr oneFun(const SymMatrix2d_t& matrix, uint8_t code) {
  const Operation* operation = CodeTable<kOperations>::find(code);
  return operation == nullptr ? nullptr : operation->run(matrix);
}

MatrixPtr rotation(const NodePtr& angle, uint8_t axis) {
  if (axis < 1 || axis > 3) return nullptr;
  const std::size_t i = axis % 3u, j = (axis + 1u) % 3u;  // the plane that turns, i towards j
  auto result = std::make_shared<SymMatrix2d_t>(3, 3);
  for (auto& row : result->data)
    for (NodePtr& element : row) element = makeNumber(0);
  result->at(axis - 1u, axis - 1u) = makeNumber(1);
  result->at(i, i) = makeNode(Code::Cos, {cloneNode(*angle)});
  result->at(j, j) = cloneNode(*result->at(i, i));
  result->at(j, i) = makeNode(Code::Sin, {cloneNode(*angle)});
  result->at(i, j) = scaledClone(*result->at(j, i), -1);
  return result;
}

double elementValue(const NodePtr& element) { return element ? element->fnValue() : kNaN; }

bool allNumbers(const SymMatrix2d_t& matrix) {
  for (const auto& row : matrix.data)
    for (const NodePtr& element : row)
      if (!element || element->kind != Code::Number) return false;
  return true;
}

void collectVariables(const SymObject& node, std::vector<VarPtr>& found) {
  forEachNode(node, [&](const SymObject& at) {
    if (at.kind != Code::Variable) return;
    const auto place = std::lower_bound(found.begin(), found.end(), at.var);
    if (place == found.end() || *place != at.var) found.insert(place, at.var);
  });
}

const std::vector<VarPtr>& variablesOf(SymMatrix2d_t& matrix) {
  if (matrix.baseSyms.empty()) {
    for (const NodePtr& element : elements(matrix))
      if (element) collectVariables(*element, matrix.baseSyms);
    std::sort(matrix.baseSyms.begin(), matrix.baseSyms.end(),
              [](const VarPtr& a, const VarPtr& b) { return a->name < b->name; });
  }
  return matrix.baseSyms;
}

void reorderVariables(SymMatrix2d_t& matrix, std::span<const int32_t> order) {
  const std::vector<VarPtr> old = matrix.baseSyms;
  for (std::size_t i = 0; i < std::min(order.size(), old.size()); ++i)
    if (order[i] >= 0 && static_cast<std::size_t>(order[i]) < old.size()) matrix.baseSyms[i] = old[order[i]];
}

}  // namespace Sym
