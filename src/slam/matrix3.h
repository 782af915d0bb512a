// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>

/// Vectors and matrices of three, row-major; as small as rotations and map coordinates need them.
namespace SLAM {

using Vector3 = std::array<double, 3>;
using Matrix3 = std::array<double, 9>;

inline constexpr Matrix3 kIdentity3 = {1, 0, 0, 0, 1, 0, 0, 0, 1};

inline Vector3 operator+(const Vector3& a, const Vector3& b) { return {a[0] + b[0], a[1] + b[1], a[2] + b[2]}; }
inline Vector3 operator-(const Vector3& a, const Vector3& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
inline Vector3 operator*(double s, const Vector3& a) { return {s * a[0], s * a[1], s * a[2]}; }
inline double dot(const Vector3& a, const Vector3& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

inline Vector3 cross(const Vector3& a, const Vector3& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

inline Vector3 operator*(const Matrix3& m, const Vector3& v) {
  return {m[0] * v[0] + m[1] * v[1] + m[2] * v[2], m[3] * v[0] + m[4] * v[1] + m[5] * v[2],
          m[6] * v[0] + m[7] * v[1] + m[8] * v[2]};
}

inline Matrix3 operator*(const Matrix3& a, const Matrix3& b) {
  Matrix3 product;
  for (std::size_t i = 0; i < 9; i += 3)
    for (std::size_t j = 0; j < 3; ++j) product[i + j] = a[i] * b[j] + a[i + 1] * b[j + 3] + a[i + 2] * b[j + 6];
  return product;
}

/// diagonal * I + outer * a a' + skew * [a]x, the form of every map between a rotation vector and its matrices.
inline Matrix3 aroundAxis(double diagonal, double outer, double skew, const Vector3& a) {
  const Vector3 s = skew * a;
  const double xy = outer * a[0] * a[1], xz = outer * a[0] * a[2], yz = outer * a[1] * a[2];
  return {diagonal + outer * a[0] * a[0],
          xy - s[2],
          xz + s[1],  //
          xy + s[2],
          diagonal + outer * a[1] * a[1],
          yz - s[0],  //
          xz - s[1],
          yz + s[0],
          diagonal + outer * a[2] * a[2]};
}

/// The inverse by cofactors; of a singular matrix, infinities and NaN.
inline Matrix3 inverse(const Matrix3& m) {
  const Vector3 a = {m[0], m[1], m[2]}, b = {m[3], m[4], m[5]}, c = {m[6], m[7], m[8]};
  const Vector3 bc = cross(b, c), ca = cross(c, a), ab = cross(a, b);
  const double scale = 1 / dot(a, bc);
  return {scale * bc[0], scale * ca[0], scale * ab[0], scale * bc[1], scale * ca[1],
          scale * ab[1], scale * bc[2], scale * ca[2], scale * ab[2]};
}

}  // namespace SLAM
