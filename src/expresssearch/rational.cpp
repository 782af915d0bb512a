// SPDX-License-Identifier: Apache-2.0
// Kind 0: y = (c0 + sum a_i x_i) / (1 + sum b_j x_j). Multiplied by the denominator it is linear in all parameters,
// y = c0 + sum a_i x_i - sum b_j (x_j y), and one set of normal equations fits a candidate.
#include <algorithm>
#include <cmath>

#include "expresssearch/express_search.h"
#include "expresssearch/kernels.h"
#include "expresssearch/kinds.h"
#include "expresssearch/products.h"
#include "expresssearch/small_solve.h"

namespace Search {
namespace {

constexpr double kWildCoefficient = 1e10;
constexpr std::size_t kBlock = 128;  // rows between two looks at the sum of squares

/// The candidates of one search. All working memory is made once.
class RationalFit {
 public:
  explicit RationalFit(ExpressSearch_c& search)
      : owner(search),
        transformation(Transformations::find(search.yTransform)),
        products(search.terms, search.termIdx, search.y),
        fitted(search.y.size()) {}

  void walkSplit(const Split& lists) {
    split = lists;
    const std::size_t n = 1 + split.numerator + split.denominator;
    chosen.assign(n, Products::kOnes);
    equations.assign(n * (n + 1), 0.0);
    coef.assign(n, 0.0);
    columns.assign(n, nullptr);
    walk(
        split, owner.termIdx.size(), [this] { return owner.stopped(); },
        [this](std::span<const uint32_t> positions) { candidate(positions); });
  }

 private:
  std::size_t top() const { return 1 + split.numerator; }

  void candidate(std::span<const uint32_t> positions) {
    choose(positions);
    solve();
    double largest = 0.0;
    for (const double c : coef) largest = std::max(largest, std::abs(c));
    if (largest > kWildCoefficient) return;
    for (std::size_t k = top(); k < coef.size(); ++k) coef[k] = -coef[k];
    evaluate(positions);
  }

  void choose(std::span<const uint32_t> positions) {
    for (std::size_t k = 0; k < positions.size(); ++k) {
      chosen[1 + k] = k < split.numerator ? products.term(positions[k]) : products.termTimesY(positions[k]);
      columns[1 + k] = products.column(products.term(positions[k]));
    }
  }

  void solve() {
    const std::size_t n = coef.size(), stride = n + 1;
    for (std::size_t i = 0; i < n; ++i) {
      for (std::size_t j = 0; j <= i; ++j)
        equations[i * stride + j] = equations[j * stride + i] = products(chosen[i], chosen[j]);
      equations[i * stride + n] = products(products.y(), chosen[i]);
    }
    smallSolve(equations, coef);
  }

  /// Fitted values, the sum of squares and the verdict. A sum beyond the bound decides early; only a refusal could
  /// still change what is counted, so that the values go on where the transformation has one.
  void evaluate(std::span<const uint32_t> positions) {
    if (transformation == nullptr) return;
    const std::span<const double> all = coef, data = owner.originalY;
    const LinearForm over{all[0], all.subspan(1, split.numerator), columns.data() + 1};
    const LinearForm under{1.0, all.subspan(top()), columns.data() + top()};
    const double bound = owner.store.errorBound(owner.limits);
    LaneSums sums{};
    bool lost = false;
    for (std::size_t from = 0; from < fitted.size(); from += kBlock) {
      const std::span<double> block = std::span(fitted).subspan(from, std::min(kBlock, fitted.size() - from));
      rationalValues(over, under, from, block);
      if (transformation->everRefuses() && transformation->refusesAny(block)) return;
      if (lost) continue;
      transformation->toData(block, owner.yScaling);
      addSquaredError(data.subspan(from, block.size()), block, sums);
      lost = bound < kNoError && total(sums) > bound;
      if (lost && !transformation->everRefuses()) break;
    }
    owner.store.countCandidate();
    if (!lost)
      owner.keep(judge(owner.target(), fitted, total(sums)), [&](Result& result) { record(result, positions); });
  }

  void record(Result& result, std::span<const uint32_t> positions) const {
    result.c0 = coef[0];
    result.d0 = 1.0;
    result.numCoef.assign(coef.begin() + 1, coef.begin() + top());
    result.denCoef.assign(coef.begin() + top(), coef.end());
    for (std::size_t k = 0; k < positions.size(); ++k)
      (k < split.numerator ? result.numIdx : result.denIdx).push_back(owner.termIdx[positions[k]]);
  }

  ExpressSearch_c& owner;
  const Transformation* transformation;
  Products products;
  Split split{};
  std::vector<std::size_t> chosen;     ///< columns of the products, in the order of the parameters
  std::vector<double> equations;       ///< rows of the normal equations, each with its right side
  std::vector<double> coef;            ///< c0, a, b
  std::vector<const double*> columns;  ///< terms, in the order of the parameters
  std::vector<double> fitted;
};

/// Denominators of `first` to `last` terms, as far as the terms suffice.
void searchSplits(ExpressSearch_c& search, int64_t first, int64_t last) {
  const auto count = static_cast<int64_t>(search.termIdx.size()), most = int64_t{search.maxTerms} - 1;
  first = std::max({first, int64_t{0}, most - count});
  last = std::min({last, most, count});
  if (first > last) return;
  RationalFit fit(search);
  for (int64_t i = first; i <= last && !search.stopped(); ++i)
    fit.walkSplit({static_cast<std::size_t>(most - i), static_cast<std::size_t>(i)});
}

}  // namespace

void searchRational(ExpressSearch_c& search) { searchSplits(search, 0, search.maxTerms); }

void evaluateRational(const SearchSettings& data, const Result& result, std::span<double> out) {
  std::vector<const double*> columns;
  for (const auto* indices : {&result.numIdx, &result.denIdx})
    for (const int32_t index : *indices) columns.push_back(data.terms[static_cast<std::size_t>(index)].data());
  rationalValues({result.c0, result.numCoef, columns.data()},
                 {result.d0, result.denCoef, columns.data() + result.numIdx.size()}, 0, out);
}

void searchRationalStage(ExpressSearch_c& search) {
  const int64_t half = search.maxTerms / 2;
  if (search.maxTerms < 5)
    searchSplits(search, 0, search.maxTerms);
  else
    searchSplits(search, half - 1, half + 1);
}

}  // namespace Search
