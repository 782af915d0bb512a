// SPDX-License-Identifier: Apache-2.0
#include "stores/stock/stock_store.h"

#include <charconv>
#include <optional>

namespace Stock {
namespace {

std::optional<int32_t> wholeNumber(std::string_view text) {
  int32_t number;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return number;
}

// The largest code below 0 that no stock has.
template <class Stocks>
int32_t freeCode(const Stocks& stocks) {
  int32_t code = -1;
  while (stocks.contains(code)) --code;
  return code;
}

}  // namespace

StockStore& StockStore::instance() {
  static StockStore store;
  return store;
}

StockData& StockStore::getStock(int32_t code, uint8_t type) {
  std::unique_ptr<StockData>& stock = types[type][code];
  if (stock == nullptr) stock = std::make_unique<StockData>(type, code);
  return *stock;
}

StockData& StockStore::tryToGetStock(uint8_t type, std::string_view name) {
  Stocks& stocks = types[type];
  for (const auto& [code, stock] : stocks)
    if (stock->name == name) return *stock;
  StockData& stock = getStock(wholeNumber(name).value_or(freeCode(stocks)), type);
  if (stock.name.empty()) stock.name = name;
  return stock;
}

StockData* StockStore::searchByCode(int32_t code) const {
  for (const auto& [type, stocks] : types)
    if (const auto place = stocks.find(code); place != stocks.end()) return place->second.get();
  return nullptr;
}

StockData* StockStore::searchByName(std::string_view name) const {
  for (const auto& [type, stocks] : types)
    for (const auto& [code, stock] : stocks)
      if (stock->name == name) return stock.get();
  return nullptr;
}

std::vector<StockData*> StockStore::stocksOf(uint8_t type) const {
  std::vector<StockData*> found;
  if (const auto place = types.find(type); place != types.end())
    for (const auto& [code, stock] : place->second) found.push_back(stock.get());
  return found;
}

std::vector<StockData*> StockStore::allStocks() const {
  std::vector<StockData*> found;
  for (const auto& [type, stocks] : types)
    for (const auto& [code, stock] : stocks) found.push_back(stock.get());
  return found;
}

std::size_t StockStore::countOf(uint8_t type) const {
  const auto place = types.find(type);
  return place == types.end() ? 0 : place->second.size();
}

StockData& StockStore::put(std::unique_ptr<StockData> stock) {
  std::unique_ptr<StockData>& place = types[stock->type][stock->code];
  std::swap(place, stock);
  if (stock != nullptr) replaced.push_back(std::move(stock));
  return *place;
}

}  // namespace Stock
