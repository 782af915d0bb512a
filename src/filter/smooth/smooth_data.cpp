// SPDX-License-Identifier: Apache-2.0
#include "filter/smooth/smooth_data.h"

#include <algorithm>
#include <cmath>

#include "filter/smooth/local_polynomial.h"

namespace Filter {

SmoothData::SmoothData(std::span<const double> values, std::size_t pieceDegree, double pieceTolerance)
    : degree(pieceDegree), tolerance(pieceTolerance) {
  for (const double value : values) data.push_back({value, value});
  fit();
  blend();
}

void SmoothData::result(double* out) const {
  std::ranges::transform(data, out, [](const Data_t& d) { return d.smooth; });
}

SmoothData::Piece_t SmoothData::piece(std::size_t first, std::size_t last) const {
  Piece_t result{first, last, {}};
  for (std::size_t i = first; i < last; ++i) result.line.push_back(data[i].value);
  if (last - first > degree + 1) fitPolynomial(std::vector<double>(result.line), degree, result.line);
  return result;
}

bool SmoothData::follows(const Piece_t& p) const {
  for (std::size_t i = p.first; i < p.last; ++i)
    if (!(std::abs(p.line[i - p.first] - data[i].value) <= tolerance)) return false;
  return true;
}

/// Degree + 1 points always; then twice as many while the line follows, then a half, a quarter, ... more.
SmoothData::Piece_t SmoothData::longestPiece(std::size_t first) const {
  const std::size_t left = data.size() - first;
  std::size_t length = std::min(degree + 1, left);
  Piece_t best = piece(first, first + length);
  while (length < left) {
    const std::size_t trial = std::min(2 * length, left);
    Piece_t longer = piece(first, first + trial);
    if (!follows(longer)) break;
    length = trial;
    best = std::move(longer);
  }
  for (std::size_t step = length / 2; step > 0; step /= 2) {
    if (length + step > left) continue;
    Piece_t longer = piece(first, first + length + step);
    if (!follows(longer)) continue;
    length += step;
    best = std::move(longer);
  }
  return best;
}

void SmoothData::fit() {
  while (pieces.empty() ? !data.empty() : pieces.back().last < data.size()) {
    if (pieces.empty()) {
      pieces.push_back(longestPiece(0));
      continue;
    }
    // Half of the last piece in common, or less where a piece from there on does not reach further.
    const std::size_t end = pieces.back().last;
    std::size_t common = (end - pieces.back().first) / 2;
    Piece_t next = longestPiece(end - common);
    while (next.last <= end) {
      common /= 2;
      next = longestPiece(end - common);
    }
    pieces.push_back(std::move(next));
  }
}

/// Over what two pieces have in common the weight goes from the one to the other by 3t^2 - 2t^3: a mean of two lines
/// that are within the tolerance is within it.
void SmoothData::blend() {
  for (const Piece_t& p : pieces) {
    const std::size_t common = &p == pieces.data() ? 0 : (&p)[-1].last - p.first;
    for (std::size_t i = p.first; i < p.last; ++i) {
      const std::size_t into = i - p.first;
      const double t = into < common ? static_cast<double>(into + 1) / static_cast<double>(common + 1) : 1.0;
      const double weight = t * t * (3.0 - 2.0 * t);
      data[i].smooth = weight < 1.0 ? data[i].smooth + weight * (p.line[into] - data[i].smooth) : p.line[into];
    }
  }
}

}  // namespace Filter
