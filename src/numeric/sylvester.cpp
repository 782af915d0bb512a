// SPDX-License-Identifier: Apache-2.0
#include <Eigen/Eigenvalues>
#include <complex>
#include <type_traits>

#include "frame/numbers.h"
#include "numeric/dense.h"
#include "numeric/line_equation.h"

namespace LineEqu {

namespace {

using RowMajor = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

}  // namespace

// Bartels and Stewart (1972), on complex Schur forms: with A = U T U*, B = V S V* the system is T Y + Y S = U* C V,
// whose columns follow one another by back substitution with T + s_jj I.
double solveSylvester(std::span<const double> a, std::span<const double> b, std::span<const double> c, std::ptrdiff_t n,
                      std::ptrdiff_t m, std::span<double> x) {
  if (n == 0 || m == 0) return 0.0;
  const bool finite = Dense::allFinite(a) && Dense::allFinite(b) && Dense::allFinite(c);
  const auto load = [](std::span<const double> values, std::ptrdiff_t rows, std::ptrdiff_t cols) -> Eigen::MatrixXd {
    return Eigen::Map<const RowMajor>(values.data(), rows, cols);
  };
  // Every product is one of two plain matrices: each other form costs seconds of compile time.
  const auto product = [](const auto& p, const auto& q) { return std::decay_t<decltype(p)>(p * q); };
  const Eigen::MatrixXd left = load(a, n, n), right = load(b, m, m), constant = load(c, n, m);
  Eigen::Map<RowMajor> result(x.data(), n, m);
  result.setConstant(kNaN);  // x may be one of the arrays read above
  if (!finite) return kNaN;
  const Eigen::ComplexSchur<Eigen::MatrixXd> schurA(left), schurB(right);
  if (schurA.info() != Eigen::Success || schurB.info() != Eigen::Success) return kNaN;
  const Eigen::MatrixXcd &t = schurA.matrixT(), &s = schurB.matrixT();
  const Eigen::MatrixXcd adjointA = schurA.matrixU().adjoint(), adjointB = schurB.matrixU().adjoint();
  const Eigen::MatrixXcd complexConstant = constant.cast<std::complex<double>>();
  Eigen::MatrixXcd y = product(product(adjointA, complexConstant), schurB.matrixU());
  for (std::ptrdiff_t j = 0; j < m; ++j) {
    if (j > 0) y.col(j) -= y.leftCols(j) * s.col(j).head(j);
    for (std::ptrdiff_t i = n - 1; i >= 0; --i) {
      y(i, j) /= t(i, i) + s(j, j);
      y.col(j).head(i) -= t.col(i).head(i) * y(i, j);
    }
  }
  const Eigen::MatrixXd solution = product(product(schurA.matrixU(), y), adjointB).real();
  result = solution;
  const double residual = (product(left, solution) + product(solution, right) - constant).norm();
  const double scale = (left.norm() + right.norm()) * solution.norm() + constant.norm();
  return residual == 0.0 ? 0.0 : residual / scale;
}

}  // namespace LineEqu
