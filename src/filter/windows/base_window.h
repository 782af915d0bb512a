// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <initializer_list>
#include <map>
#include <vector>

namespace Filter {

/// A window of a filter design: n coefficients by a formula with a few shape parameters, which count from 1. A
/// parameter that is not stored reads as 0. At n = 1 the divisions by n - 1 are not guarded.
class BaseWindow {
 public:
  virtual ~BaseWindow() = default;

  /// [n] coefficients; none for n below 1.
  virtual std::vector<double> getWindow(int32_t n) const = 0;

  void setParam(int32_t number, double value) { windowParams[number] = value; }
  double param(int32_t number) const {
    const auto found = windowParams.find(number);
    return found == windowParams.end() ? 0.0 : found->second;
  }

  int32_t paramCount;  ///< shape parameters that a host may set; 255 for a free number
  int32_t windowCode;
  std::map<int32_t, double> windowParams;

 protected:
  BaseWindow(int32_t code, int32_t count, std::initializer_list<double> defaults = {})
      : paramCount(count), windowCode(code) {
    for (const double value : defaults) setParam(static_cast<int32_t>(windowParams.size()) + 1, value);
  }

  /// n ones: what a window holds before its formula is applied.
  static std::vector<double> ones(int32_t n) {
    return std::vector<double>(static_cast<std::size_t>(n > 0 ? n : 0), 1.0);
  }

  /// The coefficients value(i, angle) with the angle 0, step, 2 step, ... by addition.
  template <class Value>
  static std::vector<double> stepped(int32_t n, double step, Value value) {
    std::vector<double> w = ones(n);
    double angle = 0.0;
    for (std::size_t i = 0; i < w.size(); ++i, angle += step) w[i] = value(static_cast<double>(i), angle);
    return w;
  }
};

}  // namespace Filter
