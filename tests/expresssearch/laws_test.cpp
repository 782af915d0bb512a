// SPDX-License-Identifier: Apache-2.0
// Laws that a search has to find again from samples, as a user would go about it: a few base functions, their powers
// and products, budgets from small to large until a fit is exact. A law counts as found when it also holds on new
// points.
#include "expresssearch/host.h"

namespace {

/// A text in reverse Polish notation over the inputs, point by point.
Vector evaluate(const std::string& text, const std::vector<Vector>& inputs) {
  return tabulated(inputs.front().size(), [&](std::size_t i) {
    Vector stack;
    for (const std::string& token : split(text, ' ')) {
      if (token[0] == 'x') {
        stack.push_back(inputs[std::stoul(token.substr(1))][i]);
      } else if (std::isdigit(token[0])) {
        stack.push_back(std::stod(token));
      } else if (token.size() > 1) {
        stack.back() = token == "sin"   ? std::sin(stack.back())
                       : token == "cos" ? std::cos(stack.back())
                                        : std::log(stack.back());
      } else {
        const double b = stack.back();
        stack.pop_back();
        double& a = stack.back();
        a = token == "+" ? a + b : token == "-" ? a - b : token == "*" ? a * b : token == "/" ? a / b : std::pow(a, b);
      }
    }
    return stack.back();
  });
}

struct Law {
  Cells cells;  ///< as in the head of the table
  std::string name() const { return cells[0]; }
  bool namesTerms() const { return cells.size() > 9; }
};

struct Sample {
  std::vector<Vector> inputs, terms;
  Vector y;

  Sample(const Law& law, int rows, uint32_t seed) {
    std::mt19937 rng(seed);
    for (int k = 0; k < std::stoi(law.cells[1]); ++k)
      inputs.push_back(draws(rng, rows, std::stod(law.cells[2]), std::stod(law.cells[3])));
    std::vector<Vector> bases;
    for (const std::string& base : split(law.cells[6], ';')) bases.push_back(evaluate(base, inputs));
    terms = monomials(bases, std::stoi(law.cells[4]), std::stoi(law.cells[5]));
    y = evaluate(law.cells[7], inputs);
  }

  /// Places of terms that are given as texts.
  std::vector<int32_t> places(const std::string& texts) const {
    std::vector<int32_t> out;
    for (const std::string& text : split(texts, ';'))
      for (std::size_t t = 0; t < terms.size(); ++t)
        if (squaredError(terms[t], evaluate(text, inputs)) < 1e-20) out.push_back(static_cast<int32_t>(t));
    std::sort(out.begin(), out.end());
    return out;
  }
};

std::vector<Law> laws() {
  std::vector<Law> all;
  for (const std::string& line : referenceLines("laws.csv")) all.push_back({split(line, ',')});
  return all;
}

class Laws : public testing::TestWithParam<Law> {};

TEST_P(Laws, AreFoundAndHoldOnNewPoints) {
  const Sample data(GetParam(), 60, 1), fresh(GetParam(), 60, 2);
  const double scale = squaredError(data.y, Vector(data.y.size(), 0.0));
  for (int32_t maxTerms = 1; maxTerms <= 7; ++maxTerms) {
    Search search(data.terms, data.y);
    search.run(maxTerms);
    if (search.best().error() > 1e-16 * scale) continue;
    const Search there(fresh.terms, fresh.y);
    EXPECT_LT(squaredError(there.values(search.best().handle), fresh.y), 1e-10 * scale);
    return;
  }
  FAIL() << "not found";
}

TEST_P(Laws, AreAmongTheFirstFiveUnderNoise) {
  if (!GetParam().namesTerms()) return;  // the four quotients
  Sample data(GetParam(), 100, 3);
  const auto over = data.places(GetParam().cells[8]), under = data.places(GetParam().cells[9]);
  const auto isLaw = [&](const Found& found) { return found.idx == over && found.denIdx == under; };
  const auto maxTerms = static_cast<int32_t>(1 + over.size() + under.size());
  Search exact(data.terms, data.y);
  EXPECT_TRUE(isLaw(exact.run(maxTerms).best()));

  std::mt19937 rng(3);
  std::normal_distribution<double> noise(0.0, 0.01);
  for (double& v : data.y) v *= 1.0 + noise(rng);
  const double best = Search(data.terms, data.y).run(maxTerms).best().error();
  Search all(data.terms, data.y);
  std::vector<Found> ranking = all.limits(2.0 * best).run(maxTerms).ranking();
  ASSERT_FALSE(ranking.empty());
  ranking.resize(std::min<std::size_t>(ranking.size(), 5));
  EXPECT_TRUE(std::any_of(ranking.begin(), ranking.end(), isLaw));
}

INSTANTIATE_TEST_SUITE_P(Table, Laws, testing::ValuesIn(laws()), [](const auto& info) { return info.param.name(); });

TEST(FreeExponents, FindARootAndAPowerLaw) {
  const Vector x = tabulated(50, [](std::size_t i) { return 0.08 * static_cast<double>(i); });
  for (const auto& [factor, exponent] : {std::pair{1.0, 0.5}, {2.0, 1.5}}) {
    Search search({x}, tabulated(50, [&, f = factor, e = exponent](std::size_t i) { return f * std::pow(x[i], e); }));
    api_ES_SetSolverParam(search.es, 500, 50, 1e-12, 1e-20);
    const Found best = search.run(4, ES_KIND_POWERS).best();
    ASSERT_EQ(best.idx.size(), 1u);
    EXPECT_NEAR(best.coef[1], exponent, 1e-6);
    EXPECT_NEAR(best.coef[0] / best.coef2[0], factor, 1e-6);
    EXPECT_NEAR(best.coef[2], 0.0, 1e-6);
  }
}

}  // namespace
