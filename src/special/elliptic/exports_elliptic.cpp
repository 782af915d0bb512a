// SPDX-License-Identifier: Apache-2.0
#include "orvane/elliptic.h"
#include "special/special_function.h"

using namespace SpecialFunction;

double math_AGM(double a, double b) { return calcAGM(a, b); }

double math_ellipticRF(double x, double y, double z) { return calcEllipticRF(x, y, z); }

double math_ellipticRD(double x, double y, double z) { return calcEllipticRD(x, y, z); }

double math_ellipticRG(double x, double y, double z) { return calcEllipticRG(x, y, z); }

double math_ellipticRJ(double x, double y, double z, double p) { return calcEllipticRJ(x, y, z, p); }

double math_ellipticRC(double x, double y) { return calcEllipticRC(x, y); }

double math_ellipticRK(double x, double y) { return calcEllipticRK(x, y); }

double math_ellipticRE(double x, double y) { return calcEllipticRE(x, y); }

double math_ellipticRM(double x, double y, double p) { return calcEllipticRM(x, y, p); }

double math_ellipticK(double m) { return calcEllipticK(m); }

double math_ellipticE(double m) { return calcEllipticE(m); }

double math_ellipticPI2(double n, double m) { return calcEllipticPI2(n, m); }

double math_ellipticF(double phi, double m) { return calcEllipticF(phi, m); }

double math_ellipticE2(double phi, double m) { return calcEllipticE2(phi, m); }

double math_ellipticPI(double n, double phi, double m) { return calcEllipticPI(n, phi, m); }

double math_bulirschCel(double kc, double p, double a, double b) { return calcBulirschCel(kc, p, a, b); }

double math_bulirschEl1(double x, double kc) { return calcBulirschEl1(x, kc); }

double math_bulirschEl2(double x, double kc, double a, double b) { return calcBulirschEl2(x, kc, a, b); }

double math_bulirschEl3(double x, double kc, double p) { return calcBulirschEl3(x, kc, p); }

double math_heumannLambda(double phi, double m) { return calcHeumannLambda(phi, m); }

double math_jacobiZeta(double phi, double m) { return calcJacobiZeta(phi, m); }

double math_jacobiEllipticAm(double u, double m) { return calcJacobiEllipticAm(u, m); }

double math_jacobiEllipticSn(double u, double m) { return calcJacobiEllipticSn(u, m); }

double math_jacobiEllipticCn(double u, double m) { return calcJacobiEllipticCn(u, m); }

double math_jacobiEllipticDn(double u, double m) { return calcJacobiEllipticDn(u, m); }

double math_jacobiTheta1(double z, double q) { return calcJacobiTheta1(z, q); }

double math_jacobiTheta2(double z, double q) { return calcJacobiTheta2(z, q); }

double math_jacobiTheta3(double z, double q) { return calcJacobiTheta3(z, q); }

double math_jacobiTheta4(double z, double q) { return calcJacobiTheta4(z, q); }
