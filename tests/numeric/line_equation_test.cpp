// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <orvane/line_equation.h>

#include "numeric/dense_support.h"

namespace {

Mat solve(const Mat& a, const Mat& b) {
  Mat x(a.cols, b.cols, 7.0);
  EXPECT_TRUE(math_solveLineEqu(a.data(), a.rows, a.cols, b.data(), b.rows, b.cols, x.data()));
  return x;
}

TEST(LineEquation, SolvesSquareSystems) {
  for (int32_t n : {1, 3, 20, 300}) {
    const Mat a = Mat::random(n, n, static_cast<unsigned>(n)), b = Mat::random(n, 3, 2);
    const Mat x = solve(a, b);
    EXPECT_LE(norm(a * x - b), 50 * kEps * n * norm(a) * norm(x)) << n;
  }
}

TEST(LineEquation, LeastSquaresOfLeastNorm) {
  // Overdetermined: the residual is orthogonal to the columns of A.
  const Mat tall = Mat::random(60, 7, 1), b = Mat::random(60, 2, 2);
  const Mat x = solve(tall, b);
  EXPECT_LE(norm(transpose(tall) * (tall * x - b)), 1e-13);
  // Underdetermined, and rank deficient: X also lies in the row space, so X = A' Z for some Z; the minimum-norm
  // solution is orthogonal to the null space, here that of a product G H, spanned by what H sends to 0.
  const Mat g = Mat::random(12, 2, 3), h = Mat::random(2, 5, 4), a = g * h, c = Mat::random(12, 1, 5);
  const Mat y = solve(a, c);
  EXPECT_LE(norm(transpose(a) * (a * y - c)), 1e-13);
  const Mat toRowSpace = transpose(h) * solve(h * transpose(h), h * y);  // orthogonal projection to the rows of H
  EXPECT_LE(distance(toRowSpace, y), 1e-12);
  // y = x on 50 points: slope 1, no intercept.
  Mat line(50, 2, 1.0), points(50, 1);
  for (int32_t i = 0; i < 50; ++i) line(i, 0) = points(i, 0) = i;
  const Mat fit = solve(line, points);
  EXPECT_NEAR(fit(0, 0), 1.0, 1e-14);
  EXPECT_NEAR(fit(1, 0), 0.0, 1e-12);
}

TEST(LineEquation, SingularSystemIsNotReported) {
  const Mat x =
      solve(Mat(2, 2, {1, 2, 2, 4}), Mat(2, 1, {5, 10}));  // x + 2y = 5 twice: nearest to the origin is (1, 2)
  EXPECT_NEAR(x(0, 0), 1.0, 1e-14);
  EXPECT_NEAR(x(1, 0), 2.0, 1e-14);
  EXPECT_EQ(norm(solve(Mat(3, 2), Mat(3, 1, 1.0))), 0.0);  // A = 0
  EXPECT_EQ(norm(solve(Mat(0, 2), Mat(0, 2))), 0.0);       // no equations
}

TEST(LineEquation, RowCountsMustAgree) {
  const double a[] = {1, 0, 0, 1}, b[] = {1, 2, 3};
  double x[2] = {7, 8};
  EXPECT_FALSE(math_solveLineEqu(a, 2, 2, b, 3, 1, x));
  EXPECT_EQ(x[0], 7);
  EXPECT_EQ(x[1], 8);
}

TEST(LineEquation, NonFiniteInputEndsInNaN) {
  for (double bad : {kNaN, kInf})
    for (int32_t n : {2, 40}) {
      Mat a = Mat::random(n, n, 1), b = Mat::random(n, 2, 2);
      b(n - 1, 1) = bad;
      const Mat x = solve(a, b);
      for (int32_t i = 0; i < n; ++i) {
        EXPECT_TRUE(std::isfinite(x(i, 0)));
        EXPECT_TRUE(std::isnan(x(i, 1)));
      }
      a(0, 0) = bad;
      EXPECT_TRUE(allNaN(solve(a, b).v));
    }
}

TEST(LineEquation, ColumnStoredForm) {
  // A = [1 2; 3 4; 5 6] and two right sides A (1, -1), A (2, 3), each array column by column.
  const double a[] = {1, 3, 5, 2, 4, 6}, b[] = {-1, -1, -1, 8, 18, 28};
  double x[4];
  api_solveLineEquation(a, b, 3, 2, 2, x);
  const double expected[] = {1, -1, 2, 3};
  for (int i = 0; i < 4; ++i) EXPECT_NEAR(x[i], expected[i], 1e-13);
  double untouched = 7;
  api_solveLineEquation(a, b, -3, -2, -1, &untouched);
  EXPECT_EQ(untouched, 7);
}

TEST(Sylvester, Residuals) {
  for (const auto& [n, m] : {std::pair{1, 1}, {2, 5}, {5, 2}, {30, 30}, {200, 120}}) {
    const Mat a = Mat::random(n, n, 11), b = Mat::random(m, m, 12), x0 = Mat::random(n, m, 13);
    const Mat c = a * x0 + x0 * b;
    Mat x(n, m);
    const double measure = lineEqu_solveEquBySylvester(a.data(), b.data(), c.data(), n, m, x.data());
    EXPECT_LE(norm(a * x + x * b - c), 1e-13 * (norm(a) + norm(b)) * norm(x)) << n << "x" << m;
    EXPECT_LE(measure, 1e-13);
    EXPECT_LE(distance(x, x0), 1e-8);
  }
}

TEST(Sylvester, ClosedFormAndEdges) {
  // Diagonal A, B: x_ij = c_ij / (a_i + b_j)
  const double a[] = {1, 0, 0, 2}, b[] = {3, 0, 0, 5}, c[] = {8, 12, 10, 21};
  double x[4];
  EXPECT_EQ(lineEqu_solveEquBySylvester(a, b, c, 2, 2, x), 0.0);
  EXPECT_EQ(std::vector<double>(x, x + 4), (std::vector<double>{2, 2, 2, 3}));
  std::copy_n(c, 4, x);
  lineEqu_solveEquBySylvester(a, b, x, 2, 2, x);  // in place
  EXPECT_EQ(std::vector<double>(x, x + 4), (std::vector<double>{2, 2, 2, 3}));
  const double minus[] = {-1, 0, 0, 4};  // 1 + -1: no solution
  lineEqu_solveEquBySylvester(a, minus, c, 2, 2, x);
  EXPECT_FALSE(std::isfinite(x[0]));
  x[0] = 7;
  EXPECT_EQ(lineEqu_solveEquBySylvester(a, b, c, 0, 2, x), 0.0);
  EXPECT_EQ(x[0], 7);
  const double bad[] = {kNaN, 0, 0, 1};
  EXPECT_TRUE(std::isnan(lineEqu_solveEquBySylvester(bad, b, c, 2, 2, x)));
  EXPECT_TRUE(std::isnan(x[3]));
}

struct Tri {
  std::vector<double> a, b, c, d;
  explicit Tri(int32_t n, unsigned seed)
      : a(Mat::random(1, n, seed).v),
        b(Mat::random(1, n, seed + 1).v),
        c(Mat::random(1, n, seed + 2).v),
        d(Mat::random(1, n, seed + 3).v) {
    for (double& x : b) x += x < 0 ? -3 : 3;  // dominant
    if (n > 0) a[0] = c.back() = kNaN;        // must not be read
  }
};

double residual(const Tri& t, const std::vector<double>& x, double shift = 0) {
  double worst = 0;
  for (std::size_t i = 0; i < x.size(); ++i) {
    double r = (t.b[i] + shift) * x[i] - t.d[i];
    if (i > 0) r += t.a[i] * x[i - 1];
    if (i + 1 < x.size()) r += t.c[i] * x[i + 1];
    worst = std::isnan(r) ? kInf : std::max(worst, std::abs(r));
  }
  return worst;
}

TEST(Tridiagonal, SolvesUnsymmetricSystems) {
  for (int32_t n : {1, 2, 3, 100, 5000}) {
    const Tri t(n, 50);
    const auto size = static_cast<std::size_t>(n);
    std::vector<double> x(size), u(size), l(size), work(size), y(size);
    lineEqu_solveTridiagonalEqu(t.c.data(), t.b.data(), t.a.data(), t.d.data(), x.data(), n);
    EXPECT_LE(residual(t, x), 10 * kEps);
    lineEqu_solveTridiagonalEquLU(t.c.data(), t.b.data(), t.a.data(), u.data(), l.data(), n);
    lineEqu_solveTridiagonalEquByLU(u.data(), t.c.data(), l.data(), work.data(), y.data(), t.d.data(), n);
    EXPECT_EQ(y, x);
    // The factors multiply to the matrix.
    EXPECT_EQ(u[0], t.b[0]);
    for (std::size_t i = 1; i < size; ++i) {
      EXPECT_NEAR(l[i] * u[i - 1], t.a[i], 4 * kEps);
      EXPECT_NEAR(l[i] * t.c[i - 1] + u[i], t.b[i], 16 * kEps);
    }
  }
}

TEST(Tridiagonal, ZeroPivotsAreShiftedAway) {  // kept.csv: Tridiagonal_shift
  const auto shiftOf = [](std::vector<double> b, std::vector<double> off) {
    const auto n = static_cast<int32_t>(b.size());
    std::vector<double> u(b.size()), l(b.size());
    lineEqu_solveTridiagonalEquLU(off.data(), b.data(), off.data(), u.data(), l.data(), n);
    return u[0] - b[0];
  };
  EXPECT_EQ(shiftOf({1, 1}, {0, 0}), 0.0);
  EXPECT_EQ(shiftOf({0, 1}, {1, 1}), 1e-6);
  EXPECT_EQ(shiftOf({0, -1e-6}, {0, 0}), 2e-6);  // the first shift makes the second pivot 0
  EXPECT_EQ(shiftOf({0, -1e-6, -2e-6}, {0, 0, 0}), 4e-6);
  EXPECT_EQ(shiftOf({9e-16, 1}, {0, 0}), 1e-6 + 9e-16 - 9e-16);
  EXPECT_EQ(shiftOf({2e-15, 1}, {0, 0}), 0.0);

  Tri singular(2, 1);
  singular.a = singular.c = {1, 1};
  singular.b = {0, 1};
  singular.d = {1, 2};
  std::vector<double> x(2);
  lineEqu_solveTridiagonalEqu(singular.c.data(), singular.b.data(), singular.a.data(), singular.d.data(), x.data(), 2);
  EXPECT_LE(residual(singular, x, 1e-6), 1e-9);
  EXPECT_NEAR(x[0], 1.0, 1e-5);
  EXPECT_NEAR(x[1], 1.0, 1e-5);
}

TEST(Tridiagonal, OddInputsEnd) {
  double x[3] = {7, 7, 7}, one[3] = {1, 1, 1};
  lineEqu_solveTridiagonalEqu(one, one, one, one, x, 0);
  lineEqu_solveTridiagonalEqu(one, one, one, one, x, -3);
  EXPECT_EQ(x[0], 7);
  const double missing[3] = {0, kNaN, 0}, infinite[3] = {2, kInf, 2};
  lineEqu_solveTridiagonalEqu(one, missing, one, one, x, 3);
  EXPECT_TRUE(allNaN({x, x + 3}));
  lineEqu_solveTridiagonalEqu(one, infinite, one, one, x, 3);  // the limit of a large b[1]
  EXPECT_EQ(std::vector<double>(x, x + 3), (std::vector<double>{0.5, 0, 0.5}));
}

}  // namespace
