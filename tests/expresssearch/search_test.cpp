// SPDX-License-Identifier: Apache-2.0
// Rankings, counts, refusals, stages, and what a host may get wrong.
#include <cstdlib>

#include "expresssearch/host.h"
#include "support/csv.h"

namespace {

double number(const std::string& text) { return std::strtod(text.c_str(), nullptr); }

std::vector<int32_t> indices(const std::string& text) {
  std::vector<int32_t> out;
  for (const std::string& cell : split(text, ';')) out.push_back(std::stoi(cell));
  return out;
}

void expectResult(const Found& found, const Cells& row) {
  EXPECT_NEAR(found.error(), number(row[3]), 1e-7 * number(row[3]));
  EXPECT_NEAR(found.info[6], number(row[4]), 1e-7);
  EXPECT_EQ(found.idx, indices(row[1]));
  EXPECT_EQ(found.denIdx, indices(row[2]));
}

// Small sets against a plain enumeration in NumPy: kind 0 under every transformation, and kind 60.
TEST(Oracle, RanksAsAPlainEnumeration) {
  std::vector<Vector> terms, columns;
  Vector y;
  const std::vector<Cells> lines = readCsv("expresssearch/search.csv");
  for (std::size_t at = 0; at < lines.size(); ++at) {
    const Cells& cells = lines[at];
    Vector values;
    for (std::size_t i = 1; i < cells.size(); ++i) values.push_back(number(cells[i]));
    if (cells[0] == "term") terms.push_back(values);
    if (cells[0] == "column" && lines[at - 1][0] != "column") columns.clear();
    if (cells[0] == "column") columns.push_back(values);
    if (cells[0] == "y") y = values;
    if (cells[0] != "case") continue;
    SCOPED_TRACE(::testing::Message() << "kind " << cells[1] << " transformation " << cells[2] << " of " << cells[3]);
    const int kind = std::stoi(cells[1]);
    Search search(terms, y);
    if (kind == ES_KIND_SURFACE) search.addColumns(columns);
    search.limits(values[3]).run(std::stoi(cells[3]), kind, std::stoi(cells[2]));
    EXPECT_EQ(search.judged(), values[4]);
    ASSERT_TRUE(search.any());
    const Found best = search.best();
    expectResult(best, lines[at + 1]);
    if (kind != ES_KIND_RATIONAL) continue;
    const std::vector<Found> ranking = search.ranking();
    for (std::size_t i = 0; i < ranking.size(); ++i) expectResult(ranking[i], lines[at + 1 + i]);
    const std::size_t next = at + 1 + ranking.size();
    EXPECT_TRUE(next == lines.size() || lines[next][0] != "result");
    EXPECT_NEAR(squaredError(search.values(best.handle), y), best.error(), 1e-9 * best.error());
  }
}

// y is made so that a law holds for what its transformation gives: u spans the range that data is scaled to.
TEST(Transformations, LawsOfEveryKindAreFound) {
  struct Row {
    int code;
    double low, high;
    double (*forward)(double);
  } rows[] = {{0, 0.3, 2, nullptr},
              {10, 0.3, 2, nullptr},
              {1, 0, 1, [](double u) { return std::exp(u); }},
              {2, 0.01, 2.71828182845905, [](double u) { return std::log(u); }},
              {3, 0.01, 2.71828182845905, [](double u) { return std::sqrt(u); }},
              {4, 0.01, 0.99, [](double u) { return -std::log(1 / u - 1); }},
              {100, -1, 1, [](double u) { return std::asin(u); }},
              {101, -1, 1, [](double u) { return std::acos(u); }},
              {102, -0.9, 0.9, [](double u) { return std::atanh(u); }}};
  constexpr std::size_t n = 40;
  std::mt19937 rng(4);
  const Vector other = draws(rng, n, 0.5, 2);
  for (const Row& row : rows) {
    SCOPED_TRACE(row.code);
    const Vector u = tabulated(n, [&](std::size_t i) { return row.low + (row.high - row.low) * double(i) / (n - 1); });
    const double scale = row.forward == nullptr ? 1 : 1.0 / 3, offset = row.forward == nullptr ? 0 : -5.0 / 3;
    const Vector y = tabulated(n, [&](std::size_t i) { return (u[i] - offset) / scale; });
    const Vector v = tabulated(n, [&](std::size_t i) { return row.forward == nullptr ? u[i] : row.forward(u[i]); });
    const double least = *std::min_element(v.begin(), v.end()) - 0.5;
    const Vector terms[] = {tabulated(n, [&](std::size_t i) { return (v[i] - least) / 1.5; }),
                            tabulated(n, [&](std::size_t i) { return std::pow(v[i] - least, 1 / 1.5); }),
                            tabulated(n, [&](std::size_t i) { return v[i] * (1 + std::pow(other[i], 1.5)) + 20; })};
    const int budgets[] = {2, 4, 6};
    for (int kind = 0; kind < 3; ++kind) {
      Search search({terms[kind], other}, y);
      api_ES_SetSolverParam(search.es, 2000, 50, 1e-12, 1e-20);
      const Found best = search.run(budgets[kind], kind, row.code).best();
      EXPECT_LT(best.error(), 1e-9) << "kind " << kind;
      EXPECT_EQ(best.info[1], row.code);
      EXPECT_NEAR(best.info[3], offset, 1e-12);
      EXPECT_NEAR(best.info[4], scale, 1e-12);
      if (kind == 0) {
        EXPECT_NEAR(best.coef[0], 1.5, 1e-7);
      }
      if (kind == 1) {
        EXPECT_NEAR(best.coef[1], 1.5, 1e-4);
      }
      if (kind == 2) {
        EXPECT_NEAR(best.coef2[1], 1.5, 1e-3);
      }
    }
  }
}

TEST(Counts, OfWhatEveryBudgetTries) {
  struct Row {
    const char* name;
    int terms;
    double limit;
    int32_t drawn, maxTerms;
    int kind, transform;
    uint32_t judged, accepted;
  } rows[] = {{"constant", 3, 0, 0, 1, 0, 0, 1, 0},
              {"all splits", 4, 0, 0, 4, 0, 0, 56, 0},
              {"full list", 40, 1e300, 0, 3, 0, 0, 513, 513},
              {"drawn", 10, 0, 4, 2, 0, 0, 8, 0},
              {"unknown transformation", 3, 0, 0, 2, 0, 5, 0, 0},
              {"powers", 4, 0, 0, 6, 1, 0, 15, 0},  // the last of the terms has a negative value
              {"powers below", 4, 0, 0, 6, 2, 0, 9, 0},
              {"two powers below", 4, 0, 0, 8, 2, 0, 9, 0},
              {"more than the terms", 4, 0, 0, 8, 0, 0, 8, 0}};
  for (const Row& row : rows) {
    auto terms = drawnTerms(row.terms, 20);
    const Vector y = drawnTerms(1, 20, 12)[0];
    if (row.kind > 0) terms.back()[7] = -1e-9;
    Search search(terms, y);
    search.limits(row.limit, -1, row.drawn).run(row.maxTerms, row.kind, row.transform);
    EXPECT_EQ(search.judged(), row.judged) << row.name;
    EXPECT_EQ(search.accepted(), row.accepted) << row.name;
    EXPECT_EQ(api_ES_GetResultByIndex(search.es, int32_t(row.accepted), nullptr), nullptr);
    EXPECT_EQ(api_ES_GetResultByIndex(search.es, -1, nullptr), nullptr);
    if (row.accepted == 513) {
      EXPECT_EQ(search.run(3).accepted(), 514u) << "a further search goes on from there";
      EXPECT_EQ(search.limits(0, -1).run(4).judged(), 514u + 82160u) << "better ones that are not accepted end nothing";
    }
  }
  // Budgets that a kind does not have.
  const int32_t most = 2147483647;
  const std::pair<int32_t, int> refused[] = {{0, 0},  {-1, 0},        {most, 0},  {8, 0},    {3, 1},         {5, 1},
                                             {2, 1},  {4, 2},         {5, 2},     {3, 3},    {3, 17},        {6, 16},
                                             {1, 16}, {most - 1, 16}, {4, 60},    {7, 60},   {7, 61},        {4, 62},
                                             {3, 62}, {3, 63},        {most, 62}, {most, 1}, {-most - 1, 2}, {3, 255}};
  for (const auto& [maxTerms, kind] : refused) {
    Search search(drawnTerms(3, 20), drawnTerms(1, 20, 12)[0]);
    search.addColumns(drawnTerms(2, 20));
    EXPECT_FALSE(search.run(maxTerms, kind).any()) << maxTerms << " of kind " << kind;
  }
}

TEST(Results, AcceptedBestWildAndKept) {
  Search exact({drawnTerms(1, 10)[0]}, Vector(10, 3.0));
  EXPECT_EQ(exact.limits(0.0, 1.0).run(1).accepted(), 1u);
  EXPECT_EQ(exact.best().coef, Vector{3.0});
  EXPECT_EQ(exact.best().coef2, Vector{1.0});

  Vector tiny = drawnTerms(1, 20)[0];
  for (double& v : tiny) v *= 1e-13;  // needs a coefficient above 1e10
  EXPECT_EQ(Search({tiny}, drawnTerms(1, 20, 12)[0]).run(2).judged(), 0u);

  const auto terms = drawnTerms(4, 20);
  Search search(terms, drawnTerms(1, 20, 12)[0]);
  search.run(2);
  EXPECT_EQ(search.accepted(), 0u);
  const Found before = search.best();
  EXPECT_LT(search.run(4).best().error(), before.error());
  EXPECT_EQ(read(before.handle).error(), before.error()) << "a result that was handed out stays";

  Search clone(api_ES_Clone(search.limits(1e300).es));
  EXPECT_FALSE(clone.any());
  EXPECT_EQ(clone.run(4).accepted(), 56u);
  EXPECT_NEAR(clone.best().error(), search.best().error(), 1e-9);

  std::srand(20200923);
  const int expected = std::rand();
  clone.run(1);
  EXPECT_EQ(std::rand(), expected) << "kept.csv: Rand_restart";

  // So many terms have no table of products; the candidate of one term must be the same to the last bit.
  const auto many = drawnTerms(2200, 12);
  const Vector y = tabulated(12, [&](std::size_t i) { return 2 * many[7][i] + 1 + 1e-3 * many[9][i]; });
  const Found direct = Search(many, y).run(2).best(), tabled = Search({many[7]}, y).run(2).best();
  EXPECT_EQ(direct.idx, std::vector<int32_t>{7});
  EXPECT_EQ(direct.coef, tabled.coef);
  EXPECT_EQ(direct.error(), tabled.error());
}

TEST(Results, GiveValuesOnNewData) {
  const auto terms = drawnTerms(2, 30), fresh = drawnTerms(2, 17, 99);
  Search search(terms, tabulated(30, [&](std::size_t i) { return 5 + 3 * std::pow(1 + terms[1][i], 2); }));
  const Found best = search.run(2, ES_KIND_RATIONAL, ES_TRANSFORM_SQRT).best();
  const Search there(fresh, Vector(17, 0.0)), lacking({fresh[0]}, Vector(17, 0.0));
  EXPECT_TRUE(std::isnan(lacking.values(best.handle)[3])) << "it has no second term";
  const Vector values = there.values(best.handle);
  for (std::size_t i = 0; i < 17; ++i) {
    const double v = best.coef.back() + (best.idx.empty() ? 0.0 : best.coef[0] * fresh[best.idx[0]][i]);
    const double u = 1 + (best.denIdx.empty() ? 0.0 : best.coef2[0] * fresh[best.denIdx[0]][i]);
    EXPECT_NEAR(values[i], (v / u * v / u - best.info[3]) / best.info[4], 1e-12 * std::abs(values[i]));
  }
}

TEST(Hostile, DataThatIsNoDataIsSurvived) {
  const Vector y = tabulated(10, [](std::size_t i) { return 1.0 + double(i); }), longer(11, 1.0);
  for (const int kind : {0, 1, 2, 16, 60, 61, 62}) {
    for (const auto& terms : std::vector<std::vector<Vector>>{{Vector(9, 1.0)}, {y, longer}, {Vector{}}})
      EXPECT_FALSE(Search(terms, y).run(kind < 16 ? 4 : 7, kind).any());
    EXPECT_FALSE(Search({y, longer}).run(7, kind).any());
    Search none;
    api_ES_AddX(none.es, nullptr, -3);
    api_ES_SetY(none.es, nullptr, 5);
    EXPECT_FALSE(none.run(7, kind).any());
  }
  const auto terms = drawnTerms(3, 20);
  for (const double bad : {double(NAN), double(INFINITY), 1e300}) {
    auto spoilt = terms;
    spoilt[1][4] = bad;
    Search search(spoilt, drawnTerms(1, 20, 12)[0]);
    for (const int kind : {0, 1, 2}) search.run(6, kind).run(4, kind);
    const Found best = search.best();
    EXPECT_LT(best.error(), 20.0) << bad;
    if (!std::isfinite(bad)) {  // a huge number has a tiny coefficient that serves
      EXPECT_EQ(std::count(best.idx.begin(), best.idx.end(), 1), 0) << bad;
    }
    for (const int transform : {0, 1, 2, 3, 4, 100, 101, 102}) Search({spoilt[1]}, spoilt[1]).run(2, 0, transform);
    for (const int kind : {16, 60, 61, 62})
      for (const int32_t maxTerms : {3, 4, 5, 7, 8, 16}) {
        Search columns({terms[0], spoilt[1]});
        api_ES_SetBirdParam(columns.es, 3, 1, 1);
        if (columns.run(maxTerms, kind).any()) {
          EXPECT_GE(columns.best().error(), 0.0);
        }
      }
  }
  Search same({terms[0], terms[0], Vector(20, 1.0), Vector(20, 0.0)}, terms[1]);
  same.limits(1e300).run(4);
  for (const Found& found : same.ranking()) EXPECT_GE(found.error(), 0.0);
  EXPECT_TRUE(std::isfinite(same.best().error()));
}

TEST(Stages, LowerTheErrorAndAddUp) {
  const auto terms = drawnTerms(5, 60);
  const Vector y = tabulated(60, [&](std::size_t i) {
    return terms[0][i] / (1 + terms[1][i]) + 0.2 * std::sin(3 * terms[2][i]) + 0.1 * terms[3][i] * terms[4][i];
  });
  AutoExpressSearch* search = api_AutoES_Create();
  for (const Vector& term : terms) api_AutoES_AddX(search, term.data(), 60);
  api_AutoES_SetY(search, y.data(), 60);
  EXPECT_EQ(api_AutoES_GetError(search), 1e300);
  Vector sum(60, 1.0);
  struct Row {
    int32_t maxTerms, stageLimit;
    double errorLimit;
    int leastStages, mostStages;
  } rows[] = {{4, 4, 0, 2, 4}, {5, 4, 0, 2, 4}, {6, 4, 0, 2, 4}, {6, 4, 1e3, 1, 1}, {3, 1, 0, 1, 1}, {3, 0, 0, 0, 0}};
  for (const Row& row : rows) {
    api_AutoES_SetLimitCondition(search, row.errorLimit, 0.0, 0);
    api_AutoES_Search(search, row.maxTerms, row.stageLimit);
    double previous = 1e300, out[7];
    int stages = 0;
    for (const SearchResult* at; (at = api_AutoES_GetResult(search, stages, out)) != nullptr; ++stages) {
      const Found stage = read(at);
      EXPECT_LT(stage.error(), previous);
      previous = stage.error();
      // From 5 parameters on the denominator has maxTerms/2 - 1 to maxTerms/2 + 1 terms.
      const int away = std::abs(static_cast<int>(stage.denIdx.size()) - row.maxTerms / 2);
      EXPECT_TRUE(row.maxTerms < 5 || away <= 1);
    }
    EXPECT_EQ(out[0], 255.0);
    EXPECT_GE(stages, row.leastStages);
    EXPECT_LE(stages, row.mostStages);
    api_AutoES_CalExpress(search, sum.data());
    EXPECT_EQ(api_AutoES_GetError(search), previous);
    if (stages == 0) {
      EXPECT_EQ(sum, Vector(60, 0.0));
    }
    if (stages > 0) {
      EXPECT_NEAR(squaredError(sum, y), previous, 1e-9 * previous + 1e-20);
    }
    // Of 10 + 25 + 10 candidates under each of five transformations exp alone may refuse some.
    if (row.maxTerms == 3 && stages == 1) {
      EXPECT_GE(api_AutoES_GetSearchNum(search), 4u * 45u);
    }
    if (row.maxTerms == 3 && stages == 1) {
      EXPECT_LE(api_AutoES_GetSearchNum(search), 5u * 45u);
    }
  }
  api_FreeHandle(search);
}

}  // namespace
