// SPDX-License-Identifier: Apache-2.0
// Kinds 1 and 2: rational functions of powers with free exponents, each candidate fitted by iteration from ones.
#include <algorithm>

#include "expresssearch/express_search.h"
#include "expresssearch/kinds.h"
#include "expresssearch/power_ratio.h"

namespace Search {
namespace {

/// The allowed splits of a budget: all four parameters at least, two for the constants and for each power.
std::vector<Split> splitsOf(const ExpressSearch_c& search) {
  std::vector<Split> splits;
  const int64_t budget = search.maxTerms;
  if (budget < 4) return splits;
  const auto add = [&](int64_t numerator, int64_t denominator) {
    const auto count = static_cast<int64_t>(search.termIdx.size());
    if (numerator <= count && denominator <= count)
      splits.push_back({static_cast<std::size_t>(numerator), static_cast<std::size_t>(denominator)});
  };
  if (search.kind == 1) {
    if (budget % 2 == 0)
      for (int64_t i = 0; i < budget / 2 && i <= static_cast<int64_t>(search.termIdx.size()); ++i)
        add(budget / 2 - 1 - i, i);
  } else {
    for (int64_t i = 1; 2 * i + 3 < budget && i <= static_cast<int64_t>(search.termIdx.size()); ++i)
      add(budget - 2 * i - 2, i);
  }
  return splits;
}

PowerRatio::Columns columnsOf(const Vectors& terms, std::span<const int32_t> indices) {
  PowerRatio::Columns columns;
  for (const int32_t index : indices) columns.push_back(terms[static_cast<std::size_t>(index)].data());
  return columns;
}

/// One candidate: its lists, fitted.
class PowerFit {
 public:
  PowerFit(ExpressSearch_c& search, const Split& lists, std::span<const uint32_t> positions) : owner(search) {
    for (std::size_t k = 0; k < positions.size(); ++k)
      (k < lists.numerator ? numIdx : denIdx).push_back(static_cast<int32_t>(owner.termIdx[positions[k]]));
  }

  void run() {
    const std::size_t rows = owner.y.size();
    const PowerRatio model(columnsOf(owner.terms, numIdx), owner.kind == 1, columnsOf(owner.terms, denIdx), rows);
    Solver::SolverByDogLeg_c& solver =
        owner.makeSolver(static_cast<int32_t>(model.size()), static_cast<int32_t>(rows + 1));
    solver.resFun = [&](std::span<const double> params, std::span<double> residuals) {
      model.values(params, residuals.first(rows));
      for (std::size_t i = 0; i < rows; ++i) residuals[i] -= owner.y[i];
      residuals[rows] = model.gauge(params);
    };
    solver.jacFun = [&](std::span<const double> params, std::span<double> jacobian) {
      model.jacobian(params, jacobian);
      model.gaugeGradient(params, jacobian.last(model.size()));
    };
    solver.solve(std::vector<double>(model.size(), 1.0));
    judge(model, solver.var);
  }

 private:
  void judge(const PowerRatio& model, std::span<const double> params) {
    const Transformation* transformation = Transformations::find(owner.yTransform);
    if (transformation == nullptr) return;
    std::vector<double> fitted(owner.y.size());
    model.values(params, fitted);
    if (transformation->refusesAny(fitted)) return;
    transformation->toData(fitted, owner.yScaling);
    const auto bottom = params.begin() + static_cast<std::ptrdiff_t>(model.bottomAt());
    owner.judgeAndKeep(owner.target(), fitted, [&](Result& result) {
      result.c0 = params.front();
      result.d0 = *bottom;
      result.numCoef.assign(params.begin() + 1, bottom);
      result.denCoef.assign(bottom + 1, params.end());
      result.numIdx = numIdx;
      result.denIdx = denIdx;
    });
  }

  ExpressSearch_c& owner;
  std::vector<int32_t> numIdx, denIdx;
};

}  // namespace

void searchPowers(ExpressSearch_c& search) {
  std::erase_if(search.termIdx, [&](uint32_t index) { return !search.termMask[index]; });
  for (const Split& split : splitsOf(search))
    walk(
        split, search.termIdx.size(), [&] { return search.stopped(); },
        [&](std::span<const uint32_t> positions) { PowerFit(search, split, positions).run(); });
}

void evaluatePowers(const SearchSettings& data, const Result& result, std::span<double> out) {
  const PowerRatio model(columnsOf(data.terms, result.numIdx), result.kind == 1, columnsOf(data.terms, result.denIdx),
                         out.size());
  std::vector<double> params{result.c0};
  params.insert(params.end(), result.numCoef.begin(), result.numCoef.end());
  params.push_back(result.d0);
  params.insert(params.end(), result.denCoef.begin(), result.denCoef.end());
  model.values(params, out);
}

}  // namespace Search
