/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Rotations in space, and the epipolar constraint between two views.
 *
 * A rotation is kept as its rotation vector phi: direction the axis, length the angle in radians. Matrices are 3 x 3,
 * row-major, and turn column vectors. Nothing is checked: NaN and infinity pass through. Calls on distinct handles may
 * run at the same time.
 */
#ifndef ORVANE_ROTATION_H
#define ORVANE_ROTATION_H

#include <orvane/export.h>

/** A rotation. */
typedef struct SO3 SO3;

/** The epipolar constraint between two views of the same points, for a least-squares solver of the host. */
typedef struct PoleConstraint2DTo2D PoleConstraint2DTo2D;

/** A new rotation with phi = 0. @return handle, released by api_FreeHandle */
ORVANE_API SO3* slam_SO3_create(void);

/** Sets the rotation vector. @param so3 rotation @param phi [3] radians, copied as it is (beyond 2 pi, too) */
ORVANE_API void slam_SO3_setByAxis(SO3* so3, const double* phi);

/** The rotation vector. @param so3 rotation @param phi [3] out, radians */
ORVANE_API void slam_SO3_toAxis(const SO3* so3, double* phi);

/**
 * Sets the rotation of a quaternion: with v = (x, y, z), n = |v| the vector is angle/n v, where the angle is
 * 2 atan2(n, w) for w >= 0 and 2 atan2(-n, -w) otherwise. So q and -q give the same rotation, at most half a turn.
 *
 * @param so3  rotation
 * @param q    [4] w, x, y, z; any length but 0. v = 0 gives no rotation
 */
ORVANE_API void slam_SO3_setByQuaternion(SO3* so3, const double* q);

/** The unit quaternion, through the matrix. @param so3 rotation @param q [4] out, w, x, y, z; w >= 0 where the trace of
 * the matrix is not negative, otherwise the component at the largest diagonal entry is positive */
ORVANE_API void slam_SO3_toQuaternion(const SO3* so3, double* q);

/** Sets the rotation of a matrix, through its quaternion. @param so3 rotation @param R [9] row-major, orthogonal with
 * determinant 1; another matrix gives a vector without meaning */
ORVANE_API void slam_SO3_setByR(SO3* so3, const double* R);

/**
 * The matrix, by the formula of Rodrigues: with theta = |phi| and the axis a,
 * R = cos(theta) I + (1 - cos(theta)) a a' + sin(theta) [a]x, and I + [phi]x for theta^2 up to 2^-52.
 *
 * @param so3  rotation
 * @param R    [9] out, row-major
 */
ORVANE_API void slam_SO3_toR(const SO3* so3, double* R);

/** A further rotation, put in front: phi becomes Log(Exp(dx) Exp(phi)). @param so3 rotation @param dx [3] radians */
ORVANE_API void slam_SO3_updateLeftDx(SO3* so3, const double* dx);

/** slam_SO3_updateLeftDx on plain vectors. @param phi [3] @param dx [3] @param out [3], may be phi or dx */
ORVANE_API void slam_UpdateLeftDx(const double* phi, const double* dx, double* out);

/**
 * A matrix J(phi) = c I + (1 - c) a a' - h [a]x with theta = |phi|, axis a, h = theta/2 and c = h/tan(theta); the
 * identity for theta^2 below 1e-16. The tangent is that of the whole angle: the inverse left Jacobian of the rotation
 * group has tan(theta/2) there, from which J departs by theta^2/4 at small angles. One matrix answers to this and to
 * the three names below.
 *
 * @param so3  rotation
 * @param out  [9] out, row-major
 */
ORVANE_API void slam_SO3_leftJacobi(const SO3* so3, double* out);

/** The matrix of slam_SO3_leftJacobi. @param so3 rotation @param out [9] out, row-major */
ORVANE_API void slam_SO3_rightJacobi(const SO3* so3, double* out);

/** The matrix of slam_SO3_leftJacobi. @param so3 rotation @param out [9] out, row-major */
ORVANE_API void slam_SO3_invLeftJacobi(const SO3* so3, double* out);

/** The matrix of slam_SO3_leftJacobi. @param so3 rotation @param out [9] out, row-major */
ORVANE_API void slam_SO3_invRightJacobi(const SO3* so3, double* out);

/**
 * The constraint of pairs of pixels that show the same points in two views: with rays p = K^-1 (u, v, 1) and the pose
 * x2 = R x1 + t the error of a pair is e = w p2 . ([t]x R p1).
 *
 * @param K1       [9] row-major, calibration matrix of the first camera, regular
 * @param K2       [9] that of the second one
 * @param R        [9] row-major, first rotation from view 1 to view 2; null for none. The first translation is 0
 * @param pixels1  [2*count] u, v in the first view
 * @param pixels2  [2*count] u, v in the second view
 * @param weights  [count] w; null for 1
 * @param count    number of pairs; 0 or less for none
 * @return handle, released by api_FreeHandle
 */
ORVANE_API PoleConstraint2DTo2D* slam_CreatePoleConstraint2DTo2D(const double* K1, const double* K2, const double* R,
                                                                 const double* pixels1, const double* pixels2,
                                                                 const double* weights, int32_t count);

/** Sets the pose. @param constraint constraint @param v [6] rotation vector, translation */
ORVANE_API void slam_PloeCon2DTo2D_setT12(PoleConstraint2DTo2D* constraint, const double* v);

/** The pose. @param constraint constraint @param out [16] out, 4 x 4 row-major: R, t; 0 0 0 1 */
ORVANE_API void slam_PloeCon2DTo2D_getT12(const PoleConstraint2DTo2D* constraint, double* out);

/** The error of each pair; keeps the sum of their squares. @param constraint constraint @param e [count] out */
ORVANE_API void slam_PloeCon2DTo2D_calcOptError(PoleConstraint2DTo2D* constraint, double* e);

/**
 * The derivatives of the errors: with q = R p1, w (q x (p2 x t)) for a small rotation put in front, then
 * w (q x p2) for the translation.
 *
 * @param constraint  constraint
 * @param J           [count*6] out, row-major
 */
ORVANE_API void slam_PloeCon2DTo2D_calcOptJacobi(const PoleConstraint2DTo2D* constraint, double* J);

/** Moves the pose: the rotation of dx[0..2] is put in front, dx[3..5] is added to the translation. @param constraint
 * constraint @param dx [6] */
ORVANE_API void slam_PloeCon2DTo2D_calcOptUpdate(PoleConstraint2DTo2D* constraint, const double* dx);

/**
 * The sum of the squared errors. A translation with |t1| + |t2| + |t3| below 0.01 would meet every constraint, so it
 * pays a penalty: the sum for the translation (s, s, s), s = 100 (0.01 - |t1| - |t2| - |t3|)/0.01, is added.
 *
 * @param constraint  constraint
 * @return the sum; 0 without pairs, 1e300 in place of NaN
 */
ORVANE_API double slam_PloeCon2DTo2D_getSquaredError(PoleConstraint2DTo2D* constraint);

#endif
