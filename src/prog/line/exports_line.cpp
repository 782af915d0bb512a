// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "frame/handle.h"
#include "orvane/line_programme.h"
#include "prog/line/bound_tightening.h"
#include "prog/line/line_prog_dense.h"
#include "prog/line/line_prog_solver.h"
#include "prog/line/shapes.h"

template <>
struct NativeOf<LineProgramme> {
  using type = LineProg::LineProgSolver;
};

LineProgramme* lineProg_CreateSolver(void) {
  return registeredShared<LineProgramme>(std::make_shared<LineProg::LineProgSolver>());
}

void lineProg_SetVarCount(LineProgramme* solver, const uint8_t* kinds, int32_t n) {
  native(solver).setVarCount(span(kinds, n));
}

void lineProg_SetMaxExpress(LineProgramme* solver, const int32_t* indices, const double* coefs, int32_t n) {
  native(solver).setMaxExpress(span(indices, n), span(coefs, n));
}

void lineProg_AddConstraint(LineProgramme* solver, const int32_t* indices, const double* coefs, int32_t n,
                            uint8_t relation, double rhs) {
  native(solver).addConstraint(span(indices, n), span(coefs, n), relation, rhs);
}

void lineProg_setExact(LineProgramme* solver, uint8_t flag) { native(solver).setExact(flag != 0); }

uint8_t lineProg_Solve(LineProgramme* solver) {
  native(solver).solve();
  return static_cast<uint8_t>(native(solver).getStatus());
}

double lineProg_GetMaxValue(const LineProgramme* solver) { return native(solver).maxValue(); }

void lineProg_GetVar(const LineProgramme* solver, double* out) { std::ranges::copy(native(solver).values(), out); }

double lineProg_solve2(const double* c, const double* A, const double* b, const double* Aeq, const double* beq,
                       int32_t n, int32_t m, int32_t meq, double* x) {
  return LineProg::solveDense(denseProblem(c, A, b, Aeq, beq, n, m, meq), span(x, n));
}

uint8_t lineProg_ResetMaxMin(double* upper, double* lower, const double* coefs, const int32_t* indices,
                             const uint8_t* kinds, double rhs, int32_t n) {
  return LineProg::resetMaxMin({upper, lower, coefs, indices, kinds, rhs, n});
}
