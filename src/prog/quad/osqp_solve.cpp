// SPDX-License-Identifier: Apache-2.0
#include "prog/quad/osqp_solve.h"

#include <osqp.h>

#include <algorithm>
#include <cmath>

namespace QuadProg {

namespace {

// OSQP's view of a matrix, in its own type of integers.
struct Columns {
  explicit Columns(const Sparse::CSCSparse& m)
      : values(m.values),
        rowIndex(m.rowIndex.begin(), m.rowIndex.end()),
        colStart(m.colStart.begin(), m.colStart.end()) {
    OSQPCscMatrix_set_data(&matrix, static_cast<OSQPInt>(m.rows), static_cast<OSQPInt>(m.cols),
                           static_cast<OSQPInt>(values.size()), values.data(), rowIndex.data(), colStart.data());
  }
  Columns(const Columns&) = delete;

  std::vector<OSQPFloat> values;
  std::vector<OSQPInt> rowIndex, colStart;
  OSQPCscMatrix matrix;
};

bool hasSolution(OSQPInt status) {
  return status == OSQP_SOLVED || status == OSQP_SOLVED_INACCURATE || status == OSQP_MAX_ITER_REACHED;
}

}  // namespace

ResType_E solveByOsqp(const BoxedProblem& problem, std::vector<double>& x) {
  Columns P(problem.P), A(problem.A);
  OSQPSettings settings;
  osqp_set_default_settings(&settings);
  settings.polishing = 1;
  settings.verbose = 0;  // the default of a build without printing, as ours; an installed OSQP may print
  OSQPSolver* solver = nullptr;
  ResType_E result = kSolved;
  if (osqp_setup(&solver, &P.matrix, problem.q.data(), &A.matrix, problem.l.data(), problem.u.data(), A.matrix.m,
                 P.matrix.n, &settings) != 0) {
    result = kSetupFailed;
  } else if (osqp_solve(solver) != 0 || !hasSolution(solver->info->status_val) ||
             !std::all_of(solver->solution->x, solver->solution->x + P.matrix.n,
                          [](double value) { return std::isfinite(value); })) {
    result = kSolveFailed;
  } else {
    x.assign(solver->solution->x, solver->solution->x + P.matrix.n);
  }
  osqp_cleanup(solver);  // takes what a failed setup left, null too
  return result;
}

}  // namespace QuadProg
