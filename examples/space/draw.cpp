// SPDX-License-Identifier: Apache-2.0
#include "draw.h"

#include <algorithm>
#include <cmath>

void Strokes::add(double x, double y) {
  xs.push_back(x);
  ys.push_back(y);
}

void Strokes::gap() { add(NAN, NAN); }

void Strokes::segment(double x1, double y1, double x2, double y2) {
  add(x1, y1);
  add(x2, y2);
  gap();
}

std::pair<Axis, Axis> mapAxes(Axis x, Axis y, double aspect) {
  constexpr double kShape = 680.0 / 364.0;  // of a plot's area, width to height
  const double width = x.high - x.low, height = (y.high - y.low) * aspect;
  const double moreX = std::max(0.0, height * kShape - width) / 2;
  const double moreY = std::max(0.0, width / kShape - height) / 2 / aspect;
  x.low -= moreX, x.high += moreX, y.low -= moreY, y.high += moreY;
  return {x, y};
}

std::string legend(std::initializer_list<std::pair<const char*, const char*>> entries) {
  std::string html = "<ul class=\"legend\">";
  for (const auto& [style, text] : entries)
    html += std::string("<li class=\"") + style + "\"><span class=\"swatch\"></span>" + text + "</li>";
  return html + "</ul>\n";
}

std::string table(const std::vector<std::string>& titles, const std::vector<std::vector<std::string>>& rows) {
  const auto line = [](const std::string& tag, const std::vector<std::string>& cells) {
    std::string html = "<tr>";
    for (size_t k = 0; k < cells.size(); ++k)
      html += "<" + tag + (k > 0 ? " class=\"number\">" : ">") + escaped(cells[k]) + "</" + tag + ">";
    return html + "</tr>\n";
  };
  std::string html =
      "<div class=\"card wide\"><table class=\"ranking\"><thead>" + line("th", titles) + "</thead><tbody>\n";
  for (const auto& row : rows) html += line("td", row);
  return html + "</tbody></table></div>\n";
}
