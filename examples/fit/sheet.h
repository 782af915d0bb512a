// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// One line of a distribution's sheet.
struct SheetRow {
  std::string label;           ///< in English
  std::string formula;         ///< LaTeX for the typesetter
  std::vector<SheetRow> rows;  ///< for a line that is a sheet itself (the two models of a generalised distribution)
};

/// Takes the library's sheet apart: GBK bytes, \text{name}\begin{cases} label:&formula ... \end{cases}.
std::vector<SheetRow> readSheet(const std::string& gbkLatex);
