// SPDX-License-Identifier: Apache-2.0
#include "smoothers.h"

#include <orvane/smooth.h>

#include <cmath>
#include <functional>

#include "handle.h"
#include "page.h"
#include "view.h"

namespace {

struct Smoother {
  std::string name;
  std::function<void(const Series&, Series&)> run;
};

std::vector<Smoother> smoothers(double rate, double tolerance) {
  const int32_t width = 2 * static_cast<int32_t>(rate / 2) + 1;
  return {
      {"sliding mean", [=](auto& x, auto& y) { filterByMeanFilter(x.data(), y.data(), count(x), width); }},
      {"sliding median", [=](auto& x, auto& y) { filterByMedianFilter(x.data(), y.data(), count(x), width); }},
      {"Savitzky-Golay, cubic",
       [=](auto& x, auto& y) { filterBySavitzkyGolay(x.data(), y.data(), count(x), 1 / rate, 3, 2 * width + 1); }},
      {"radial kernel 5", [=](auto& x, auto& y) { filterByRadialFun(x.data(), y.data(), count(x), width / 2, 1, 5); }},
      {"line within " + shortNumber(tolerance, 3), [=](auto& x, auto& y) {
         const Owned<SmoothLine> line(api_SmoothLine_Create(x.data(), count(x), 3, tolerance));
         api_SmoothLine_GetRes(line.get(), y.data());
       }}};
}

double rootMeanSquare(const Series& x) {
  double sum = 0;
  for (const double value : x) sum += value * value;
  return std::sqrt(sum / static_cast<double>(x.size()));
}

Series secondDifferences(const Series& x) {
  Series first(x.size() - 1), second(x.size() - 2);
  calFirstOrderDiff(x.data(), count(x), first.data());
  calFirstOrderDiff(first.data(), count(first), second.data());
  return second;
}

}  // namespace

std::string smootherSection(const Record& record) {
  const Series& x = record.value;
  const double tolerance = 1.5 * rootMeanSquare(record.season) + 1e-12;
  std::vector<Series> smooth;
  std::string table = tableHead({"Smoother", "Distance from the record", "Second differences"});
  const auto row = [&](const std::string& name, const Series& y) {
    Series away(x);
    for (size_t i = 0; i < away.size(); ++i) away[i] -= y[i];
    table += "<tr><td>" + escaped(name) + "</td>" + numberCell(rootMeanSquare(away)) +
             numberCell(rootMeanSquare(secondDifferences(y))) + "</tr>\n";
  };
  row("none", x);
  const std::vector<Smoother> all = smoothers(record.rate, tolerance);
  for (const Smoother& smoother : all) {
    smooth.emplace_back(x.size());
    smoother.run(x, smooth.back());
    row(smoother.name, smooth.back());
  }
  std::vector<Curve> shown{{"record", &x}};
  for (size_t i = 0; i < all.size(); ++i) shown.push_back({all[i].name, &smooth[i]});
  return "<h2 id=\"smoothers\">Smoothers side by side</h2>\n" +
         View(record, 8).figure("smoothed", "Smoothers", record.name, shown, "The last 8 units of time.") + table +
         kTableEnd + "<p class=\"soft\">Root mean squares over the whole record.</p>\n";
}
