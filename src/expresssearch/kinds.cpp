// SPDX-License-Identifier: Apache-2.0
#include "expresssearch/kinds.h"

#include <algorithm>

#include "expresssearch/express_search.h"
#include "frame/code_table.h"

namespace Search {
namespace {

constexpr KindRow kKinds[] = {
    {0, true, searchRational, evaluateRational},
    {1, true, searchPowers, evaluatePowers},
    {2, true, searchPowers, evaluatePowers},
    {16, false, searchPeaks, evaluatePeaks},
    {60, false, searchSurface, evaluateSurface},
    {61, false, searchPowerSurface, evaluatePowerSurface},
    {62, false, searchPowerSurface, evaluatePowerSurface},
};
using Kinds = CodeTable<kKinds>;

/// Whether the data has every term that a result names, in full length.
bool serves(const Vectors& vectors, std::span<const int32_t> indices, std::size_t rows) {
  return std::ranges::all_of(indices, [&](int32_t index) {
    return index >= 0 && static_cast<std::size_t>(index) < vectors.size() &&
           vectors[static_cast<std::size_t>(index)].size() >= rows;
  });
}

}  // namespace

const KindRow* findKind(int code) { return Kinds::find(code); }

std::size_t rowsOf(const SearchSettings& data, bool ofTerms) {
  const Vectors& vectors = ofTerms ? data.terms : data.columns;
  if (!vectors.empty()) return vectors.front().size();
  return ofTerms ? data.originalY.size() : 0;
}

void calExpress(const SearchSettings& data, const Result& result, std::span<double> out) {
  const KindRow* row = findKind(result.kind);
  if (row == nullptr) return;
  const bool usable =
      row->ofTerms ? serves(data.terms, result.numIdx, out.size()) && serves(data.terms, result.denIdx, out.size())
                   : std::ranges::all_of(data.columns, [&](const auto& c) { return c.size() == out.size(); });
  if (!usable) return fillNaN(out);
  row->evaluate(data, result, out);
  const Transformation* transformation = Transformations::find(result.transform);
  if (!row->ofTerms || transformation == nullptr) return;
  for (double& v : out) v = transformation->refuses(v) ? kNaN : transformation->toData(v, result.scaling());
}

void calExpress(const SearchSettings& data, const Result& result, double* out) {
  const KindRow* row = findKind(result.kind);
  if (row != nullptr) calExpress(data, result, {out, rowsOf(data, row->ofTerms)});
}

}  // namespace Search
