// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "frame/base_data.h"

namespace Filter {

/// What a filter shall pass, and running it over samples.
class BaseFilter : public BaseData {
 public:
  virtual void setType(uint8_t type) { filterType = type; }
  virtual void setSamplingFrequency(double frequency) { samplingFrequency = frequency; }
  virtual void setLimitFrequency(double frequency) { limitFrequency = frequency; }
  virtual void setLowLimitFrequency(double frequency) { lowLimitFrequency = frequency; }
  virtual void setHighLimitFrequency(double frequency) { highLimitFrequency = frequency; }

  /// Filters x[0..to) into y[from..to); y[0..to) is cleared first. False when there is nothing to run, and at the first
  /// value that is NaN or beyond 1e100 in size: it and all behind it stay 0.
  virtual bool filter(const double* x, double* y, int32_t from, int32_t to) = 0;

  uint8_t filterType = 0;  ///< 0 low-pass, 1 high-pass, 2 band-pass, 3 band-stop; others: no design
  double samplingFrequency = 1024.0;
  double limitFrequency = 512.0;  ///< edge of low-pass and high-pass
  double lowLimitFrequency = 258.0, highLimitFrequency = 800.0;

 protected:
  /// 2 pi f/fs
  double angleOf(double frequency) const;
};

}  // namespace Filter
