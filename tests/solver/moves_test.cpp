// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

#include "solver/lg_solver.h"
#include "solver/lg_solver2.h"
#include "solver/social_contact.h"
#include "solver/solver_stand.h"
#include "solver/weighted_mean.h"

namespace {

using namespace Solver;

TEST(Draw, UniformStaysBelowOneAndNormalHasItsMoments) {
  const auto top = [] { return 0xffffffffu; };
  EXPECT_LT(UniformDistribution()(top), 1.0);
  std::mt19937 words(7);
  NormalDistribution normal;
  double sum = 0.0, squares = 0.0;
  for (int i = 0; i < 40000; ++i) {
    const double z = normal(words);
    sum += z;
    squares += z * z;
  }
  EXPECT_LT(std::abs(sum) / 200.0, 5.0);                             // z-score of the mean
  EXPECT_LT(std::abs(squares - 40000.0) / std::sqrt(80000.0), 5.0);  // and of the variance
}

TEST(Kept, RandomIndex_099) {
  const auto solver = ready(1, 2, parabola);
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
  const auto solver = ready(1, 2, parabola);
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
    EXPECT_EQ(solver->rng(), same());
  }
}

TEST(Clip, WidensASingleBoundAndProjects) {
  const auto solver = ready(1, 2, parabola);
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
    const auto solver = stand(std::make_shared<LGSolver>(), 1, 2, -5.0, 5.0, parabola);
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

TEST(Descend, IsLeftOutInManyVariables) {
  const auto large = stand(std::make_shared<LGSolver2>(), 37, 2, -50.0, 50.0, parabola);
  const auto before = large->population[0]->curVar;
  EXPECT_FALSE(large->descend(large->population[0]));
  EXPECT_EQ(large->population[0]->curVar, before);
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
  const auto solver = stand(std::make_shared<SocialContact>(uint8_t{1}), 2, 6, -5.0, 5.0, parabola);
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

TEST(Draw, GeneratorsGiveTheWordsOfAMersenneTwister) {
  static uint32_t seed;
  const auto seeds = [] { return seed += 0x9e3779b9u; };
  LocalMersennes locals;
  for (const std::size_t ahead : {std::size_t{1}, std::size_t{3}, LocalMersennes::kLanes})
    for (std::size_t lane = 0; lane < ahead; ++lane) {
      if (lane == 0) seed = 0;  // the seeds of a batch are drawn with its first one
      LocalMersenne local = locals.next(seeds, ahead);
      std::mt19937 whole(static_cast<uint32_t>(lane + 1) * 0x9e3779b9u);
      const int words = lane % 2 == 0 ? 2000 : 15;  // three rounds of the state, and the usual few
      for (int i = 0; i < words; ++i) ASSERT_EQ(local(), whole()) << ahead << ", " << lane << ": " << i;
      std::vector<int> a(50), b(50);
      std::iota(a.begin(), a.end(), 0);
      std::iota(b.begin(), b.end(), 0);
      std::shuffle(a.begin(), a.end(), local);
      std::shuffle(b.begin(), b.end(), whole);
      ASSERT_EQ(a, b);
    }
  ShuffleFronts fronts;
  for (const std::size_t n : {1, 2, 3, 4, 29, 30, 40, 399, 400, 401})
    for (std::size_t lane = 0; lane < 2 * LocalMersennes::kLanes; ++lane) {
      if (lane % LocalMersennes::kLanes == 0) seed = 0;
      const auto front = fronts.nextFront(seeds, LocalMersennes::kLanes, n);
      std::mt19937 whole(static_cast<uint32_t>(lane % LocalMersennes::kLanes + 1) * 0x9e3779b9u);
      std::vector<uint32_t> list(n);
      std::iota(list.begin(), list.end(), 0u);
      std::shuffle(list.begin(), list.end(), whole);
      for (std::size_t i = 0; i < std::min<std::size_t>(n, 3); ++i) ASSERT_EQ(front[i], list[i]) << n << ", " << lane;
    }
  for (const uint32_t start : {0u, 1u, 5489u, 0xffffffffu}) {
    BlockMersenne blocks(start), rows(start);
    std::mt19937 whole(start);
    const UniformDistribution uniform;
    for (int i = 0; i < 100000; ++i) {
      double inRow;
      rows.fill(&inRow, 1);
      ASSERT_EQ(inRow, uniform(blocks)) << start << ": " << i;
      ASSERT_EQ(inRow, uniform(whole)) << start << ": " << i;
      if (i % 700 == 0) {  // from odd words, too
        const auto word = whole();
        ASSERT_EQ(blocks(), word) << start << ": " << i;
        ASSERT_EQ(rows(), word) << start << ": " << i;
      }
    }
    NormalDistribution single, inRows;
    for (std::size_t n = 0; n < 50; ++n) {
      std::vector<double> row(n);
      inRows.fill(rows, row.data(), n);
      for (const double value : row) ASSERT_EQ(value, single(blocks)) << start << ": " << n;
    }
  }
}

}  // namespace
