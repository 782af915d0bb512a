// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <vector>

#include "stores/stock/stock_store.h"

/// The binary file of stocks: header, table of the distinct dates, one record a stock. Numbers are little-endian.
namespace Stock {

/// Writes beside the target and renames. @return false when the file cannot be written; the target is then as it was
bool saveStocks(std::vector<const StockData*> stocks, const std::string& path);

/// Puts the stocks of a file into the store, up to the first damaged record. @return them, in the order of the file
std::vector<StockData*> loadStocks(StockStore& store, const std::string& path);

}  // namespace Stock
