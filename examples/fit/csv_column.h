// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "csv.h"
#include "options.h"

/// One column of a file.
struct CsvColumn {
  std::string name;  ///< from the header, else "column 2"
  std::vector<double> values;
};

/// Reads the column that the options name. Throws Complaint, with file, line and value, for what is no finite number.
CsvColumn readColumn(const Options& options);
