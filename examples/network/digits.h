// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

constexpr int32_t kSide = 8;
constexpr int32_t kPixels = kSide * kSide;
constexpr int32_t kClasses = 10;

/// Pictures of digits and what they show.
struct Digits {
  std::vector<double> pixels;   ///< [count*kPixels] 0 white, 1 black
  std::vector<double> targets;  ///< [count*kClasses] 1 at the digit
  std::vector<int> labels;

  int32_t count() const { return static_cast<int32_t>(labels.size()); }
  const double* picture(int32_t i) const { return &pixels[static_cast<size_t>(i) * kPixels]; }
  void add(const double* picture, int label);
};

/// Rows to learn from, rows by which the best weights are chosen, and rows that nothing but the last test sees.
struct Parts {
  Digits train, choose, test;
};

/// Reads the CSV file; throws Complaint, with file, line and value, for what is no picture.
Digits readDigits(const std::string& path);

/// Splits at random: `testShare` for the test, 15 % for the choice, the rest for the training.
Parts split(const Digits& all, double testShare, uint32_t seed);
