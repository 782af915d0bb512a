// SPDX-License-Identifier: Apache-2.0
#include "residuals.h"

#include <orvane/statistics.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>

#include "page.h"
#include "view.h"

namespace {

constexpr int32_t kSegments = 25;

using Sample = std::unique_ptr<StatFun, void (*)(StatFun*)>;

struct Family {
  const char* name;
  uint8_t code;
  Series params;  ///< by moments
};

std::vector<Family> families(const Series& x) {
  const double mean = data_calcDataMean(x.data(), count(x)), deviation = data_calcDataStd(x.data(), count(x));
  const double median = data_calcDataMedian(x.data(), count(x));
  double distance = 0;
  for (const double value : x) distance += std::abs(value - median) / static_cast<double>(x.size());
  const double steep = deviation * std::sqrt(6) / std::numbers::pi;
  return {{"normal", ORVANE_STAT_NORMAL, {mean, deviation}},
          {"logistic", ORVANE_STAT_LOGISTIC, {mean, deviation * std::sqrt(3) / std::numbers::pi}},
          {"Laplace", ORVANE_STAT_LAPLACE, {median, distance}},
          {"Gumbel", ORVANE_STAT_GUMBEL, {mean - std::numbers::egamma * steep, steep}}};
}

Sample bound(const Series& x, const Family& family) {
  Sample sample(stat_CreateSBD(x.data(), count(x)), stat_Free);
  stat_SetParam(sample.get(), family.params.data(), count(family.params));
  return sample;
}

std::string densityText(const Family& family) {
  std::string text(static_cast<size_t>(stat_GetFunInfo(nullptr, family.code, nullptr)), ' ');
  stat_GetFunInfo(nullptr, family.code, text.data());
  return text.substr(0, text.find('\n'));
}

std::string histogram(const Series& x, const std::vector<Family>& all, const std::string& name) {
  Series centres(kSegments), counts(kSegments), edges;
  data_segmentCount(x.data(), count(x), kSegments, centres.data(), counts.data());
  const double width = centres[1] - centres[0];
  for (const double centre : centres) edges.push_back(centre - width / 2);
  edges.push_back(centres.back() + width / 2);
  const Axis across = axisOver({&x}, "residual of " + name);
  Series points;
  for (int k = 0; k <= 400; ++k) points.push_back(across.low + (across.high - across.low) * k / 400);
  double top = *std::max_element(counts.begin(), counts.end());
  std::vector<Series> curves;
  for (const Family& family : all) {
    // Expected counts of a segment around each point.
    Series low(points), high(points);
    for (size_t i = 0; i < points.size(); ++i) {
      low[i] -= width / 2;
      high[i] += width / 2;
    }
    const Sample fun = bound(x, family);
    stat_calcFun(fun.get(), family.code, low.data(), low.data(), count(low));
    stat_calcFun(fun.get(), family.code, high.data(), high.data(), count(high));
    for (size_t i = 0; i < points.size(); ++i) high[i] = (high[i] - low[i]) * static_cast<double>(x.size());
    top = std::max(top, *std::max_element(high.begin(), high.end()));
    curves.push_back(high);
  }
  SvgPlot plot("Histogram of the residuals", across, {0, 1.05 * top, "count"});
  plot.bars(edges, counts);
  std::string legend = "<ul class=\"legend\">";
  for (size_t i = 0; i < all.size(); ++i) {
    const std::string style = "s" + std::to_string(i + 1);
    plot.line(points, curves[i], style);
    legend += "<li class=\"" + style + "\"><span class=\"swatch\"></span>" + all[i].name + "</li>";
  }
  return figure("histogram", legend + "</ul>\n", plot.svg(), "Counts, and what four families expect.");
}

std::string quantilePlot(const Series& x, const Family& normal) {
  Series values(x.size()), ranks(x.size()), model(x.size());
  const int32_t distinct = data_normQQData(x.data(), count(x), values.data(), ranks.data(), model.data());
  for (Series* series : {&values, &ranks, &model}) series->resize(static_cast<size_t>(distinct));
  Series expected(ranks.size());
  stat_calcInvCDFFun(bound(x, normal).get(), normal.code, ranks.data(), expected.data(), distinct);
  const Axis across = axisOver({&expected}, "quantile of the normal law");
  SvgPlot plot("Quantile plot", across, axisOver({&values}, "residual"));
  plot.line({across.low, across.high}, {across.low, across.high}, "ideal");
  plot.dots(expected, values, "s1");
  return figure("quantiles", "", plot.svg(),
                "Residuals against the quantiles of the normal law of their mean and "
                "deviation.");
}

std::string verdict(double p) { return p < 0.01 ? "rejected" : p < 0.05 ? "doubtful" : "not rejected"; }

}  // namespace

std::vector<TestResult> normalityTests(const Series& x) {
  double w = 0, shapiro = 0;
  data_normTestByShapiroWilk(x.data(), count(x), &w, &shapiro, nullptr, nullptr, false);
  return {{"Kolmogorov-Smirnov", data_normTestByKolmogorovSmirnov(x.data(), count(x))},
          {"Anderson-Darling", data_normTestByAndersonDarling(x.data(), count(x))},
          {"Jarque-Bera", data_normTestByJarqueBera(x.data(), count(x))},
          {"Shapiro-Wilk, W = " + shortNumber(w, 5), shapiro}};
}

std::string residualSection(const Record& record) {
  const Series& x = record.residual;
  const std::vector<Family> all = families(x);
  std::string html =
      "<h2 id=\"residuals\">What is left</h2>\n<p>The record less its trend and less the mean course of a unit of "
      "time.</p>\n<dl class=\"facts\">";
  const std::pair<const char*, double> facts[] = {{"Deviation", data_calcDataStd(x.data(), count(x))},
                                                  {"Skewness", data_calcDataSkewness(x.data(), count(x))},
                                                  {"Kurtosis", data_calcDataKurtosis(x.data(), count(x))},
                                                  {"Median", data_calcDataMedian(x.data(), count(x))}};
  for (const auto& [name, value] : facts)
    html += std::string("<div><dt>") + name + "</dt><dd>" + shortNumber(value, 4) + "</dd></div>";
  html += "</dl>\n" + histogram(x, all, record.name) + quantilePlot(x, all[0]) +
          tableHead({"Test for normality", "p", "At 1 % and 5 %"});
  for (const TestResult& test : normalityTests(x))
    html += "<tr><td>" + escaped(test.name) + "</td>" + numberCell(test.p) + "<td class=\"number\">" + verdict(test.p) +
            "</td></tr>\n";
  html += std::string(kTableEnd) + tableHead({"Family, parameters by moments", "Kolmogorov-Smirnov p"});
  for (const Family& family : all)
    html += std::string("<tr><td>") + family.name + " <span class=\"soft\">" + escaped(densityText(family)) +
            "</span></td>" + numberCell(stat_testByKSForFun(bound(x, family).get(), family.code)) + "</tr>\n";
  return html + kTableEnd +
         "<p class=\"notice\">The tests take the residuals as independent and the parameters as known. Neighbours in "
         "time are not independent, and the parameters come from the sample: small p values are too small for the one "
         "reason, great ones too great for the other.</p>\n";
}
