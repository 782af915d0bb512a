// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace PDF {

/// A line of a sheet ends in four backslashes between line feeds.
inline constexpr const char* kLineEnd = "\n\\\\\\\\\n";

/// What a table row says in its LaTeX sheet; empty texts leave their line out.
struct SheetTexts {
  std::string_view densityLabel, density, distribution, mean, variance, range;
};

/// Writes the frame with the texts and the values of the parameters a, b, c, ... into `out`, in UTF-8.
std::string& writeSheet(std::string& out, std::string_view name, const SheetTexts& texts,
                        std::span<const double> params);

/// Joins the sheet of an inner distribution with `innerCount` parameters and a wrapper's own sheet, in whose texts
/// "#a", "#b", ... stand for its `ownCount` parameters. These get the letters behind the inner ones, without e.
std::string joinSheets(std::string_view name, std::string inner, std::size_t innerCount, std::string own,
                       std::size_t ownCount);

}  // namespace PDF
