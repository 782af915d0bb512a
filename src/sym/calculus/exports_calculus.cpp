// SPDX-License-Identifier: Apache-2.0
#include "frame/handle.h"
#include "orvane/sym_calculus.h"
#include "sym/calculus/calculus.h"
#include "sym/handles.h"

SymMatrix2d* sym_taylor(const SymMatrix2d* matrix, const char* name, double centre, int32_t order) {
  return Sym::kept(Sym::taylorMatrix(native(matrix), name, centre, order));
}

void sym_integral1D(const SymMatrix2d* matrix, const char* name, double a, double b, double* out) {
  Sym::integrals(native(matrix), name, a, b, out);
}

void sym_solveODE(const SymMatrix2d* matrix, const char* names, double start, const double* initial, int32_t n,
                  const double* positions, double* out, int32_t count, uint8_t, double tolerance) {
  Sym::solveODE(native(matrix), names, start, span(initial, n), span(positions, count), out, tolerance);
}

void sym_integralEquByFredholm(const SymMatrix2d* kernel, const SymMatrix2d* free, double a, double b, const double* xs,
                               double* ys, int32_t n) {
  Sym::solveFredholm(*native(kernel).at(0, 0), *native(free).at(0, 0), a, b, span(xs, n), ys);
}

void sym_integralEquByVolterra(const SymMatrix2d* kernel, const SymMatrix2d* free, double a, const double* xs,
                               double* ys, int32_t n) {
  Sym::solveVolterra(*native(kernel).at(0, 0), *native(free).at(0, 0), a, span(xs, n), ys);
}
