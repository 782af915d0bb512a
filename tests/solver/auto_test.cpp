// SPDX-License-Identifier: Apache-2.0
#include "solver/auto_solver.h"

#include <tuple>

#include "solver/solver_stand.h"

namespace {

using namespace Solver;

TEST(Auto, BudgetOfTheDefaultRun) {
  EXPECT_EQ(AutoSolver::iterationBudget(10000), 26883200);
  // By hand from the schedule: x = 2500, 3500, 4500, 5300, 6000 and 7000.
  EXPECT_EQ(AutoSolver::iterationBudget(6 * 2500), 2 * ((12000 + 5000) * 4 + 28000 + 26400 + 11200));
  EXPECT_EQ(AutoSolver::iterationBudget(6 * 3500), 2 * (21000 * 4 + 28000 + 26400 + 11200));
  EXPECT_EQ(AutoSolver::iterationBudget(6 * 4500), 2 * (27000 * 4 + 20000 + 9000 + 26400 + 11200));
  EXPECT_EQ(AutoSolver::iterationBudget(6 * 5300), 2 * (31800 * 4 + 21200 + 10600 + 26400 + 11200));
  EXPECT_EQ(AutoSolver::iterationBudget(6 * 6000), 2 * (36000 * 4 + 24000 + 12000 + 26400 + 12000));
  EXPECT_EQ(AutoSolver::iterationBudget(6 * 7000), 2 * (42000 * 4 + 28000 + 14000 + 42000));
}

// Solver, its iteration limit, the box, how often a start evaluated before it was under way.
using Stage = std::tuple<std::string, int64_t, double, double, int>;

// Every solver of one box in its order; the RUN stage between LG and LG2 is set up and never evaluates (Auto_stage7).
void expectAll(std::vector<Stage>& expected, double lo, double hi, int64_t extra) {
  for (const auto& [name, limit, starts] : {std::tuple{"INS", 3000, 1},
                                            {"SWO", 3000, 2},
                                            {"SC", 3000, 0},
                                            {"SC", 2000, 0},
                                            {"LG", 3000, 1},
                                            {"LG2", 3000, 1},
                                            {"ISWO", 3000, 2}})
    expected.emplace_back(name, extra + limit, lo, hi, 3 * starts);
}

TEST(Kept, Auto_stage7) {
  const auto solver = stand(std::make_shared<AutoSolver>(), 1, 3, -5.0, 5.0, nullptr);
  solver->minVar = {-300.0};
  solver->maxVar = {700.0};
  solver->maxIter = 12000;
  std::vector<Stage> seen;
  std::vector<double> firstPoints;
  constexpr int64_t kShort = 2;  // as many iterations as are needed here
  std::dynamic_pointer_cast<OptFunction>(solver->objective)->valueFun = [&](const double* x) {
    BaseSolver& inner = *solver->inner;
    if (inner.maxIter != kShort || std::get<2>(seen.back()) != inner.minVar[0]) {
      seen.emplace_back(inner.name, inner.maxIter, inner.minVar[0], inner.maxVar[0], 0);
      firstPoints.push_back(x[0]);
      inner.maxIter = kShort;
    }
    if (inner.running == 0) ++std::get<4>(seen.back());  // SC is under way by then
    return 1.0;
  };
  EXPECT_TRUE(solver->run());
  const double b = solver->bestVar->bestVar[0], r = std::abs(b) < 1.0 ? 16.0 : 16.0 * std::abs(b);
  std::vector<Stage> expected;
  for (const double s : {10000.0, 1000.0, 100.0, 10.0}) {
    expectAll(expected, 0.0, std::min(s, 700.0), 0);
    expectAll(expected, std::max(-s, -300.0), std::min(s, 700.0), 0);
  }
  expectAll(expected, -300.0, 700.0, 2000);
  const double around = std::abs(b) < 1.0 ? 10.0 : 10.0 * std::abs(b);
  expectAll(expected, std::max(b - around, -300.0), std::min(b + around, 700.0), 3600);
  // The first value of all is a gain: one more run in a box around it.
  expected.insert(expected.begin() + 1, Stage{"INS", kShort, std::max(b - r, -300.0), std::min(b + r, 700.0), 3});
  EXPECT_EQ(seen, expected);
  EXPECT_EQ(solver->firstRun, 0);
  EXPECT_EQ(solver->running, 0);

  // A later run starts each stage from the best point, in a box that holds it.
  for (const double best : {50.0, -4.0}) {
    seen.clear();
    firstPoints.clear();
    solver->bestVar->bestVar = solver->bestVar->trialVar = {best};
    EXPECT_TRUE(solver->run());
    expected.clear();
    for (const double s : {10000.0, 1000.0, 100.0, 10.0}) {
      const double hi = best > s ? best + 8.0 * best : std::min(s, 700.0);
      expectAll(expected, best < 0.0 ? best - 10.0 : 0.0, hi, 0);
      expectAll(expected, std::max(-s, -300.0), hi, 0);
    }
    expectAll(expected, -300.0, 700.0, 2000);
    expectAll(expected, std::max(best - 10.0 * std::abs(best), -300.0), best + 10.0 * std::abs(best), 3600);
    EXPECT_EQ(seen, expected) << best;
    EXPECT_EQ(firstPoints, std::vector<double>(firstPoints.size(), best));
  }
}

TEST(Auto, StopReachesTheStageUnderWay) {
  const auto solver = stand(std::make_shared<AutoSolver>(), 1, 3, -5.0, 5.0, nullptr);
  int calls = 0;
  std::dynamic_pointer_cast<OptFunction>(solver->objective)->valueFun = [&](const double*) {
    if (++calls == 100) solver->stop();
    return 1.0;
  };
  EXPECT_TRUE(solver->run());
  EXPECT_LT(calls, 110);
  EXPECT_EQ(solver->firstRun, 1);
  EXPECT_EQ(solver->running, 0);
}

}  // namespace
