// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <utility>

#include "prog/line/base_var.h"
#include "prog/line/term_map.h"

namespace QuadProg {

using LineProg::BaseVar, LineProg::EquVar, LineProg::TermMap;
using enum LineProg::VarKind;
using enum LineProg::Relation;

/// constTerm + sum of linear terms + sum of quadratic ones, over variables by their numbers.
class QuadExpress {
 public:
  using Pair = std::pair<int32_t, int32_t>;

  virtual ~QuadExpress() = default;

  double constTerm = 0;
  TermMap<int32_t> linearTerms;
  TermMap<Pair> quadTerms;  ///< the lower number first

  void addQuad(int32_t i, int32_t j, double coefficient) {
    quadTerms.add(i < j ? Pair(i, j) : Pair(j, i), coefficient);
  }

  void scale(double factor);
  /// The value at x.
  double evaluate(std::span<const double> x);
  /// Erases terms of magnitude below the tolerance.
  void simplify(double tolerance);
};

}  // namespace QuadProg
