// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "filter/windows/base_window.h"

namespace Filter {

/// Windows made of cosines and powers of sines of t = 2 pi i/(n-1).

/// a - (1-a) cos t
class HammingWindow : public BaseWindow {
 public:
  HammingWindow() : HammingWindow(10, 1, 0.56) {}
  std::vector<double> getWindow(int32_t n) const override;

 protected:
  HammingWindow(int32_t code, int32_t count, double a) : BaseWindow(code, count, {a}) {}
};

class HanningWindow final : public HammingWindow {
 public:
  HanningWindow() : HammingWindow(11, 0, 0.5) {}
};

/// (1-alpha)/2 - cos(t)/2 + alpha/2 cos(2t)
class BlackmanWindow final : public BaseWindow {
 public:
  BlackmanWindow() : BaseWindow(1, 1, {0.16}) {}
  std::vector<double> getWindow(int32_t n) const override;
};

/// sum over k of (-1)^k a_k cos(k t); all ones without parameters.
class CosineSumWindow : public BaseWindow {
 public:
  CosineSumWindow() : CosineSumWindow(5, 255, {}) {}
  std::vector<double> getWindow(int32_t n) const override;

 protected:
  using BaseWindow::BaseWindow;
};

class BlackmanHarris final : public CosineSumWindow {
 public:
  BlackmanHarris() : CosineSumWindow(2, 0, {0.35875, 0.48829, 0.14128, 0.01168}) {}
};

class BlackmanNuttall final : public CosineSumWindow {
 public:
  BlackmanNuttall() : CosineSumWindow(3, 0, {0.3635819, 0.4891775, 0.1365995, 0.0106411}) {}
};

class FlattopWindow final : public CosineSumWindow {
 public:
  FlattopWindow() : CosineSumWindow(7, 0, {0.21557895, 0.41663158, 0.277263158, 0.083578947, 0.006947368}) {}
};

class NuttallWindow final : public CosineSumWindow {
 public:
  NuttallWindow() : CosineSumWindow(15, 0, {0.355768, 0.487396, 0.144232, 0.012604}) {}
};

class BartlettHannWindow final : public BaseWindow {
 public:
  BartlettHannWindow() : BaseWindow(0, 0) {}
  std::vector<double> getWindow(int32_t n) const override;
};

/// exp(-alpha |n-1-2i|/(n-1)) (1 - cos t)/2
class HannPoissonWindow final : public BaseWindow {
 public:
  HannPoissonWindow() : BaseWindow(12, 1, {1.6}) {}
  std::vector<double> getWindow(int32_t n) const override;
};

/// sin(t/2)^k, k cut to an integer
class PowerSineWindow : public BaseWindow {
 public:
  PowerSineWindow() : PowerSineWindow(18, 1, 2.0) {}
  std::vector<double> getWindow(int32_t n) const override;

 protected:
  PowerSineWindow(int32_t code, int32_t count, double k) : BaseWindow(code, count, {k}) {}
};

class RectangularWindow final : public PowerSineWindow {
 public:
  RectangularWindow() : PowerSineWindow(19, 0, 0.0) {}
};

class SineWindow final : public PowerSineWindow {
 public:
  SineWindow() : PowerSineWindow(20, 0, 1.0) {}
};

/// Flat with cosine flanks of a (n-1)/2 points.
class TukeyWindow final : public BaseWindow {
 public:
  TukeyWindow() : BaseWindow(22, 1, {0.36}) {}
  std::vector<double> getWindow(int32_t n) const override;
};

}  // namespace Filter
