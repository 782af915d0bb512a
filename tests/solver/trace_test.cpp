// SPDX-License-Identifier: Apache-2.0
// Every solver kind step by step: the runs of traces.csv, which a second account of the rules made.
#include <cmath>
#include <map>
#include <sstream>

#include "solver/solver_stand.h"
#include "solver/swo_solver.h"
#include "solver/table.h"
#include "support/csv.h"

namespace {

using Cost = double (*)(const double*);

// A valley with waves; the same below zero; a slope whose minimum lies in a corner of the box; waves.
double valley(const double* x) {
  return 3.0 + (x[0] - 1.0) * (x[0] - 1.0) + 2.0 * (x[1] + 0.5 * x[0]) * (x[1] + 0.5 * x[0]) + std::cos(3.0 * x[1]);
}
double below(const double* x) { return valley(x) - 7.0; }
double slope(const double* x) { return 20.0 + x[0] - x[1] + 0.1 * std::sin(5.0 * x[0] * x[1]); }
double valley3(const double* x) { return valley(x) + (x[2] - x[1]) * (x[2] - x[1]); }
double waves(const double* x) { return 4.0 + std::sin(x[0]) + std::cos(2.0 * x[1]) * std::sin(x[0] + x[1]); }
/// A floor of 0 on which a run stalls, with a narrow hole.
double plain(const double* x) {
  const double hole = std::hypot(x[0] + 4.0, x[1] - 3.0);
  return hole < 0.4 ? 10.0 * (hole - 0.4) : std::max(0.0, 40.0 * (valley(x) - 12.0));
}
void wedge(double* x) { x[1] = std::max(x[1], x[0] - 3.0); }

const std::map<std::string, Cost> kCosts = {{"valley", valley},   {"below", below}, {"slope", slope},
                                            {"valley3", valley3}, {"waves", waves}, {"plain", plain}};

TEST(Traces, EverySolverEvaluatesThePointsOfItsRules) {
  for (const Cells& row : readCsv("solver/traces.csv")) {
    const auto number = [&](std::size_t i) { return std::stod(row.at(i)); };
    const auto integer = [&](std::size_t i) { return static_cast<int32_t>(std::stol(row.at(i))); };
    const auto near = [](double a, double b) { return std::abs(a - b) <= 1e-9 * (1.0 + std::abs(b)); };
    SCOPED_TRACE("kind " + row[0] + ", " + row[1] + " variables, " + row[2] + " candidates, " + row[4]);
    std::vector<std::vector<double>> points;
    const auto solver = Solver::makeSolver(static_cast<uint8_t>(integer(0)));
    ASSERT_NE(solver, nullptr);
    solver->rng.seed(static_cast<uint32_t>(20260 + integer(2)));
    stand(solver, integer(1), integer(2), -5.0, 4.0, [&](const double* x) {
      points.emplace_back(x, x + integer(1));
      return kCosts.at(row[4])(x);
    });
    static uint32_t seeds;
    seeds = 0;
    solver->localSeed = [] { return ++seeds; };
    solver->maxIter = integer(3);
    solver->targetError = number(5);
    solver->limitFun = row[6].empty() ? nullptr : wedge;
    solver->stallLimit = integer(7);
    solver->gradCount = integer(8);
    ASSERT_TRUE(solver->run());
    for (std::size_t k = 14; k < row.size(); ++k) {
      std::istringstream cell(row[k]);
      std::size_t evaluation = 0;
      cell >> evaluation;
      ASSERT_LT(evaluation, points.size());
      for (const double x : points[evaluation]) {
        double expected = 0.0;
        cell >> expected;
        EXPECT_TRUE(near(x, expected)) << "evaluation " << row[k] << ": " << x;
      }
    }
    EXPECT_EQ(points.size(), static_cast<std::size_t>(integer(9)));
    EXPECT_EQ(seeds, static_cast<uint32_t>(integer(10)));
    EXPECT_EQ(solver->rng(), std::stoul(row[11]));
    EXPECT_TRUE(near(solver->bestError, number(12))) << solver->bestError;
    double sum = 0.0;
    for (const auto& x : points)
      for (const double v : x) sum += v;
    EXPECT_TRUE(near(sum, number(13))) << sum;
  }
}

TEST(Kept, Kind_8) {  // its trace is that of kind 7
  EXPECT_EQ(std::dynamic_pointer_cast<Solver::SWOSolver>(Solver::makeSolver(8))->swoFlag, 1);
}

}  // namespace
