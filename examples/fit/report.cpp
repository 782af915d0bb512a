// SPDX-License-Identifier: Apache-2.0
#include "report.h"

#include <algorithm>
#include <filesystem>

#include "figures.h"
#include "page.h"
#include "sample.h"
#include "sheet.h"
#include "svg_plot.h"

namespace {

std::string counted(size_t n, const std::string& thing) {
  return std::to_string(n) + " " + thing + (n == 1 ? "" : "s");
}

std::string fact(const std::string& label, double value) {
  return "<div><dt>" + label + "</dt><dd>" + shortNumber(value) + "</dd></div>";
}

std::string facts(const Sample& sample) {
  return "<dl class=\"facts\">" + fact("Values", static_cast<double>(sample.values.size())) +
         fact("Distinct", static_cast<double>(sample.xs.size())) + fact("Mean", sample.mean) +
         fact("Std. deviation", sample.deviation) + fact("Minimum", sample.values.front()) +
         fact("Lower quartile", sample.quantile(0.25)) + fact("Median", sample.quantile(0.5)) +
         fact("Upper quartile", sample.quantile(0.75)) + fact("Maximum", sample.values.back()) + "</dl>\n";
}

std::string marks(const Fit& fit) {
  std::string html;
  if (countsOnly(fit.name)) html += " <span class=\"badge\">counts</span>";
  if (!fit.settled) html += " <span class=\"badge\">not settled</span>";
  return html;
}

// What to know of the sample before the fits are trusted.
std::string tiesNotice(const Sample& sample) {
  const size_t n = sample.values.size(), distinct = sample.xs.size();
  if (distinct >= 10 && 2 * distinct > n) return "";
  return "<p class=\"notice\">Only " + counted(distinct, "distinct value") + " among " + counted(n, "value") +
         ": the values are rounded or counts. A continuous distribution has no such ties; its error cannot fall below "
         "that of the steps.</p>\n";
}

std::string rankingRows(const Results& results, const Sample& sample, size_t from, size_t to, size_t plotted) {
  std::string html;
  for (size_t i = from; i < to; ++i) {
    const Fit& fit = results.fits[i];
    const bool drawn = i < plotted;
    html += drawn ? "<tr data-series=\"" + series(i) + "\">" : "<tr>";
    html += "<td class=\"number\">" + std::to_string(i + 1) + "</td><td>";
    if (drawn) html += "<span class=\"swatch " + series(i) + "\"></span>";
    html += escaped(fit.name) + marks(fit) + "</td><td class=\"number\">" + shortNumber(fit.error, 4) +
            "</td><td class=\"number\">" + shortNumber(100 * largestGap(sample, fit.fun), 3) +
            " %</td><td class=\"params\">";
    for (size_t p = 0; p < fit.params.size(); ++p)
      html += std::string("<span><i>") + parameterLetter(p) + "</i> = " + shortNumber(fit.params[p]) + "</span> ";
    html += "</td></tr>\n";
  }
  return html;
}

std::string unsettledLine(const Results& results) {
  const auto count = std::ranges::count_if(results.fits, [](const Fit& fit) { return !fit.settled; });
  if (count == 0) return "";
  return "<p class=\"soft\">Not settled: the last search still made the error less by more than one per cent, or was "
         "ended before it could tell (" +
         std::to_string(count) + " of " + std::to_string(results.fits.size()) +
         "). A larger --iterations or --repeats may find a better fit.</p>";
}

std::string rankingTable(const std::string& rows) {
  return "<div class=\"wide\"><table class=\"ranking\"><thead><tr><th class=\"number\">Rank</th><th>Distribution</th>"
         "<th class=\"number\">Error</th><th class=\"number\">Largest "
         "gap</th><th>Parameters</th></tr></thead>\n<tbody>" +
         rows + "</tbody></table></div>\n";
}

std::string legend(const Results& results, size_t plotted, const std::string& dataEntry) {
  std::string html = "<ul class=\"legend\">" + dataEntry;
  for (size_t i = 0; i < plotted; ++i)
    html += "<li class=\"" + series(i) + "\" data-series=\"" + series(i) + "\"><span class=\"swatch\"></span>" +
            escaped(results.fits[i].name) + "</li>";
  return html + "</ul>\n";
}

std::string sheetRows(const std::vector<SheetRow>& rows) {
  std::string html;
  for (const SheetRow& row : rows) {
    if (!row.rows.empty())
      html += "<tr class=\"part\"><td colspan=\"2\">" + escaped(row.label) + "</td></tr>\n" + sheetRows(row.rows);
    else
      html += "<tr><td>" + escaped(row.label) + "</td><td>" + formula(row.formula) + "</td></tr>\n";
  }
  return html;
}

std::string sheet(const Fit& fit, size_t i) {
  return "<section class=\"card\"><h3><span class=\"swatch " + series(i) + "\"></span>" + std::to_string(i + 1) + ". " +
         escaped(fit.name) + " <span class=\"badge\">error " + shortNumber(fit.error, 4) +
         "</span></h3>\n<table class=\"sheet\">" + sheetRows(readSheet(pdf_getLatexExpress(fit.fun))) +
         "</table></section>\n";
}

std::string settings(const Options& options, const Results& results) {
  std::string solvers;
  for (const uint8_t code : options.solvers) solvers += (solvers.empty() ? "" : ", ") + std::string(solverName(code));
  return "solver " + solvers + ", population " + std::to_string(options.population) + ", up to " +
         counted(static_cast<size_t>(options.iterations), "iteration") + ", " +
         counted(static_cast<size_t>(options.repeats), "repeat") + ", " +
         counted(static_cast<size_t>(options.threads), "thread") + ", " + shortNumber(results.seconds, 3) + " s";
}

}  // namespace

char parameterLetter(size_t index) { return "abcdfghijk"[std::min<size_t>(index, 9)]; }

std::string reportPage(const Results& results, const Options& options) {
  const Sample sample(results.column.values);
  const std::string name = results.column.name;
  const std::string file = std::filesystem::path(options.dataPath).filename().string();
  const size_t plotted = std::min(results.fits.size(), static_cast<size_t>(options.best));
  const std::span<const Fit> best(results.fits.data(), plotted);
  const Fit& first = results.fits.front();

  std::string html = "<h1>Fitted distributions: " + escaped(name) + "</h1>\n<p class=\"soft\">" + escaped(file) + ", " +
                     counted(sample.values.size(), "value") + ", " + today() + "</p>\n";
  if (results.stopped)
    html += "<p class=\"notice\">The fit was ended early: " + std::to_string(results.fits.size()) + " of " +
            counted(results.fits.size() + results.unfitted.size(), "distribution") +
            " have a result, and these may not be at their best.</p>\n";
  html += "<p class=\"answer\">Best of " + std::to_string(results.fits.size()) + ": <strong>" + escaped(first.name) +
          "</strong>, nowhere more than " + shortNumber(100 * largestGap(sample, first.fun), 3) +
          " % of the sample away from its empirical distribution function.</p>\n" + facts(sample) + tiesNotice(sample);

  std::string odd;
  for (const Fit& fit : best)
    if (!densityAgrees(sample, fit.fun)) odd += (odd.empty() ? "" : ", ") + escaped(fit.name);
  if (!odd.empty())
    odd =
        " Mind that the density formula of " + odd + " is not the slope of the distribution function that was fitted.";
  html += "<h2>Plots</h2>\n";
  html += figure("densities", legend(results, plotted, "<li><span class=\"swatch block\"></span>sample</li>"),
                 densityFigure(sample, best, name),
                 "Histogram of the sample, its area scaled to 1, and the densities of the best fits." + odd);
  html += figure("distribution", legend(results, plotted, "<li><span class=\"swatch data\"></span>sample</li>"),
                 distributionFigure(sample, best, name),
                 "Empirical distribution function of the sample (steps) and the fitted distribution functions.");
  html += figure("quantiles", legend(results, plotted, ""), quantileFigure(sample, best, name),
                 "Sample against fitted quantiles; a perfect fit lies on the dashed diagonal. Dots: " +
                     escaped(first.name) + ", lines: the others.");

  const size_t shown = std::min<size_t>(results.fits.size(), 15);
  html += "<h2>Ranking</h2>\n<p class=\"soft\">Error: sum over the " +
          (sample.values.size() > static_cast<size_t>(options.points)
               ? counted(static_cast<size_t>(options.points), "evenly spaced value")
               : counted(sample.xs.size(), "distinct value")) +
          " of the squared distance between the fitted and the empirical distribution function. Largest gap: the "
          "greatest such distance.</p>\n<div class=\"card\">" +
          rankingTable(rankingRows(results, sample, 0, shown, plotted));
  if (shown < results.fits.size())
    html += "<details><summary>All " + counted(results.fits.size(), "distribution") + "</summary>" +
            rankingTable(rankingRows(results, sample, shown, results.fits.size(), plotted)) + "</details>";
  html += unsettledLine(results);
  if (!results.unfitted.empty()) {
    html += "<p class=\"soft\">Without a fit: ";
    for (size_t i = 0; i < results.unfitted.size(); ++i) html += (i ? ", " : "") + escaped(results.unfitted[i]);
    html += ".</p>";
  }
  html += "</div>\n<h2>Sheets of the best fits</h2>\n";
  for (size_t i = 0; i < plotted; ++i) html += sheet(best[i], i);
  html += "<footer>Orvane, " + escaped(settings(options, results)) + ".</footer>\n";
  return htmlPage(name + " (" + file + "): fitted distributions", html);
}
