// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <orvane/mesh.h>
#include <orvane/rotation.h>
#include <orvane/stock.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "stores/files.h"

namespace {

namespace fs = std::filesystem;

constexpr double kUnit[] = {1, 0, 0, 0, 1, 0, 0, 0, 1};

double valueAt(const StockData* stock, uint8_t field, int32_t day) {
  double value = 0;
  EXPECT_EQ(stock_getData(stock, field, day, day, &value), 1);
  return value;
}

void setDay(StockData* stock, uint32_t year, uint32_t month, uint32_t day, double v) {
  stock_setData(stock, year, month, day, v, v + 1, -v, 0.005, 1.5, -2.25, 400, 123456789, -15000);
}

// The layout of the file, byte by byte, by a writer of its own.
template <class T>
void put(std::string& bytes, T value) {
  bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

std::string header() {
  std::string b;
  put(b, int32_t{13});
  return b + "\x14\x18\x08\x0COrvanedat";
}

// Before any test: the store of a process that has just begun.
const std::string savedEmpty = [] {
  const std::string path = pathOf("empty");
  return stock_saveStock(nullptr, 0, path.c_str()) == 1 ? contentOf(path) : "not saved";
}();

std::string smallFile(uint8_t type, std::initializer_list<uint8_t> days = {2, 3}) {
  std::string b = header();
  put(b, int32_t{2});
  for (const uint8_t day : days) put(b, uint16_t{2024}), put(b, uint8_t{1}), put(b, day);
  put(b, int32_t{2});
  for (const int32_t code : {7, 600519}) {
    put(b, type);
    put(b, code);
    put(b, uint32_t{code == 7 ? 0u : 3u});
    if (code != 7) b += "\xb0\xa1z";
    put(b, uint32_t{2});
    for (const int32_t date : {0, 1}) {
      put(b, date);
      for (const int32_t v : {100, 200, -300, 1 + date}) put(b, v);
      for (const int16_t v : {150, -225, 32767}) put(b, v);
      for (const int32_t v : {12346, -2}) put(b, v);
    }
    put(b, uint32_t{1});
    put(b, uint16_t{31});
  }
  return b;
}

TEST(Stock, KeepsDaysInOrderAndScales) {
  StockData* stock = stock_getStock(600000, 1);
  setDay(stock, 2024, 3, 1, 10.126);
  setDay(stock, 2023, 12, 31, 1);
  setDay(stock, 2024, 2, 29, 5);
  setDay(stock, 2024, 2, 29, 6);  // replaces
  EXPECT_EQ(valueAt(stock, 0, 0), 1);
  EXPECT_EQ(valueAt(stock, 0, 1), 6);
  EXPECT_EQ(valueAt(stock, 0, 2), 10.13);
  EXPECT_EQ(valueAt(stock, 3, 2), 0.01);
  EXPECT_EQ(valueAt(stock, 6, 2), 327.67);  // held to 16 bits
  EXPECT_EQ(valueAt(stock, 7, 2), 123460000);
  EXPECT_EQ(valueAt(stock, 8, 2), -20000);
  EXPECT_TRUE(std::isnan(valueAt(stock, 9, 0)));
  double values[3];
  EXPECT_EQ(stock_getData(stock, 0, 99, 1, values), 2);  // held to the days, in ascending order
  EXPECT_EQ(values[0], 6);

  int32_t range[2];
  stock_getTimeRange(stock, 2024, 3, 1, 2024, 1, 1, range);
  EXPECT_EQ(range[0], 1);
  EXPECT_EQ(range[1], 2);
  stock_getTimeRange(stock, 2025, 1, 1, 2026, 1, 1, range);
  EXPECT_EQ(range[0], -1);
  EXPECT_TRUE(stock_dateIsExist(stock, 2024, 2, 29));
  EXPECT_FALSE(stock_dateIsExist(stock, 2024, 2, 28));
  stock_deleteData(stock, 1, 1);
  EXPECT_FALSE(stock_dateIsExist(stock, 2024, 2, 29));
  stock_deleteData(stock, 1, 2147483647);
  stock_deleteData(stock, -3, 2);
  EXPECT_EQ(valueAt(stock, 0, 0), 1);
  EXPECT_EQ(stock_getData(stock_getStock(600001, 1), 0, 0, 9, values), 0);
}

// Days from 1900-01-01 and hours: known serial numbers of a spreadsheet's calendar, its false 1900-02-29 included.
TEST(Stock, DateIsASerialNumber) {
  StockData* stock = stock_getStock(1, 2);
  const struct {
    uint32_t year, month, day;
    double number;
  } cases[] = {{1900, 1, 1, 1},      {1900, 3, 1, 61},    {1980, 1, 1, 29221},   {1999, 12, 31, 36525},
               {2024, 2, 29, 45351}, {2028, 1, 1, 46753}, {2024, 12, 31, 45657}, {2100, 3, 1, 73111},
               {1899, 12, 31, 0},    {9001, 1, 1, 0}};
  for (const auto& c : cases) {
    stock_deleteData(stock, 0, 99);
    setDay(stock, c.year, c.month, c.day, 1);
    // kept.csv: Date_time_of_day, Calendar_hours, Calendar_leap_years
    const double expected = c.number == 0 ? 0 : c.number + (18 * 3600 + 16 * 60 + 39) / 3600.0;
    EXPECT_DOUBLE_EQ(valueAt(stock, ORVANE_STOCK_DATE, 0), expected) << c.year << " " << c.month;
  }
}

TEST(Stock, IsFoundByCodeAndName) {
  StockData* byNumber = stock_tryToGetStock(3, "600519");
  EXPECT_EQ(stock_getStockCode(byNumber), 600519);
  EXPECT_EQ(stock_tryToGetStock(3, "600519"), byNumber);
  StockData* byName = stock_tryToGetStock(3, "tea");
  StockData* other = stock_tryToGetStock(3, "wine");
  EXPECT_LT(stock_getStockCode(byName), 0);
  EXPECT_NE(stock_getStockCode(byName), stock_getStockCode(other));
  stock_setName(byName, "green tea");
  EXPECT_STREQ(stock_getStockName(byName), "green tea");
  StockData* found = nullptr;
  EXPECT_EQ(stock_searchStockByName("green tea", &found), 1);
  EXPECT_EQ(found, byName);
  EXPECT_EQ(stock_searchStockByCode(600519, &found), 1);
  EXPECT_EQ(stock_getStockType(found), 3);
  EXPECT_EQ(stock_searchStockByName("no such", &found), 0);
  std::vector<StockData*> all(static_cast<std::size_t>(stock_getAllStockSize(3)));
  EXPECT_EQ(stock_getAllStocks(3, all.data()), 3);
  EXPECT_EQ(all.back(), byNumber);

  uint16_t types[56] = {1};
  EXPECT_EQ(stock_getAllAttributeType(types, 55), 56);
  EXPECT_EQ(types[0], 1);
  EXPECT_EQ(stock_getAllAttributeType(types, 56), 56);
  EXPECT_EQ(types[55], 55);
  EXPECT_STREQ(stock_getAttributeTypeStr(2), "\xb1\xb1\xbe\xa9");  // Beijing in GBK
  EXPECT_STREQ(stock_getAttributeTypeStr(35), "AI");
  for (uint16_t type = 0; type < 56; ++type) EXPECT_STRNE(stock_getAttributeTypeStr(type), "") << type;
  EXPECT_STREQ(stock_getAttributeTypeStr(56), "");
}

TEST(StockFile, LoadedFileIsSavedAsItWas) {
  const std::string path = pathOf("small"), again = pathOf("again"), content = smallFile(40);
  write(path, content);
  StockData* handles[2] = {};
  ASSERT_EQ(stock_loadStock(path.c_str(), handles), 2);
  EXPECT_EQ(valueAt(handles[0], 3, 1), 0.02);
  EXPECT_EQ(valueAt(handles[1], 7, 0), 123460000);
  EXPECT_STREQ(stock_getStockName(handles[1]), "\xb0\xa1z");
  StockData* const exchanged[] = {handles[1], handles[0]};
  EXPECT_EQ(stock_saveStock(exchanged, 2, again.c_str()), 1u);
  EXPECT_EQ(contentOf(again), content);
  // A second load puts other stocks in their place; the old handles still stand.
  ASSERT_EQ(stock_loadStock(path.c_str(), nullptr), 2);
  EXPECT_EQ(valueAt(handles[0], 0, 0), 1);
  StockData* now[2] = {};
  stock_getAllStocks(40, now);
  EXPECT_NE(now[0], handles[0]);
  stock_getStock(1, 39);
  EXPECT_EQ(stock_saveStock(nullptr, 0, again.c_str()), 1u);  // every stock of the store
  EXPECT_GT(contentOf(again).size(), content.size());
}

TEST(StockFile, EmptyStoreIsAWholeFile) { EXPECT_EQ(savedEmpty, header() + std::string(8, '\0')); }

// Days keep the order of the file until they are sorted, and are found in either.
TEST(StockFile, DaysOutOfOrderStayUntilSorted) {
  const std::string path = pathOf("unsorted"), again = pathOf("again"), content = smallFile(43, {9, 4});
  write(path, content);
  StockData* stocks[2] = {};
  ASSERT_EQ(stock_loadStock(path.c_str(), stocks), 2);
  EXPECT_EQ(stock_saveStock(stocks, 2, again.c_str()), 1u);
  EXPECT_EQ(contentOf(again), content);
  for (const bool sorted : {false, true}) {
    if (sorted) stock_sort(stocks[0]);
    EXPECT_EQ(valueAt(stocks[0], 3, sorted ? 1 : 0), 0.01);  // the ninth of January
    EXPECT_TRUE(stock_dateIsExist(stocks[0], 2024, 1, 4));
    EXPECT_FALSE(stock_dateIsExist(stocks[0], 2024, 1, 5));
    int32_t range[2];
    stock_getTimeRange(stocks[0], 2024, 1, 1, 2024, 1, 31, range);
    EXPECT_EQ(range[0], 0);
    EXPECT_EQ(range[1], 1);
    stock_getTimeRange(stocks[0], 2024, 1, 5, 2024, 1, 31, range);
    EXPECT_EQ(range[0], sorted ? 1 : 0);
    EXPECT_EQ(range[1], sorted ? 1 : 0);
  }
  setDay(stocks[1], 2024, 1, 4, 8);
  setDay(stocks[1], 2024, 1, 6, 7);
  EXPECT_EQ(valueAt(stocks[1], 0, 1), 8);
  stock_sort(stocks[1]);
  EXPECT_EQ(valueAt(stocks[1], 0, 1), 7);
  EXPECT_EQ(stock_getData(stocks[1], 0, 0, 9, std::vector<double>(9).data()), 3);
}

TEST(StockFile, DamageLoadsWhatIsWhole) {
  const std::string content = smallFile(41), path = pathOf("damaged");
  const std::size_t header = 17, firstStock = header + 4 + 8 + 4, stockBytes = 1 + 4 + 4 + 4 + 2 * 34 + 4 + 2;
  for (std::size_t length = 0; length < content.size(); ++length) {
    write(path, content.substr(0, length));
    const int32_t expected = length < firstStock + stockBytes ? 0 : 1;
    EXPECT_EQ(stock_loadStock(path.c_str(), nullptr), expected) << length;
  }
  for (std::size_t bit = 0; bit < 8 * content.size(); ++bit) {
    std::string turned = content;
    turned[bit / 8] = static_cast<char>(turned[bit / 8] ^ (1 << bit % 8));
    write(path, turned);
    const int32_t loaded = stock_loadStock(path.c_str(), nullptr);
    EXPECT_GE(loaded, 0);
    EXPECT_LE(loaded, 2);
    if (bit < 8 * header) {
      EXPECT_EQ(loaded, 0) << bit;
    }
  }
  // Counts that the file cannot hold take no memory.
  rusage before{}, after{};
  getrusage(RUSAGE_SELF, &before);
  for (const std::size_t place :
       {header, firstStock - 4, firstStock + 5, firstStock + 9, firstStock + stockBytes - 6}) {
    std::string huge = content;
    huge.replace(place, 4, "\xff\xff\xff\x7f");
    write(path, huge);
    EXPECT_LE(stock_loadStock(path.c_str(), nullptr), 2);
  }
  getrusage(RUSAGE_SELF, &after);
  EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 100 * 1024);  // KiB
  EXPECT_EQ(stock_loadStock(pathOf("missing").c_str(), nullptr), 0);
  EXPECT_EQ(stock_loadStock(nullptr, nullptr), 0);
}

TEST(StockFile, FailureLeavesTheTargetAsItWas) {
  StockData* stock = stock_getStock(5, 42);
  setDay(stock, 2024, 1, 1, 1);
  EXPECT_EQ(stock_saveStock(&stock, 1, (pathOf("no folder") + "/x").c_str()), 0u);
  EXPECT_EQ(stock_saveStock(&stock, 1, "/dev/full"), 0u);
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
  const std::string folder = pathOf("folder");
  fs::create_directories(folder + "/inside");
  EXPECT_EQ(stock_saveStock(&stock, 1, folder.c_str()), 0u);
  EXPECT_TRUE(fs::exists(folder + "/inside"));
  const std::string part = std::to_string(getpid()) + ".part";  // other processes may be writing theirs
  for (const auto& entry : fs::directory_iterator(testing::TempDir()))
    EXPECT_FALSE(entry.path().string().ends_with(part)) << entry.path();
}

// The stores and what the host has not released go with the process: no crash, and under a sanitizer no leak.
TEST(StoresDeathTest, ProcessEndsWhileTheyAreFull) {
  const auto fill = [] {
    setDay(stock_tryToGetStock(44, "left"), 2024, 1, 1, 1);
    write(pathOf("left"), smallFile(44));
    for (int twice = 0; twice < 2; ++twice) stock_loadStock(pathOf("left").c_str(), nullptr);
    const int32_t corners[] = {1, 2, 3};
    for (const int32_t id : corners) mesh2D_addNode(id, id, id * id);
    mesh2D_addElement(1, corners, 3);
    mesh2D_initBuild();
    slam_SO3_create();
    slam_CreatePoleConstraint2DTo2D(kUnit, kUnit, nullptr, kUnit, kUnit, nullptr, 2);
    std::exit(7);
  };
  EXPECT_EXIT(fill(), testing::ExitedWithCode(7), "");
}

}  // namespace
