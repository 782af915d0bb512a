// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "slam/rotation/so3.h"

namespace SLAM {

/// The epipolar constraint between two views of the same points: p2 . ([t]x R p1) = 0 for the rays p1, p2 of one point,
/// with x2 = R x1 + t. Errors and derivatives for a least-squares solver of the host.
class PoleConstraint2DTo2D final : public BaseData {
 public:
  PoleConstraint2DTo2D(const Matrix3& K1, const Matrix3& K2) : inverseK1(inverse(K1)), inverseK2(inverse(K2)) {
    typeCode = 102;
  }

  /// One pair of pixels (u, v); its rays are K^-1 (u, v, 1).
  void add(const double* pixel1, const double* pixel2, double weight);

  std::size_t count() const { return constraints.size(); }
  void calcOptError(std::span<double> e);         ///< [count]; keeps the sum of squares
  void calcOptJacobi(std::span<double> J) const;  ///< [count*6]: rotation (left perturbation), then translation
  void calcOptUpdate(std::span<const double, 6> dx);
  double getSquaredError();  ///< the sum of squares with the penalty of a short translation

  SE3 T12;
  double squaredError = 1.449459118e+308;

 private:
  struct Constraint {
    double weight;
    Vector3 p1, p2;
  };

  double sumOfSquares(const Vector3& t) const;

  Matrix3 inverseK1, inverseK2;
  std::vector<Constraint> constraints;
};

}  // namespace SLAM
