// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <orvane/orvane.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "sym/formula.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);  // tests/fuzz/sym_read_fuzz.cpp

namespace {

using namespace host;

using Bytes = std::vector<uint8_t>;

/// Builds expected blocks field by field.
struct Block {
  Bytes bytes;

  template <class T>
  Block& put(T value) {
    uint8_t raw[sizeof(T)];
    std::memcpy(raw, &value, sizeof(T));
    bytes.insert(bytes.end(), raw, raw + sizeof(T));
    return *this;
  }
  Block& u8(uint8_t v) { return put(v); }
  Block& u32(uint32_t v) { return put(v); }
  Block& i32(int32_t v) { return put(v); }
  Block& f64(double v) { return put(v); }
  Block& text(const std::string& v) {
    bytes.insert(bytes.end(), v.begin(), v.end());
    return *this;
  }
};

Bytes written() {
  Bytes block(sym_write());
  sym_getDataStr(block.data());
  return block;
}

void read(const Bytes& block) { sym_read(block.data(), static_cast<uint32_t>(block.size())); }

/// Releases every matrix that a block brought in.
void releaseRead(int32_t count) {
  for (int32_t id = 0; id < count; ++id) sym_freeMatrix2d(sym_getMatrixByID(id));
}

class Persistence : public testing::Test {
 protected:
  void SetUp() override {
    sym_clearTempVar();
    sym_write();  // drops the variables of other tests
  }
  void TearDown() override { sym_clearTempVar(); }
};

TEST_F(Persistence, BytesOfTheBlock) {
  EXPECT_EQ(written(), Block().u32(0).u32(0).bytes);
  const Matrix number = row({2.5});
  EXPECT_EQ(written(), Block().u32(0).u32(1).u32(1).u32(1).u8(0).f64(2.5).bytes);

  // 3 sin(b) and a variable, with another that only a temporary node names
  const Matrix two = row({call(20, Formula("b")) * 3.0, Formula("a")});
  const Formula gone("gone");
  sym_setSymValue("b", -7);
  Block expected;
  expected.u32(2).f64(0).u32(1).text("a").f64(-7).u32(1).text("b").u32(2);
  const auto putNumber = [&] { expected.u32(1).u32(1).u8(0).f64(2.5); };
  const auto putTwo = [&] { expected.u32(1).u32(2).u8(20).f64(3).u32(1).u8(1).f64(1).i32(1).u8(1).f64(1).i32(0); };
  if (number < two)
    putNumber(), putTwo();
  else
    putTwo(), putNumber();
  EXPECT_EQ(written(), expected.bytes);
  EXPECT_EQ(sym_getMatrixID(number), number < two ? 0 : 1);
  EXPECT_EQ(sym_getMatrixByID(sym_getMatrixID(two)), two);
}

TEST_F(Persistence, RoundTrip) {
  const double values[] = {1.5, -0.0, 1e300, 4e-320, 7, 8};
  Bytes block;
  {
    const Matrix numbers = Matrix(sym_fromMatrix2dDouble(values, 2, 3));
    const Matrix expression = row({call(20, Formula("q")) * 3.0});
    sym_setSymValue("q", 9);
    block = written();
  }
  const Matrix old = row({Formula("q")});
  sym_setSymValue("q", 1);
  read(block);
  EXPECT_EQ(sym_calcExpressValue(old, 0, 0), 9);  // the record is shared
  EXPECT_EQ(sym_getMatrixID(old), 2);
  for (int32_t id = 0; id < 2; ++id) {
    SymMatrix2d* matrix = sym_getMatrixByID(id);
    ASSERT_NE(matrix, nullptr);
    int32_t dim[2];
    sym_getDataDim(matrix, dim);
    if (dim[0] == 2) {
      double out[6];
      EXPECT_TRUE(sym_toMatrix2dDouble(matrix, out));
      EXPECT_EQ(std::memcmp(out, values, sizeof out), 0);
    } else {
      // Read_node: an expression that is read back is worth its coefficient, whatever its kind.
      EXPECT_FALSE(sym_isConstant(matrix));
      EXPECT_EQ(sym_calcExpressValue(matrix, 0, 0), 3);
      EXPECT_EQ(textOf(matrix), "3");
      const Matrix clone = Matrix(sym_cloneMatrix2d(matrix));  // and so is what is made of it
      EXPECT_EQ(sym_calcExpressValue(clone, 0, 0), 3);
    }
  }
  EXPECT_EQ(Bytes(block), [&] {
    Bytes again(block.size());
    sym_getDataStr(again.data());
    return again;
  }());
  releaseRead(2);
}

TEST_F(Persistence, DeepTree) {
  Block block;
  block.u32(0).u32(1).u32(1).u32(1);
  for (int i = 0; i < 100000; ++i) block.u8(26).f64(1.5).u32(1);
  block.u8(0).f64(2);
  read(block.bytes);
  EXPECT_EQ(sym_calcExpressValue(sym_getMatrixByID(0), 0, 0), 1.5);
  releaseRead(1);
}

/// Every prefix of a block, and counts that promise more than is there: nothing is added, nothing is lost.
TEST_F(Persistence, ShortAndHostileBlocks) {
  const Matrix matrix = row({call(2, {Formula("u"), call(20, Formula("v")), 4.0}), 7.0});
  sym_setSymValue("u", 5);
  const Bytes whole = written();
  sym_setSymValue("u", 6);
  std::vector<Bytes> blocks;
  for (size_t length = 0; length < whole.size(); ++length)
    blocks.emplace_back(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(length));
  blocks.push_back(whole);
  blocks.back().push_back(0);
  blocks.push_back(Block().u32(0).u32(0).u8(0).bytes);
  blocks.push_back(Block().u32(0xFFFFFFFF).bytes);
  blocks.push_back(Block().u32(1).f64(1).u32(0xFFFFFFFF).bytes);
  blocks.push_back(Block().u32(0).u32(1).u32(0xFFFFFFFF).u32(0xFFFFFFFF).u8(0).f64(1).bytes);
  blocks.push_back(Block().u32(0).u32(1).u32(0xFFFFFFFF).u32(0).bytes);
  blocks.push_back(Block().u32(0).u32(2).u32(0).u32(0xFFFFFFFF).bytes);
  blocks.push_back(Block().u32(0).u32(1).u32(1).u32(1).u8(2).f64(1).u32(0xFFFFFFFF).bytes);
  blocks.push_back(Block().u32(0).u32(1).u32(1).u32(1).u8(1).f64(1).i32(0).bytes);
  blocks.push_back(Block().u32(0).u32(1).u32(1).u32(1).u8(1).f64(1).i32(-1).bytes);
  for (const Bytes& block : blocks) {
    read(block);
    EXPECT_EQ(sym_getMatrixByID(0), matrix);
    EXPECT_EQ(sym_calcExpressValue(matrix, 0, 0), 10);
  }
  // An unknown kind is taken as it stands.
  read(Block().u32(0).u32(1).u32(1).u32(1).u8(250).f64(4).u32(0).bytes);
  EXPECT_EQ(sym_calcExpressValue(sym_getMatrixByID(0), 0, 0), 4);
  releaseRead(1);
}

/// Rows without columns take no bytes: a block must not buy memory with them.
TEST_F(Persistence, RowsWithoutColumns) {
  const auto block = [](const std::vector<uint32_t>& rows) {
    Block result;
    result.u32(0).u32(static_cast<uint32_t>(rows.size()));
    for (const uint32_t count : rows) result.u32(count).u32(0);
    return result.bytes;
  };
  read(block({65000, 3, 533}));
  int32_t dim[2];
  sym_getDataDim(sym_getMatrixByID(1), dim);
  EXPECT_EQ(dim[0], 3);
  EXPECT_EQ(dim[1], 0);
  releaseRead(3);
  read(block({65000, 3, 534}));
  read(block(std::vector<uint32_t>(100, 65536)));
  EXPECT_EQ(sym_getMatrixByID(0), nullptr);
}

/// Blocks with a few bytes changed, through what the coverage-guided fuzzer does with any bytes: it aborts on a fault.
TEST_F(Persistence, DamagedBlocksEnd) {
  Bytes whole;
  {
    const Matrix matrix = row({call(2, {Formula("u"), call(20, Formula("v")), 4.0}), call(55, {1.0, Formula("u")})});
    const Matrix numbers = Matrix(sym_createSymMatrix(2, 1));
    whole = written();
  }
  std::mt19937 random(11);
  for (int round = 0; round < 5000; ++round) {
    Bytes block = whole;
    for (uint32_t flips = random() % 5; flips > 0; --flips)
      block[random() % block.size()] = static_cast<uint8_t>(random());
    EXPECT_EQ(LLVMFuzzerTestOneInput(block.data(), block.size()), 0);
  }
}

}  // namespace
