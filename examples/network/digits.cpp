// SPDX-License-Identifier: Apache-2.0
#include "digits.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

#include "complaint.h"
#include "csv.h"

namespace {

constexpr int kBlack = 16;
constexpr int32_t kLeastRows = 20;
constexpr double kChooseShare = 0.15;

/// An integer from 0 to `most`, or -1.
int integerIn(const std::string& text, int most) {
  const double value = numberIn(text).value_or(-1);
  return value == std::floor(value) && value >= 0 && value <= most ? static_cast<int>(value) : -1;
}

}  // namespace

void Digits::add(const double* picture, int label) {
  pixels.insert(pixels.end(), picture, picture + kPixels);
  targets.resize(targets.size() + kClasses, 0.0);
  targets[targets.size() - static_cast<size_t>(kClasses - label)] = 1.0;
  labels.push_back(label);
}

Digits readDigits(const std::string& path) {
  CsvReader reader(path, ',');
  Digits digits;
  std::vector<std::string> cells;
  for (bool first = true; reader.next(cells); first = false) {
    if (cells.size() != kPixels + 1)
      reader.complain("has " + std::to_string(cells.size()) + " values, 64 pixels and a digit are wanted");
    if (first && integerIn(cells[0], kBlack) < 0) continue;  // the header
    double picture[kPixels];
    for (size_t k = 0; k < kPixels; ++k) {
      const int value = integerIn(cells[k], kBlack);
      if (value < 0)
        reader.complain(inQuotes(cells[k]) + " is no integer from 0 to 16 (column " + std::to_string(k + 1) + ")");
      picture[k] = static_cast<double>(value) / kBlack;
    }
    const int label = integerIn(cells[kPixels], kClasses - 1);
    if (label < 0) reader.complain(inQuotes(cells[kPixels]) + " is no digit (column 65)");
    digits.add(picture, label);
  }
  if (digits.count() < kLeastRows)
    throw Complaint(path + ": has " + std::to_string(digits.count()) + " pictures, at least " +
                    std::to_string(kLeastRows) + " are wanted");
  return digits;
}

Parts split(const Digits& all, double testShare, uint32_t seed) {
  std::vector<int32_t> order(static_cast<size_t>(all.count()));
  std::iota(order.begin(), order.end(), 0);
  std::shuffle(order.begin(), order.end(), std::mt19937(seed));
  const auto rows = [&](double share) { return std::max<int64_t>(1, std::llround(share * all.count())); };
  const int64_t test = rows(testShare), choose = rows(kChooseShare);
  Parts parts;
  for (int64_t i = 0; i < all.count(); ++i) {
    Digits& part = i < test ? parts.test : i < test + choose ? parts.choose : parts.train;
    part.add(all.picture(order[static_cast<size_t>(i)]),
             all.labels[static_cast<size_t>(order[static_cast<size_t>(i)])]);
  }
  return parts;
}
