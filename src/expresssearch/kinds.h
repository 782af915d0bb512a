// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

#include "expresssearch/walk.h"
#include "frame/numbers.h"

namespace Search {

class ExpressSearch_c;
class SearchResultByTwoIndex_c;
struct SearchSettings;

/// One row a model kind: how it searches, and how a result of it is evaluated.
struct KindRow {
  int code;
  bool ofTerms;  ///< over terms and y, with a transformation; otherwise over the raw columns
  void (*search)(ExpressSearch_c&);
  /// Values of the model on all rows of the data, before the step back of the transformation.
  void (*evaluate)(const SearchSettings&, const SearchResultByTwoIndex_c&, std::span<double> out);
};

/// Null for a code without a model.
const KindRow* findKind(int code);

/// Whether an iterated fit is tried. Fewer rows than parameters leave it open; beyond a few parameters there is no
/// point in that, and a budget by mistake would take all memory.
inline bool fitsRows(int32_t params, std::size_t rows) {
  constexpr int32_t kAlwaysTried = 64;
  return params <= kAlwaysTried || static_cast<std::size_t>(params) <= rows;
}

/// The values of a result that the data does not serve.
inline void fillNaN(std::span<double> out) { std::fill(out.begin(), out.end(), kNaN); }

/// Rows of the data that results of a kind are evaluated on.
std::size_t rowsOf(const SearchSettings& data, bool ofTerms);
/// Fitted values of a result in the scale of the data. NaN where the data lacks what the result names, and at points
/// that the transformation refuses.
void calExpress(const SearchSettings& data, const SearchResultByTwoIndex_c& result, std::span<double> out);
/// The same for all rows of the data.
void calExpress(const SearchSettings& data, const SearchResultByTwoIndex_c& result, double* out);

// The searches of the table. The automatic search has its own range of denominators.
void searchRational(ExpressSearch_c& search);
void searchRationalStage(ExpressSearch_c& search);
void searchPowers(ExpressSearch_c& search);
void searchPeaks(ExpressSearch_c& search);
void searchSurface(ExpressSearch_c& search);
void searchPowerSurface(ExpressSearch_c& search);

void evaluateRational(const SearchSettings& data, const SearchResultByTwoIndex_c& result, std::span<double> out);
void evaluatePowers(const SearchSettings& data, const SearchResultByTwoIndex_c& result, std::span<double> out);
void evaluatePeaks(const SearchSettings& data, const SearchResultByTwoIndex_c& result, std::span<double> out);
void evaluateSurface(const SearchSettings& data, const SearchResultByTwoIndex_c& result, std::span<double> out);
void evaluatePowerSurface(const SearchSettings& data, const SearchResultByTwoIndex_c& result, std::span<double> out);

}  // namespace Search
