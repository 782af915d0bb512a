// SPDX-License-Identifier: Apache-2.0
#include "report.h"

#include <algorithm>

#include "page.h"
#include "svg_plot.h"
#include "tree_diagram.h"

namespace {

constexpr std::size_t kCellsAcross = 140, kCellsUp = 90;

std::string series(std::size_t k) { return "s" + std::to_string(k + 1); }

std::string percent(double share) { return shortNumber(100 * share, 4) + " %"; }

std::string legend(const Samples& samples, bool withSupports) {
  std::string html = "<ul class=\"legend\">";
  for (std::size_t k = 0; k < samples.classes.size(); ++k)
    html += "<li class=\"" + series(k) + "\"><span class=\"swatch\"></span>" + escaped(samples.classes[k]) + "</li>";
  if (withSupports) html += "<li>&#9711; support vector</li>";
  return html + "</ul>\n";
}

Axis axisOf(const Samples& samples, std::size_t feature) {
  double low = samples.rows[0][feature], high = low;
  for (const Row& row : samples.rows) low = std::min(low, row[feature]), high = std::max(high, row[feature]);
  const double margin = high > low ? 0.06 * (high - low) : 1;
  return {low - margin, high + margin, samples.features[feature]};
}

/// Where the classifier gives which class, over two features, with the samples.
std::string map(const Samples& pair, const Classifier& classifier, const std::vector<bool>* supports,
                const std::string& title) {
  const Axis x = axisOf(pair, 0), y = axisOf(pair, 1);
  SvgPlot plot(title, x, y);
  const double width = (x.high - x.low) / kCellsAcross, height = (y.high - y.low) / kCellsUp;
  for (std::size_t j = 0; j < kCellsUp; ++j) {
    const double low = y.low + height * static_cast<double>(j);
    std::size_t begun = 0, last = 0;
    for (std::size_t i = 0; i <= kCellsAcross; ++i) {
      const double left = x.low + width * static_cast<double>(i);
      const std::size_t now =
          i < kCellsAcross ? classifier.classOf({left + width / 2, low + height / 2}) : pair.classes.size();
      if (i > 0 && now != last) {  // one block for neighbours of one class
        plot.block(x.low + width * static_cast<double>(begun), low, left, low + height, series(last));
        begun = i;
      }
      last = now;
    }
  }
  for (std::size_t k = 0; k < pair.classes.size(); ++k) {
    std::vector<double> xs, ys, ringXs, ringYs;
    for (std::size_t i = 0; i < pair.size(); ++i) {
      if (pair.labels[i] != k) continue;
      xs.push_back(pair.rows[i][0]);
      ys.push_back(pair.rows[i][1]);
      if (supports != nullptr && (*supports)[i]) ringXs.push_back(xs.back()), ringYs.push_back(ys.back());
    }
    plot.dots(xs, ys, series(k));
    plot.dots(ringXs, ringYs, "ring");
  }
  return plot.svg();
}

std::string confusionTable(const Samples& samples, const Confusion& table, const std::string& name) {
  std::string html = "<div class=\"card wide\"><h3>" + name + " <span class=\"badge\">" + percent(rightShare(table)) +
                     " right</span></h3><table class=\"ranking\"><thead><tr><th>True class</th>";
  for (const std::string& answered : samples.classes) html += "<th class=\"number\">" + escaped(answered) + "</th>";
  html += "</tr></thead><tbody>\n";
  for (std::size_t k = 0; k < table.size(); ++k) {
    html += "<tr><td>" + escaped(samples.classes[k]) + "</td>";
    for (std::size_t j = 0; j < table.size(); ++j)
      html += "<td class=\"number\">" +
              (j == k ? "<strong>" + std::to_string(table[k][j]) + "</strong>" : std::to_string(table[k][j])) + "</td>";
    html += "</tr>\n";
  }
  return html + "</tbody></table></div>\n";
}

}  // namespace

std::string section(const Samples& samples, const Trial& trial, int folds, bool stopped) {
  std::string html =
      "<h2 id=\"" + samples.id + "\">" + escaped(samples.title) + "</h2>\n<p>" + samples.about + "</p>\n";
  if (stopped) html += "<p class=\"notice\">Ended early: what follows is not all trained.</p>\n";
  const auto& supports = trial.machines->supports();
  const auto fact = [&](const std::string& name, const std::string& value) {
    html += "<div><dt>" + name + "</dt><dd>" + value + "</dd></div>";
  };
  html += "<dl class=\"facts\">";
  fact("samples", std::to_string(samples.size()));
  fact("features", std::to_string(samples.features.size()));
  fact("classes", std::to_string(samples.classes.size()));
  fact("support vectors", std::to_string(std::count(supports.begin(), supports.end(), true)));
  fact("seconds", shortNumber(trial.seconds, 3));
  html += "</dl>\n<p>Answers of cross-validation in " + std::to_string(folds) +
          " parts: each sample is judged by classifiers that have not seen its part.</p>\n" +
          confusionTable(samples, trial.machineTable, "Support vector machine") +
          confusionTable(samples, trial.treeTable, "Tree");

  const Samples pair = samples.only(samples.pair);
  html += figure(samples.id + "-machine", legend(samples, true),
                 map(pair, *trial.machinesOfPair, &trial.machinesOfPair->supports(), "Regions of the machine"),
                 "Regions of a support vector machine that knows these two features alone.");
  html += figure(samples.id + "-tree", legend(samples, false),
                 map(pair, *trial.treesOfPair, nullptr, "Regions of the tree"),
                 "Regions of a tree that knows these two features alone; it asks for each of them once on a path.");
  for (std::size_t k = 0; k < trial.trees->count(); ++k)
    html += "<div class=\"card wide\"><h3>The tree" +
            (trial.trees->count() == 1 ? "" : " of the share of " + escaped(samples.classes[k])) + "</h3>" +
            treeDiagram(trial.trees->tree(k), samples, k) + "</div>\n";
  return html;
}
