// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "orvane/quadratic_programme.h"
#include "prog/line/shapes.h"
#include "prog/quad/quad_prog_solver.h"
#include "prog/quad/quad_prog_sym.h"
#include "sym/handles.h"

template <>
struct NativeOf<QuadProgramme> {
  using type = QuadProg::QuadProgSolver;
};

QuadProgramme* quadProg_createSolver(void) {
  return registeredShared<QuadProgramme>(std::make_shared<QuadProg::QuadProgSolver>());
}

void quadProg_initTempVar(QuadProgramme* solver, int32_t n) {
  native(solver).initTempVar(static_cast<std::size_t>(std::max(n, 0)));
}

void quadProg_setVarKind(QuadProgramme* solver, const uint8_t* kinds, int32_t n) {
  native(solver).setVarKind(span(kinds, n));
}

void quadProg_setMaxExpress(QuadProgramme* solver, const int32_t* i, const int32_t* j, const double* qcoef, int32_t nq,
                            const int32_t* k, const double* ccoef, int32_t nc, double constant) {
  auto& programme = native(solver);
  programme.setObjective(
      programme.turned({span(i, nq), span(j, nq), span(qcoef, nq), span(k, nc), span(ccoef, nc), constant}));
}

void quadProg_addConstraint(QuadProgramme* solver, const int32_t* indices, const double* coefs, int32_t n, double rhs,
                            uint8_t relation) {
  native(solver).addConstraint(span(indices, n), span(coefs, n), rhs, relation);
}

int32_t quadProg_solveTemp(QuadProgramme* solver) { return native(solver).solve(); }

double quadProg_getTempResult(const QuadProgramme* solver, double* out) {
  std::ranges::copy(native(solver).values(), out);
  return native(solver).objectiveValue();
}

double quadProg_solve(const double* Q, const double* c, const double* A, const double* b, const double* Aeq,
                      const double* beq, int32_t n, int32_t m, int32_t meq, double* x) {
  return QuadProg::solveDense(block(Q, n, n), denseProblem(c, A, b, Aeq, beq, n, m, meq), span(x, n));
}

int32_t quadProg_solveSym(BaseSym* const* symbols, const SymMatrix2d* expressions, int32_t n, double* result) {
  std::vector<Sym::BaseSym_s*> variables;
  for (BaseSym* symbol : span(symbols, n)) variables.push_back(pointerOf(symbol));
  return QuadProg::solveSym(variables, native(expressions), result);
}
