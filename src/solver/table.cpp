// SPDX-License-Identifier: Apache-2.0
#include "solver/table.h"

#include "frame/code_table.h"
#include "orvane/optimizer.h"
#include "solver/auto_solver.h"
#include "solver/gto_solver.h"
#include "solver/ins_solver.h"
#include "solver/lg_solver.h"
#include "solver/lg_solver2.h"
#include "solver/run_solver.h"
#include "solver/social_contact.h"
#include "solver/solver_factory.h"
#include "solver/swo_solver.h"

namespace Solver {
namespace {

template <class T, auto... Args>
std::shared_ptr<BaseSolver> make() {
  return std::make_shared<T>(Args...);
}

std::shared_ptr<BaseSolver> makeFlaggedSWO() {
  auto solver = std::make_shared<SWOSolver>();
  solver->swoFlag = 1;
  return solver;
}

constexpr SolverRow kSolvers[] = {
    {ORVANE_SOLVER_AUTO, "Auto", make<AutoSolver>},
    {ORVANE_SOLVER_LG, "LG", make<LGSolver>},
    {ORVANE_SOLVER_LG2, "LG2", make<LGSolver2>},
    {ORVANE_SOLVER_GTO, "GTO", make<GTOSolver>},
    {ORVANE_SOLVER_RUN, "RUN", make<RUNSolver>},
    {ORVANE_SOLVER_SC, "SC", make<SocialContact, uint8_t{0}>},
    {ORVANE_SOLVER_SC_WALK, "SC", make<SocialContact, uint8_t{1}>},
    {ORVANE_SOLVER_SWO, "SWO", make<SWOSolver>},
    // KEPT: kind 8 runs as kind 7, no code reads its flag; expected: a variant (kept.csv: Kind_8)
    {ORVANE_SOLVER_SWO_FLAG, "SWO", makeFlaggedSWO},
    {ORVANE_SOLVER_ISWO, "ISWO", make<ISWOSolver>},
    {ORVANE_SOLVER_INS, "INS", make<INSSolver>},
};

using Solvers = CodeTable<kSolvers>;

}  // namespace

std::span<const SolverRow> solverTable() { return Solvers::rows(); }

std::shared_ptr<BaseSolver> makeSolver(uint8_t kind) {
  const SolverRow* row = Solvers::find(kind);
  return row != nullptr ? row->make() : nullptr;
}

}  // namespace Solver
