// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "pdf/table.h"

namespace PDF {

template <class Self>
std::shared_ptr<BasePDFFun> makeLaw(const PlainRow& row) {
  auto fun = std::make_shared<Self>();
  fun->row = &row;
  fun->pdfType = static_cast<uint32_t>(row.code);
  if constexpr (requires { Self::kReportedCode; }) fun->pdfType = Self::kReportedCode;
  fun->name = row.name;
  fun->params = row.defaults.list();
  fun->updateParam();
  return fun;
}

/// The row of a class that holds its defaults `kDefaults`, the texts of its sheet `kSheet`, the bounds and the start of
/// a fit `range(sample, fitRange)` and, where there is one, the line through its quantiles `kQuantileStart` and its
/// turn `kTurn`.
template <class Self>
consteval PlainRow row(int32_t code, std::string_view name) {
  PlainRow made = {code, name, Self::kDefaults, makeLaw<Self>, Self::kSheet, Self::range};
  if constexpr (requires { Self::kQuantileStart; }) made.quantileStart = Self::kQuantileStart;
  if constexpr (requires { Self::kTurn; }) made.turn = Self::kTurn;
  const SheetTexts& t = made.texts;
  if (code >= kWrapperStep || name.empty() || made.defaults.size == 0) throw "a row without code, name or parameters";
  for (const std::string_view text : {t.densityLabel, t.density, t.distribution, t.range})
    if (text.empty()) throw "a sheet without its texts";
  return made;
}

}  // namespace PDF
