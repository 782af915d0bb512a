// SPDX-License-Identifier: Apache-2.0
#include "frame/handle.h"
#include "orvane/optimizer.h"
#include "solver/opt_solver.h"

template <>
struct NativeOf<OptSolver> {
  using type = Solver::OptSolver;
};

namespace {
Solver::OptRuns& runs(OptSolver* os) { return *native(os).runs; }
}  // namespace

OptSolver* os_createOptSolver(uint32_t tryNum) {
  return registered<OptSolver>(std::make_unique<Solver::OptSolver>(tryNum));
}

void os_setFun(OptSolver* os, OptCostFun cost, OptGradFun gradient, OptLimitFun limit, uint8_t noGradient,
               int32_t varSize) {
  runs(os).setFun(cost, gradient, limit, noGradient != 0, varSize);
}

void os_setOptimizer(OptSolver* os, uint8_t kind, uint32_t gradCount, uint32_t popSize, int32_t stallLimit,
                     int32_t stallLimit2, int64_t maxIter, double targetError) {
  runs(os).setOptimizer(kind, gradCount, popSize, stallLimit, stallLimit2, maxIter, targetError);
}

void os_setDoneFun(OptSolver* os, OptDoneFun done) { runs(os).setDoneFun(done); }

void os_setInitValue(OptSolver* os, const double* values, int32_t count) { runs(os).setInitValue(values, count); }

void os_setMaxVar(OptSolver* os, const double* values, int32_t count) {
  runs(os).setBound(&Solver::BaseOptimizeObject::maxVar, values, count);
}

void os_setMinVar(OptSolver* os, const double* values, int32_t count) {
  runs(os).setBound(&Solver::BaseOptimizeObject::minVar, values, count);
}

uint8_t os_solve(OptSolver* os) { return runs(os).solve() ? 1 : 0; }

uint8_t os_stop(OptSolver* os) { return runs(os).askStop() ? 1 : 0; }

uint8_t os_getState(const OptSolver* os) { return native(os).runs->state(); }

uint8_t os_randValue(OptSolver* os) { return runs(os).randValue() ? 1 : 0; }

uint8_t os_getCurrentInfo(OptSolver* os, double* info) { return runs(os).getCurrentInfo(info) ? 1 : 0; }

double os_getOptVar(OptSolver* os, double* x) { return runs(os).getOptVar(x); }
