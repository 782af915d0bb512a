// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "csv_column.h"
#include "fit_run.h"
#include "options.h"

/// What a report tells.
struct Results {
  CsvColumn column;
  std::vector<Fit> fits;  ///< the smallest error first, at least one
  std::vector<std::string> unfitted;
  bool stopped = false;  ///< the user ended the fit early
  double seconds = 0;
};

/// The letters of a distribution's parameters in the order of the list: a, b, c, d, f, g (no e, Euler's number).
char parameterLetter(size_t index);

/// The page: one HTML text that needs nothing beside it.
std::string reportPage(const Results& results, const Options& options);
