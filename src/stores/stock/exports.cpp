// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "frame/handle.h"
#include "frame/text.h"
#include "orvane/stock.h"
#include "stores/stock/attributes.h"
#include "stores/stock/stock_file.h"
#include "stores/stock/stock_store.h"

using namespace Stock;

template <>
struct NativeOf<::StockData> {
  using type = Stock::StockData;
};

namespace {

using Handle = ::StockData;

StockStore& store() { return StockStore::instance(); }

StockTime date(uint32_t year, uint32_t month, uint32_t day) {
  return {static_cast<uint16_t>(year), static_cast<uint8_t>(month), static_cast<uint8_t>(day)};
}

const char* textOf(const char* text) { return text != nullptr ? text : ""; }

int32_t handOutAll(const std::vector<Stock::StockData*>& stocks, Handle** out) {
  if (out != nullptr) std::transform(stocks.begin(), stocks.end(), out, handleOf<Handle>);
  return static_cast<int32_t>(stocks.size());
}

uint8_t handOutFound(Stock::StockData* stock, Handle** out) {
  if (stock != nullptr) *out = handleOf<Handle>(stock);
  return stock != nullptr;
}

}  // namespace

Handle* stock_tryToGetStock(uint8_t type, const char* name) {
  return handleOf<Handle>(&store().tryToGetStock(type, textOf(name)));
}

Handle* stock_getStock(int32_t code, uint8_t type) { return handleOf<Handle>(&store().getStock(code, type)); }

const char* stock_getStockName(const Handle* stock) { return native(stock).name.c_str(); }

void stock_setName(Handle* stock, const char* name) { native(stock).name = textOf(name); }

int32_t stock_getStockCode(const Handle* stock) { return native(stock).code; }

uint8_t stock_getStockType(const Handle* stock) { return native(stock).type; }

int32_t stock_getAllStockSize(uint8_t type) { return static_cast<int32_t>(store().countOf(type)); }

int32_t stock_getAllStocks(uint8_t type, Handle** out) { return handOutAll(store().stocksOf(type), out); }

uint8_t stock_searchStockByCode(int32_t code, Handle** out) { return handOutFound(store().searchByCode(code), out); }

uint8_t stock_searchStockByName(const char* name, Handle** out) {
  return handOutFound(store().searchByName(textOf(name)), out);
}

void stock_setData(Handle* stock, uint32_t year, uint32_t month, uint32_t day, double value0, double value1,
                   double value2, double value3, double value4, double value5, double value6, double value7,
                   double value8) {
  const double values[] = {value0, value1, value2, value3, value4, value5, value6, value7, value8};
  native(stock).setData(date(year, month, day), values);
}

int32_t stock_getData(const Handle* stock, uint8_t field, int32_t first, int32_t last, double* out) {
  return native(stock).getData(field, first, last, out);
}

void stock_getTimeRange(const Handle* stock, uint32_t year1, uint32_t month1, uint32_t day1, uint32_t year2,
                        uint32_t month2, uint32_t day2, int32_t* out) {
  const auto range = native(stock).getTimeRange(date(year1, month1, day1), date(year2, month2, day2));
  out[0] = range.first;
  out[1] = range.last;
}

bool stock_dateIsExist(const Handle* stock, uint32_t year, uint32_t month, uint32_t day) {
  return native(stock).dateIsExist(date(year, month, day));
}

void stock_deleteData(Handle* stock, int32_t index, int32_t count) { native(stock).deleteData(index, count); }

void stock_sort(Handle* stock) { native(stock).sort(); }

void stock_addAttributeType(Handle* stock, uint16_t type) { native(stock).attributes.insert(type); }

void stock_deleteAttributeType(Handle* stock, uint16_t type) { native(stock).attributes.erase(type); }

void stock_clearAttributeType(Handle* stock) { native(stock).attributes.clear(); }

int32_t stock_getAllAttributeType(uint16_t* out, int32_t size) {
  constexpr auto count = static_cast<int32_t>(kAttributeCount);
  if (size >= count) std::generate_n(out, count, [type = uint16_t{0}]() mutable { return type++; });
  return count;
}

const char* stock_getAttributeTypeStr(uint16_t type) {
  static std::string text;
  text = toGBK(attributeName(type));
  return text.c_str();
}

uint32_t stock_saveStock(const Handle* const* handles, int32_t count, const char* path) {
  std::vector<const Stock::StockData*> stocks;
  for (const Handle* handle : span(handles, count)) stocks.push_back(&native(handle));
  if (count <= 0) {
    const auto all = store().allStocks();
    stocks.assign(all.begin(), all.end());
  }
  return saveStocks(std::move(stocks), textOf(path)) ? 1 : 0;
}

int32_t stock_loadStock(const char* path, Handle** out) { return handOutAll(loadStocks(store(), textOf(path)), out); }
