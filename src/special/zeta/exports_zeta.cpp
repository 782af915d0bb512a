// SPDX-License-Identifier: Apache-2.0
#include "orvane/zeta.h"
#include "special/special_function.h"

using namespace SpecialFunction;

double math_zeta(double s) { return calcZeta(s); }

double math_invZeta(double y) { return calcInvZeta(y); }

double math_hurwitzZeta(double s, double a) { return calcHurwitzZeta(s, a); }

double math_dirichletEta(double s) { return calcDirichletEta(s); }

double math_dirichletBeta(double s) { return calcDirichletBeta(s); }

double math_polyLog(double s, double z) { return calcPolyLog(s, z); }

double math_boseEinstein(double s, double x) { return calcBoseEinstein(s, x); }

double math_fermiDirac(double s, double x) { return calcFermiDirac(s, x); }

double math_polyLogarithm2(double x) { return calcPolyLogarithm2(x); }

double math_Clausen(double n, double x) { return calcClausen(n, x); }

double math_ClausenS(double n, double x) { return calcClausenS(n, x); }

double math_ClausenC(double n, double x) { return calcClausenC(n, x); }

double math_lnBarnesG(double x) { return calcLnBarnesG(x); }

double math_barnesG(double x) { return calcBarnesG(x); }

double math_hyperfactorial(double x) { return calcHyperfactorial(x); }
