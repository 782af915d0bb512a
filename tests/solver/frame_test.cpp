// SPDX-License-Identifier: Apache-2.0
#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>

#include "solver/solver_stand.h"
#include "solver/table.h"

namespace {

using namespace Solver;

TEST(Table, GivesEachKindItsNameAndNothingElse) {
  const char* names[] = {"Auto", "LG", "LG2", "GTO", "RUN", "SC", "SC", "SWO", "SWO", "ISWO", "INS"};
  ASSERT_EQ(solverTable().size(), std::size(names));
  for (uint8_t kind = 0; kind < 11; ++kind) {
    const auto solver = makeSolver(kind);
    EXPECT_EQ(solver->name, names[kind]);
    EXPECT_EQ(solverTable()[kind].name, names[kind]);
    EXPECT_EQ(solver->printFlag, 1);
    EXPECT_EQ(solver->running, 0);
  }
  EXPECT_EQ(makeSolver(11), nullptr);
  EXPECT_EQ(makeSolver(255), nullptr);
}

TEST(Run, RefusesWithoutWhatItNeedsAndLeavesRunning) {
  const auto solver = stand(std::make_shared<PlainSolver>(), 2, 3, -5.0, 5.0, parabola);
  solver->maxIter = 2;
  int done = 0;
  solver->doneFun = [&](int64_t, double, const std::vector<double>&) { ++done; };
  const auto refuses = [&] {
    solver->prepareStart();
    EXPECT_FALSE(solver->run());
    EXPECT_EQ(solver->running, 1);
  };
  solver->minVar.pop_back();
  refuses();
  solver->minVar.push_back(-5.0);
  solver->objective->varSize = 3;
  refuses();
  solver->objective->varSize = 2;
  solver->initFun = [] { return false; };
  refuses();
  solver->initFun = nullptr;
  EXPECT_EQ(done, 0);
  EXPECT_TRUE(solver->run());
  EXPECT_EQ(solver->running, 0);
  EXPECT_EQ(done, 1);
  EXPECT_EQ(solver->iter, 2);
}

TEST(Run, WritesItsHistoryToTheLog) {
  const auto solver = stand(std::make_shared<PlainSolver>(), 1, 3, -5.0, 5.0, [](const double*) { return 0.1; });
  solver->objective->name = "flat";
  solver->logDir = testing::TempDir() + "/";
  solver->maxIter = 2;
  solver->run();
  std::ifstream file(solver->logDir + "Plain.txt");
  std::stringstream text;
  text << file.rdbuf();
  EXPECT_TRUE(text.str().starts_with("Optimizer: Plain\nFunction: flat\nVarSize: 1\nCost Time: ")) << text.str();
  EXPECT_TRUE(
      text.str().ends_with(" ms\nIter, MinError\n0, 0.100000000000000006\n1, 0.100000000000000006\n"
                           "2, 0.100000000000000006\n"))
      << text.str();
  std::remove((solver->logDir + "Plain.txt").c_str());
}

TEST(Run, PrintsALineAnIterationOnlyWhenAsked) {
  const auto solver = stand(std::make_shared<PlainSolver>(), 1, 2, -5.0, 5.0, [](const double*) { return -0.1; });
  solver->maxIter = 0;
  solver->targetError = -1.0;
  testing::internal::CaptureStdout();
  solver->run();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  solver->printFlag = 1;
  solver->randomise();
  testing::internal::CaptureStdout();
  solver->run();
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "Plain, Function: , VarSize: 1, Iter: 0, MinError: -0.1, log10(Error):1\n");
}

TEST(Kept, Continue_counter) {
  const auto solver = ready(1, 3, parabola);
  solver->bestError = 5.0;
  EXPECT_TRUE(solver->continueTest());  // stallBest was infinite
  for (int i = 0; i < 1000; ++i) EXPECT_TRUE(solver->continueTest());
  EXPECT_EQ(solver->stallCount, 0);  // a value that stands still is no stall
  solver->stallCount = 5;
  EXPECT_TRUE(solver->continueTest());
  EXPECT_EQ(solver->stallCount, 800);  // a value equal to the counter is
}

TEST(Kept, Continue_assignment) {
  const auto solver = ready(1, 3, parabola);
  solver->targetError = -1.0;
  solver->bestError = 0.0;
  EXPECT_TRUE(solver->continueTest());
  solver->stallLimit2 = 37;
  EXPECT_TRUE(solver->continueTest());
  EXPECT_EQ(solver->stallCount, 37);
  EXPECT_FALSE(solver->anchor->active);
  // The second limit 0 goes on in the anchor too; any other ends the run there.
  solver->anchor->active = uint8_t{1};
  solver->anchor->anchorBest = solver->anchor->anchorValue = 0.0;
  solver->stallCount = 0;
  solver->stallLimit2 = 0;
  EXPECT_TRUE(solver->continueTest());
  solver->stallLimit2 = 5;
  EXPECT_FALSE(solver->continueTest());
}

TEST(Stall, EntersTheAnchorAndLeavesItBelow) {
  const auto solver = ready(1, 4, [](const double* x) { return x[0] < 0.0 ? -3.0 : 0.0; });
  for (const Candidate& c : solver->population) c->trialVar = {2.0};
  for (const Candidate& c : solver->population) c->bestValue = 1e300;
  solver->evaluateAll();
  solver->pickBest();
  solver->stallLimit = 1;
  solver->targetError = -10.0;
  EXPECT_TRUE(solver->continueTest());
  EXPECT_TRUE(solver->continueTest());
  ASSERT_TRUE(solver->anchor->active);
  EXPECT_EQ(solver->objective, solver->anchor);
  EXPECT_EQ(solver->anchor->anchorValue, 0.0);
  EXPECT_EQ(solver->restartMark, std::numeric_limits<double>::infinity());
  EXPECT_NEAR(solver->bestError, 1e15, 1e3);  // all stand on the anchored point
  const Candidate c = solver->population[2];
  c->trialVar = {-1.0};
  solver->tryCandidate(c, false);
  EXPECT_EQ(c, solver->bestVar);
  double info[3];
  solver->getCurrentInfo(info);
  EXPECT_EQ(info[1], -3.0);
  EXPECT_EQ(info[2], -3.0);
  EXPECT_TRUE(solver->continueTest());
  EXPECT_FALSE(solver->anchor->active);
  EXPECT_NE(solver->objective, solver->anchor);
  EXPECT_EQ(solver->bestError, -3.0);
  EXPECT_EQ(solver->bestVar->bestValue, -3.0);
  EXPECT_EQ(solver->population[0]->bestValue, 0.0);  // evaluated anew
}

}  // namespace
