// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "filter/windows/base_window.h"

namespace Filter {

/// Windows made of exponentials, powers and polynomials of the distance from the centre c = (n-1)/2.

class ConfinedGaussianWindow final : public BaseWindow {
 public:
  ConfinedGaussianWindow() : BaseWindow(4, 1, {0.06}) {}
  std::vector<double> getWindow(int32_t n) const override;
};

/// exp(-((i-c)/(sigma c))^2/2)
class GaussianWindow final : public BaseWindow {
 public:
  GaussianWindow() : BaseWindow(8, 1, {0.12}) {}
  std::vector<double> getWindow(int32_t n) const override;
};

/// A polynomial in the squared distance, in units of its standard deviation; all ones without parameters.
class GPAWindow final : public BaseWindow {
 public:
  GPAWindow() : BaseWindow(9, 255) {}
  std::vector<double> getWindow(int32_t n) const override;
};

/// sinc of 2i/(n-1) - 1
class LanczosWindow final : public BaseWindow {
 public:
  LanczosWindow() : BaseWindow(14, 0) {}
  std::vector<double> getWindow(int32_t n) const override;
};

class ParzenWindow final : public BaseWindow {
 public:
  ParzenWindow() : BaseWindow(16, 0) {}
  std::vector<double> getWindow(int32_t n) const override;
};

/// Flat with the C-infinity flanks of McKechan et al. (2010).
class PlanckTaperWindow final : public BaseWindow {
 public:
  PlanckTaperWindow() : BaseWindow(17, 1, {0.25}) {}
  std::vector<double> getWindow(int32_t n) const override;
};

class TriangularWindow final : public BaseWindow {
 public:
  TriangularWindow() : BaseWindow(21, 0) {}
  std::vector<double> getWindow(int32_t n) const override;
};

class WelchWindow final : public BaseWindow {
 public:
  WelchWindow() : BaseWindow(24, 0) {}
  std::vector<double> getWindow(int32_t n) const override;
};

}  // namespace Filter
