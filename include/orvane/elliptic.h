/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Elliptic integrals, Jacobi's elliptic and theta functions, the arithmetic-geometric mean.
 *
 * Legendre's integrals and Jacobi's functions take the parameter m = k^2, not the modulus k; Bulirsch's take the
 * complementary modulus kc = sqrt(1 - m). Angles are radians. There is no failure channel beside the value: outside its
 * domain a function gives the quiet NaN, at a pole an infinity; a NaN that goes in comes out. The functions keep no
 * state and may be called from any thread.
 */
#ifndef ORVANE_ELLIPTIC_H
#define ORVANE_ELLIPTIC_H

#include <orvane/export.h>

/**
 * Arithmetic-geometric mean of a and b. The means are formed until they differ by no more than 1.33e-15, an absolute
 * bound (smaller numbers give a as it is), at most 512 times. NaN when a or b is negative.
 */
ORVANE_API double math_AGM(double a, double b);

/* Carlson's symmetric integrals of non-negative arguments; NaN for a negative one where nothing else is said. s(t) is
 * sqrt((t + x)(t + y)(t + z)), the integrals go over t from 0 to infinity. */

/**
 * RF(x, y, z) = 1/2 int dt/s(t), symmetric. x and y below 2.2e-16 both give infinity; where one of them is below that
 * bound and the other equals z within it, the value is pi/2/sqrt(z). Two zeros give infinity.
 */
ORVANE_API double math_ellipticRF(double x, double y, double z);

/** RD(x, y, z) = 3/2 int dt/(s(t) (t + z)), symmetric in x and y; infinity for z = 0 and for x = y = 0. */
ORVANE_API double math_ellipticRD(double x, double y, double z);

/** RG(x, y, z) = 1/4 int (x/(t + x) + y/(t + y) + z/(t + z)) t dt/s(t), symmetric. */
ORVANE_API double math_ellipticRG(double x, double y, double z);

/**
 * RJ(x, y, z, p) = 3/2 int dt/(s(t) (t + p)), symmetric in x, y and z. Cauchy's principal value for p < 0, infinity for
 * p = 0. NaN when one of x, y, z is negative or two of them are 0.
 */
ORVANE_API double math_ellipticRJ(double x, double y, double z, double p);

/**
 * RC(x, y) = RF(x, y, y), Cauchy's principal value for y < 0; infinity for y = 0. RC(0, y) is pi/2/sqrt(y) for y > 0
 * and 0 for y < 0. NaN for x < 0.
 */
ORVANE_API double math_ellipticRC(double x, double y);

/** RK(x, y) = 1/AGM(sqrt(x), sqrt(y)) by math_AGM; infinity when both are below 2.2e-16. */
ORVANE_API double math_ellipticRK(double x, double y);

/** RE(x, y) = 4/pi RG(x, y, 0). */
ORVANE_API double math_ellipticRE(double x, double y);

/** RM(x, y, p) = 4/(3 pi) RJ(x, y, 0, p). */
ORVANE_API double math_ellipticRM(double x, double y, double p);

/* Legendre's integrals; Delta(t) is sqrt(1 - m sin(t)^2). */

/** K(m) = int dt/Delta(t) from 0 to pi/2, for m < 1. NaN for m >= 1, at m = 1 itself too. */
ORVANE_API double math_ellipticK(double m);

/** E(m) = int Delta(t) dt from 0 to pi/2. 1 from m = 0.9999999999999998 to 1.0000000000000002, NaN above. */
ORVANE_API double math_ellipticE(double m);

/**
 * Pi(n, m) = int dt/((1 - n sin(t)^2) Delta(t)) from 0 to pi/2. Cauchy's principal value for n > 1, infinity for n = 1.
 * At m = 1 infinite, NaN for m > 1.
 */
ORVANE_API double math_ellipticPI2(double n, double m);

/**
 * F(phi, m) = int dt/Delta(t) from 0 to phi, for every phi: beyond pi/2 continued by F(phi + pi, m) = F(phi, m) + 2
 * K(m). From m = 0.9999999999999998 to 1.0000000000000002 the value is that of m = 1 (infinite beyond pi/2). NaN above,
 * but for |phi| up to 1e-8, where a power series in phi is taken.
 */
ORVANE_API double math_ellipticF(double phi, double m);

/** E(phi, m) = int Delta(t) dt from 0 to phi, continued like F. NaN for m > 1, but for |phi| up to 1e-8. */
ORVANE_API double math_ellipticE2(double phi, double m);

/**
 * Pi(n, phi, m) = int dt/((1 - n sin(t)^2) Delta(t)) from 0 to phi, continued like F; Cauchy's principal value past the
 * pole of n > 1. NaN for m > 1, but for |phi| up to 1e-8.
 */
ORVANE_API double math_ellipticPI(double n, double phi, double m);

/**
 * Heuman's lambda function F(phi, 1-m)/K(1-m) + 2/pi K(m) Z(phi, 1-m), for every phi (+2 for each pi). NaN for m
 * outside [0, 1].
 */
ORVANE_API double math_heumannLambda(double phi, double m);

/** Jacobi's zeta function Z(phi, m) = E(phi, m) - E(m)/K(m) F(phi, m), of period pi. NaN for m > 1. */
ORVANE_API double math_jacobiZeta(double phi, double m);

/* Bulirsch's integrals; D(t) is sqrt(cos(t)^2 + kc^2 sin(t)^2), x a tangent. The sign of kc is of no effect. */

/**
 * cel(kc, p, a, b) = int (a cos(t)^2 + b sin(t)^2)/((cos(t)^2 + p sin(t)^2) D(t)) dt from 0 to pi/2. Cauchy's principal
 * value for p < 0. For p = 0 or kc = 0 infinite with the sign of b or b/p, and finite if b = 0.
 */
ORVANE_API double math_bulirschCel(double kc, double p, double a, double b);

/** el1(x, kc) = int dt/D(t) from 0 to atan(x). */
ORVANE_API double math_bulirschEl1(double x, double kc);

/** el2(x, kc, a, b) = int (a cos(t)^2 + b sin(t)^2)/D(t) dt from 0 to atan(x). */
ORVANE_API double math_bulirschEl2(double x, double kc, double a, double b);

/** el3(x, kc, p) = int dt/((cos(t)^2 + p sin(t)^2) D(t)) from 0 to atan(x); Cauchy's principal value past a pole. */
ORVANE_API double math_bulirschEl3(double x, double kc, double p);

/* Jacobi's functions of argument u and parameter m >= 0; NaN for m < 0. */

/** Amplitude am(u, m), the angle with F(am, m) = u; for m > 1 it is asin(sn(u, m)). */
ORVANE_API double math_jacobiEllipticAm(double u, double m);

/** sn(u, m) = sin(am(u, m)). */
ORVANE_API double math_jacobiEllipticSn(double u, double m);

/** cn(u, m) = cos(am(u, m)), for m > 1 dn(sqrt(m) u, 1/m). */
ORVANE_API double math_jacobiEllipticCn(double u, double m);

/** dn(u, m) = sqrt(1 - m sn(u, m)^2), for m > 1 cn(sqrt(m) u, 1/m). */
ORVANE_API double math_jacobiEllipticDn(double u, double m);

/* Jacobi's theta functions of z and the nome q; NaN for |q| >= 1. */

/** 2 q^(1/4) sum over n >= 0 of (-1)^n q^(n(n+1)) sin((2n+1) z); NaN for q < 0. */
ORVANE_API double math_jacobiTheta1(double z, double q);

/** 2 q^(1/4) sum over n >= 0 of q^(n(n+1)) cos((2n+1) z); NaN for q < 0. */
ORVANE_API double math_jacobiTheta2(double z, double q);

/** 1 + 2 sum over n >= 1 of q^(n^2) cos(2 n z). */
ORVANE_API double math_jacobiTheta3(double z, double q);

/** 1 + 2 sum over n >= 1 of (-1)^n q^(n^2) cos(2 n z). */
ORVANE_API double math_jacobiTheta4(double z, double q);

#endif
