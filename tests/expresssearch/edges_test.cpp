// SPDX-License-Identifier: Apache-2.0
// Limits, refusals, stages, and what a host may get wrong.
#include <cstdlib>

#include "expresssearch/host.h"

namespace {

Vector ramp(std::size_t n, double from, double step) {
  return tabulated(n, [=](std::size_t i) { return from + step * static_cast<double>(i); });
}

std::vector<Vector> randomTerms(int count, int rows, uint32_t seed = 11) {
  std::mt19937 rng(seed);
  std::vector<Vector> terms;
  for (int i = 0; i < count; ++i) terms.push_back(draws(rng, rows, 0.5, 2.0));
  return terms;
}

TEST(Limits, AFullListEndsTheSearch) {
  const auto terms = randomTerms(40, 20);
  Search search(terms, terms[3]);
  search.limits(1e300).run(3);
  EXPECT_EQ(search.accepted(), 513u);
  EXPECT_EQ(search.judged(), 513u);
  EXPECT_EQ(api_ES_GetResultByIndex(search.es, 513, nullptr), nullptr);
  EXPECT_EQ(api_ES_GetResultByIndex(search.es, -1, nullptr), nullptr);
  // A further search of the same object goes on from there.
  search.run(3);
  EXPECT_EQ(search.accepted(), 514u);
}

TEST(Limits, TheBestIsKeptWithoutBeingAccepted) {
  const auto terms = randomTerms(4, 20);
  Search search(terms, randomTerms(1, 20, 12)[0]);
  search.limits(0.0, 0.0).run(2);
  EXPECT_EQ(search.accepted(), 0u);
  ASSERT_TRUE(search.any());
  EXPECT_EQ(search.judged(), 8u);
  const Found before = search.best();
  search.run(4);
  EXPECT_LT(search.best().error(), before.error());
  EXPECT_EQ(read(before.handle).error(), before.error()) << "a result that was handed out stays";
}

TEST(Limits, AnExactConstantIsAccepted) {
  Search search({ramp(10, 1, 1)}, Vector(10, 3.0));
  search.limits(0.0, 1.0).run(1);
  ASSERT_EQ(search.accepted(), 1u);
  EXPECT_EQ(search.best().coef, Vector{3.0});
  EXPECT_EQ(search.best().coef2, Vector{1.0});
}

TEST(Limits, AWildCoefficientIsNotCounted) {
  Vector tiny = randomTerms(1, 20)[0];
  for (double& v : tiny) v *= 1e-13;
  Search search({tiny}, randomTerms(1, 20, 12)[0]);
  search.run(2);
  EXPECT_EQ(search.judged(), 0u);
  EXPECT_FALSE(search.any());
}

TEST(Limits, AnUnknownTransformationRefusesEverything) {
  const auto terms = randomTerms(2, 20);
  Search search(terms, terms[0]);
  EXPECT_FALSE(search.run(2, ES_KIND_RATIONAL, 5).any());
  EXPECT_EQ(search.judged(), 0u);
}

TEST(Limits, DrawnTermsAreSoMany) {
  const auto terms = randomTerms(10, 20);
  Search search(terms, terms[0]);
  search.limits(0.0, 0.0, 4).run(2);
  EXPECT_EQ(search.judged(), 8u);  // four numerators and four denominators of one term
}

TEST(Budgets, OthersThanTheKindsFindNothing) {
  const auto terms = randomTerms(3, 20);
  const auto columns = randomTerms(2, 20);
  struct Row {
    int32_t maxTerms;
    uint8_t kind;
  } rows[] = {{0, 0},  {-1, 0},         {2147483647, 0},  {8, 0},           {3, 1},
              {5, 1},  {2, 1},          {4, 2},           {5, 2},           {3, 3},
              {3, 17}, {6, 16},         {1, 16},          {22, 16},         {4, 60},
              {7, 60}, {7, 61},         {4, 62},          {3, 62},          {21, 62},
              {3, 63}, {2147483647, 1}, {2147483646, 16}, {2147483647, 62}, {-2147483647 - 1, 2},
              {3, 255}};
  for (const Row& row : rows) {
    Search search(terms, terms[0]);
    for (const Vector& column : columns) api_ES_AddOriginalData(search.es, column.data(), length(column));
    EXPECT_FALSE(search.run(row.maxTerms, row.kind).any()) << row.maxTerms << " of kind " << int(row.kind);
  }
}

TEST(Budgets, PowersPassOverNegativeTerms) {
  auto terms = randomTerms(2, 20);
  terms[1][7] = -1e-9;
  for (const auto& [kind, maxTerms, count] : {std::tuple{1, 4, 2u}, {2, 6, 0u}}) {
    Search search(terms, terms[0]);
    EXPECT_EQ(search.run(maxTerms, static_cast<uint8_t>(kind)).judged(), count);
  }
}

TEST(Hostile, DataThatDoesNotFitFindsNothing) {
  const Vector y = ramp(10, 1, 1);
  const std::vector<std::vector<Vector>> sets = {{ramp(9, 1, 1)}, {y, ramp(11, 1, 1)}, {Vector{}}};
  for (const auto& terms : sets)
    for (const uint8_t kind : {0, 1, 2}) EXPECT_FALSE(Search(terms, y).run(4, kind).any());
  Search none;
  for (const uint8_t kind : {0, 1, 2, 16, 60, 61, 62}) EXPECT_FALSE(none.run(7, kind).any());
  api_ES_AddX(none.es, nullptr, -3);
  api_ES_SetY(none.es, nullptr, 5);
  EXPECT_FALSE(none.run(1).any());
  for (const uint8_t kind : {16, 60, 61, 62}) EXPECT_FALSE(Search({y, ramp(11, 1, 1)}).run(7, kind).any());
}

TEST(Hostile, ValuesThatAreNotFiniteAreNoFit) {
  for (const double bad : {double(NAN), double(INFINITY), 1e300}) {
    auto terms = randomTerms(3, 20);
    terms[1][4] = bad;
    Search search(terms, randomTerms(1, 20, 12)[0]);
    for (const uint8_t kind : {0, 1, 2}) search.run(6, kind);
    for (const uint8_t kind : {0, 1}) search.run(4, kind);
    const Found best = search.best();
    EXPECT_LT(best.error(), 20.0) << bad;
    if (!std::isfinite(bad)) {  // a huge number has a tiny coefficient that serves
      EXPECT_EQ(std::count(best.idx.begin(), best.idx.end(), 1), 0) << bad;
    }
    Search all({terms[1]}, terms[1]);
    for (const uint8_t transform : {0, 1, 2, 3, 4, 100, 101, 102}) all.run(2, 0, transform);
    for (const uint8_t kind : {16, 60, 61, 62})
      for (const int32_t maxTerms : {3, 4, 5, 7, 8, 16}) {
        Search columns({terms[0], terms[1]});
        api_ES_SetBirdParam(columns.es, 3, 1, 1);
        if (columns.run(maxTerms, kind).any()) {
          EXPECT_GE(columns.best().error(), 0.0);
        }
      }
  }
}

TEST(Hostile, DuplicatesAndConstantsAreSurvived) {
  const auto terms = randomTerms(2, 20);
  Search search({terms[0], terms[0], Vector(20, 1.0), Vector(20, 0.0)}, terms[1]);
  search.limits(1e300).run(4);
  for (const Found& found : search.ranking()) EXPECT_GE(found.error(), 0.0);
  EXPECT_TRUE(std::isfinite(search.best().error()));
}

TEST(Products, BeyondTheTableAreTheSame) {
  // So many terms have no table of products; the candidate of one term must be the same to the last bit.
  const auto terms = randomTerms(2200, 12);
  const Vector y = tabulated(12, [&](std::size_t i) { return 2 * terms[7][i] + 1 + 1e-3 * terms[9][i]; });
  const Found direct = Search(terms, y).run(2).best();
  const Found tabled = Search({terms[7]}, y).run(2).best();
  EXPECT_EQ(direct.idx, std::vector<int32_t>{7});
  EXPECT_EQ(direct.coef, tabled.coef);
  EXPECT_EQ(direct.error(), tabled.error());
}

TEST(Values, OnNewDataInTheScaleOfY) {
  const auto terms = randomTerms(2, 30), fresh = randomTerms(2, 17, 99);
  Search search(terms, tabulated(30, [&](std::size_t i) { return 5 + 3 * std::pow(1 + terms[1][i], 2); }));
  const Found best = search.run(2, ES_KIND_RATIONAL, ES_TRANSFORM_SQRT).best();
  EXPECT_EQ(best.info[1], ES_TRANSFORM_SQRT);
  const Found exact = search.run(3).best();
  EXPECT_LE(exact.error(), best.error());
  const Search there(fresh, Vector(17, 0.0)), short1({fresh[0]}, Vector(17, 0.0));
  EXPECT_TRUE(std::isnan(short1.values(best.handle)[3])) << "it has no second term";
  const Vector values = there.values(best.handle);
  for (std::size_t i = 0; i < 17; ++i) {
    const double v = best.coef.back() + (best.idx.empty() ? 0.0 : best.coef[0] * fresh[best.idx[0]][i]);
    const double u = 1 + (best.denIdx.empty() ? 0.0 : best.coef2[0] * fresh[best.denIdx[0]][i]);
    EXPECT_NEAR(values[i], (v / u * v / u - best.info[3]) / best.info[4], 1e-12 * std::abs(values[i]));
  }
}

TEST(Clone, TakesDataAndSettingsOnly) {
  const auto terms = randomTerms(3, 20);
  Search search(terms, terms[1]);
  search.limits(1e-20, 0.5).run(2);
  Search copy(api_ES_Clone(search.es));
  EXPECT_FALSE(copy.any());
  EXPECT_EQ(copy.judged(), 0u);
  copy.run(2);
  EXPECT_EQ(copy.accepted(), search.accepted());
  EXPECT_EQ(copy.best().idx, std::vector<int32_t>{1});
}

TEST(Kept, RandStartsAnew) {
  std::srand(20200923);
  const int expected = std::rand();
  Search({ramp(5, 1, 1)}, ramp(5, 1, 1)).run(1);
  EXPECT_EQ(std::rand(), expected) << "kept.csv: Rand_restart";
}

struct Auto {
  AutoExpressSearch* handle = api_AutoES_Create();
  Auto(const std::vector<Vector>& terms, const Vector& y) {
    for (const Vector& term : terms) api_AutoES_AddX(handle, term.data(), length(term));
    api_AutoES_SetY(handle, y.data(), length(y));
  }
  ~Auto() { api_FreeHandle(handle); }
  int32_t stages() const {
    int32_t count = 0;
    double out[7];
    while (api_AutoES_GetResult(handle, count, out) != nullptr) ++count;
    EXPECT_EQ(out[0], 255.0);
    return count;
  }
};

TEST(Stages, LowerTheErrorAndAddUp) {
  const auto terms = randomTerms(5, 60);
  const Vector y = tabulated(60, [&](std::size_t i) {
    return terms[0][i] / (1 + terms[1][i]) + 0.2 * std::sin(3 * terms[2][i]) + 0.1 * terms[3][i] * terms[4][i];
  });
  Auto search(terms, y);
  EXPECT_EQ(api_AutoES_GetError(search.handle), 1e300);
  for (const int32_t maxTerms : {4, 5, 6}) {
    api_AutoES_Search(search.handle, maxTerms, 4);
    ASSERT_GE(search.stages(), 2);
    double previous = 1e300;
    for (int32_t i = 0; i < search.stages(); ++i) {
      const Found stage = read(api_AutoES_GetResult(search.handle, i, nullptr));
      EXPECT_LT(stage.error(), previous);
      previous = stage.error();
      // From 5 parameters on the denominator has maxTerms/2 - 1 to maxTerms/2 + 1 terms.
      const int away = std::abs(static_cast<int>(stage.denIdx.size()) - maxTerms / 2);
      EXPECT_TRUE(maxTerms < 5 || away <= 1);
    }
    Vector sum(60);
    api_AutoES_CalExpress(search.handle, sum.data());
    EXPECT_EQ(api_AutoES_GetError(search.handle), previous);
    EXPECT_NEAR(squaredError(sum, y), previous, 1e-9 * previous + 1e-20);
  }
}

TEST(Stages, EndAtTheLimitAndCountAllTransformations) {
  const auto terms = randomTerms(3, 40);
  Auto search(terms, tabulated(40, [&](std::size_t i) { return terms[0][i] / (1 + terms[2][i]); }));
  api_AutoES_SetLimitCondition(search.handle, 1e-15, 0.0, 0);
  api_AutoES_Search(search.handle, 3, 5);
  EXPECT_EQ(search.stages(), 1);
  EXPECT_LT(api_AutoES_GetError(search.handle), 1e-15);
  // 3 + 9 + 3 candidates a transformation, of which only exp may refuse some.
  EXPECT_LE(api_AutoES_GetSearchNum(search.handle), 75u);
  EXPECT_GE(api_AutoES_GetSearchNum(search.handle), 61u);
  api_AutoES_Search(search.handle, 3, 0);
  EXPECT_EQ(search.stages(), 0);
  Vector sum(40, 1.0);
  api_AutoES_CalExpress(search.handle, sum.data());
  EXPECT_EQ(sum, Vector(40, 0.0));
}

}  // namespace
