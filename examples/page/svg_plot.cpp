// SPDX-License-Identifier: Apache-2.0
#include "svg_plot.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace {

// The drawing area inside the view box, in its units.
constexpr double kWidth = 760;
constexpr double kHeight = 430;
constexpr double kLeft = 66;
constexpr double kRight = kWidth - 14;
constexpr double kTop = 12;
constexpr double kBottom = kHeight - 54;

std::string fixed(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f", value);
  return text;
}

std::string element(const std::string& name, const std::vector<std::pair<std::string, std::string>>& attributes) {
  std::string result = "<" + name;
  for (const auto& [key, value] : attributes) result += " " + key + "=\"" + value + "\"";
  return result + "/>\n";
}

std::string label(double x, double y, const std::string& style, const std::string& text, const std::string& more = "") {
  return "<text class=\"" + style + "\" x=\"" + fixed(x) + "\" y=\"" + fixed(y) + "\"" + more + ">" + escaped(text) +
         "</text>\n";
}

// Text in a link: RFC 3986 leaves these characters as they are.
std::string percentEncoded(const std::string& text) {
  std::string result;
  for (const char c : text) {
    char code[4];
    std::snprintf(code, sizeof code, "%%%02X", static_cast<unsigned char>(c));
    result += std::isalnum(static_cast<unsigned char>(c)) || std::strchr("-._~,", c) ? std::string(1, c) : code;
  }
  return result;
}

// A cell of a CSV file (RFC 4180).
std::string csvCell(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string result = "\"";
  for (const char c : text) result += c == '"' ? std::string("\"\"") : std::string(1, c);
  return result + "\"";
}

std::string fileName(const std::string& title) {
  std::string result;
  for (const char c : title)
    if (std::isalnum(static_cast<unsigned char>(c)))
      result += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    else if (!result.empty() && result.back() != '-')
      result += '-';
  while (!result.empty() && result.back() == '-') result.pop_back();
  return (result.empty() ? "plot" : result) + ".csv";
}

}  // namespace

std::vector<double> ticks(double low, double high, int wanted) {
  const double rough = (high - low) / wanted;
  const double power = std::pow(10.0, std::floor(std::log10(rough)));
  double step = 10 * power;
  for (const double factor : {5.0, 2.0, 1.0})
    if (factor * power >= rough) step = factor * power;
  std::vector<double> result;
  for (double i = std::ceil(low / step - 1e-9); i * step <= high + 1e-9 * step; ++i) result.push_back(i * step + 0.0);
  return result;
}

std::string shortNumber(double value, int digits) {
  char text[40];
  std::snprintf(text, sizeof text, "%.*g", digits, value);
  return text;
}

std::string escaped(const std::string& text) {
  std::string result;
  for (const char c : text) {
    switch (c) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '"':
        result += "&quot;";
        break;
      default:
        result += c;
    }
  }
  return result;
}

SvgPlot::SvgPlot(std::string title, Axis x, Axis y) : title(std::move(title)), x(std::move(x)), y(std::move(y)) {}

double SvgPlot::left(double value) const { return kLeft + (value - x.low) / (x.high - x.low) * (kRight - kLeft); }

double SvgPlot::top(double value) const {
  // A density may be huge at one point; far outside the clipped area all heights look the same.
  const double share = std::clamp((value - y.low) / (y.high - y.low), -5.0, 5.0);
  return kBottom - share * (kBottom - kTop);
}

std::string SvgPlot::at(double px, double py) const { return fixed(left(px)) + " " + fixed(top(py)); }

void SvgPlot::keep(const std::string& series, const std::vector<double>& xs, const std::vector<double>& ys) {
  for (size_t i = 0; i < std::min(xs.size(), ys.size()); ++i)
    data += csvCell(series) + "," + shortNumber(xs[i], 10) + "," + shortNumber(ys[i], 10) + "\n";
}

void SvgPlot::bars(const std::vector<double>& edges, const std::vector<double>& heights) {
  keep("bars from x on", edges, heights);
  for (size_t i = 0; i < heights.size(); ++i)
    marks += element("rect", {{"class", "bars"},
                              {"x", fixed(left(edges[i]))},
                              {"y", fixed(top(heights[i]))},
                              {"width", fixed(std::max(left(edges[i + 1]) - left(edges[i]) - 1, 0.5))},
                              {"height", fixed(top(y.low) - top(heights[i]))}});
}

void SvgPlot::line(const std::vector<double>& xs, const std::vector<double>& ys, const std::string& style,
                   const std::string& name) {
  keep(name.empty() ? style : name, xs, ys);
  const auto drawn = [&](size_t i) { return i < xs.size() && std::isfinite(xs[i]) && std::isfinite(ys[i]); };
  std::string path;
  for (size_t i = 0; i < xs.size(); ++i) {
    if (!drawn(i)) continue;
    const bool begins = i == 0 || !drawn(i - 1);
    path += (begins ? "M" : "L") + at(xs[i], ys[i]);
    if (begins && !drawn(i + 1)) path += "L" + at(xs[i], ys[i]);  // one point alone shows by its round ends
  }
  if (!path.empty()) marks += element("path", {{"class", "line " + style}, {"d", path}});
}

void SvgPlot::steps(const std::vector<double>& xs, const std::vector<double>& ys, const std::string& style,
                    const std::string& name) {
  keep(name.empty() ? style : name, xs, ys);
  std::string path = "M" + at(x.low, 0);
  for (size_t i = 0; i < xs.size(); ++i) path += "H" + fixed(left(xs[i])) + "V" + fixed(top(ys[i]));
  path += "H" + fixed(left(x.high));
  marks += element("path", {{"class", "steps " + style}, {"d", path}});
}

void SvgPlot::dots(const std::vector<double>& xs, const std::vector<double>& ys, const std::string& style,
                   const std::string& name) {
  keep(name.empty() ? style : name, xs, ys);
  for (size_t i = 0; i < xs.size(); ++i)
    if (std::isfinite(xs[i]) && std::isfinite(ys[i]))
      marks += element(
          "circle", {{"class", "dots " + style}, {"cx", fixed(left(xs[i]))}, {"cy", fixed(top(ys[i]))}, {"r", "2.6"}});
}

void SvgPlot::block(double x1, double y1, double x2, double y2, const std::string& style) {
  marks += element("rect", {{"class", "block " + style},
                            {"x", fixed(left(x1))},
                            {"y", fixed(top(y2))},
                            {"width", fixed(left(x2) - left(x1))},
                            {"height", fixed(top(y1) - top(y2))}});
}

std::string SvgPlot::svg() const {
  static int count = 0;
  const std::string clip = "area" + std::to_string(++count);
  std::string result = "<svg class=\"plot\" viewBox=\"0 0 " + fixed(kWidth) + " " + fixed(kHeight) +
                       "\" role=\"img\" aria-label=\"" + escaped(title) + "\">\n<title>" + escaped(title) +
                       "</title>\n<defs><clipPath id=\"" + clip + "\">" +
                       element("rect", {{"x", fixed(kLeft)},
                                        {"y", fixed(kTop)},
                                        {"width", fixed(kRight - kLeft)},
                                        {"height", fixed(kBottom - kTop)}}) +
                       "</clipPath></defs>\n";
  for (const double value : ticks(x.low, x.high, 8)) {
    const std::string where = fixed(left(value));
    result +=
        element("line", {{"class", "grid"}, {"x1", where}, {"x2", where}, {"y1", fixed(kTop)}, {"y2", fixed(kBottom)}});
    result += label(left(value), kBottom + 18, "tick", shortNumber(value), " text-anchor=\"middle\"");
  }
  for (const double value : ticks(y.low, y.high, 6)) {
    const std::string where = fixed(top(value));
    result +=
        element("line", {{"class", "grid"}, {"x1", fixed(kLeft)}, {"x2", fixed(kRight)}, {"y1", where}, {"y2", where}});
    result += label(kLeft - 8, top(value) + 4, "tick", shortNumber(value), " text-anchor=\"end\"");
  }
  result += "<g clip-path=\"url(#" + clip + ")\">\n" + marks + "</g>\n";
  result += element(
      "path",
      {{"class", "axis"}, {"d", "M" + fixed(kLeft) + " " + fixed(kTop) + "V" + fixed(kBottom) + "H" + fixed(kRight)}});
  result += label((kLeft + kRight) / 2, kHeight - 10, "name", x.label, " text-anchor=\"middle\"");
  const double middle = (kTop + kBottom) / 2;
  result +=
      label(14, middle, "name", y.label, " text-anchor=\"middle\" transform=\"rotate(-90 14 " + fixed(middle) + ")\"");
  return result + "</svg>\n<p class=\"data\"><a download=\"" + fileName(title) +
         "\" href=\"data:text/csv;charset=utf-8," + percentEncoded("series,x,y\n" + data) + "\">data (CSV)</a></p>\n";
}
