// SPDX-License-Identifier: Apache-2.0
// Rankings on small sets against a plain enumeration in NumPy and SciPy, for every kind and transformation.
#include "expresssearch/host.h"

namespace {

double number(const std::string& text) { return std::strtod(text.c_str(), nullptr); }

std::vector<int32_t> indices(const std::string& text) {
  std::vector<int32_t> out;
  for (const std::string& cell : split(text, ';')) out.push_back(std::stoi(cell));
  return out;
}

struct Data {
  std::vector<Vector> terms, columns;
  Vector y;
};

struct Case {
  Data data;
  int kind, transform, maxTerms, judged;
  double limit;
  std::vector<Cells> results;
  std::string name() const {
    return "kind " + std::to_string(kind) + " transformation " + std::to_string(transform) + " maxTerms " +
           std::to_string(maxTerms);
  }
};

std::vector<Case> readCases() {
  std::vector<Case> cases;
  Data data;
  for (const std::string& line : referenceLines("search.csv")) {
    const Cells cells = split(line, ',');
    Vector values;
    for (std::size_t i = 1; i < cells.size(); ++i) values.push_back(number(cells[i]));
    if (cells[0] == "data") data = {};
    if (cells[0] == "term") data.terms.push_back(values);
    if (cells[0] == "column") data.columns.push_back(values);
    if (cells[0] == "y") data.y = values;
    if (cells[0] == "case")
      cases.push_back({data, int(values[0]), int(values[1]), int(values[2]), int(values[4]), values[3], {}});
    if (cells[0] == "result") cases.back().results.push_back(cells);
  }
  return cases;
}

void expectResult(const Found& found, const Cells& row, double tolerance, bool lists) {
  const double error = number(row[3]);
  EXPECT_NEAR(found.error(), error, tolerance * error);
  EXPECT_NEAR(found.fit(), number(row[4]), tolerance);
  if (!lists) return;
  EXPECT_EQ(found.idx, indices(row[1]));
  EXPECT_EQ(found.denIdx, indices(row[2]));
}

TEST(Oracle, RanksAsAPlainEnumeration) {
  const std::vector<Case> cases = readCases();
  ASSERT_GT(cases.size(), 40u);
  for (const Case& one : cases) {
    SCOPED_TRACE(one.name());
    const bool linear = one.kind == ES_KIND_RATIONAL || one.kind == ES_KIND_SURFACE;
    Search search = one.data.columns.empty() ? Search(one.data.terms, one.data.y) : Search(one.data.columns);
    search.limits(one.limit);
    api_ES_SetSolverParam(search.es, 2000, 50, 1e-10, 1e-14);
    api_ES_SetBirdParam(search.es, 16, 0, 0);
    search.run(one.maxTerms, static_cast<uint8_t>(one.kind), static_cast<uint8_t>(one.transform));
    EXPECT_TRUE(one.judged < 0 || search.judged() == static_cast<uint32_t>(one.judged)) << search.judged();
    ASSERT_TRUE(search.any());
    const double tolerance = linear ? 1e-7 : 2e-3;
    expectResult(search.best(), one.results[0], tolerance, one.kind != ES_KIND_PEAKS);
    if (one.kind != ES_KIND_RATIONAL) continue;
    const std::vector<Found> ranking = search.ranking();
    ASSERT_EQ(ranking.size(), one.results.size());
    for (std::size_t i = 0; i < ranking.size(); ++i) expectResult(ranking[i], one.results[i], tolerance, true);
    const Found best = search.best();
    EXPECT_NEAR(squaredError(search.values(best.handle), one.data.y), best.error(), 1e-9 * best.error());
  }
}

}  // namespace
