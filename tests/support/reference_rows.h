// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// One row of a reference table: a case name, its arguments, the expected value and the tolerance in ulps.
struct ReferenceRow {
  std::string name;
  std::vector<double> arguments;
  double expected;
  double ulps;
  std::string text;
};

/// Reads tests/reference/<path>. A row is `name,arg...,expected,ulps` with the arguments as hexadecimal floats and the
/// expected value in decimal digits (inf, -inf and nan as such).
std::vector<ReferenceRow> readReference(const std::string& path);

/// Distance in units in the last place of the expected value; 0 for equal infinities and for two NaNs.
double ulpError(double value, double expected);
