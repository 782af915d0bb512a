// SPDX-License-Identifier: Apache-2.0
#include "report.h"

#include <algorithm>
#include <cmath>

#include "formula.h"
#include "page.h"
#include "svg_plot.h"

namespace {

constexpr std::size_t kCurvePoints = 400;

Vector onAxis(Vector values, bool logarithmic) {
  if (logarithmic)
    for (double& v : values) v = std::log10(v);
  return values;
}

Axis axisOf(const Vector& values, const std::string& name, bool logarithmic) {
  const auto [least, most] = std::minmax_element(values.begin(), values.end());
  const double margin = *most > *least ? 0.05 * (*most - *least) : 1;
  return {*least - margin, *most + margin, logarithmic ? "log10 of " + name : name};
}

Vector between(double low, double high, bool logarithmic) {
  Vector points(kCurvePoints);
  for (std::size_t i = 0; i < points.size(); ++i) {
    const double share = static_cast<double>(i) / static_cast<double>(kCurvePoints - 1);
    points[i] = logarithmic ? low * std::pow(high / low, share) : low + (high - low) * share;
  }
  return points;
}

/// One input: the data and the curve. Several: the data against the formula.
std::string dataFigure(const Study& study, const Hunt& hunt, const Found& law) {
  const std::string legend =
      "<ul class=\"legend\"><li class=\"s2\"><span class=\"swatch\"></span>data</li><li class=\"s1\"><span "
      "class=\"swatch\"></span>" +
      std::string(study.x.size() == 1 ? "formula" : "where both agree") + "</li></ul>\n";
  const Vector y = onAxis(study.y, study.logY);
  const Axis up = axisOf(y, study.output.name, study.logY);
  if (study.x.size() > 1) {
    SvgPlot plot("Data against formula", {up.low, up.high, study.output.name + ", by the formula"},
                 {up.low, up.high, study.output.name + ", data"});
    plot.line({up.low, up.high}, {up.low, up.high}, "s1");
    plot.dots(valuesAt(study, hunt, law, study.x), y, "s2");
    return figure(study.id + "-data", legend, plot.svg(), "Each point of the data against its value by the formula.");
  }
  const Vector& x = study.x.front();
  const auto [least, most] = std::minmax_element(x.begin(), x.end());
  const Vector points = between(*least, *most, study.logX);
  SvgPlot plot("Data and formula", axisOf(onAxis(x, study.logX), study.inputs[0].name, study.logX), up);
  plot.line(onAxis(points, study.logX), onAxis(valuesAt(study, hunt, law, {points}), study.logY), "s1");
  plot.dots(onAxis(x, study.logX), y, "s2");
  return figure(study.id + "-data", legend, plot.svg(), "The data and the formula.");
}

std::string residualFigure(const Study& study, const Hunt& hunt, const Found& law) {
  Vector rest = valuesAt(study, hunt, law, study.x);
  for (std::size_t i = 0; i < rest.size(); ++i) rest[i] = study.y[i] - rest[i];
  const bool one = study.x.size() == 1;
  const Vector across = one ? onAxis(study.x.front(), study.logX) : study.y;
  SvgPlot plot("What the formula leaves",
               axisOf(across, one ? study.inputs[0].name : study.output.name, one && study.logX),
               axisOf(rest, "data - formula", false));
  plot.line({-1e300, 1e300}, {0, 0}, "ideal");
  plot.dots(across, rest, "s2");
  return figure(study.id + "-rest", "", plot.svg(), "What the formula leaves of the data.");
}

std::string frontFigure(const Study& study, const Hunt& hunt) {
  Vector size, error;
  for (const Found& found : hunt.front)
    size.push_back(found.parameters), error.push_back(std::log10(std::max(found.error, 1e-300)));
  SvgPlot plot("Error against size", axisOf(size, "parameters of the formula", false),
               axisOf(error, "log10 of the sum of squares", false));
  plot.line(size, error, "s1");
  plot.dots(size, error, "s1");
  plot.dots({size[hunt.chosen]}, {error[hunt.chosen]}, "mark");
  return figure(study.id + "-front", "", plot.svg(),
                "The least error that each size of formula reaches; the ring marks the one that is chosen, by the "
                "criterion of Bayes and Schwarz.");
}

std::string table(const Study& study, const Hunt& hunt, const std::vector<Found>& rows, const Found* mark) {
  std::string html =
      "<div class=\"card wide\"><table class=\"ranking\"><thead><tr><th class=\"number\">Parameters</th><th "
      "class=\"number\">Sum of squares</th><th class=\"number\">Correlation</th><th>Formula</th></tr></thead><tbody>\n";
  for (const Found& found : rows)
    html += "<tr><td class=\"number\">" + std::string(&found == mark ? "&#9654; " : "") +
            std::to_string(found.parameters) + "</td><td class=\"number\">" + shortNumber(found.error, 5) +
            "</td><td class=\"number\">" + shortNumber(found.correlation, 8) + "</td><td>" +
            formula(latexFormula(study, hunt.terms, found)) + "</td></tr>\n";
  return html + "</tbody></table></div>\n";
}

std::string fact(const std::string& name, const std::string& value) {
  return "<div><dt>" + name + "</dt><dd>" + value + "</dd></div>";
}

std::string section(const Study& study, const Hunt& hunt) {
  std::string html = "<h2 id=\"" + study.id + "\">" + escaped(study.title) + "</h2>\n<p>" + study.about + "</p>\n";
  if (hunt.front.empty()) return html + "<p class=\"notice\">No formula was found.</p>\n";
  if (hunt.stopped) html += "<p class=\"notice\">The search was ended early.</p>\n";
  const Found& law = hunt.front[hunt.chosen];
  html += "<div class=\"card\"><h3>Found</h3>" + formula(latexFormula(study, hunt.terms, law));
  if (!study.known.empty()) html += "<h3>In the literature</h3>" + formula(study.known);
  html += "</div>\n<dl class=\"facts\">" + fact("points", std::to_string(study.y.size())) +
          fact("sum of squares", shortNumber(law.error, 5)) + fact("correlation", shortNumber(law.correlation, 8)) +
          fact("formulas tried", std::to_string(hunt.candidates)) + fact("seconds", shortNumber(hunt.seconds, 3)) +
          "</dl>\n" + dataFigure(study, hunt, law) + residualFigure(study, hunt, law);
  if (hunt.front.size() > 1)
    html += frontFigure(study, hunt) + "<h3>The best of each size</h3>" + table(study, hunt, hunt.front, &law);
  if (hunt.ranking.size() > 1)
    html += "<h3>The best of " + std::to_string(law.parameters) + " parameters</h3>" +
            table(study, hunt, hunt.ranking, nullptr);
  return html;
}

}  // namespace

std::string report(const std::vector<Study>& studies, const std::vector<Hunt>& hunts) {
  std::string html = "<h1>Laws from data</h1>\n<p class=\"soft\">Formulas that an expression search found, " + today() +
                     "</p>\n<div class=\"card wide\"><table class=\"ranking\"><thead><tr><th>Study</th><th "
                     "class=\"number\">Formulas tried</th><th>Found</th></tr></thead><tbody>\n";
  for (std::size_t i = 0; i < hunts.size(); ++i)
    html +=
        "<tr><td>" + escaped(studies[i].title) + "</td><td class=\"number\">" + std::to_string(hunts[i].candidates) +
        "</td><td>" +
        (hunts[i].front.empty() ? "-"
                                : formula(latexFormula(studies[i], hunts[i].terms, hunts[i].front[hunts[i].chosen]))) +
        "</td></tr>\n";
  html += "</tbody></table></div>\n";
  for (std::size_t i = 0; i < hunts.size(); ++i) html += section(studies[i], hunts[i]);
  return html;
}
