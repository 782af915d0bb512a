// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "frame/handle.h"
#include "orvane/rotation.h"
#include "slam/rotation/pole_constraint.h"

template <>
struct NativeOf<SO3> {
  using type = SLAM::SO3;
};
template <>
struct NativeOf<PoleConstraint2DTo2D> {
  using type = SLAM::PoleConstraint2DTo2D;
};

namespace {

template <std::size_t n>
std::array<double, n> load(const double* source) {
  std::array<double, n> values;
  std::copy_n(source, n, values.begin());
  return values;
}

template <std::size_t n>
void store(const std::array<double, n>& values, double* out) {
  std::copy(values.begin(), values.end(), out);
}

void storeJacobi(const SO3* so3, double* out) { store(SLAM::jacobiOfVector(native(so3).phi), out); }

}  // namespace

SO3* slam_SO3_create(void) { return registered<SO3>(std::make_unique<SLAM::SO3>()); }

void slam_SO3_setByAxis(SO3* so3, const double* phi) { native(so3).phi = load<3>(phi); }

void slam_SO3_toAxis(const SO3* so3, double* phi) { store(native(so3).phi, phi); }

void slam_SO3_setByQuaternion(SO3* so3, const double* q) { native(so3).phi = SLAM::vectorOfQuaternion(load<4>(q)); }

void slam_SO3_toQuaternion(const SO3* so3, double* q) {
  store(SLAM::quaternionOfRotation(SLAM::rotationOfVector(native(so3).phi)), q);
}

void slam_SO3_setByR(SO3* so3, const double* R) { native(so3).phi = SLAM::vectorOfRotation(load<9>(R)); }

void slam_SO3_toR(const SO3* so3, double* R) { store(SLAM::rotationOfVector(native(so3).phi), R); }

void slam_SO3_updateLeftDx(SO3* so3, const double* dx) {
  native(so3).phi = SLAM::leftUpdated(native(so3).phi, load<3>(dx));
}

void slam_UpdateLeftDx(const double* phi, const double* dx, double* out) {
  store(SLAM::leftUpdated(load<3>(phi), load<3>(dx)), out);
}

// KEPT: the four names give one matrix; expected: the two Jacobians and their inverses (kept.csv: Jacobi_one_matrix)
void slam_SO3_leftJacobi(const SO3* so3, double* out) { storeJacobi(so3, out); }

void slam_SO3_rightJacobi(const SO3* so3, double* out) { storeJacobi(so3, out); }

void slam_SO3_invLeftJacobi(const SO3* so3, double* out) { storeJacobi(so3, out); }

void slam_SO3_invRightJacobi(const SO3* so3, double* out) { storeJacobi(so3, out); }

PoleConstraint2DTo2D* slam_CreatePoleConstraint2DTo2D(const double* K1, const double* K2, const double* R,
                                                      const double* pixels1, const double* pixels2,
                                                      const double* weights, int32_t count) {
  auto constraint = std::make_unique<SLAM::PoleConstraint2DTo2D>(load<9>(K1), load<9>(K2));
  if (R != nullptr) constraint->T12.rotation.phi = SLAM::vectorOfRotation(load<9>(R));
  for (int32_t i = 0; i < count; ++i)
    constraint->add(pixels1 + 2 * i, pixels2 + 2 * i, weights != nullptr ? weights[i] : 1);
  return registered<PoleConstraint2DTo2D>(std::move(constraint));
}

void slam_PloeCon2DTo2D_setT12(PoleConstraint2DTo2D* constraint, const double* v) {
  native(constraint).T12.rotation.phi = load<3>(v);
  native(constraint).T12.translation = load<3>(v + 3);
}

void slam_PloeCon2DTo2D_getT12(const PoleConstraint2DTo2D* constraint, double* out) {
  store(SLAM::transformOf(native(constraint).T12), out);
}

void slam_PloeCon2DTo2D_calcOptError(PoleConstraint2DTo2D* constraint, double* e) {
  native(constraint).calcOptError({e, native(constraint).count()});
}

void slam_PloeCon2DTo2D_calcOptJacobi(const PoleConstraint2DTo2D* constraint, double* J) {
  native(constraint).calcOptJacobi({J, 6 * native(constraint).count()});
}

void slam_PloeCon2DTo2D_calcOptUpdate(PoleConstraint2DTo2D* constraint, const double* dx) {
  native(constraint).calcOptUpdate(std::span<const double, 6>(dx, 6));
}

double slam_PloeCon2DTo2D_getSquaredError(PoleConstraint2DTo2D* constraint) {
  return native(constraint).getSquaredError();
}
