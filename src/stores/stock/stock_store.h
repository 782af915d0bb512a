// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

#include "stores/stock/stock_data.h"

namespace Stock {

/// All stocks of the process: by type, then by code. A stock lives until the library is unloaded, also one that a
/// loaded file has replaced, as the host may hold its handle. Without a lock.
class StockStore {
 public:
  static StockStore& instance();

  StockData& getStock(int32_t code, uint8_t type);

  /// The stock of this type with the name. Else one is made: a text that is a whole decimal number gives its code,
  /// another name the next code below 0 that is free.
  StockData& tryToGetStock(uint8_t type, std::string_view name);

  StockData* searchByCode(int32_t code) const;  ///< the first in order of type; null for none
  StockData* searchByName(std::string_view name) const;
  std::vector<StockData*> stocksOf(uint8_t type) const;  ///< in ascending order of code
  std::vector<StockData*> allStocks() const;             ///< in ascending order of type, then code
  std::size_t countOf(uint8_t type) const;
  StockData& put(std::unique_ptr<StockData> stock);

 private:
  using Stocks = std::map<int32_t, std::unique_ptr<StockData>>;

  std::map<uint8_t, Stocks> types;
  std::vector<std::unique_ptr<StockData>> replaced;
};

}  // namespace Stock
