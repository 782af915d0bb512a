// SPDX-License-Identifier: Apache-2.0
#include <cmath>
#include <numbers>

#include "solver/gto_solver.h"
#include "solver/lg_solver.h"
#include "solver/lg_solver2.h"
#include "solver/social_contact.h"
#include "solver/solver_stand.h"
#include "solver/weighted_mean.h"

namespace {

using namespace Solver;

double one(const double* x) { return 1.0 + x[0] * x[0]; }

TEST(Draw, UniformTakesTwoWordsLowFirst) {
  std::mt19937 words(12345), draws(12345);
  for (int i = 0; i < 1000; ++i) {
    const uint64_t low = words(), high = words();
    EXPECT_EQ(UniformDistribution()(draws), static_cast<double>(low + (high << 32)) * 0x1p-64);
  }
  const auto top = [] { return 0xffffffffu; };
  EXPECT_LT(UniformDistribution()(top), 1.0);
}

TEST(Draw, NormalIsPolarWithACachedSecondValue) {
  std::mt19937 a(7), b(7);
  NormalDistribution normal;
  const double first = normal(a);
  const auto state = a;
  const double second = normal(a);
  EXPECT_EQ(a, state);  // the second value draws nothing
  double x, y, s;
  do {
    x = 2.0 * UniformDistribution()(b) - 1.0;
    y = 2.0 * UniformDistribution()(b) - 1.0;
    s = x * x + y * y;
  } while (s > 1.0);
  EXPECT_NEAR(first * first + second * second, -2.0 * std::log(s), 1e-12);
  EXPECT_NEAR(first * x, second * y, 1e-12);
  double sum = 0.0, squares = 0.0;
  for (int i = 0; i < 40000; ++i) {
    const double z = normal(a);
    sum += z;
    squares += z * z;
  }
  EXPECT_LT(std::abs(sum) / 200.0, 5.0);                             // z-score of the mean
  EXPECT_LT(std::abs(squares - 40000.0) / std::sqrt(80000.0), 5.0);  // and of the variance
}

TEST(Kept, RandomIndex_099) {
  const auto solver = ready(1, 2, one);
  solver->rng.seed(99);
  int ones = 0;
  for (int i = 0; i < 40000; ++i) ones += static_cast<int>(solver->randomIndex(2, 0));
  // 1 needs 2*u*0.99 >= 1, that is u >= 1/1.98.
  const double p = 1.0 - 1.0 / 1.98;
  EXPECT_LT(std::abs(ones - 40000 * p) / std::sqrt(40000 * p * (1 - p)), 5.0);
  EXPECT_EQ(solver->randomIndex(4, 4), 4);
  for (int i = 0; i < 2000; ++i) EXPECT_EQ(solver->randomIndex(0, 1), 0);
}

TEST(Kept, PullBack_draws) {
  const auto solver = ready(1, 2, one);
  for (const double trial : {8.0, -8.0}) {
    solver->rng.seed(5);
    std::mt19937 same(5);
    const auto u = [&] { return UniformDistribution()(same); };
    std::vector<double> tr = {trial};
    solver->pullBack(tr, {1.0}, 0.5);
    if (trial > 0.0) {
      EXPECT_DOUBLE_EQ(tr[0], 1.0 + 4.0 * (u() * 0.5 + 0.5));
    } else {
      const double u1 = u(), u2 = u();
      EXPECT_DOUBLE_EQ(tr[0], 1.0 - 6.0 * u2 * (u1 * 0.5 + 0.5));
    }
    EXPECT_EQ(solver->rng, same);
  }
}

TEST(Clip, WidensASingleBoundAndProjects) {
  const auto solver = ready(1, 2, one);
  solver->limitFun = [](double* x) { x[2] = 4.5; };
  std::vector<double> tr = {8.0, -8.0, 1.0};
  solver->clip(tr);
  EXPECT_EQ(tr, (std::vector<double>{5.0, -5.0, 4.5}));
  EXPECT_EQ(solver->maxVar.size(), 3u);
}

TEST(Try, TakesANaNAndABetterPoint) {
  const auto solver = ready(1, 2, [](const double* x) { return x[0] > 4.0 ? std::nan("") : x[0]; });
  const Candidate c = solver->population[0];
  const double before = solver->bestError;
  c->trialVar = {4.5};
  EXPECT_FALSE(solver->tryCandidate(c, false));
  EXPECT_TRUE(std::isnan(c->curValue));
  EXPECT_EQ(solver->bestError, before);
  solver->targetError = -6.0;
  c->trialVar = {-5.0};
  EXPECT_FALSE(solver->tryCandidate(c, false));
  EXPECT_EQ(solver->bestVar, c);
  EXPECT_EQ(solver->bestError, -5.0);
  c->trialVar = {-7.0};
  EXPECT_TRUE(solver->tryCandidate(c, false));
  c->trialVar = {1.0};
  c->age = 3;
  solver->tryCandidate(c, false);
  EXPECT_EQ(c->age, 4);
  EXPECT_EQ(c->curValue, -7.0);
  solver->tryCandidate(c, true);
  EXPECT_EQ(c->curValue, 1.0);
}

TEST(Kept, Probe_step) {
  const auto solver = ready(2, 2, [](const double* x) { return 5.0 - x[0] - 2.0 * x[1]; });
  solver->gradCount = 2;
  solver->gradVar.resize(2);
  solver->gradIndex = {0, 1};
  std::vector<double> x = {0.0, 0.0}, tr = {0.0, 0.0};
  // The gradient is (-1, -2); uphill by 16 of it the value is 85, never below the limit.
  EXPECT_EQ(solver->probe(x, tr, 5.0), 10.0);
  EXPECT_NEAR(tr[0], -16.0, 1e-5);
  EXPECT_NEAR(tr[1], -32.0, 1e-5);
  EXPECT_NEAR(solver->probe(x, tr, 100.0), 85.0, 1e-4);
}

TEST(Restart, ScattersAllButTheBestAtTheCount) {
  const auto solver = ready(2, 12, one);
  const Candidate best = solver->bestVar;
  const auto kept = best->curVar;
  solver->restartMark = 0.5;
  for (int i = 0; i < 235; ++i) solver->restartCheck();
  EXPECT_EQ(solver->restartCount, 235);
  std::vector<std::vector<double>> before;
  for (const Candidate& c : solver->population) before.push_back(c->curVar);
  solver->restartCheck();
  EXPECT_EQ(solver->restartCount, 0);
  EXPECT_DOUBLE_EQ(solver->restartMark, solver->bestVar->bestValue * 0.99);
  EXPECT_EQ(best->curVar, kept);
  for (std::size_t i = 0; i < before.size(); ++i)
    EXPECT_EQ(solver->population[i]->curVar == before[i], solver->population[i] == best) << i;
}

TEST(Neighbour, IsAnotherCandidateWhereThereIsOne) {
  const auto solver = ready(1, 4, one);
  std::vector<int> hits(4);
  for (int i = 0; i < 4000; ++i)
    for (std::size_t k = 0; k < 4; ++k)
      if (solver->randomNeighbour(solver->population[1]) == solver->population[k]) ++hits[k];
  EXPECT_EQ(hits[1], 0);
  EXPECT_GT(hits[0] * hits[2] * hits[3], 0);
  const auto alone = ready(1, 1, one);
  EXPECT_EQ(alone->randomNeighbour(alone->population[0]), alone->population[0]);
}

TEST(Kept, Weight_grows) {
  std::vector<Candidate> two = {std::make_shared<OptVariable>(1), std::make_shared<OptVariable>(1)};
  two[0]->curVar = {0.0};
  two[1]->curVar = {1.0};
  two[0]->curValue = 1.0;
  two[1]->curValue = 3.0;
  std::vector<double> tr(1);
  weightedMean(two, 1.0, tr);
  EXPECT_DOUBLE_EQ(tr[0], 0.75);
  two[0]->curValue = -2.0;
  weightedMean(two, -2.0, tr);  // shift (-2-1)*1.1 = -3.3: weights 1.3 and 6.3
  EXPECT_DOUBLE_EQ(tr[0], 6.3 / 7.6);
}

TEST(Kept, LG_age) {
  for (const int32_t age : {63, 64, 65}) {
    const auto solver = stand(std::make_shared<LGSolver>(), 1, 2, -5.0, 5.0, one);
    solver->evaluateAll();
    solver->pickBest();
    solver->bestError = -1.0;
    const Candidate c = solver->population[0];
    c->curVar = {1.0};
    c->curValue = 0.0;  // every trial is worse
    c->age = age;
    solver->mix2(c, *c, *c);
    EXPECT_EQ(c->curValue > 0.0, age == 64) << age;
  }
}

TEST(Kept, LG_mix4) {
  const auto solver = stand(std::make_shared<LGSolver>(), 1, 4, -1000.0, 1000.0, one);
  solver->evaluateAll();
  solver->pickBest();
  auto& all = solver->population;
  for (const Candidate& c : all) c->curVar = {7.0};
  solver->mix4(all[3], *all[0], *all[1], *all[2]);
  EXPECT_NEAR(all[3]->trialVar[0], 7.0, 1e-12);  // the weights sum to one
  solver->mix3(all[3], *all[0], *all[1], *all[2]);
  EXPECT_NEAR(all[3]->trialVar[0], 7.0, 1e-12);
  solver->rng.seed(3);
  std::mt19937 same(3);
  const auto u = [&] { return UniformDistribution()(same); };
  all[3]->curVar = all[0]->curVar = all[1]->curVar = {0.0};
  all[2]->curVar = {1.0};
  solver->mix4(all[3], *all[0], *all[1], *all[2]);
  const double s = u() + 0.16;
  u();
  u();
  const double c1 = u() * s, c2 = u() * s;
  EXPECT_DOUBLE_EQ(all[3]->trialVar[0], c1 + c2);
}

TEST(Kept, LG2_mark) {
  // Nowhere more than 1 % above its minimum, so that no improvement counts as a jump.
  const auto solver =
      stand(std::make_shared<LGSolver2>(), 2, 6, -5.0, 5.0, [](const double* x) { return 1.0 + 1e-4 * x[0] * x[0]; });
  for (const int64_t iterations : {1, 3, 20}) {
    solver->maxIter = iterations;
    const double before = solver->bestError;
    double mark = 0.0, error = 0.0;
    const auto iterate = solver->iterFun;
    solver->iterFun = [&] {
      error = solver->bestError;
      const bool end = iterate();
      mark = solver->restartMark;
      return end;
    };
    EXPECT_TRUE(solver->run());
    solver->iterFun = iterate;
    EXPECT_LE(solver->bestError, before);
    EXPECT_LE(mark, error);
    EXPECT_GE(mark, solver->bestError);
    EXPECT_EQ(solver->stuck, 0);
    EXPECT_EQ(solver->rate, 0.36);
  }
}

TEST(Descend, TakesTheFirstLowerStepOfAHalvedLength) {
  const auto solver =
      stand(std::make_shared<LGSolver2>(), 1, 2, -50.0, 50.0, [](const double* x) { return 1.0 + 1.1 * x[0] * x[0]; });
  solver->evaluateAll();
  solver->pickBest();
  const Candidate c = solver->population[0];
  c->curVar = {3.0};
  c->curValue = c->bestValue = 10.9;
  solver->bestError = 5.0;
  solver->targetError = 0.0;
  // Gradient 6.6: the steps 8, 4, 2 and 1 overshoot (3 - 6.6 = -3.6 is worse), 0.5 gives 3 - 3.3 = -0.3.
  EXPECT_FALSE(solver->descend(c));
  EXPECT_NEAR(c->curVar[0], -0.3, 1e-4);
  EXPECT_EQ(solver->bestError, c->curValue);
  const auto large = stand(std::make_shared<LGSolver2>(), 37, 2, -50.0, 50.0, one);
  const auto before = large->population[0]->curVar;
  EXPECT_FALSE(large->descend(large->population[0]));
  EXPECT_EQ(large->population[0]->curVar, before);
}

TEST(Kept, GTO_divisor) {
  // No trial gains, so each candidate keeps its best position b and the first one is the best, B. The second phase
  // moves by |sum/D| Lc (b - B), D being the number of variables and not the population's 5.
  const auto solver = stand(std::make_shared<GTOSolver>(), 2, 5, -1e9, 1e9, nullptr);
  std::vector<std::vector<double>> seen;
  std::dynamic_pointer_cast<OptFunction>(solver->objective)->valueFun = [&](const double* x) {
    seen.push_back({x[0], x[1]});
    return static_cast<double>(seen.size());  // ever worse: the start's first candidate stays the best
  };
  solver->w = -1.0;  // the sum's branch at every C
  for (std::size_t i = 0; i < 5; ++i) solver->population[i]->trialVar = {10.0 + static_cast<double>(i), 20.0};
  solver->maxIter = 1;
  EXPECT_TRUE(solver->run());
  ASSERT_EQ(seen.size(), 15u);
  // Where the candidates stood after the first phase, which takes every trial: its five points.
  double sum = 0.0;
  for (std::size_t i = 5; i < 10; ++i) sum += seen[i][0];
  for (std::size_t i = 0; i < 5; ++i) {
    const double b = 10.0 + static_cast<double>(i);
    EXPECT_NEAR(seen[10 + i][0], std::abs(sum / 2.0) * solver->Lc * (b - 10.0) + b, 1e-9 * std::abs(sum) + 1e-9) << i;
    if (i + 1 < 5) sum += seen[10 + i][0] - seen[5 + i + 1][0];
  }
}

TEST(Kept, ConeRoot_120) {
  for (const double dot : {0.9, 0.3, -0.2, -0.8}) {
    EXPECT_DOUBLE_EQ(SocialContact::coneRoot(dot, 120.0), -1.0 / dot);
    for (const double deg : {30.0, 60.0, 80.0}) {
      // g + r*h has the length sqrt(1 + 2 r dot + r^2) and the component 1 + r*dot along g.
      const double r = SocialContact::coneRoot(dot, deg);
      const double cosine = (1.0 + r * dot) / std::sqrt(1.0 + 2.0 * r * dot + r * r);
      EXPECT_NEAR(std::abs(cosine), std::cos(deg * std::numbers::pi / 180.0), 1e-9) << dot << " " << deg;
    }
  }
  EXPECT_EQ(SocialContact::coneRoot(std::cos(std::numbers::pi / 3.0), 60.0), 0.0);
}

TEST(Kept, SC_centre) {
  const auto solver = stand(std::make_shared<SocialContact>(uint8_t{1}), 2, 6, -5.0, 5.0, one);
  solver->maxIter = 3;
  EXPECT_TRUE(solver->run());
  EXPECT_EQ(solver->period, 6);
  EXPECT_EQ(solver->zeroPoint, std::vector<double>(2, 0.0));
  solver->minVar.assign(2, -9.0);
  solver->maxVar.assign(2, -7.0);
  solver->randomise();
  EXPECT_TRUE(solver->run());
  EXPECT_EQ(solver->centre, std::vector<double>(2, 0.0));
  EXPECT_EQ(solver->span, std::vector<double>(2, 9.6));
  EXPECT_EQ(solver->zeroPoint, std::vector<double>(2, -7.0));
}

TEST(SocialContact, CountsItsIterationsFromOne) {
  const auto solver = stand(std::make_shared<SocialContact>(uint8_t{0}), 1, 6, -5.0, 5.0, one);
  int calls = 0;
  std::dynamic_pointer_cast<OptFunction>(solver->objective)->valueFun = [&](const double* x) {
    ++calls;
    return one(x);
  };
  solver->maxIter = 1;
  EXPECT_TRUE(solver->run());
  EXPECT_EQ(calls, 6);
  EXPECT_EQ(solver->history.size(), 1u);
}

}  // namespace
