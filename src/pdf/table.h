// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "frame/code_table.h"
#include "pdf/base_pdf_fun.h"
#include "pdf/fit_range.h"
#include "pdf/sheet.h"

namespace PDF {

/// Up to four parameter values, written as a braced list in a row.
struct Defaults {
  template <class... Values>
  constexpr Defaults(Values... v) : values{static_cast<double>(v)...}, size(sizeof...(v)) {}

  std::vector<double> list() const { return {values.begin(), values.begin() + static_cast<std::ptrdiff_t>(size)}; }

  std::array<double, 4> values;
  std::size_t size;
};

/// A plain distribution: everything the library knows of it besides its two formulas.
struct PlainRow {
  int32_t code;
  std::string_view name;
  Defaults defaults;
  std::shared_ptr<BasePDFFun> (*make)(const PlainRow&);
  SheetTexts texts;
  void (*range)(const Sample&, const FitRange&);            ///< bounds and start from the sample's extent
  QuantileStart (*quantileStart)(const Sample&) = nullptr;  ///< tried first where there is one
  int turn = 0;  ///< of a distribution whose value is cheap: when a fit hands it out, from 1; 0 for the others
};

/// A wrapper that generalises any plain distribution.
struct GenRow {
  int32_t k;
  std::string_view prefix;
  Defaults defaults;
  std::shared_ptr<BasePDFFun> (*make)(const GenRow&, std::shared_ptr<BasePDFFun> inner);
  SheetTexts texts;  ///< "#a" stands for the first own parameter
  Defaults lower, upper, start;
};

constexpr int32_t kWrapperStep = 10000;  ///< a wrapper's code is k * kWrapperStep + plain code

/// @{ The rows of one family, beside its classes in laws/.
std::span<const PlainRow> boundedLaws();
std::span<const PlainRow> countingLaws();
std::span<const PlainRow> gammaLaws();
std::span<const PlainRow> locationLaws();
std::span<const PlainRow> normalLaws();
std::span<const PlainRow> tailLaws();
/// @}

const JoinedCodeTable<PlainRow>& plainLaws();

/// The codes with a turn, in its order.
const std::vector<int32_t>& cheapCodes();

std::span<const GenRow> genRows();  ///< in the order of the list of all codes

}  // namespace PDF
