// SPDX-License-Identifier: Apache-2.0
// Nodes as such: binding, depth, memory, in-place edits.
#include <cmath>
#include <iostream>
#include <stdexcept>

#include "sym/formula.h"
#include "sym/kinds/kind.h"
#include "sym/matrix/matrix.h"
#include "sym/node/edit.h"
#include "sym/node/pool.h"
#include "sym/normal/compare.h"

namespace {

using namespace Sym;

NodePtr variable(const char* name) { return makeVariable(SymManger::instance().variable(name)); }

// Sin(Sin(...Sin(x)))
NodePtr tower(int levels) {
  NodePtr node = variable("x");
  for (int i = 0; i < levels; ++i) node = makeUnary(Code::Sin, std::move(node));
  return node;
}

TEST(Node, TreesOfAnyDepthAreClonedSearchedAndReleased) {
  constexpr int kDeep = 100000;
  const auto matrix = std::make_shared<SymMatrix2d_t>(1, 1);
  matrix->at(0, 0) = tower(kDeep);
  SymMatrix2d_t* handle = SymManger::instance().keep(matrix);
  auto* exported = reinterpret_cast<::SymMatrix2d*>(handle);
  const host::Matrix copy(sym_cloneMatrix2d(exported));
  int levels = 0;
  const NodePtr* at = &reinterpret_cast<SymMatrix2d_t*>(static_cast<::SymMatrix2d*>(copy))->at(0, 0);
  for (; !(*at)->args.empty(); at = &(*at)->args[0]) ++levels;
  EXPECT_EQ(levels, kDeep);
  EXPECT_TRUE(containsVar(*matrix->at(0, 0), SymManger::instance().variable("x")));
  EXPECT_FALSE(containsVar(*matrix->at(0, 0), SymManger::instance().variable("y")));
  EXPECT_EQ(copy.names(), "x,");
  sym_freeMatrix2d(exported);
}

TEST(Node, TreesOfAnyDepthAreWrittenAndRead) {
  constexpr int kDeep = 100000;
  const auto matrix = std::make_shared<SymMatrix2d_t>(1, 1);
  matrix->at(0, 0) = tower(kDeep);
  const host::Matrix deep(reinterpret_cast<::SymMatrix2d*>(SymManger::instance().keep(matrix)));
  std::vector<uint8_t> block(sym_write());
  sym_getDataStr(block.data());
  // One variable of one letter, one matrix; kind, coefficient and count a level; kind, coefficient and index below.
  constexpr std::size_t kHead = 4 + (8 + 4 + 1) + 4 + 8, kLevel = 1 + 8 + 4;
  ASSERT_EQ(block.size(), kHead + kDeep * kLevel + kLevel);
  for (std::size_t i = 0; i < kDeep; ++i) {
    ASSERT_EQ(block[kHead + i * kLevel], Code::Sin);
    ASSERT_EQ(block[kHead + i * kLevel + 9], 1);
  }
  EXPECT_EQ(block[kHead + kDeep * kLevel], Code::Variable);
  sym_read(block.data(), static_cast<uint32_t>(block.size()));
  const host::Matrix read(sym_getMatrixByID(0));
  EXPECT_EQ(sym_getMatrixID(deep), 1);
  EXPECT_EQ(read.value(), 1) << "its coefficient";
}

TEST(Node, EvaluationBearsTheStatedDepth) {
#if defined(__SANITIZE_ADDRESS__)
  constexpr int kLevels = 10000;
#else
  constexpr int kLevels = 150000;
#endif
  const NodePtr node = tower(kLevels);
  SymManger::instance().variable("x")->value = 1;
  double expected = 1;
  for (int i = 0; i < kLevels; ++i) expected = std::sin(expected);
  EXPECT_EQ(node->fnValue(), expected);
}

TEST(Node, MemoryOfAPlainSine) {
  variable("x");  // the record of the name is there
  const std::size_t before = poolInUse();
  const NodePtr node = makeUnary(Code::Sin, variable("x"));
  const std::size_t bytes = poolInUse() - before;
  std::cout << "the sine of a variable takes " << bytes << " bytes, a node without its owner count "
            << sizeof(Sym::SymObject) << "\n";
#if defined(__SANITIZE_ADDRESS__)
  EXPECT_EQ(bytes, 0u) << "no pool beside the sanitizer";
#else
  EXPECT_GT(bytes, 2 * sizeof(Sym::SymObject));
  EXPECT_LT(bytes, 200u);
#endif
}

TEST(Node, BindingFollowsTheKindOnlyWhenAsked) {
  const NodePtr node = makeUnary(Code::Sin, variable("x"));
  SymManger::instance().variable("x")->value = 0.5;
  node->kind = Code::Cos;
  EXPECT_EQ(node->fnValue(), std::sin(0.5)) << "still the handlers of the old kind";
  node->poly = std::make_unique<PolyForm>();
  node->bindHandlers();
  EXPECT_EQ(node->fnValue(), std::cos(0.5));
  EXPECT_EQ(node->poly, nullptr);
  node->kind = 4;
  EXPECT_THROW(node->bindHandlers(), std::out_of_range);
}

TEST(Node, ClonesKeepTheTextUnlessScaled) {
  const NodePtr node = makeUnary(Code::Sin, variable("x"));
  node->text = "as written";
  EXPECT_EQ(cloneNode(*node)->text.get(), "as written");
  EXPECT_EQ(cloneNode(*node, 1 + 1e-15)->text.get(), "as written");
  const NodePtr twice = cloneNode(*node, 2);
  EXPECT_TRUE(twice->text.empty());
  EXPECT_EQ(twice->coef, 2);
  EXPECT_NE(twice->args[0], node->args[0]);
  EXPECT_EQ(twice->args[0]->var, node->args[0]->var);
  scaleNode(*node, 1);
  EXPECT_TRUE(node->text.empty());
}

TEST(Node, EditsInPlace) {
  const NodePtr sum = makeBinary(Code::Add, variable("x"), variable("y"));
  sum->coef = 2;
  sum->text = "old";
  distributeCoef(*sum);
  EXPECT_EQ(sum->coef, 1);
  EXPECT_EQ(sum->args[0]->coef, 2);
  EXPECT_TRUE(sum->text.empty());
  const NodePtr node = variable("x");
  setBinary(*node, variable("y"), makeNumber(4), Code::Divide);
  EXPECT_EQ(node->kind, Code::Variable);
  EXPECT_EQ(node->coef, 0.25);
  EXPECT_EQ(node->var->name, "y");
  copyFrom(*node, *sum, 3);
  EXPECT_EQ(node->kind, Code::Add);
  EXPECT_EQ(node->coef, 3);
  EXPECT_EQ(node->var, nullptr);
  setConstant(*node, 6);
  EXPECT_EQ(node->kind, Code::Number);
  EXPECT_TRUE(node->args.empty());
}

// Too few arguments throw where a node is built; what is beyond the count is dropped, also from a folded node.
TEST(Node, NumberOfArguments) {
  using namespace host;
  const std::vector<Formula> letters{"a", "b", "c", "d"};
  for (int code = 0; code < 256; ++code) {
    const Kind* kind = findKind(static_cast<uint8_t>(code));
    if (kind == nullptr || kind->maxArgs == kAnyArgs || code == ORVANE_KIND_NUMBER) continue;
    const auto build = [&](std::vector<Formula> args) { return call(kind->code, args); };
    if (code == ORVANE_KIND_VARIABLE) {
      for (const Formula& one : {letters[0], num(1)})
        EXPECT_THROW(call(ORVANE_KIND_VARIABLE, one), std::invalid_argument);
      EXPECT_THROW(call(ORVANE_KIND_VARIABLE, letters[0], letters[1]), std::invalid_argument);
      EXPECT_THROW(build({}), std::invalid_argument);
      continue;
    }
    EXPECT_THROW(build({letters.begin(), letters.begin() + kind->minArgs - 1}), std::invalid_argument) << kind->name;
    std::vector<Formula> args(letters.begin(), letters.begin() + kind->maxArgs), numbers(kind->maxArgs, num(0.5));
    const std::string text = textOf(build(args));
    args.push_back(var("spare"));
    numbers.push_back(var("spare"));
    EXPECT_EQ(textOf(build(args)), text);
    EXPECT_TRUE(host::isNumber(build(numbers))) << kind->name;
  }
  EXPECT_THROW(call(ORVANE_KIND_BESSEL_J, letters[0]), std::invalid_argument);
  EXPECT_THROW(call(ORVANE_KIND_POW, letters[0]), std::invalid_argument);
  EXPECT_THROW(call(ORVANE_KIND_HYPERGEOMETRIC_1F1, letters[0], letters[1]), std::invalid_argument);
  EXPECT_THROW(sym_sameTwoFun(row({"a"}), row({"b"}), ORVANE_KIND_HYPERGEOMETRIC_2F1), std::invalid_argument);
  EXPECT_TRUE(host::isNumber(call(ORVANE_KIND_SIN, num(0.5), letters[0])));
  EXPECT_EQ(Derivative(call(ORVANE_KIND_ZETA, {2.0 * letters[0], "b"}), "b").text(), "0") << "nor does it refuse";
  sym_clearTempVar();
}

TEST(Compare, OrderAndEquality) {
  const NodePtr x = variable("x"), y = variable("y"), minus = cloneNode(*x, -1),
                sine = makeUnary(Code::Sin, variable("x"));
  EXPECT_LT(compareNodes(*x, *y), 0);
  EXPECT_GT(compareNodes(*minus, *sine), 0) << "negative ones come last";
  EXPECT_LT(compareNodes(*y, *sine), 0) << "lower kinds come first";
  EXPECT_LT(compareNodes(*makeNumber(2), *x), 0);
  EXPECT_LT(compareNodes(*x, *cloneNode(*y, 2)), 0);
  EXPECT_EQ(compareNodes(*sine, *cloneNode(*sine)), 0);
  EXPECT_TRUE(sameNode(*minus, *x, false));
  EXPECT_FALSE(sameNode(*minus, *x, true));
  const auto sum = [&](double a, double b) {
    NodePtr node = newNode(Code::Add);
    node->args = {cloneNode(*x, a), cloneNode(*y, b)};
    return node;
  };
  const NodePtr forward = sum(2, 3), backward = sum(2, 3);
  std::swap(backward->args[0], backward->args[1]);
  EXPECT_TRUE(sameNode(*forward, *backward, true)) << "terms in any order";
  EXPECT_EQ(hashOf(*forward), hashOf(*backward));
  EXPECT_FALSE(sameNode(*forward, *sum(3, 2), true));
  const NodePtr power = makeBinary(Code::Pow, variable("x"), variable("y"));
  const NodePtr other = makeBinary(Code::Pow, variable("y"), variable("x"));
  EXPECT_FALSE(sameNode(*power, *other, true)) << "base and exponent have their places";
}

}  // namespace
