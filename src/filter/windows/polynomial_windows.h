// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "filter/windows/base_window.h"

namespace Filter {

/// Windows that are the transform of a polynomial's samples or the ratio of two series.

/// Samples of a Chebyshev polynomial, transformed and divided by their sum; the peak is not 1.
class DolphChebyshevWindow final : public BaseWindow {
 public:
  DolphChebyshevWindow() : BaseWindow(6, 2, {0.16, 0.36}) {}
  std::vector<double> getWindow(int32_t n) const override;
};

/// I0(pi alpha sqrt(1 - x^2))/I0(pi alpha), x = 1 - 2i/(n-1)
class KaiserWindow final : public BaseWindow {
 public:
  KaiserWindow() : BaseWindow(13, 1, {5.6}) {}
  std::vector<double> getWindow(int32_t n) const override;
};

/// Samples of a Gegenbauer polynomial of degree n-1, transformed (Streit 1984).
class UltrasphericalWindow final : public BaseWindow {
 public:
  UltrasphericalWindow() : BaseWindow(23, 2, {1.0, 0.2}) {}
  std::vector<double> getWindow(int32_t n) const override;
};

}  // namespace Filter
