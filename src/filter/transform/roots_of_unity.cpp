// SPDX-License-Identifier: Apache-2.0
#include "filter/transform/roots_of_unity.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace Filter {

RootsOfUnity::RootsOfUnity(std::size_t count) : n(count) {
  while ((std::size_t{1} << (2 * shift)) < n) ++shift;
  const auto at = [this](std::size_t j) {
    const long double angle =
        std::numbers::pi_v<long double> * static_cast<long double>(j) / (4.0L * static_cast<long double>(n));
    return Wide{std::cos(angle), std::sin(angle)};
  };
  for (std::size_t j = 0; j >> shift == 0; ++j) fine.push_back(at(j));
  for (std::size_t j = 0; j <= n; j += std::size_t{1} << shift) coarse.push_back(at(j));
}

Complex RootsOfUnity::operator()(std::size_t k) const {
  // Fold the lower half of the circle, then its left quarter, then the upper eighth, in units of 1/(8n) turns.
  const bool below = 2 * k > n;
  if (below) k = n - k;
  const bool left = 4 * k > n;
  std::size_t j = left ? 4 * n - 8 * k : 8 * k;
  const bool steep = j > n;
  if (steep) j = 2 * n - j;
  const Wide &a = coarse[j >> shift], &b = fine[j & ((std::size_t{1} << shift) - 1)];
  Wide w{a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
  if (steep) std::swap(w.re, w.im);
  if (left) w.re = -w.re;
  return {static_cast<double>(w.re), static_cast<double>(below ? w.im : -w.im)};
}

}  // namespace Filter
