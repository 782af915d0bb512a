// SPDX-License-Identifier: Apache-2.0
#include "slam/rotation/pole_constraint.h"

#include <cmath>

namespace SLAM {
namespace {

constexpr double kShortTranslation = 0.01;

// [t]x R
Matrix3 essential(const Vector3& t, const Vector3& phi) { return aroundAxis(0, 0, 1, t) * rotationOfVector(phi); }

}  // namespace

void PoleConstraint2DTo2D::add(const double* pixel1, const double* pixel2, double weight) {
  constraints.push_back(
      {weight, inverseK1 * Vector3{pixel1[0], pixel1[1], 1}, inverseK2 * Vector3{pixel2[0], pixel2[1], 1}});
}

void PoleConstraint2DTo2D::calcOptError(std::span<double> e) {
  const Matrix3 m = essential(T12.translation, T12.rotation.phi);
  double sum = 0;
  for (std::size_t i = 0; i < constraints.size(); ++i) {
    e[i] = constraints[i].weight * dot(constraints[i].p2, m * constraints[i].p1);
    sum += e[i] * e[i];
  }
  squaredError = sum;
}

// With q = R p1: e = w p2.(t x q), and a small rotation dx adds dx x q to q, so that
// de = w (q x (p2 x t)).dx + w (q x p2).dt.
void PoleConstraint2DTo2D::calcOptJacobi(std::span<double> J) const {
  const Matrix3 rotation = rotationOfVector(T12.rotation.phi);
  for (std::size_t i = 0; i < constraints.size(); ++i) {
    const Constraint& c = constraints[i];
    const Vector3 q = rotation * c.p1;
    const Vector3 byRotation = c.weight * cross(q, cross(c.p2, T12.translation));
    const Vector3 byTranslation = c.weight * cross(q, c.p2);
    for (std::size_t k = 0; k < 3; ++k) {
      J[6 * i + k] = byRotation[k];
      J[6 * i + 3 + k] = byTranslation[k];
    }
  }
}

void PoleConstraint2DTo2D::calcOptUpdate(std::span<const double, 6> dx) {
  T12.rotation.phi = leftUpdated(T12.rotation.phi, {dx[0], dx[1], dx[2]});
  T12.translation = T12.translation + Vector3{dx[3], dx[4], dx[5]};
}

double PoleConstraint2DTo2D::sumOfSquares(const Vector3& t) const {
  const Matrix3 m = essential(t, T12.rotation.phi);
  double sum = 0;
  for (const Constraint& c : constraints) {
    const double e = c.weight * dot(c.p2, m * c.p1);
    sum += e * e;
  }
  return sum;
}

double PoleConstraint2DTo2D::getSquaredError() {
  const Vector3& t = T12.translation;
  double sum = sumOfSquares(t);
  const double length = std::abs(t[0]) + std::abs(t[1]) + std::abs(t[2]);
  if (length < kShortTranslation) {  // t = 0 meets every constraint, and says nothing
    const double s = (kShortTranslation - length) * 100 / kShortTranslation;
    sum += sumOfSquares({s, s, s});
  }
  squaredError = std::isnan(sum) ? 1e300 : sum;
  return squaredError;
}

}  // namespace SLAM
