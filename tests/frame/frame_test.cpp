// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <numeric>
#include <thread>
#include <vector>

#include "orvane/frame.h"

namespace {

TEST(Handle, NullIsTestedAndReleasedHarmlessly) {
  EXPECT_TRUE(api_PtrIsNullptr(nullptr));
  int something = 0;
  EXPECT_FALSE(api_PtrIsNullptr(&something));
  api_FreeHandle(nullptr);
}

TEST(Handle, ReleasesObjectsAndBareBlocks) {
  // The leak checker of the sanitizer build holds both releases.
  api_FreeHandle(api_Data2D_Create(100, 100));
  api_FreeHandle(std::malloc(64));
}

TEST(Handle, CreatesAndReleasesOnManyThreads) {
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t)
    threads.emplace_back([] {
      for (int i = 0; i < 500; ++i) {
        Data2D* table = api_Data2D_Create(2, 2);
        EXPECT_EQ(api_Data2D_GetRowNum(table), 2);
        api_FreeHandle(table);
      }
    });
  for (auto& thread : threads) thread.join();
}

TEST(Copy, MovesOverlappingRangesBothWays) {
  std::vector<double> values(8);
  std::iota(values.begin(), values.end(), 0.0);
  api_copy(values.data(), values.data() + 2, 6);
  EXPECT_EQ(values, (std::vector<double>{0, 1, 0, 1, 2, 3, 4, 5}));
  api_copy(values.data() + 2, values.data(), 6);
  EXPECT_EQ(values, (std::vector<double>{0, 1, 2, 3, 4, 5, 4, 5}));
  api_copy(values.data(), values.data() + 1, -1);
  EXPECT_EQ(values[1], 1.0);
}

TEST(Table, ReadsBackWhatWasWritten) {
  Data2D* table = api_Data2D_Create(2, 3);
  const double block[] = {1, 2, 3, 4, 5, 6};
  api_Data2D_SetValue(table, block);
  double column[2] = {};
  api_Data2D_GetColValue(table, 1, column);
  EXPECT_EQ(column[0], 2);
  EXPECT_EQ(column[1], 5);

  const double newColumn[] = {20, 50}, newRow[] = {7, 8, 9};
  api_Data2D_SetColValue(table, 1, newColumn);
  api_Data2D_SetRowValue(table, 1, newRow);
  double all[6] = {};
  api_Data2D_GetValue(table, all);
  EXPECT_EQ(std::vector<double>(all, all + 6), (std::vector<double>{1, 20, 3, 7, 8, 9}));
  double row[3] = {};
  api_Data2D_GetRowValue(table, 0, row);
  EXPECT_EQ(row[1], 20);
  double low = 0, high = 0;
  api_Data2D_GetMinMax(table, &low, &high);
  EXPECT_EQ(low, 1);
  EXPECT_EQ(high, 20);
  api_FreeHandle(table);
}

TEST(Table, OutsideIsNaNOrIgnored) {
  Data2D* table = api_Data2D_Create(2, 3);
  EXPECT_TRUE(std::isnan(api_Data2D_GetValueByIndex(table, 2, 0)));
  EXPECT_TRUE(std::isnan(api_Data2D_GetValueByIndex(table, 0, 3)));
  EXPECT_TRUE(std::isnan(api_Data2D_GetValueByIndex(table, -1, 0)));
  EXPECT_EQ(api_Data2D_GetValueByIndex(table, 1, 2), 0.0);
  const double values[] = {9, 9, 9};
  api_Data2D_SetRowValue(table, 2, values);
  api_Data2D_SetColValue(table, -1, values);
  double low = 1, high = 1;
  api_Data2D_GetMinMax(table, &low, &high);
  EXPECT_EQ(low, 0);
  EXPECT_EQ(high, 0);
  api_FreeHandle(table);
}

TEST(Table, EmptyAndAllNaNKeepTheSeeds) {
  Data2D* empty = api_Data2D_Create(0, 5);
  EXPECT_EQ(api_Data2D_GetRowNum(empty), 0);
  EXPECT_EQ(api_Data2D_GetColNum(empty), 0);
  Data2D* undefined = api_Data2D_Create(1, 1);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  api_Data2D_SetValue(undefined, &nan);
  for (Data2D* table : {empty, undefined}) {
    double low = 0, high = 0;
    api_Data2D_GetMinMax(table, &low, &high);
    EXPECT_EQ(low, 1e300);
    EXPECT_EQ(high, -1e300);
    api_FreeHandle(table);
  }
}

}  // namespace
