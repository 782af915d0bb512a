// SPDX-License-Identifier: Apache-2.0
#include "solver/table.h"

#include <iterator>

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
    {0, "Auto", make<AutoSolver>},
    {1, "LG", make<LGSolver>},
    {2, "LG2", make<LGSolver2>},
    {3, "GTO", make<GTOSolver>},
    {4, "RUN", make<RUNSolver>},
    {5, "SC", make<SocialContact, uint8_t{0}>},
    {6, "SC", make<SocialContact, uint8_t{1}>},
    {7, "SWO", make<SWOSolver>},
    // KEPT: kind 8 runs as kind 7, no code reads its flag; one would expect a variant (kept.csv: Kind_8)
    {8, "SWO", makeFlaggedSWO},
    {9, "ISWO", make<ISWOSolver>},
    {10, "INS", make<INSSolver>},
};

consteval bool wellFormed(std::span<const SolverRow> rows) {
  for (std::size_t i = 0; i < rows.size(); ++i)
    if (rows[i].kind != i || rows[i].name.empty()) return false;
  return true;
}
static_assert(wellFormed(kSolvers));

}  // namespace

std::span<const SolverRow> solverTable() { return kSolvers; }

std::shared_ptr<BaseSolver> makeSolver(uint8_t kind) {
  return kind < std::size(kSolvers) ? kSolvers[kind].make() : nullptr;
}

}  // namespace Solver
