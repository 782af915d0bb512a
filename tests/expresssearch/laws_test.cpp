// SPDX-License-Identifier: Apache-2.0
// Laws that a search has to find again from samples, as a user would go about it: a few base functions, their powers
// and products, budgets from small to large until a fit is exact. A law counts as found when it also holds on new
// points. The four quotients name their terms: those must stand among the first five under noise.
#include "expresssearch/host.h"
#include "support/csv.h"

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
        double& a = stack.back();
        a = token == "sin" ? std::sin(a) : token == "cos" ? std::cos(a) : std::log(a);
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

/// All products of powers of the inputs with exponents from `least` on, whose sizes sum to at most `degree`.
std::vector<Vector> monomials(const std::vector<Vector>& inputs, int degree, int least) {
  std::vector<std::pair<Vector, int>> all{{Vector(inputs.front().size(), 1.0), degree}};  // and what is left
  for (const Vector& input : inputs) {
    std::vector<std::pair<Vector, int>> next;
    for (const auto& [value, left] : all)
      for (int e = std::max(least, -left); e <= left; ++e)
        next.emplace_back(tabulated(input.size(), [&](std::size_t i) { return value[i] * std::pow(input[i], e); }),
                          left - std::abs(e));
    all = next;
  }
  std::vector<Vector> out;
  for (const auto& [value, left] : all)
    if (left < degree) out.push_back(value);
  return out;
}

struct Sample {
  std::vector<Vector> inputs, terms;
  Vector y;

  Sample(const Cells& law, std::size_t rows, uint32_t seed) {
    std::mt19937 rng(seed);
    for (int k = 0; k < std::stoi(law[1]); ++k)
      inputs.push_back(draws(rng, rows, std::stod(law[2]), std::stod(law[3])));
    std::vector<Vector> bases;
    for (const std::string& base : split(law[6], ';')) bases.push_back(evaluate(base, inputs));
    terms = monomials(bases, std::stoi(law[4]), std::stoi(law[5]));
    y = evaluate(law[7], inputs);
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

void expectFound(const Cells& law) {
  const Sample data(law, 60, 1), fresh(law, 60, 2);
  const double scale = squaredError(data.y, Vector(data.y.size(), 0.0));
  for (int32_t maxTerms = 1; maxTerms <= 7; ++maxTerms) {
    Search search(data.terms, data.y);
    if (search.run(maxTerms).best().error() > 1e-16 * scale) continue;
    const Search there(fresh.terms, fresh.y);
    EXPECT_LT(squaredError(there.values(search.best().handle), fresh.y), 1e-10 * scale);
    return;
  }
  ADD_FAILURE() << "not found";
}

void expectFoundUnderNoise(const Cells& law) {
  Sample data(law, 100, 3);
  const auto over = data.places(law[8]), under = data.places(law[9]);
  const auto maxTerms = static_cast<int32_t>(1 + over.size() + under.size());
  std::mt19937 rng(3);
  std::normal_distribution<double> noise(0.0, 0.01);
  for (double& v : data.y) v *= 1.0 + noise(rng);
  const double best = Search(data.terms, data.y).run(maxTerms).best().error();
  Search all(data.terms, data.y);
  const std::vector<Found> ranking = all.limits(2.0 * best).run(maxTerms).ranking();
  const auto isLaw = [&](const Found& found) { return found.idx == over && found.denIdx == under; };
  const auto place = std::find_if(ranking.begin(), ranking.end(), isLaw) - ranking.begin();
  EXPECT_LT(place, std::min<std::ptrdiff_t>(5, std::ssize(ranking)));
}

TEST(Laws, AreFoundHoldOnNewPointsAndBearNoise) {
  for (const Cells& law : readCsv("expresssearch/laws.csv")) {
    SCOPED_TRACE(law[0]);
    expectFound(law);
    if (law.size() > 9) expectFoundUnderNoise(law);
  }
}

}  // namespace
