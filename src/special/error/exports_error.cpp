// SPDX-License-Identifier: Apache-2.0
#include "orvane/error.h"
#include "special/special_function.h"

using namespace SpecialFunction;

double math_erf(double x) { return calcErf(x); }

double math_erfc(double x) { return calcErfc(x); }

double math_erfi(double x) { return calcErfi(x); }

double math_drawson(double x) { return calcDrawson(x); }

double math_lnErfi(double x) { return calcLnErfi(x); }

double math_invErf(double y) { return calcInvErf(y); }

double math_invErfc(double y) { return calcInvErfc(y); }

double math_invErfi(double y) { return calcInvErfi(y); }

double math_invLnErfi(double y) { return calcInvLnErfi(y); }

void math_erfz(double re, double im, double* outRe, double* outIm) { calcErfz(re, im, *outRe, *outIm); }

double math_voigtFunK(double x, double y) { return calcVoigtFunK(x, y); }

double math_voigtFunL(double x, double y) { return calcVoigtFunL(x, y); }

double math_voigtDiffKX(double x, double y) { return calcVoigtDiffKX(x, y); }

double math_voigtDiffKY(double x, double y) { return calcVoigtDiffKY(x, y); }

double math_voigtDiffLX(double x, double y) { return calcVoigtDiffLX(x, y); }

double math_voigtDiffLY(double x, double y) { return calcVoigtDiffKX(x, y); }
