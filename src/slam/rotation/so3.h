// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "frame/base_data.h"
#include "slam/matrix3.h"

namespace SLAM {

using Quaternion = std::array<double, 4>;  ///< w, x, y, z

Matrix3 rotationOfVector(const Vector3& phi);              ///< exponential map, the formula of Rodrigues
Quaternion quaternionOfRotation(const Matrix3& rotation);  ///< Shepperd 1978, by the sign of the trace
Vector3 vectorOfQuaternion(const Quaternion& q);
Vector3 vectorOfRotation(const Matrix3& rotation);           ///< logarithmic map, through the quaternion
Vector3 leftUpdated(const Vector3& phi, const Vector3& dx);  ///< Log(Exp(dx) Exp(phi))
Matrix3 jacobiOfVector(const Vector3& phi);

/// A rotation, kept as its rotation vector: direction the axis, length the angle in radians.
class SO3 final : public BaseData {
 public:
  SO3() { typeCode = 100; }

  Vector3 phi{};
};

/// A rotation and a translation: x maps to R x + t.
class SE3 final : public BaseData {
 public:
  SE3() { typeCode = 101; }

  SO3 rotation;
  Vector3 translation{};
};

std::array<double, 16> transformOf(const SE3& pose);  ///< 4 x 4, row-major

}  // namespace SLAM
