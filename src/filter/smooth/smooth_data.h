// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "frame/base_data.h"

namespace Filter {

/// A smoothing line through evenly spaced samples, nowhere farther than a tolerance from them: polynomials of one
/// degree, each over as many points as it can follow, neighbours overlapping and blended.
class SmoothData final : public BaseData {
 public:
  SmoothData(std::span<const double> values, std::size_t degree, double tolerance);

  std::size_t size() const { return data.size(); }
  void result(double* out) const;

 private:
  /// A polynomial over the samples first..last-1.
  struct Piece_t {
    std::size_t first, last;
    std::vector<double> line;
  };
  struct Data_t {
    double value, smooth;
  };

  Piece_t piece(std::size_t first, std::size_t last) const;
  bool follows(const Piece_t& piece) const;
  Piece_t longestPiece(std::size_t first) const;
  void fit();
  void blend();

  std::size_t degree;
  double tolerance;
  std::vector<Piece_t> pieces;
  std::vector<Data_t> data;
};

}  // namespace Filter
