// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "expresssearch/walk.h"

namespace Search {

class ExpressSearch_c;
class SearchResultByTwoIndex_c;
struct SearchSettings;

/// One row a model kind: how it searches, and how a result of it is evaluated.
struct KindRow {
  int code;
  bool ofTerms;  ///< over terms and y, with a transformation; otherwise over the raw columns
  void (*search)(ExpressSearch_c&);
  /// Fitted values on the data of `settings`, as many as out has; NaN where the data does not serve the result.
  void (*evaluate)(const SearchSettings&, const SearchResultByTwoIndex_c&, std::span<double> out);
};

/// Null for a code without a model.
const KindRow* findKind(int code);

/// Values of a result on data; as many as the data has rows.
void calExpress(const SearchSettings& settings, const SearchResultByTwoIndex_c& result, double* out);
std::size_t rowsOf(const SearchSettings& settings, const KindRow& row);

// The searches of the table. The automatic search has its own range of denominators.
void searchRational(ExpressSearch_c& search);
void searchRationalStage(ExpressSearch_c& search);
void searchPowers(ExpressSearch_c& search);
void searchPeaks(ExpressSearch_c& search);
void searchSurface(ExpressSearch_c& search);
void searchPowerSurface(ExpressSearch_c& search);

void evaluateRational(const SearchSettings& settings, const SearchResultByTwoIndex_c& result, std::span<double> out);
void evaluatePowers(const SearchSettings& settings, const SearchResultByTwoIndex_c& result, std::span<double> out);
void evaluatePeaks(const SearchSettings& settings, const SearchResultByTwoIndex_c& result, std::span<double> out);
void evaluateSurface(const SearchSettings& settings, const SearchResultByTwoIndex_c& result, std::span<double> out);
void evaluatePowerSurface(const SearchSettings& settings, const SearchResultByTwoIndex_c& result,
                          std::span<double> out);

}  // namespace Search
