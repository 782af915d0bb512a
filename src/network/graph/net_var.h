// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "frame/base_data.h"
#include "network/graph/rows.h"

namespace NetWork {

/// Numbers that a network is trained by: a matrix, or one row.
struct NetVar_s final : BaseData {
  NetVar_s(int32_t rows, int32_t cols);

  void setValue(const double* data);
  void getValue(double* data) const;
  void fill(double v);
  /// Moves the entries that `varFlag` does not allow; called after every step of a training.
  void applySignRule();

  bool isRow() const { return value.rowCount() == 1; }
  bool isRow(std::size_t length) const { return isRow() && value.colCount() == length; }
  bool hasShape(std::size_t rows, std::size_t cols) const {
    return value.rowCount() == rows && value.colCount() == cols;
  }

  std::string name;
  uint8_t fixed = 0;    ///< 1: not trained and not in the flat vector of the network
  uint8_t varFlag = 0;  ///< sign rule, an ORVANE_SIGN_ code
  Rows value;
  Rows grad;  ///< backward adds to it
};

}  // namespace NetWork
