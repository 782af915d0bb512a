// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <span>

/// The loops over the data. A sum runs in eight interleaved partial sums, added up in one fixed order: every road of
/// the search, on every processor, gives the same doubles.
namespace Search {

inline constexpr std::size_t kLanes = 8;
using LaneSums = std::array<double, kLanes>;

double total(const LaneSums& sums);

double sum(std::span<const double> x);
double dot(std::span<const double> x, std::span<const double> y);

/// Adds the squares of x - y to the partial sums. A long array may come in pieces whose lengths are multiples of
/// kLanes.
void addSquaredError(std::span<const double> x, std::span<const double> y, LaneSums& sums);

/// Sums of (x - mx)(y - my) and of (y - my)^2.
struct CentredSums {
  double xy, yy;
};
CentredSums centredSums(std::span<const double> x, double mx, std::span<const double> y, double my);

/// A linear form: constant + sum of factors[k]*columns[k][i].
struct LinearForm {
  double constant;
  std::span<const double> factors;
  const double* const* columns;
};

/// out[i - from] = top(i) / bottom(i) for the rows that begin at `from`; a bottom without columns has the constant 1.
void rationalValues(const LinearForm& top, const LinearForm& bottom, std::size_t from, std::span<double> out);

}  // namespace Search
