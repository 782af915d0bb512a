// SPDX-License-Identifier: Apache-2.0
#include "stores/stock/stock_file.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <fstream>
#include <optional>
#include <unordered_map>

#include "stores/target_file.h"

namespace Stock {
namespace {

static_assert(std::endian::native == std::endian::little, "numbers go into the file as they lie in memory");

constexpr std::array<char, 13> kHeader = {0x14, 0x18, 0x08, 0x0C, 'O', 'r', 'v', 'a', 'n', 'e', 'd', 'a', 't'};
constexpr std::size_t kDayBytes = 34;
constexpr std::size_t kBlock = 128;  ///< day records that are written, and read, at a time

/// Bytes of a record on their way into a file or out of it.
class Bytes {
 public:
  template <class T>
  void put(T value) {
    const auto* raw = reinterpret_cast<const char*>(&value);
    bytes.insert(bytes.end(), raw, raw + sizeof(T));
  }
  void put(const std::string& text) { bytes.insert(bytes.end(), text.begin(), text.end()); }
  void flush(std::ostream& file) {
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
    bytes.clear();
  }

 private:
  std::vector<char> bytes;
};

uint32_t keyOf(StockTime time) { return uint32_t{time.year} << 16 | uint32_t{time.month} << 8 | time.day; }

/// The dates of the stocks that are saved, numbered in the order of their first appearance.
class DateTable {
 public:
  explicit DateTable(std::span<const StockData* const> stocks) {
    for (const StockData* stock : stocks)
      for (const DayData& day : stock->days) add(day.time);
  }

  std::span<const StockTime> all() const { return dates; }

  uint32_t indexOf(StockTime time) {
    if (next < dates.size() && dates[next] == time) return next++;  // the days of two stocks mostly run alike
    const uint32_t index = places.at(keyOf(time));
    next = index + 1;
    return index;
  }

 private:
  void add(StockTime time) {
    if (next < dates.size() && dates[next] == time) {
      ++next;
      return;
    }
    const auto [place, isNew] = places.try_emplace(keyOf(time), static_cast<uint32_t>(dates.size()));
    if (isNew) dates.push_back(time);
    next = place->second + 1;
  }

  std::vector<StockTime> dates;
  std::unordered_map<uint32_t, uint32_t> places;
  uint32_t next = 0;
};

void writeStock(const StockData& stock, DateTable& table, Bytes& bytes, std::ostream& file) {
  bytes.put(stock.type);
  bytes.put(stock.code);
  bytes.put(static_cast<uint32_t>(stock.name.size()));
  bytes.put(stock.name);
  bytes.put(static_cast<uint32_t>(stock.days.size()));
  std::size_t written = 0;
  for (const DayData& day : stock.days) {
    bytes.put(table.indexOf(day.time));
    bytes.put(day.prices);
    bytes.put(day.ratios);
    bytes.put(day.volumes);
    if (++written % kBlock == 0) bytes.flush(file);
  }
  bytes.put(static_cast<uint32_t>(stock.attributes.size()));
  for (const uint16_t attribute : stock.attributes) bytes.put(attribute);
  bytes.flush(file);
}

/// A file that gives values until it ends; a count in it is never believed before its bytes have come.
class Reader {
 public:
  explicit Reader(const std::string& path) : file(path, std::ios::binary) {}

  template <class T>
  std::optional<T> take() {
    T value;
    if (!file.read(reinterpret_cast<char*>(&value), sizeof(T))) return std::nullopt;
    return value;
  }

  /// `count` items of `size` bytes, a block at a time; `use` gets each item and says whether it is right.
  template <class Use>
  bool takeAll(uint32_t count, std::size_t size, Use&& use) {
    std::vector<char> block(std::min<std::size_t>(count, kItemsAtOnce) * size);
    while (count > 0) {
      const auto items = std::min<uint32_t>(count, kItemsAtOnce);
      if (!file.read(block.data(), static_cast<std::streamsize>(items * size))) return false;
      for (const char* item = block.data(); item != block.data() + items * size; item += size)
        if (!use(item)) return false;
      count -= items;
    }
    return true;
  }

 private:
  static constexpr uint32_t kItemsAtOnce = 4096;
  std::ifstream file;
};

template <class T>
void read(const char*& from, T& value) {
  std::memcpy(&value, from, sizeof(T));
  from += sizeof(T);
}

bool headerFits(Reader& reader) {
  // A longer header than ours cannot be equal to it, so that its length alone decides.
  return reader.take<int32_t>() == static_cast<int32_t>(kHeader.size()) &&
         reader.take<std::array<char, kHeader.size()>>() == kHeader;
}

bool readDays(Reader& reader, std::span<const StockTime> dates, std::vector<DayData>& days) {
  const auto count = reader.take<uint32_t>();
  if (!count) return false;
  days.reserve(std::min<std::size_t>(*count, 1 << 16));
  return reader.takeAll(*count, kDayBytes, [&](const char* from) {
    uint32_t date;
    read(from, date);
    if (date >= dates.size()) return false;
    DayData& day = days.emplace_back();
    day.time = dates[date];
    read(from, day.prices);
    read(from, day.ratios);
    read(from, day.volumes);
    return true;
  });
}

std::unique_ptr<StockData> readStock(Reader& reader, std::span<const StockTime> dates) {
  const auto type = reader.take<uint8_t>();
  const auto code = reader.take<int32_t>();
  const auto nameLength = reader.take<uint32_t>();
  if (!type || !code || !nameLength) return nullptr;
  auto stock = std::make_unique<StockData>(*type, *code);
  const auto addLetter = [&](const char* from) { return stock->name.push_back(*from), true; };
  if (!reader.takeAll(*nameLength, 1, addLetter) || !readDays(reader, dates, stock->days)) return nullptr;

  const auto attributes = reader.take<uint32_t>();
  const auto addAttribute = [&](const char* from) {
    uint16_t attribute;
    read(from, attribute);
    stock->attributes.insert(attribute);
    return true;
  };
  if (!attributes || !reader.takeAll(*attributes, sizeof(uint16_t), addAttribute)) return nullptr;
  stock->daysWereRead();
  return stock;
}

}  // namespace

bool saveStocks(std::vector<const StockData*> stocks, const std::string& path) {
  std::stable_sort(stocks.begin(), stocks.end(), [](const StockData* a, const StockData* b) {
    return std::pair(a->type, a->code) < std::pair(b->type, b->code);
  });
  TargetFile target(path);
  std::ostream& file = target.stream();
  DateTable table(stocks);
  Bytes bytes;
  bytes.put(static_cast<int32_t>(kHeader.size()));
  bytes.put(kHeader);
  bytes.flush(file);
  bytes.put(static_cast<uint32_t>(table.all().size()));
  for (const StockTime time : table.all()) bytes.put(time);
  bytes.put(static_cast<int32_t>(stocks.size()));
  bytes.flush(file);
  for (const StockData* stock : stocks) writeStock(*stock, table, bytes, file);
  return target.commit();
}

std::vector<StockData*> loadStocks(StockStore& store, const std::string& path) {
  std::vector<StockData*> loaded;
  Reader reader(path);
  if (!headerFits(reader)) return loaded;

  const auto dateCount = reader.take<uint32_t>();
  std::vector<StockTime> dates;
  const auto addDate = [&](const char* from) { return read(from, dates.emplace_back()), true; };
  if (!dateCount || !reader.takeAll(*dateCount, sizeof(StockTime), addDate)) return loaded;

  const int32_t stockCount = reader.take<int32_t>().value_or(0);
  for (int32_t i = 0; i < stockCount; ++i) {
    std::unique_ptr<StockData> stock = readStock(reader, dates);
    if (stock == nullptr) break;
    loaded.push_back(&store.put(std::move(stock)));
  }
  return loaded;
}

}  // namespace Stock
