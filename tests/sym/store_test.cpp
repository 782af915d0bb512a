// SPDX-License-Identifier: Apache-2.0
// Store, matrices, variables, replacement and classification, as a host meets them.
#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "support/numbers.h"
#include "sym/formula.h"

namespace {

using namespace host;

std::string nameOf(const BaseSym* variable) {
  std::string text(static_cast<std::size_t>(sym_getBaseSymName(variable, nullptr, 0)), ' ');
  sym_getBaseSymName(variable, text.data(), static_cast<int32_t>(text.size()));
  return text;
}

std::vector<BaseSym*> variablesOf(const Matrix& matrix, int32_t row = 0, int32_t col = 0) {
  std::vector<BaseSym*> out(static_cast<std::size_t>(sym_getAllBaseSym(matrix, row, col, nullptr, -1)));
  sym_getAllBaseSym(matrix, row, col, out.data(), static_cast<int32_t>(out.size()));
  return out;
}

TEST(Store, NodesOfOneNameShareTheVariable) {
  const Formula a = var("x"), b = var("x");
  EXPECT_NE(a.node, b.node);
  sym_setSymValue("x", 2);
  EXPECT_EQ(valueOf(a), 2);
  EXPECT_EQ(valueOf(b), 2);
  sym_setSymValue("nobody made this one", 3);
  const Formula late = var("nobody made this one");
  EXPECT_EQ(valueOf(late), 0) << "a value for an unknown name must not make the variable";
}

TEST(Store, PiIsANumber) {
  const Matrix pi(var("pi"));
  EXPECT_TRUE(sym_isConstant(pi));
  EXPECT_EQ(pi.value(), kPi);
  EXPECT_EQ(sym_getAllBaseSym(pi, 0, 0, nullptr, 0), 0);
}

TEST(Store, ACodeWithoutARowThrows) {
  for (const int code : {4, 7, 9, 14, 28, 46, 59, 87, 172, 255}) {
    try {
      call(static_cast<uint8_t>(code), var("x"));
      ADD_FAILURE() << code;
    } catch (const std::out_of_range& error) {
      EXPECT_STREQ(error.what(), "invalid map<K, T> key");
    }
  }
}

TEST(Store, ClearedNodesStayInMatricesOnly) {
  const Formula x = var("x"), y = var("y");
  Matrix m(1, 2, {x});
  EXPECT_EQ(sym_getSymMatrixData(m, 0, 0), x.node) << "the node itself, no clone";
  EXPECT_EQ(sym_getSymMatrixData(m, 0, 1), nullptr);
  sym_clearTempVar();
  sym_setSymMatrixData(m, 0, 1, y.node);
  EXPECT_EQ(sym_getSymMatrixData(m, 0, 1), nullptr) << "an address that left the store";
  sym_setSymValue("x", 5);
  EXPECT_EQ(m.value(), 5);
  EXPECT_TRUE(std::isnan(m.value(0, 1)));
  EXPECT_THROW(sym_calcExpressValue(m, 1, 0), std::out_of_range);
  // An unknown address gives a null argument and no crash until the node is used.
  const Formula unknown(sym_getSymMatrixData(m, 0, 0));
  EXPECT_NE(call(Add, unknown, unknown).node, nullptr);
  EXPECT_NE(call(Sin, unknown).node, nullptr);
  sym_clearTempVar();
}

TEST(Store, EditsInPlaceAreSeenByAllHolders) {
  const Formula x = call(Sin, var("x"));
  Matrix a(x), b(x);
  sym_setSymMatrixData3(a, 0, 0, 7);
  EXPECT_EQ(b.value(), 7);
  EXPECT_TRUE(sym_isConstant(b));
  Matrix c(1, 1, {});
  sym_setSymMatrixData2(c, 0, 0, a);
  sym_setSymMatrixData3(a, 0, 0, 8);
  EXPECT_EQ(c.value(), 7) << "a clone";
  sym_selfMul(a, -0.5);
  EXPECT_EQ(b.value(), -4);
}

TEST(Store, IdentifiersAreZeroAtFirst) {
  Matrix a(var("x")), b(var("y"));
  EXPECT_EQ(sym_getMatrixID(a), 0);
  const SymMatrix2d* lowest = std::min<SymMatrix2d*>(a, b, std::less<>());
  EXPECT_EQ(sym_getMatrixByID(0), lowest);
  EXPECT_EQ(sym_getMatrixByID(12345), nullptr);
  sym_freeMatrix2d(reinterpret_cast<SymMatrix2d*>(&a));  // an unknown address
}

TEST(Store, TablesOfNumbersGoInAndOut) {
  const double values[] = {1, 2, 3, 4, 5, 6};
  Matrix m(sym_fromMatrix2dDouble(values, 2, 3));
  int32_t dim[2];
  sym_getDataDim(m, dim);
  EXPECT_EQ(dim[0], 2);
  EXPECT_EQ(dim[1], 3);
  double out[6];
  EXPECT_TRUE(sym_toMatrix2dDouble(m, out));
  EXPECT_TRUE(std::equal(values, values + 6, out));
  EXPECT_EQ(Matrix(sym_getRowCol(m, 1, 1)).values(), (std::vector<double>{4, 5, 6}));
  EXPECT_EQ(Matrix(sym_getRowCol(m, 1, 0)).values(), (std::vector<double>{2, 5}));
  sym_setSymValue("x", 9);
  sym_setSymMatrixData(m, 0, 0, call(Mul, 2, "x").node);
  sym_setSymValue("x", 9);
  EXPECT_FALSE(sym_toMatrix2dDouble(m, out));
  EXPECT_EQ(out[0], 18);
  sym_getMatrixData(m, out);
  EXPECT_EQ(out[0], 2) << "coefficients, not values";
  Matrix empty(sym_createSymMatrix(0, 0));
  EXPECT_TRUE(sym_isConstant(empty));
  sym_getDataDim(empty, dim);
  EXPECT_EQ(dim[0] + dim[1], 0);
}

TEST(Matrices, ProductsAndOperations) {
  const double av[] = {2, -1, 0.5, 3, 4, -2, 1, 0, 5}, bv[] = {1, 2, -3, 0.25, 0, 7, -1, 6, 2};
  Matrix a(sym_fromMatrix2dDouble(av, 3, 3)), b(sym_fromMatrix2dDouble(bv, 3, 3));
  std::vector<double> expected(9, 0);
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t j = 0; j < 3; ++j)
      for (std::size_t k = 0; k < 3; ++k) expected[3 * i + j] += av[3 * i + k] * bv[3 * k + j];
  EXPECT_EQ(Matrix(sym_dot(a, b)).values(), expected);
  EXPECT_EQ(Matrix(sym_oneFun(a, 200)).value(), 11);
  EXPECT_EQ(Matrix(sym_oneFun(a, 206)).value(), 12.5);
  EXPECT_EQ(Matrix(sym_oneFun(a, 204)).values(), (std::vector<double>{2, 3, 1, -1, 4, 0, 0.5, -2, 5}));
  // 2(20) + 1(15 + 2) + 0.5(-4)
  EXPECT_DOUBLE_EQ(Matrix(sym_oneFun(a, 202)).value(), 55);
  EXPECT_EQ(sym_oneFun(a, 203), nullptr);

  const double uv[] = {1, 2, 3}, wv[] = {-2, 0.5, 4};
  Matrix u(sym_fromMatrix2dDouble(uv, 1, 3)), w(sym_fromMatrix2dDouble(wv, 3, 1));
  // Shapes that do not fit: what is too much is not read, too little throws.
  Matrix tall(sym_fromMatrix2dDouble(av, 3, 2)), wide(sym_fromMatrix2dDouble(av, 2, 3)),
      pair(sym_fromMatrix2dDouble(uv, 1, 2));
  EXPECT_EQ(Matrix(sym_dot(pair, tall)).values(), (std::vector<double>{2 + 2 * 0.5, -1 + 2 * 3}));
  EXPECT_THROW(sym_dot(a, wide), std::out_of_range);
  EXPECT_THROW(sym_cross(u, pair), std::out_of_range);
  EXPECT_THROW(sym_oneFun(pair, 208), std::out_of_range);
  EXPECT_EQ(Matrix(sym_oneFun(wide, 202)).value(), 2 * 4 - 3 * -1);
  EXPECT_EQ(Matrix(sym_oneFun(wide, 201)).values().size(), 4u);
  for (const uint8_t code : {201, 202}) EXPECT_THROW(sym_oneFun(tall, code), std::out_of_range);

  const std::vector<double> product{2 * 4 - 3 * 0.5, 3 * -2.0 - 1 * 4, 1 * 0.5 - 2 * -2};
  EXPECT_EQ(Matrix(sym_cross(u, w)).values(), product);
  const Matrix skew(sym_oneFun(u, 208));
  EXPECT_EQ(Matrix(sym_dot(skew, w)).values(), product);

  // A single element on either side is paired with all.
  const double one[] = {10};
  Matrix single(sym_fromMatrix2dDouble(one, 1, 1));
  EXPECT_EQ(Matrix(sym_sameTwoFun(single, u, Subtract)).values(), (std::vector<double>{9, 8, 7}));
  EXPECT_EQ(Matrix(sym_sameTwoFun(u, single, Divide)).values(), (std::vector<double>{0.1, 0.2, 3 * 0.1}));
  EXPECT_EQ(Matrix(sym_sameTwoFun(u, u, Mul)).values(), (std::vector<double>{1, 4, 9}));
}

// A matrix of symbols with a few numbers, against the numeric kernels of the library at one point.
TEST(Matrices, InverseAndDeterminantOfSymbols) {
  for (const uint32_t n : {1u, 2u, 3u, 4u, 5u}) {
    std::vector<Formula> nodes;
    std::vector<double> values;
    for (uint32_t i = 0; i < n * n; ++i) {
      const std::string name = "m" + std::to_string(i);
      const double value = std::cos(1.0 + 3.7 * i) + (i % (n + 1) == 0 ? 2.5 : 0);
      if (i % 5 == 3) {
        nodes.push_back(num(i % 2 ? 0 : value));
      } else {
        nodes.push_back(var(name.c_str()));
        sym_setSymValue(name.c_str(), value);
      }
      values.push_back(valueOf(nodes.back()));
    }
    Matrix m(n, n, nodes);
    const double det = matrixDet(values.data(), static_cast<int32_t>(n));
    EXPECT_NEAR(Matrix(sym_oneFun(m, 202)).value(), det, 1e-12 * std::abs(det)) << n;
    std::vector<double> inverse(n * n);
    matrixInverse(values.data(), inverse.data(), static_cast<int32_t>(n));
    const std::vector<double> symbolic = Matrix(sym_oneFun(m, 201)).values();
    for (std::size_t i = 0; i < inverse.size(); ++i) EXPECT_NEAR(symbolic[i], inverse[i], 1e-12) << n << " " << i;
    sym_clearTempVar();
  }
}

TEST(Matrices, RotationsTurnTheNextAxis) {
  for (const uint8_t axis : {1, 2, 3}) {
    Matrix rotation(sym_createSO3ByAxis("angle", axis));
    sym_setSymValue("angle", 0.3);
    const std::vector<double> r = rotation.values();
    const std::size_t k = axis - 1u, i = axis % 3u, j = (axis + 1u) % 3u;
    EXPECT_EQ(r[3 * k + k], 1);
    EXPECT_DOUBLE_EQ(r[3 * i + i], std::cos(0.3));
    EXPECT_DOUBLE_EQ(r[3 * j + j], std::cos(0.3));
    EXPECT_DOUBLE_EQ(r[3 * j + i], std::sin(0.3));  // the image of axis i moves towards axis j
    EXPECT_DOUBLE_EQ(r[3 * i + j], -std::sin(0.3));
    EXPECT_EQ(r[3 * k + i] + r[3 * k + j] + r[3 * i + k] + r[3 * j + k], 0);
  }
  EXPECT_EQ(sym_createSO3ByAxis("angle", 4), nullptr);
}

TEST(Variables, ListsOrderAndSnapshots) {
  Matrix m(1, 2, {call(Add, var("vb"), call(Sin, var("va"))), call(Mul, var("vc"), var("vb"))});
  EXPECT_EQ(sym_getAllBaseSym(m, 0, 0, nullptr, 1), 2) << "too many for the room: only counted";
  const std::vector<BaseSym*> found = variablesOf(m);
  EXPECT_TRUE(std::is_sorted(found.begin(), found.end(), std::less<>()));
  std::vector<std::string> names{nameOf(found.at(0)), nameOf(found.at(1))};
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::string>{"va", "vb"}));

  sym_updateSymValue(m, 0);  // nothing kept so far
  EXPECT_EQ(m.names(), "va,vb,vc,");
  const int32_t order[] = {2, -1, 0, 1};
  EXPECT_EQ(sym_setAllBaseSym(m, order, 4), 1);
  EXPECT_EQ(m.names(), "vc,vb,va,");
  EXPECT_EQ(sym_setAllBaseSym(m, nullptr, 0), 1);
  const int32_t all[] = {0, 1, 2};
  const double values[] = {3, 2, 1}, others[] = {9, 9, 9};
  sym_setBaseSymValue(m, all, values, 3);
  EXPECT_EQ(valueOf(var("vc")), 3);
  sym_updateSymValue(m, 1);
  sym_setBaseSymValue(m, all, others, 3);
  EXPECT_EQ(m.value(0, 1), 81);
  sym_updateSymValue(m, 0);
  EXPECT_EQ(m.value(0, 1), 6);
  EXPECT_EQ(sym_getBaseSymValue(found[0]) + sym_getBaseSymValue(found[1]), 3);
  sym_setSymMatrixData(m, 0, 0, num(1).node);
  EXPECT_EQ(m.names(), "vc,vb,va,") << "the list stays once it is made";
}

TEST(Replace, NamesAndNumbers) {
  Matrix m(call(Add, {call(Mul, num(2), var("p")), call(Pow, var("q"), num(2)), num(1)}));
  const char* names[] = {"p", "q"};
  const char* byNumber[] = {"3", "-0.5e1"};
  const uint8_t numbers[] = {0, 0}, mixed[] = {1, 0};
  Matrix all(sym_replaceSym(m, names, byNumber, numbers, 2));
  EXPECT_TRUE(sym_isConstant(all)) << "brought to normal form again";
  EXPECT_EQ(all.value(), 32);
  const char* toOther[] = {"q", "inf"};
  Matrix renamed(sym_replaceSym(m, names, toOther, mixed, 1));
  EXPECT_EQ(renamed.names(), "q,");
  sym_setSymValue("q", 4);
  EXPECT_EQ(renamed.value(), 25);
  EXPECT_EQ(m.names(), "p,q,") << "the source stays";
  // Like terms meet after a renaming.
  Matrix difference(call(Subtract, var("p"), var("q")));
  EXPECT_TRUE(sym_isConstant(Matrix(sym_replaceSym(difference, names, toOther, mixed, 1))));
  const auto byText = [&](const char* text) {
    const char* name[] = {"p"};
    const uint8_t flag[] = {0};
    return Matrix(sym_replaceSym(Matrix(var("p")), name, &text, flag, 1)).value();
  };
  EXPECT_EQ(byText("inf"), 1e300);
  EXPECT_EQ(byText("-inf"), -1e300);
  EXPECT_EQ(byText("no number"), 0);
  EXPECT_EQ(byText("2.5 and more"), 2.5);
  // A name that did not exist arises.
  const char* fresh[] = {"fresh one"};
  const uint8_t name[] = {1};
  Matrix made(sym_replaceSym(Matrix(var("p")), names, fresh, name, 1));
  sym_setSymValue("fresh one", 6);
  EXPECT_EQ(made.value(), 6);
}

TEST(Classify, LinearAndQuadratic) {
  const auto x = [] { return var("x"); };
  const auto y = [] { return var("y"); };
  const auto linear = [](Formula node) { return sym_isLineExpress(Matrix(node), 0, 0); };
  const auto quadratic = [](Formula node) { return sym_isQuadExpress(Matrix(node), 0, 0); };
  const Formula form = call(Add, {call(Mul, num(2), x()), call(Mul, num(3), y()), num(1)});
  EXPECT_TRUE(linear(form));
  EXPECT_TRUE(linear(num(4)));
  EXPECT_TRUE(linear(call(Divide, x(), num(3))));
  EXPECT_FALSE(linear(call(Mul, x(), y())));
  EXPECT_FALSE(linear(call(Add, x(), call(Sin, y()))));
  EXPECT_FALSE(linear(call(Divide, num(1), x())));
  EXPECT_TRUE(quadratic(call(Add, call(Pow, x(), num(2)), y())));
  EXPECT_TRUE(quadratic(call(Mul, x(), y())));
  EXPECT_TRUE(quadratic(call(Mul, {num(-3), x(), x()})));
  EXPECT_TRUE(quadratic(call(Add, {call(Mul, x(), y()), call(Mul, num(4), call(Mul, y(), y())), x(), num(2)})));
  EXPECT_FALSE(quadratic(call(Add, call(Mul, num(2), x()), num(1))));
  EXPECT_FALSE(quadratic(x()));
  EXPECT_FALSE(quadratic(call(Pow, x(), num(3))));
  EXPECT_FALSE(quadratic(call(Add, call(Pow, x(), num(2)), call(Exp, y()))));

  Matrix m(form);
  BaseSym* variables[4];
  double coefficients[4];
  ASSERT_EQ(sym_getLineExpress(m, 0, 0, variables, coefficients), 2);
  EXPECT_EQ(nameOf(variables[0]), "x");
  EXPECT_EQ(coefficients[0], 2);
  EXPECT_EQ(nameOf(variables[1]), "y");
  EXPECT_EQ(coefficients[1], 3);
  sym_selfMul(m, 10);  // the coefficient of the sum itself
  ASSERT_EQ(sym_getLineExpress(m, 0, 0, variables, coefficients), 2);
  EXPECT_EQ(coefficients[1], 30);
  EXPECT_EQ(sym_getLineExpress(Matrix(call(Mul, x(), y())), 0, 0, variables, coefficients), 0);
  EXPECT_EQ(sym_getLineExpress(Matrix(num(1)), 0, 0, variables, coefficients), 0);
}

}  // namespace
