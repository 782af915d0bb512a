// SPDX-License-Identifier: Apache-2.0
#include "digits.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <random>
#include <string_view>

#include "complaint.h"

namespace {

constexpr int kBlack = 16;
constexpr int32_t kLeastRows = 20;
constexpr double kChooseShare = 0.15;

std::vector<std::string_view> cellsOf(std::string_view line) {
  std::vector<std::string_view> cells;
  for (;;) {
    const size_t end = line.find(',');
    cells.push_back(line.substr(0, end));
    if (end == std::string_view::npos) break;
    line.remove_prefix(end + 1);
  }
  return cells;
}

/// A whole number from 0 to `most`, or -1.
int wholeNumber(std::string_view text, int most) {
  int value = -1;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size() && value >= 0 && value <= most ? value : -1;
}

}  // namespace

void Digits::add(const double* picture, int label) {
  pixels.insert(pixels.end(), picture, picture + kPixels);
  targets.resize(targets.size() + kClasses, 0.0);
  targets[targets.size() - static_cast<size_t>(kClasses - label)] = 1.0;
  labels.push_back(label);
}

Digits readDigits(const std::string& path) {
  if (std::error_code error; std::filesystem::is_directory(path, error)) throw Complaint(path + ": is a directory");
  std::ifstream file(path, std::ios::binary);
  if (!file) throw Complaint(path + ": " + std::strerror(errno));
  Digits digits;
  std::string line;
  for (size_t number = 1; std::getline(file, line); ++number) {
    if (line.ends_with('\r')) line.pop_back();
    if (line.empty()) continue;
    const auto complain = [&](const std::string& what) {
      throw Complaint(path + ":" + std::to_string(number) + ": " + what);
    };
    const auto cells = cellsOf(line);
    if (cells.size() != kPixels + 1)
      complain("has " + std::to_string(cells.size()) + " values, 64 pixels and a digit are wanted");
    if (number == 1 && wholeNumber(cells[0], kBlack) < 0) continue;  // the header
    double picture[kPixels];
    for (size_t k = 0; k < kPixels; ++k) {
      const int value = wholeNumber(cells[k], kBlack);
      if (value < 0)
        complain("\"" + std::string(cells[k]) + "\" is no whole number from 0 to 16 (column " + std::to_string(k + 1) +
                 ")");
      picture[k] = static_cast<double>(value) / kBlack;
    }
    const int label = wholeNumber(cells[kPixels], kClasses - 1);
    if (label < 0) complain("\"" + std::string(cells[kPixels]) + "\" is no digit (column 65)");
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
