// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <vector>

#include "frame/base_data.h"

/// A table of doubles in row vectors of one length; the general carrier of tables across the boundary.
class Data2D_c final : public BaseData {
 public:
  Data2D_c(std::size_t rowCount, std::size_t colCount) : rows(rowCount, std::vector<double>(colCount)) {
    typeCode = 56;
  }

  std::size_t rowCount() const { return rows.size(); }
  std::size_t colCount() const { return rows.empty() ? 0 : rows[0].size(); }

  void setRow(std::size_t row, const double* source);
  void getRow(std::size_t row, double* destination) const;
  void setCol(std::size_t col, const double* source);
  void getCol(std::size_t col, double* destination) const;
  void setAll(const double* source);
  void getAll(double* destination) const;
  double at(std::size_t row, std::size_t col) const;  ///< NaN outside the table
  void minMax(double& minimum, double& maximum) const;

  std::vector<std::vector<double>> rows;
};
