// SPDX-License-Identifier: Apache-2.0
#include <iconv.h>
#include <orvane/stock.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <random>

#include "complaint.h"
#include "csv.h"
#include "draw.h"
#include "page.h"
#include "sections.h"

namespace {

constexpr uint8_t kRiver = 200, kWalk = 201;  // types of this program's own
constexpr int32_t kRiverCode = 1, kWalkCode = 2;
constexpr uint16_t kPower = 42;  // an attribute: electricity
constexpr unsigned kSeriesSeed = 7;
constexpr int32_t kDays = 500, kShown = 120, kMostYears = 9000;
enum Field : uint8_t { kOpen, kHigh, kLow, kClose, kChange, kVolume = 7 };

std::vector<double> valuesOf(const StockData* stock, uint8_t field, int32_t first, int32_t last) {
  std::vector<double> values(static_cast<size_t>(last - first + 1));
  values.resize(static_cast<size_t>(stock_getData(stock, field, first, last, values.data())));
  return values;
}

// Yearly flows, each on the first of July.
StockData* riverFrom(const std::string& path) {
  StockData* river = stock_getStock(kRiverCode, kRiver);
  stock_setName(river, "river");
  stock_addAttributeType(river, kPower);
  readRows(path, ';', {"year", "flow"}, [river](const CsvReader& reader, const auto& cells) {
    const double year = reader.number(cells[0], 1, 9000, "year");
    const double flow = reader.number(cells[1], -2e7, 2e7, "flow within 20 millions");
    stock_setData(river, static_cast<uint32_t>(year), 7, 1, flow, 0, 0, 0, 0, 0, 0, 0, 0);
  });
  return river;
}

// A geometric random walk: the logarithm moves by a normal step of 1.5 per cent four times a day, from Monday to
// Friday.
StockData* drawnWalk() {
  using namespace std::chrono;
  StockData* walk = stock_getStock(kWalkCode, kWalk);
  stock_setName(walk, "drawn walk");
  std::mt19937 generator(kSeriesSeed);
  std::normal_distribution<double> normal;
  double price = 40;
  sys_days day = 2023y / January / 2;
  for (int32_t k = 0; k < kDays; day += days(1)) {
    if (weekday(day) == Saturday || weekday(day) == Sunday) continue;
    ++k;
    const double open = price;
    double high = open, low = open;
    for (int part = 0; part < 4; ++part) {
      price *= std::exp(0.0075 * normal(generator));
      high = std::max(high, price);
      low = std::min(low, price);
    }
    const year_month_day date(day);
    stock_setData(walk, static_cast<uint32_t>(static_cast<int>(date.year())), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()), open, high, low, price, 100 * (price / open - 1), 0, 0,
                  1e7 * std::exp(normal(generator)), 0);
  }
  return walk;
}

std::string fromGBK(const std::string& text) {
  const iconv_t converter = iconv_open("UTF-8", "GBK");
  if (converter == reinterpret_cast<iconv_t>(-1)) return "?";
  std::string in = text, out(4 * text.size(), '\0');
  char *from = in.data(), *to = out.data();
  size_t left = in.size(), room = out.size();
  const size_t failed = iconv(converter, &from, &left, &to, &room);
  iconv_close(converter);
  return failed == 0 ? out.substr(0, out.size() - room) : "?";
}

std::string candles(const StockData* walk) {
  const auto open = valuesOf(walk, kOpen, kDays - kShown, kDays - 1),
             high = valuesOf(walk, kHigh, kDays - kShown, kDays - 1),
             low = valuesOf(walk, kLow, kDays - kShown, kDays - 1),
             close = valuesOf(walk, kClose, kDays - kShown, kDays - 1);
  Strokes up, down;
  for (size_t k = 0; k < open.size(); ++k) {
    Strokes& strokes = close[k] >= open[k] ? up : down;
    const auto x = static_cast<double>(k);
    strokes.segment(x, low[k], x, high[k]);
    strokes.segment(x - 0.4, open[k], x, open[k]);
    strokes.segment(x, close[k], x + 0.4, close[k]);
  }
  const auto [least, most] =
      std::pair(*std::min_element(low.begin(), low.end()), *std::max_element(high.begin(), high.end()));
  SvgPlot plot("Last days of the drawn series", {-1, kShown, "day"}, {std::floor(least), std::ceil(most), "price"});
  plot.line(up.xs, up.ys, "s6");
  plot.line(down.xs, down.ys, "s8");
  return figure("candles", legend({{"s6", "closed higher"}, {"s8", "closed lower"}}), plot.svg(),
                "The last " + std::to_string(kShown) +
                    " days of a random walk, drawn by this program: no market has made it. A bar goes from the day's "
                    "lowest to its highest, with its opening on the left and its close on the right.");
}

std::string flows(const StockData* river) {
  int32_t range[2];
  stock_getTimeRange(river, 1, 1, 1, 9000, 12, 31, range);
  const auto flow = valuesOf(river, 0, range[0], range[1]);
  std::vector<double> places(flow.size());
  for (size_t k = 0; k < places.size(); ++k) places[k] = static_cast<double>(k);
  SvgPlot plot("Flow of the river", {0, std::max(1.0, places.back()), "years from the first one"},
               {0, 1.1 * *std::max_element(flow.begin(), flow.end()), "flow"});
  plot.line(places, flow, "s1");
  return figure("river", "", plot.svg(),
                "The file's series as the store gives it, one day of the store a year. What comes with this program is "
                "the Nile at Aswan, 1871 to 1970, in 10<sup>8</sup> cubic metres.");
}

}  // namespace

std::string seriesSection(const std::string& riverFile, const std::string& store) {
  StockData* const made[] = {riverFrom(riverFile), drawnWalk()};
  const auto before = valuesOf(made[1], kClose, 0, kDays - 1);
  if (stock_saveStock(made, 2, store.c_str()) != 1) throw Complaint(store + ": cannot be written");
  StockData* loaded[2] = {};
  if (stock_loadStock(store.c_str(), loaded) != 2 || valuesOf(loaded[1], kClose, 0, kDays - 1) != before)
    throw Complaint(store + ": does not come back as it was saved");

  StockData *river = nullptr, *walk = nullptr;
  if (stock_searchStockByName("river", &river) != 1 || stock_searchStockByCode(kWalkCode, &walk) != 1)
    throw Complaint(store + ": holds other stocks");
  const auto bytes = std::filesystem::file_size(store);
  int32_t spring[2];
  stock_getTimeRange(walk, 2024, 3, 1, 2024, 5, 31, spring);
  const auto closes = valuesOf(walk, kClose, spring[0], spring[1]);
  std::printf("series:     %ju bytes hold %zu days, saved and loaded\n", static_cast<uintmax_t>(bytes),
              before.size() + valuesOf(river, kOpen, 0, kMostYears - 1).size());
  return "<h2 id=\"series\">Series in the stock store</h2>\n<p>A river's yearly flow from a file and a drawn series "
         "of " +
         std::to_string(kDays) + " days go into the store, are saved to " + escaped(store) +
         ", loaded in their own place and searched by name and by code.</p>\n<p class=\"answer\">The file has "
         "<strong>" +
         shortNumber(static_cast<double>(bytes)) + " bytes</strong>; every value came back.</p>\n" + candles(walk) +
         flows(river) +
         table({"Found", "Asked for", "Answer"},
               {{"the river", "name \"river\"", "code " + std::to_string(stock_getStockCode(river))},
                {"the drawn series", "code 2", std::string("\"") + stock_getStockName(walk) + "\""},
                {"an attribute of the river", "number " + std::to_string(kPower),
                 fromGBK(stock_getAttributeTypeStr(kPower))},
                {"days from March to May 2024", "their range", std::to_string(closes.size())},
                {"the first of May 2024", "is there", stock_dateIsExist(walk, 2024, 5, 1) ? "yes" : "no"}});
}
