// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <orvane/expression_search.h>

#include <string>
#include <vector>

#include "terms.h"

/// Data, and how to look for its law.
struct Study {
  std::string id, title;
  std::string about;    ///< HTML: what was measured, by whom
  std::string known{};  ///< LaTeX: the law as the literature has it; empty where there is none

  std::vector<Quantity> inputs{};
  Quantity output{};
  uint8_t kind = ES_KIND_RATIONAL;
  int degree = 3;                   ///< of the terms
  bool logarithms = false;          ///< terms of the logarithms of the inputs
  int least = 1, most = 6;          ///< parameters of a formula
  bool logX = false, logY = false;  ///< axes of the figure

  Columns x{};
  Vector y{};
  Vector units{};         ///< what the inputs are divided by for free exponents, which start from 1
  double outputUnit = 1;  ///< and the output
};

/// The shipped studies, their data read from a folder; all, or the one that is named. Throws Complaint.
std::vector<Study> shippedStudies(const std::string& folder, const std::string& only);

/// A study of the user's own: the last column of a file against the others. Throws Complaint.
Study ownStudy(const std::string& path, uint8_t kind, int degree, int most);
