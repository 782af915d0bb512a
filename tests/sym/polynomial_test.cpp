// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <orvane/orvane.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdint>
#include <random>

#include "support/csv.h"
#include "sym/formula.h"
#include "sym/text_reader.h"

namespace {

using namespace host;

using Complex = std::complex<double>;
constexpr uint32_t kNone = 0xFFFFFFFF;

class Polynomial : public testing::Test {
 protected:
  const Formula x{"x"};
  ~Polynomial() override { sym_clearTempVar(); }
};

Matrix make(const std::vector<double>& ascending) {
  std::vector<double> exponents(ascending.size());
  for (size_t i = 0; i < ascending.size(); ++i) exponents[i] = static_cast<double>(i);
  return Matrix(sym_createPolyByParam(ascending.data(), exponents.data(), static_cast<int32_t>(ascending.size())));
}

/// Coefficients, ascending; empty for what is no polynomial.
std::vector<double> coefficients(SymMatrix2d* matrix) {
  std::vector<double> out(matrix ? static_cast<size_t>(sym_getPolyParam(matrix, nullptr, 0)) : 0);
  if (!out.empty()) sym_getPolyParam(matrix, out.data(), static_cast<int32_t>(out.size()));
  return out;
}
std::vector<double> coefficients(Formula f) { return coefficients(row({f})); }

std::vector<Complex> roots(SymMatrix2d* matrix) {
  const uint32_t count = sym_calcPolyRoot(matrix, nullptr, nullptr, 0);
  if (count == kNone) return {Complex(NAN)};
  std::vector<double> re(count), im(count);
  sym_calcPolyRoot(matrix, re.data(), im.data(), count);
  std::vector<Complex> result;
  for (uint32_t i = 0; i < count; ++i) result.emplace_back(re[i], im[i]);
  return result;
}

std::string factors(SymMatrix2d* matrix) {
  std::string text(sym_polyFactor(matrix, nullptr, 0), '\0');
  sym_polyFactor(matrix, text.data(), static_cast<int32_t>(text.size()));
  return text;
}

std::vector<double> run(SymMatrix2d* a, SymMatrix2d* b, uint8_t operation) {
  return coefficients(Matrix(sym_runPolyFun(a, b, operation)));
}

using Vector = std::vector<double>;

TEST_F(Polynomial, WhatCounts) {
  EXPECT_EQ(coefficients((x ^ 2.0) + 1.0), (Vector{1, 0, 1}));
  EXPECT_EQ(coefficients(3.0), Vector{3});
  EXPECT_EQ(coefficients(x * 2.5), (Vector{0, 2.5}));
  EXPECT_EQ(coefficients(((x ^ 3.0) * 4.0 + x - 7.0) * 0.5), (Vector{-3.5, 0.5, 0, 2}));
  for (const Formula& f : {x * Formula("y"), call(20, x), (x ^ -1.0) + 1.0, (x ^ 0.5) + x, (x + 1.0) ^ 2.0}) {
    const Matrix matrix = row({f});
    EXPECT_FALSE(sym_isPoly(matrix)) << textOf(f);
    EXPECT_EQ(sym_getPolyParam(matrix, nullptr, 0), 0);
    EXPECT_EQ(sym_calcPolyRoot(matrix, nullptr, nullptr, 0), kNone);
    EXPECT_EQ(sym_polyFactor(matrix, nullptr, 0), 0u);
    EXPECT_EQ(sym_calcPolyFun(matrix, nullptr, nullptr, 0), 0);
  }
  const Matrix two = row({x, x});
  EXPECT_FALSE(sym_isPoly(two));
  EXPECT_EQ(sym_calcPolyRoot(two, nullptr, nullptr, 0), kNone);
  EXPECT_EQ(sym_polyFactor(two, nullptr, 0), kNone);

  double wrong[5] = {9, 9, 9, 9, 9};
  const Matrix square = row({(x ^ 2.0) + 1.0});
  EXPECT_EQ(sym_getPolyParam(square, wrong, 5), 3);
  EXPECT_EQ(wrong[0], 9);
  const double at[] = {0, 2, -3};
  double values[3];
  EXPECT_EQ(sym_calcPolyFun(square, at, values, 3), 1);
  EXPECT_EQ((Vector(values, values + 3)), (Vector{1, 5, 10}));
}

TEST_F(Polynomial, AnEditForgetsTheOldForm) {
  const Matrix matrix = row({x * 2.0 + 1.0});
  EXPECT_EQ(coefficients(matrix), (Vector{1, 2}));
  sym_selfMul(matrix, 3);
  EXPECT_EQ(coefficients(matrix), (Vector{3, 6}));
  sym_setSymMatrixData3(matrix, 0, 0, 4);
  EXPECT_EQ(coefficients(matrix), Vector{4});
}

/// A variable is a polynomial whatever its coefficient, 0 included: the zero polynomial.
TEST_F(Polynomial, SmallCoefficients) {
  const Matrix small = row({x}), zero = row({x * 1.0});
  sym_selfMul(small, 1e-20);
  EXPECT_EQ(coefficients(small), (Vector{0, 1e-20}));
  EXPECT_EQ(factors(small), "9.9999999999999994515e-21*x");
  sym_selfMul(zero, 0);
  EXPECT_EQ(coefficients(zero), (Vector{0, 0}));
  EXPECT_TRUE(roots(zero).empty());
  EXPECT_EQ(factors(zero), "0");
  for (const uint8_t division : {3, 4}) {
    EXPECT_EQ(sym_runPolyFun(small, zero, division), nullptr);
    EXPECT_EQ(sym_runPolyFun(small, row({0.0}), division), nullptr);
  }
  EXPECT_EQ(run(small, row({0.0}), 10), Vector{1});
  // In a sum a small one does not count, unless the sum was made as a polynomial.
  EXPECT_FALSE(sym_isPoly(row({(x ^ 2.0) + x * 1e-16})));
  const Matrix made = make({1.0 / 3, 1e-16, 2e-17});
  EXPECT_EQ(coefficients(made), (Vector{1.0 / 3, 1e-16, 2e-17}));
  sym_setSymValue("x", 1e8);
  EXPECT_NEAR(sym_calcExpressValue(made, 0, 0), 1.0 / 3 + 0.20000001, 1e-15);
  EXPECT_EQ(textOf(made).substr(0, 22), "0.33333333333333331483") << "not cut to six digits";
  sym_selfMul(made, 2);
  EXPECT_FALSE(sym_isPoly(made));
  const double one = 1, high = 2e6, limit = 1e8, beyond = 1e8 + 1;
  EXPECT_EQ(sym_getPolyParam(Matrix(sym_createPolyByParam(&one, &high, 1)), nullptr, 0), 1000001);
  EXPECT_NE(Matrix(sym_createPolyByParam(&one, &limit, 1)), nullptr);
  EXPECT_EQ(sym_createPolyByParam(&one, &beyond, 1), nullptr);
}

TEST_F(Polynomial, Creation) {
  const double c[] = {5, -1}, e[] = {3, 0}, fraction[] = {1, 0.5}, twice[] = {1, 1}, negative[] = {-1, 0};
  EXPECT_EQ(coefficients(Matrix(sym_createPolyByParam(c, e, 2))), (Vector{-1, 0, 0, 5}));
  for (const double* bad : {fraction, twice, negative}) EXPECT_EQ(sym_createPolyByParam(c, bad, 2), nullptr);
  const double data[] = {3, 1, 0, 4}, none[] = {0}, half[] = {1.5, 1}, endless[] = {INFINITY};
  EXPECT_EQ(coefficients(Matrix(sym_createPoly(data))), (Vector{1, 0, 4}));
  for (const double* bad : {none, half, endless, static_cast<const double*>(nullptr)})
    EXPECT_EQ(sym_createPoly(bad), nullptr);
}

TEST_F(Polynomial, Arithmetic) {
  const Matrix a = make({-1, 0, 0, 1}), b = make({-1, 0, 1}), three = make({3}), line = make({1, 2});
  EXPECT_EQ(run(a, b, 0), (Vector{-2, 0, 1, 1}));
  EXPECT_EQ(run(a, b, 1), (Vector{0, 0, -1, 1}));
  EXPECT_EQ(run(a, b, 2), (Vector{1, 0, -1, -1, 0, 1}));
  EXPECT_EQ(run(a, b, 3), (Vector{0, 1}));  // x^3 - 1 = x (x^2 - 1) + (x - 1)
  EXPECT_EQ(run(a, b, 4), (Vector{-1, 1}));
  EXPECT_EQ(run(a, b, 5), (Vector{-1, 1}));
  EXPECT_EQ(run(a, b, 6), (Vector{-1, -1, 0, 1, 1}));  // (x^3 - 1)(x + 1)
  EXPECT_EQ(run(b, line, 7), (Vector{0, 4, 4}));       // (2x + 1)^2 - 1
  EXPECT_EQ(run(b, line, 8), (Vector{-2, 2, 6}));      // (2x^3 + x^2 - 2x - 1)'
  EXPECT_EQ(run(b, line, 9), Vector{-3});              // 2^2 b(-1/2)
  EXPECT_EQ(run(line, three, 10), (Vector{1, 6, 12, 8}));
  EXPECT_EQ(run(a, b, 9), Vector{});  // a common root: 0, and so no term is left
  EXPECT_EQ(sym_runPolyFun(a, line, 10), nullptr);
  EXPECT_EQ(sym_runPolyFun(a, a, 1), nullptr);
  EXPECT_EQ(sym_runPolyFun(a, b, 11), nullptr);
  EXPECT_EQ(sym_runPolyFun(a, row({Formula("z")}), 0), nullptr);
  EXPECT_EQ(run(a, make({1e-15}), 2), Vector{});
}

/// Random products: the common divisor and the quotient come back to rounding.
TEST_F(Polynomial, DivisionUndoesMultiplication) {
  std::mt19937 random(5);
  std::uniform_int_distribution<int> digit(-9, 9);
  const auto draw = [&](size_t degree) {
    Vector c(degree + 1);
    for (double& v : c) v = digit(random);
    c.back() = 1 + std::abs(c.back());
    return make(c);
  };
  for (int round = 0; round < 50; ++round) {
    const Matrix a = draw(6), b = draw(4);
    const Matrix ab = Matrix(sym_runPolyFun(a, b, 2));
    const Vector quotient = run(ab, b, 3), expected = coefficients(a);
    ASSERT_EQ(quotient.size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i) EXPECT_NEAR(quotient[i], expected[i], 1e-9);
  }
}

TEST_F(Polynomial, RootsByMultiplicity) {
  const Matrix square = make({1, 0, 1});
  EXPECT_EQ(roots(square), (std::vector<Complex>{{0, -1}, {0, 1}}));
  EXPECT_TRUE(roots(make({7})).empty());
  // 3 x^3 (x - 1)^5 (x + 2)^2 (x^2 - 2x + 5)
  Matrix p = make({0, 0, 0, 3});
  for (const Vector& factor : {Vector{-1, 1}, {-1, 1}, {-1, 1}, {-1, 1}, {-1, 1}, {2, 1}, {2, 1}, {5, -2, 1}})
    p = Matrix(sym_runPolyFun(p, make(factor), 2));
  EXPECT_EQ(roots(p), (std::vector<Complex>{-2, -2, 0, 0, 0, {1, -2}, 1, 1, 1, 1, 1, {1, 2}}));
  EXPECT_EQ(factors(p), "3*(x+2)^2*x^3*(x-1)^5*(x^2-2*x+5)");
  EXPECT_EQ(factors(square), "(x^2+1)");
  EXPECT_EQ(factors(make({0.5, -1})), "-(x-0.5)");
  EXPECT_EQ(factors(make({-2.5})), "-2.5");
  // Roots of very different sizes: 1e290 x^2 + 1e150 x + 1
  const std::vector<Complex> wide = roots(make({1, 1e150, 1e290}));
  ASSERT_EQ(wide.size(), 2u);
  EXPECT_NEAR(wide[0].real() / -1e-140, 1, 1e-9);
  EXPECT_NEAR(wide[1].real() / -1e-150, 1, 1e-9);
  double unwritten = 4;
  EXPECT_EQ(sym_calcPolyRoot(square, &unwritten, &unwritten, 1), 2u);
  EXPECT_EQ(unwritten, 4);
}

/// A polynomial of the table, coefficients as they stand, with its roots in order.
struct Known {
  std::string name;
  Vector coefficients;
  std::vector<Complex> roots;
};

std::vector<Known> knownPolynomials() {
  std::vector<Known> all;
  for (const Cells& cells : readCsv("sym/roots.csv")) {
    const auto number = [&](std::size_t i) { return std::strtod(cells[i].c_str(), nullptr); };
    if (cells[0] == "root") {
      all.back().roots.emplace_back(number(1), number(2));
    } else {
      all.push_back({cells[1], {}, {}});
      for (std::size_t i = 2; i < cells.size(); ++i) all.back().coefficients.push_back(number(i));
    }
  }
  return all;
}

/// Ill-conditioned polynomials too: the roots of the doubles as they stand, to the last digits.
TEST_F(Polynomial, RootsAgainstReference) {
  const std::vector<Known> all = knownPolynomials();
  EXPECT_GE(all.size(), 7u);
  for (const Known& known : all) {
    const std::vector<Complex> found = roots(make(known.coefficients));
    ASSERT_EQ(found.size(), known.roots.size()) << known.name;
    for (std::size_t i = 0; i < found.size(); ++i) {
      const Complex expected = known.roots[i];
      EXPECT_LE(std::abs(found[i] - expected), 4e-16 * std::abs(expected)) << known.name << " root " << i;
      EXPECT_EQ(found[i].imag() == 0, expected.imag() == 0) << known.name << " root " << i;
    }
  }
}

/// The text of the factors, read back, has the values of the polynomial: to the rounding of the roots, each of which
/// moves the product by no more than its share of |x| + |root|.
TEST_F(Polynomial, FactorsGiveThePolynomialBack) {
  std::vector<Vector> all{{0, 0, 0, -1.5},      {-2, 1},         {1, 0, 1},          {4, -4, 1}, {2e-17, -2 - 1e-17, 1},
                          {1, 1e150, 1e290},    {0.1, 3e-5},     {0, 1, 0, 0, 1e-9}, {-7},       {1e-30, 0, 4e10},
                          {1, -2, 1 + 0x1p-52}, {-6, 11, -6, 1}, {0, 0, -3, 0, 0, 9}};
  for (const Known& known : knownPolynomials()) all.push_back(known.coefficients);
  std::mt19937 random(8);
  std::normal_distribution<double> normal;
  for (const std::size_t degree : {3u, 12u, 50u, 150u}) {
    Vector& c = all.emplace_back();
    for (std::size_t i = 0; i <= degree; ++i) c.push_back(normal(random));
  }
  for (const Vector& c : all) {
    const Matrix polynomial = make(c);
    const std::string text = factors(polynomial);
    const Formula product = TextReader(text).whole();
    const std::vector<Complex> zeros = roots(polynomial);
    Vector places{0.3, -1.25};
    for (std::size_t i = 0; i < zeros.size(); i += 7) places.push_back(1.1 * std::abs(zeros[i]));
    for (const double at : places) {
      long double value = 0, size = std::abs(static_cast<long double>(c.back()));
      for (std::size_t i = c.size(); i-- > 0;) value = value * at + c[i];
      for (const Complex& zero : zeros) size *= std::abs(at) + std::abs(zero);
      sym_setSymValue("x", at);
      EXPECT_LE(std::abs(valueOf(product) - value), 2 * static_cast<double>(c.size()) * 2.22e-16L * size)
          << text << " at " << at;
    }
    sym_clearTempVar();
  }
}

/// At the highest degree: every root to the backward error of rounding, and all of them (their sum is -c[n-1]/c[n]).
TEST_F(Polynomial, DegreeOneThousand) {
  std::mt19937 random(6);
  std::normal_distribution<double> normal;
  Vector c(1001);
  for (double& v : c) v = normal(random);
  Vector spiral(1001);
  spiral[0] = -1;
  spiral[1000] = 1;
  for (const Vector& p : {c, spiral}) {
    const std::vector<Complex> found = roots(make(p));
    ASSERT_EQ(found.size(), 1000u);
    Complex sum = 0;
    for (const Complex z : found) {
      sum += z;
      const bool outside = std::abs(z) > 1;
      const std::complex<long double> w = outside ? 1.0L / std::complex<long double>(z) : std::complex<long double>(z);
      std::complex<long double> value = 0;
      long double size = 0;
      for (size_t i = 0; i <= 1000; ++i) {
        const double coefficient = outside ? p[i] : p[1000 - i];
        value = value * w + static_cast<long double>(coefficient);
        size = size * std::abs(w) + std::abs(coefficient);
      }
      EXPECT_LE(std::abs(value), 1e-13L * size) << z;
    }
    EXPECT_NEAR(std::abs(sum + p[999] / p[1000]), 0, 1e-10 * (1 + std::abs(p[999] / p[1000])));
  }
  EXPECT_EQ(sym_calcPolyRoot(row({(x ^ 1001.0) + 1.0}), nullptr, nullptr, 0), kNone);
  EXPECT_EQ(sym_calcPolyRoot(make({INFINITY, 1}), nullptr, nullptr, 0), kNone);
}

TEST_F(Polynomial, Chebyshev) {
  // Exact for polynomials, and near best for exp: the error of degree 10 on [1, 3] is about 2 e^2 / (11! 2^10).
  const Matrix cubic = Matrix(sym_polyApp(row({(x ^ 3.0) - x * 2.0}), -1, 1, 3));
  const Vector c = coefficients(cubic);
  ASSERT_EQ(c.size(), 4u);
  EXPECT_NEAR(c[1], -2, 1e-15);
  EXPECT_NEAR(c[3], 1, 1e-15);
  const Matrix exponential = row({call(12, x)});
  const Matrix low = Matrix(sym_polyApp(exponential, 1, 3, 10));
  const Matrix high = Matrix(sym_polyApp(exponential, 3, 1, 16));
  for (double at = 1; at <= 3; at += 0.125) {
    double value;
    sym_calcPolyFun(low, &at, &value, 1);
    EXPECT_NEAR(value, std::exp(at), 4e-10);
    sym_calcPolyFun(high, &at, &value, 1);
    EXPECT_NEAR(value, std::exp(at), 1e-12);
  }
  EXPECT_EQ(coefficients(Matrix(sym_polyApp(row({2.5}), 0, 1, 4))), Vector{2.5});
  // What the samples' rounding hides stays, as it may be the function's: 1/15! = 7.6e-13.
  const Vector all = coefficients(Matrix(sym_polyApp(exponential, -1, 1, 15)));
  ASSERT_EQ(all.size(), 16u);
  EXPECT_NEAR(all[15], 7.6e-13, 2e-12);
  // What can be nothing else goes: beyond the degree of a polynomial, and the other parity of a sine.
  for (const auto& [f, size] : {std::pair{(x + 1.0) ^ 2.0, 3u}, {x * ((x ^ 2.0) - 1.0), 4u}, {x * 1e-3, 2u}})
    for (const int32_t degree : {4, 5, 40}) {
      const Vector exact = coefficients(Matrix(sym_polyApp(row({f}), -0.5, 3, degree)));
      ASSERT_EQ(exact.size(), size) << textOf(f) << " " << degree;
      EXPECT_NEAR(exact.back(), size == 2 ? 1e-3 : 1, 1e-15);
    }
  const Vector sine = coefficients(Matrix(sym_polyApp(row({call(20, x)}), -2, 2, 12)));
  ASSERT_EQ(sine.size(), 12u);
  for (std::size_t i = 0; i < sine.size(); i += 2) EXPECT_EQ(sine[i], 0) << i;
  for (SymMatrix2d* bad : {sym_polyApp(exponential, 1, 1, 3), sym_polyApp(exponential, 0, 1, -1),
                           sym_polyApp(exponential, 0, 1, 1001), sym_polyApp(exponential, 0, INFINITY, 3),
                           sym_polyApp(row({x + Formula("y")}), 0, 1, 3), sym_polyApp(row({call(11, x)}), -2, -1, 3),
                           sym_polyApp(row({x, x}), 0, 1, 3), sym_polyApp(exponential, 0, 1e-3, 200)})
    EXPECT_EQ(bad, nullptr);
}

/// A wide range gives coefficients of every size; the result is a polynomial all the same.
TEST_F(Polynomial, WideRanges) {
  const Matrix wide = Matrix(sym_polyApp(row({call(12, x * -0.001)}), 0, 1e4, 24));
  const Vector c = coefficients(wide);
  ASSERT_GT(c.size(), 20u);
  EXPECT_LT(std::abs(c[12]), 1e-40);
  for (const double at : {0.0, 123.0, 5000.0, 9999.0}) {
    double value;
    ASSERT_EQ(sym_calcPolyFun(wide, &at, &value, 1), 1);
    EXPECT_NEAR(value, std::exp(-0.001 * at), 1e-9) << at;
  }
  Vector xs, ys;
  for (int i = 0; i <= 20; ++i) {
    xs.push_back(1e6 * i);
    ys.push_back(1 + 2e-7 * xs.back() - 3e-15 * xs.back() * xs.back());
  }
  const Vector fit = coefficients(Matrix(sym_solveRPoly(xs.data(), ys.data(), 21, nullptr, nullptr, 4)));
  ASSERT_EQ(fit.size(), 4u);
  EXPECT_NEAR(fit[1], 2e-7, 1e-19);
  EXPECT_NEAR(fit[2], -3e-15, 1e-26);
  EXPECT_NEAR(fit[3], 0, 1e-33);
}

TEST_F(Polynomial, Fit) {
  Vector at, y, weights;
  for (int i = 0; i < 12; ++i) {
    at.push_back(-1 + 0.25 * i);
    y.push_back(2 - 3 * at.back() + 0.5 * std::pow(at.back(), 4));
    weights.push_back(1);
  }
  const int32_t powers[] = {0, 1, 4}, twice[] = {1, 1}, negative[] = {-1};
  const Vector c = coefficients(Matrix(sym_solveRPoly(at.data(), y.data(), 12, nullptr, powers, 3)));
  ASSERT_EQ(c.size(), 5u);
  for (size_t i = 0; i < 5; ++i) EXPECT_NEAR(c[i], (Vector{2, -3, 0, 0, 0.5})[i], 1e-13);
  // A line through a constant and one far point without weight.
  y.assign(12, 4);
  y[11] = 1e6;
  weights[11] = 0;
  const Vector flat = coefficients(Matrix(sym_solveRPoly(at.data(), y.data(), 12, weights.data(), nullptr, 1)));
  ASSERT_EQ(flat.size(), 1u);
  EXPECT_NEAR(flat[0], 4, 1e-14);
  EXPECT_EQ(sym_solveRPoly(at.data(), y.data(), 0, nullptr, nullptr, 2), nullptr);
  EXPECT_EQ(sym_solveRPoly(at.data(), y.data(), 12, nullptr, nullptr, 0), nullptr);
  EXPECT_EQ(sym_solveRPoly(at.data(), y.data(), 12, nullptr, twice, 2), nullptr);
  EXPECT_EQ(sym_solveRPoly(at.data(), y.data(), 12, nullptr, negative, 1), nullptr);
}

}  // namespace
