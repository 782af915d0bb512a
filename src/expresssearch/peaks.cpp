// SPDX-License-Identifier: Apache-2.0
// Kind 16: the columns x and y, k peaks of which g are Gaussian, the others Lorentzian, for every g below k.
#include "expresssearch/express_search.h"
#include "expresssearch/kinds.h"
#include "expresssearch/mul_peak2d.h"

namespace Search {

void searchPeaks(ExpressSearch_c& search) {
  if (search.columns.size() != 2 || search.maxTerms < 4 || search.maxTerms % 3 != 1) return;
  const std::vector<double>&x = search.columns[0], &y = search.columns[1];
  if (!fitsRows(search.maxTerms, x.size())) return;
  const Target target = targetOf(y);
  std::vector<double> fitted(y.size());
  const auto peaks = static_cast<std::size_t>(search.maxTerms) / 3;
  for (std::size_t g = 0; g < peaks && !search.stopped(); ++g) {
    MulPeak2D_c model(x, y, g, peaks - g);
    Solver::SolverByDogLeg_c& solver = search.makeSolver(search.maxTerms, static_cast<int32_t>(x.size()));
    const double error =
        model.fit(solver, search.rng, search.bird, search.limits.error, [&] { return search.stopped(); });
    if (!(error <= search.limits.error) && !search.store.reaches(error)) continue;
    model.values(model.params(), x, fitted);
    search.judgeAndKeep(target, fitted, [&](Result& result) {
      const auto from = model.params().begin(), cut = from + static_cast<std::ptrdiff_t>(3 * g);
      result.numCoef.assign(from, cut);
      result.denCoef.assign(cut, model.params().end() - 1);
      result.c0 = model.params().back();
    });
  }
}

void evaluatePeaks(const SearchSettings& data, const Result& result, std::span<double> out) {
  std::vector<double> params = result.numCoef;
  params.insert(params.end(), result.denCoef.begin(), result.denCoef.end());
  params.push_back(result.c0);
  MulPeak2D_c({}, {}, result.numCoef.size() / 3, result.denCoef.size() / 3).values(params, data.columns[0], out);
}

}  // namespace Search
