// SPDX-License-Identifier: Apache-2.0
#include <orvane/matrix.h>

#include <algorithm>
#include <new>

#include "numeric/dense_support.h"
#include "support/reference.h"

namespace {

Mat hilbert(int32_t n) {
  Mat h(n, n);
  for (int32_t i = 0; i < n; ++i)
    for (int32_t j = 0; j < n; ++j) h(i, j) = 1.0 / (i + j + 1);
  return h;
}

Mat frank(int32_t n) {
  Mat f(n, n);
  for (int32_t i = 0; i < n; ++i)
    for (int32_t j = std::max(0, i - 1); j < n; ++j) f(i, j) = n - std::max(i, j);
  return f;
}

// Rank r exactly but for rounding: the product of two random factors.
Mat deficient(int32_t rows, int32_t cols, int32_t r, unsigned seed) {
  return Mat::random(rows, r, seed) * Mat::random(r, cols, seed + 1);
}

void expectSVD(const Mat& a, bool thin) {
  const int32_t k = std::min(a.rows, a.cols), uCols = thin ? k : a.rows, vCols = thin ? k : a.cols;
  Mat u(a.rows, uCols), s(uCols, vCols), v(a.cols, vCols);
  (thin ? matrixSVD2 : matrixSVD)(a.data(), a.rows, a.cols, u.data(), s.data(), v.data());
  const double limit = 8 * kEps * (a.rows + a.cols);
  EXPECT_LE(norm(u * s * transpose(v) - a), limit * std::max(norm(a), 1e-300))
      << a.rows << "x" << a.cols << " " << thin;
  EXPECT_LE(norm(transpose(u) * u - Mat::identity(uCols)), limit);
  EXPECT_LE(norm(transpose(v) * v - Mat::identity(vCols)), limit);
  for (int32_t i = 0; i < uCols; ++i)
    for (int32_t j = 0; j < vCols; ++j)
      if (i != j) {
        ASSERT_EQ(s(i, j), 0.0);
      }
  for (int32_t i = 0; i < k; ++i) EXPECT_GE(s(i, i), i + 1 < k ? s(i + 1, i + 1) : 0.0);
}

TEST(Matrix, SpectraAgreeWithReference) {
  checkReference("numeric/matrix.csv", [](const ReferenceRow& row) {
    const auto n = static_cast<int32_t>(row.arguments[0]);
    if (row.name == "hilbertDet") return matrixDet(hilbert(n).data(), n);
    const auto i = static_cast<std::size_t>(row.arguments[1]);
    std::vector<double> values(static_cast<std::size_t>(n));
    if (row.name == "hilbertSV") {
      EXPECT_EQ(matrixSingularValues(hilbert(n).data(), n, n, values.data()), n);
    } else {
      Mat vectors(n, n);
      EXPECT_TRUE(matrixEVD(frank(n).data(), n, values.data(), vectors.data()));
      std::sort(values.begin(), values.end());
    }
    return values[i];
  });
}

TEST(Matrix, SVDRebuildsEveryShape) {
  unsigned seed = 1;
  for (const auto& [rows, cols] : {std::pair{1, 1}, {1, 7}, {7, 1}, {5, 3}, {3, 5}, {16, 16}, {40, 25}, {25, 40}})
    for (bool thin : {false, true}) {
      expectSVD(Mat::random(rows, cols, seed++), thin);
      expectSVD(Mat(rows, cols), thin);
      expectSVD(deficient(rows, cols, 1, seed), thin);
    }
  Mat huge = Mat::random(20, 17, 77), tiny = huge;
  for (double& x : huge.v) x *= 1e150;
  for (double& x : tiny.v) x *= 1e-150;
  expectSVD(huge, true);
  expectSVD(tiny, false);
  expectSVD(Mat(30, 30, 1.0), false);  // a single value of any size
}

TEST(Matrix, SVDOfLargeMatrices) {
  expectSVD(Mat::random(300, 300, 5), false);
  expectSVD(deficient(300, 300, 40, 6), true);
  EXPECT_EQ(matrixRank(deficient(300, 300, 40, 6).data(), 300, 300), 40);
}

TEST(Matrix, Rank) {
  EXPECT_EQ(matrixRank(Mat(3, 2).data(), 3, 2), 0);
  for (int32_t n : {1, 4, 30}) EXPECT_EQ(matrixRank(Mat::identity(n).data(), n, n), n);
  for (int32_t r : {1, 2, 5}) {
    EXPECT_EQ(matrixRank(deficient(9, 6, r, 30).data(), 9, 6), r);
    EXPECT_EQ(matrixRank(deficient(6, 40, r, 31).data(), 6, 40), r);
  }
  // The threshold is 2 epsilon times the largest value for a 2 x 2 matrix.
  const double above[] = {1, 0, 0, 5e-16}, below[] = {1, 0, 0, 4e-16}, subnormal[] = {1e-310, 0, 0, 1e-310};
  EXPECT_EQ(matrixRank(above, 2, 2), 2);
  EXPECT_EQ(matrixRank(below, 2, 2), 1);
  EXPECT_EQ(matrixRank(subnormal, 2, 2), 0);
  EXPECT_EQ(matrixRank(above, 0, 5), 0);
}

TEST(Matrix, SingularValuesAscend) {  // kept.csv: SingularValues_order
  const double a[] = {3, 0, 0, 0, 1, 0, 0, 0, 2};
  double out[3], u[9], s[9], v[9];
  EXPECT_EQ(matrixSingularValues(a, 3, 3, out), 3);
  for (int i = 0; i < 3; ++i) EXPECT_DOUBLE_EQ(out[i], i + 1.0);
  matrixSVD(a, 3, 3, u, s, v);
  for (int i = 0; i < 3; ++i) EXPECT_DOUBLE_EQ(s[4 * i], 3.0 - i);
  EXPECT_EQ(matrixSingularValues(a, 0, 3, out), 0);
}

TEST(Matrix, Determinant) {
  EXPECT_EQ(matrixDet(nullptr, 0), 1.0);
  const double singular[] = {1, 2, 2, 4}, thin[] = {1, 2, 3, 4, 5, 6, 7, 8, 9}, swap[] = {0, 1, 1, 0};
  EXPECT_EQ(matrixDet(singular, 2), 0.0);
  EXPECT_LE(std::abs(matrixDet(thin, 3)), 1e-14);
  EXPECT_EQ(matrixDet(swap, 2), -1.0);
  // det(A B) = det A det B
  const Mat a = Mat::random(12, 12, 3), b = Mat::random(12, 12, 4);
  const double product = matrixDet(a.data(), 12) * matrixDet(b.data(), 12);
  EXPECT_NEAR(matrixDet((a * b).data(), 12) / product, 1.0, 1e-12);
}

TEST(Matrix, Inverse) {
  for (int32_t n : {1, 2, 7, 300}) {
    Mat a = Mat::random(n, n, 100 + static_cast<unsigned>(n)), out(n, n);
    for (int32_t i = 0; i < n; ++i) a(i, i) += 3 * std::sqrt(n);  // well conditioned
    matrixInverse(a.data(), out.data(), n);
    EXPECT_LE(norm(a * out - Mat::identity(n)), 100 * kEps * n) << n;
    Mat inPlace = a;
    matrixInverse(inPlace.data(), inPlace.data(), n);
    EXPECT_EQ(inPlace.v, out.v);
  }
  for (const std::vector<double>& singular : {std::vector<double>{1, 2, 2, 4}, {0, 0, 0, 0}, {1, 0, 0, 0}}) {
    double out[4];
    matrixInverse(singular.data(), out, 2);
    EXPECT_TRUE(std::any_of(out, out + 4, [](double x) { return !std::isfinite(x); }));
  }
}

TEST(Matrix, Schur) {
  for (int32_t n : {1, 2, 5, 40, 300}) {
    const Mat a = Mat::random(n, n, 200 + static_cast<unsigned>(n));
    Mat u(n, n), t(n, n);
    matrixSchur(a.data(), u.data(), t.data(), n);
    EXPECT_LE(distance(u * t * transpose(u), a), 20 * kEps * n);
    EXPECT_LE(norm(transpose(u) * u - Mat::identity(n)), 20 * kEps * n);
    for (int32_t i = 0; i < n; ++i) {
      for (int32_t j = 0; j + 1 < i; ++j) ASSERT_EQ(t(i, j), 0.0);
      if (i >= 2 && t(i, i - 1) != 0) {
        ASSERT_EQ(t(i - 1, i - 2), 0.0);  // blocks of two do not overlap
      }
    }
  }
  Mat u(3, 3), t(3, 3, 7.0);
  matrixSchur(Mat(3, 3).data(), u.data(), t.data(), 3);
  EXPECT_EQ(norm(t), 0.0);
}

TEST(Matrix, EigenvectorsSatisfyTheirEquation) {
  for (int32_t n : {1, 2, 6, 50, 300}) {
    const Mat a = Mat::random(n, n, 300 + static_cast<unsigned>(n));
    Mat values(n, 2), re(n, n), im(n, n);
    matrixEig(a.data(), n, values.data(), re.data(), im.data());
    const Mat left = a * re, leftIm = a * im;
    double trace = 0, sum = 0, sumIm = 0;
    for (int32_t j = 0; j < n; ++j) {
      double size = 0, residual = 0;
      for (int32_t i = 0; i < n; ++i) {
        residual = std::max({residual, std::abs(left(i, j) - values(j, 0) * re(i, j) + values(j, 1) * im(i, j)),
                             std::abs(leftIm(i, j) - values(j, 0) * im(i, j) - values(j, 1) * re(i, j))});
        size += re(i, j) * re(i, j) + im(i, j) * im(i, j);
      }
      EXPECT_NEAR(size, 1.0, 1e-12);
      EXPECT_LE(residual, 50 * kEps * norm(a)) << n << " eigenvalue " << j;
      trace += a(j, j);
      sum += values(j, 0);
      sumIm += values(j, 1);
    }
    EXPECT_NEAR(sum, trace, 1e-13 * n * n);
    EXPECT_NEAR(sumIm, 0.0, 1e-13 * n);
  }
}

TEST(Matrix, RealSpectrumOnly) {
  const double rotation[] = {0, -1, 1, 0};
  double values[2] = {7, 8}, vectors[4] = {1, 2, 3, 4};
  EXPECT_FALSE(matrixEVD(rotation, 2, values, vectors));
  EXPECT_EQ(values[0], 7);
  EXPECT_EQ(vectors[3], 4);

  Mat a = Mat::random(20, 20, 9);
  a = a + transpose(a);
  Mat lambda(20, 20), v(20, 20), diagonal(20, 1);
  ASSERT_TRUE(matrixEVD(a.data(), 20, diagonal.data(), v.data()));
  for (int32_t i = 0; i < 20; ++i) lambda(i, i) = diagonal(i, 0);
  EXPECT_LE(norm(a * v - v * lambda), 1e-13 * norm(a));
  EXPECT_TRUE(matrixEVD(nullptr, 0, nullptr, nullptr));
}

TEST(Matrix, RealPairsBeforeAComplexOneAreWritten) {  // kept.csv: EVD_partial
  const double a[] = {5, 0, 0, 0, 0, -1, 0, 1, 0};
  double values[3] = {7, 7, 7}, vectors[9];
  std::fill(vectors, vectors + 9, 7.0);
  EXPECT_FALSE(matrixEVD(a, 3, values, vectors));
  EXPECT_EQ(values[0], 5);
  EXPECT_EQ(std::abs(vectors[0]), 1);
  EXPECT_EQ(vectors[3], 0);
  EXPECT_EQ(vectors[6], 0);
  EXPECT_EQ(values[1], 7);
  EXPECT_EQ(values[2], 7);
  for (int i : {1, 2, 4, 5, 7, 8}) EXPECT_EQ(vectors[i], 7);
}

TEST(Matrix, Product) {
  const Mat a = Mat::random(33, 21, 1), b = Mat::random(21, 40, 2);
  Mat c(33, 40, kNaN);
  matrix_dot(a.data(), b.data(), c.data(), 33, 21, 40);
  EXPECT_LE(distance(c, a * b), 21 * kEps);
  const double zeros[] = {0, 1}, infinite[] = {kInf, 2};
  double out[2] = {5, 5};
  matrix_dot(zeros, infinite, out, 1, 2, 1);
  EXPECT_TRUE(std::isnan(out[0]));  // 0 * infinity is not passed over
  matrix_dot(zeros, infinite, out, 2, 0, 1);
  EXPECT_EQ(out[0], 0);
  EXPECT_EQ(out[1], 0);
}

TEST(Matrix, FirstMaximumOfEachRow) {
  const double a[] = {1, 5, 5, kNaN, -2, -3, kNaN, kNaN, kNaN, -kInf, -kInf, 0};
  double out[4];
  matrix_findMaxIndexByRow(nullptr, a, out, 4, 3);
  EXPECT_EQ(std::vector<double>(out, out + 4), (std::vector<double>{2, 2, 1, 3}));
  Data2D* table = api_Data2D_Create(2, 3);
  api_Data2D_SetValue(table, std::vector<double>{1, 2, 9, 4, 3, 4}.data());
  matrix_findMaxIndexByRow(table, a, out, 0, 77);
  EXPECT_EQ(out[0], 3);
  EXPECT_EQ(out[1], 1);
  EXPECT_EQ(out[2], 1);  // beyond the table: as it was
  api_FreeHandle(table);
}

TEST(Matrix, NonFiniteInputEndsInNaN) {
  for (double bad : {kNaN, kInf, -kInf})
    for (int32_t n : {2, 40}) {
      Mat a = Mat::random(n, n, 8), x(n, n), y(n, n), z(n, n);
      a(n - 1, 0) = bad;
      EXPECT_TRUE(std::isnan(matrixDet(a.data(), n)));
      EXPECT_EQ(matrixRank(a.data(), n, n), 0);
      std::vector<double> values(2 * static_cast<std::size_t>(n));
      matrixInverse(a.data(), x.data(), n);
      EXPECT_TRUE(allNaN(x.v));
      matrixSVD(a.data(), n, n, x.data(), y.data(), z.data());
      EXPECT_TRUE(allNaN(x.v) && allNaN(z.v) && std::isnan(y(0, 0)));
      EXPECT_EQ(matrixSingularValues(a.data(), n, n, values.data()), n);
      EXPECT_TRUE(std::isnan(values[0]));
      matrixSchur(a.data(), x.data(), y.data(), n);
      EXPECT_TRUE(allNaN(x.v) && allNaN(y.v));
      matrixEig(a.data(), n, values.data(), x.data(), y.data());
      EXPECT_TRUE(allNaN(values) && allNaN(x.v) && allNaN(y.v));
      EXPECT_TRUE(matrixEVD(a.data(), n, values.data(), x.data()));
      EXPECT_TRUE(allNaN(x.v));
    }
}

TEST(Matrix, SizesThatCannotBeAddressedThrow) {
  double one = 1, out = 0;
  constexpr int32_t most = std::numeric_limits<int32_t>::max();
  EXPECT_THROW(matrixDet(&one, most), std::bad_alloc);
  EXPECT_THROW(matrixInverse(&one, &out, most), std::bad_alloc);
  EXPECT_THROW(matrixRank(&one, most, most), std::bad_alloc);
  EXPECT_THROW(matrixSVD(&one, most, 1, &out, &out, &out), std::bad_alloc);  // U is most x most
  EXPECT_THROW(matrixEVD(&one, most, &out, &out), std::bad_alloc);
  EXPECT_THROW(matrix_dot(&one, &one, &out, most, 1, most), std::bad_alloc);
  EXPECT_EQ(matrixDet(&one, -5), 1.0);  // a negative count is 0
  matrixInverse(&one, &out, -5);
  EXPECT_EQ(out, 0);
}

TEST(Matrix, EmptyFactorsOfTheFullDecomposition) {
  double u[4] = {7, 7, 7, 7}, s = 7, v[4] = {7, 7, 7, 7};
  matrixSVD(nullptr, 0, 2, u, &s, v);
  EXPECT_EQ(std::vector<double>(v, v + 4), (std::vector<double>{1, 0, 0, 1}));
  EXPECT_EQ(u[0], 7);
  EXPECT_EQ(s, 7);
}

}  // namespace
