// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace NetWork {

/// Inputs or targets of samples, a row each.
using RowSet = std::vector<std::vector<double>>;

/// Inputs and targets of training and test, which may be the same rows.
struct DataSets {
  const RowSet* trainX = nullptr;
  const RowSet* trainY = nullptr;
  const RowSet* testX = nullptr;
  const RowSet* testY = nullptr;
};

/// Appends rows of `cols` numbers that stand `stride` apart. Nothing for a null pointer or no row.
void appendRows(RowSet& set, const double* data, int32_t rows, int32_t cols, std::size_t stride);
void appendRows(RowSet& set, const double* data, int32_t rows, int32_t cols);

/// Reads `rows` records of inCols and outCols little-endian doubles. False, with the sets as they were, for a file that
/// cannot be opened or is too short; what stands behind the last record is not read.
bool readRecords(const char* path, int32_t rows, int32_t inCols, int32_t outCols, RowSet& x, RowSet& y);

bool allOfLength(const RowSet& set, std::size_t length);

/// x -> (x - offset)*factor by column.
struct ColumnScale {
  double offset = 0.0, factor = 0.0;
};
using ColumnScales = std::vector<ColumnScale>;
ColumnScales unitRange(const RowSet& set);  ///< to [0, 1]; a column of one value becomes 0
ColumnScales standardize(
    const RowSet& set);  ///< to mean 0 and deviation 1 (divisor n); a column of one value becomes 0
void rescale(RowSet& set, const ColumnScales& scales);

}  // namespace NetWork
