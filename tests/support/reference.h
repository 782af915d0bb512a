// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <iostream>

#include "support/reference_rows.h"

/// Holds `call(row)` against every row and prints the largest and the median error and the worst row.
template <class Call>
void checkReference(const std::string& path, Call&& call) {
  std::vector<double> errors;
  double worst = -1;
  std::string worstRow;
  for (const ReferenceRow& row : readReference(path)) {
    const double error = ulpError(call(row), row.expected);
    EXPECT_LE(error, row.ulps) << path << ": " << row.text << "\n  got " << std::hexfloat << call(row);
    errors.push_back(error);
    if (error > worst) {
      worst = error;
      worstRow = row.text;
    }
  }
  if (errors.empty()) return;
  std::nth_element(errors.begin(), errors.begin() + static_cast<std::ptrdiff_t>(errors.size() / 2), errors.end());
  std::cout << path << ": " << errors.size() << " rows, largest " << worst << " ulp, median "
            << errors[errors.size() / 2] << " ulp; worst: " << worstRow << "\n";
}
