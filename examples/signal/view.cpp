// SPDX-License-Identifier: Apache-2.0
#include "view.h"

#include <algorithm>
#include <cmath>

#include "page.h"

Axis axisOver(const std::vector<const Series*>& all, const std::string& label) {
  double low = HUGE_VAL, high = -HUGE_VAL;
  for (const Series* series : all)
    for (const double value : *series)
      if (std::isfinite(value)) {
        low = std::min(low, value);
        high = std::max(high, value);
      }
  const double margin = high > low ? 0.05 * (high - low) : 1;
  return {low - margin, high + margin, label};
}

std::string curves(const std::string& id, const std::string& title, const Series& x, const Axis& across, const Axis& up,
                   const std::vector<Curve>& all, const std::string& caption) {
  SvgPlot plot(title, across, up);
  std::string legend = "<ul class=\"legend\">";
  for (size_t i = 0; i < all.size(); ++i) {
    // The first is the thick one and goes below the others.
    const std::string style = "s" + std::to_string(i + 1);
    plot.line(x, *all[i].values, style);
    legend += "<li class=\"" + style + "\"><span class=\"swatch\"></span>" + escaped(all[i].name) + "</li>";
  }
  return figure(id, all.size() > 1 ? legend + "</ul>\n" : "", plot.svg(), caption);
}

View::View(const Record& record, double units) : record(record), first(0) {
  const auto wanted = static_cast<size_t>(units * record.rate);
  if (wanted > 0 && wanted < record.time.size()) first = record.time.size() - wanted;
}

std::string View::figure(const std::string& id, const std::string& title, const std::string& label,
                         const std::vector<Curve>& all, const std::string& caption) const {
  const auto cut = [this](const Series& series) {
    return Series(series.begin() + static_cast<std::ptrdiff_t>(first), series.end());
  };
  std::vector<Series> parts;
  for (const Curve& curve : all) parts.push_back(cut(*curve.values));
  std::vector<Curve> shown;
  std::vector<const Series*> ranges;
  for (size_t i = 0; i < all.size(); ++i) {
    shown.push_back({all[i].name, &parts[i]});
    ranges.push_back(&parts[i]);
  }
  const Series time = cut(record.time);
  return curves(id, title, time, {time.front(), time.back(), "time"}, axisOver(ranges, label), shown, caption);
}

std::string numberCell(double value, int digits) {
  return "<td class=\"number\">" + (std::isfinite(value) ? shortNumber(value, digits) : "&ndash;") + "</td>";
}

std::string tableHead(const std::vector<std::string>& names) {
  std::string html = "<div class=\"card wide\"><table class=\"ranking\"><thead><tr>";
  for (size_t i = 0; i < names.size(); ++i)
    html += std::string("<th") + (i > 0 ? " class=\"number\">" : ">") + names[i] + "</th>";
  return html + "</tr></thead><tbody>\n";
}
