// SPDX-License-Identifier: Apache-2.0
#include "slam/rotation/so3.h"

#include <cmath>

#include "frame/numbers.h"
#include "special/special_function.h"

namespace SLAM {

Matrix3 rotationOfVector(const Vector3& phi) {
  const double square = dot(phi, phi);
  if (!(square > kEpsilon)) return aroundAxis(1, 0, 1, phi);
  const double angle = std::sqrt(square);
  const double guarded = SpecialFunction::guardAngle(angle);
  const double cosine = std::cos(guarded);
  const Vector3 axis = {phi[0] / angle, phi[1] / angle, phi[2] / angle};
  return aroundAxis(cosine, 1 - cosine, std::sin(guarded), axis);
}

Quaternion quaternionOfRotation(const Matrix3& m) {
  const double trace = m[0] + m[4] + m[8];
  if (trace >= 0) {
    const double r = std::sqrt(trace + 1);
    const double f = 0.5 / r;
    return {r / 2, (m[7] - m[5]) * f, (m[2] - m[6]) * f, (m[3] - m[1]) * f};
  }
  // w may be near 0 here: the root is taken at the largest diagonal entry.
  std::size_t i = 0;
  if (m[4] > m[0]) i = 1;
  if (m[8] > m[4 * i]) i = 2;
  const std::size_t j = (i + 1) % 3, k = (j + 1) % 3;
  const double r = std::sqrt(m[4 * i] - m[4 * j] - m[4 * k] + 1);
  const double f = 0.5 / r;
  Quaternion q;
  q[0] = (m[3 * k + j] - m[3 * j + k]) * f;
  q[1 + i] = r / 2;
  q[1 + j] = (m[3 * i + j] + m[3 * j + i]) * f;
  q[1 + k] = (m[3 * i + k] + m[3 * k + i]) * f;
  return q;
}

Vector3 vectorOfQuaternion(const Quaternion& q) {
  const Vector3 v = {q[1], q[2], q[3]};
  const double square = dot(v, v);
  if (!(square > 0)) return 2 * v;
  const double n = std::sqrt(square);
  const double angle = 2 * (q[0] >= 0 ? std::atan2(n, q[0]) : std::atan2(-n, -q[0]));
  return (angle / n) * v;
}

Vector3 vectorOfRotation(const Matrix3& rotation) { return vectorOfQuaternion(quaternionOfRotation(rotation)); }

Vector3 leftUpdated(const Vector3& phi, const Vector3& dx) {
  return vectorOfRotation(rotationOfVector(dx) * rotationOfVector(phi));
}

Matrix3 jacobiOfVector(const Vector3& phi) {
  const double square = dot(phi, phi);
  if (square < 1e-16) return kIdentity3;
  const double angle = std::sqrt(square);
  const double half = angle / 2;
  // KEPT: half the angle over the tangent of the whole; expected: over that of the half (kept.csv: Jacobi_tangent)
  const double c = half / std::tan(SpecialFunction::guardAngle(angle));
  return aroundAxis(c, 1 - c, -half, {phi[0] / angle, phi[1] / angle, phi[2] / angle});
}

std::array<double, 16> transformOf(const SE3& pose) {
  const Matrix3 r = rotationOfVector(pose.rotation.phi);
  const Vector3& t = pose.translation;
  return {r[0], r[1], r[2], t[0], r[3], r[4], r[5], t[1], r[6], r[7], r[8], t[2], 0, 0, 0, 1};
}

}  // namespace SLAM
