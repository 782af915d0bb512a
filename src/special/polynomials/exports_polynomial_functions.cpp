// SPDX-License-Identifier: Apache-2.0
#include "orvane/polynomial_functions.h"
#include "special/special_function.h"
#include "special/zeta/bernoulli.h"

using namespace SpecialFunction;

void math_bernoulli(int32_t n, double* out) { copyBernoulli(n, out); }

double math_polyByBernoulli(int32_t n, double x) { return calcPolyByBernoulli(n, x); }

double math_polyLegendre(int32_t n, double x) { return calcPolyLegendre(n, x); }

double math_polyLaguerre(int32_t n, double x) { return calcPolyLaguerre(n, x); }

double math_polyHermite(int32_t n, double x) { return calcPolyHermite(n, x); }
