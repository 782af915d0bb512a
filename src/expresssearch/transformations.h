// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>
#include <span>

#include "frame/code_table.h"
#include "frame/numbers.h"
#include "special/elementary/elementary.h"

namespace Search {

/// y = originalY*scale + offset, before the function of a transformation.
struct Scaling {
  double offset = 0.0, scale = 1.0;
};

/// One row a transformation of y: what the data is scaled to, the function, and its way back for a fitted value.
struct Transformation {
  int code;
  double low, high;           ///< range that the data is scaled to; an empty one leaves it as it is
  double (*forward)(double);  ///< null: none
  double (*back)(double);     ///< null: none, and no scaling to undo
  double least, most;         ///< a fitted value outside refuses the candidate; NaN does not

  bool refuses(double v) const { return v < least || v > most; }
  bool refusesAny(std::span<const double> values) const {
    return std::ranges::any_of(values, [this](double v) { return refuses(v); });
  }
  bool everRefuses() const { return least > -kInfinity || most < kInfinity; }
  double toData(double v, const Scaling& s) const { return back == nullptr ? v : (back(v) - s.offset) / s.scale; }

  void toData(std::span<double> values, const Scaling& s) const {
    if (back == nullptr) return;
    for (double& v : values) v = toData(v, s);
  }

  Scaling fit(std::span<const double> data) const;
};

inline constexpr double kE = 2.71828182845905;

inline constexpr Transformation kTransformations[] = {
    {0, 0, 0, nullptr, nullptr, -kInfinity, kInfinity},
    {1, 0, 1, [](double y) { return std::exp(y); }, [](double v) { return std::log(v); }, 1e-7, kInfinity},
    {2, 0.01, kE, [](double y) { return std::log(y); }, [](double v) { return std::exp(v); }, -kInfinity, 10.0},
    {3, 0.01, kE, [](double y) { return std::sqrt(y); }, [](double v) { return v * v; }, -kInfinity, kInfinity},
    {4, 0.01, 0.99, [](double y) { return -std::log(1 / y - 1); }, [](double v) { return 1 / (std::exp(-v) + 1); },
     -kInfinity, kInfinity},
    {10, 0, 0, nullptr, nullptr, -kInfinity, kInfinity},
    // Rounding may carry a scaled value past 1, where asin and acos end.
    {100, -1, 1, [](double y) { return std::asin(std::clamp(y, -1.0, 1.0)); },
     [](double v) { return std::sin(SpecialFunction::guardAngle(v)); }, -kInfinity, kInfinity},
    {101, -1, 1, [](double y) { return std::acos(std::clamp(y, -1.0, 1.0)); },
     [](double v) { return std::cos(SpecialFunction::guardAngle(v)); }, -kInfinity, kInfinity},
    {102, -0.9, 0.9, [](double y) { return std::atanh(y); }, [](double v) { return std::tanh(v); }, -kInfinity,
     kInfinity},
};

using Transformations = CodeTable<kTransformations>;

}  // namespace Search
