// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace NetWork {

/// A class value of a feature: truncated to 8 bits; 0 for NaN and what no 64-bit integer holds.
uint8_t classValueOf(double value);

/// The columns of a row, told apart by their flags: set for a class feature.
struct Row {
  Row() = default;
  Row(const std::vector<bool>& flags, const double* values);

  std::vector<uint8_t> classes;
  std::vector<double> reals;
};

/// What a tree is grown from, feature by feature.
struct Samples {
  std::size_t count = 0;
  std::vector<std::vector<uint8_t>> classes;  ///< [feature][sample]
  std::vector<std::vector<double>> reals;     ///< [feature][sample]
  std::vector<uint8_t> classLabels;           ///< 0 or 1; of a tree with class labels
  std::vector<double> realLabels;             ///< of a tree with real labels
};

}  // namespace NetWork
