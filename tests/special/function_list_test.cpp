// SPDX-License-Identifier: Apache-2.0
// The list of functions that hosts' tests, benchmarks and the accuracy page read is that of the library.
#include <gtest/gtest.h>

#include "special/table.h"
#include "support/functions.h"
#include "sym/kinds/kind.h"

namespace {

using namespace SpecialFunction;

TEST(FunctionList, IsTheTable) {
  const std::vector<functions::Function>& rows = functions::all();
  ASSERT_EQ(rows.size(), std::size(kFunctions));
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const ScalarFunction& function = kFunctions[i];
    EXPECT_EQ(rows[i].name, function.name);
    EXPECT_EQ(rows[i].ofOrder, function.routine.shape == Shape::ofOrder) << function.name;
    EXPECT_EQ(rows[i].count, rows[i].ofOrder ? 2 : static_cast<int>(function.routine.shape)) << function.name;
    EXPECT_EQ(rows[i].arrayCode, function.arrayCode) << function.name;
    EXPECT_EQ(rows[i].kindCode, function.kindCode) << function.name;
  }
}

// Every kind of expressions but numbers, variables, sums and products has a row for each count of its arguments, under
// its name.
TEST(FunctionList, HasEveryKind) {
  for (int code = 0; code < 256; ++code) {
    const Sym::Kind* kind = Sym::findKind(static_cast<uint8_t>(code));
    int rows = 0;
    for (const functions::Function& f : functions::all()) {
      if (f.kindCode != code) continue;
      ++rows;
      ASSERT_NE(kind, nullptr) << f.name;
      EXPECT_TRUE(kind->minArgs <= f.count && f.count <= kind->maxArgs) << f.name;
    }
    EXPECT_EQ(rows, kind == nullptr || code <= 3 ? 0 : 1 + kind->maxArgs - kind->minArgs) << code;
  }
}

}  // namespace
