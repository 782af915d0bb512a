// SPDX-License-Identifier: Apache-2.0
#include "report.h"

#include <algorithm>
#include <cstdio>

#include "page.h"
#include "svg_plot.h"

namespace {

constexpr size_t kShown = 24;   // misread digits
constexpr size_t kSeries = 8;   // colours of the page
constexpr size_t kPlotted = 6;  // step rules in the plot

std::string percent(double share, int decimals = 1) {
  char text[32];
  std::snprintf(text, sizeof text, "%.*f %%", decimals, 100 * share);
  return text;
}

std::string series(size_t i) { return "s" + std::to_string(i % kSeries + 1); }

std::string fact(const std::string& name, const std::string& value) {
  return "<div><dt>" + name + "</dt><dd>" + value + "</dd></div>";
}

std::string number(const std::string& text) { return "<td class=\"number\">" + text + "</td>"; }

std::string facts(const Results& results) {
  const Tested& best = results.tested[results.chosen];
  return "<dl class=\"facts\">" + fact("Right in the test", percent(best.rate)) + fact("Read by", escaped(best.name)) +
         fact("Pictures", std::to_string(results.rows)) +
         fact("to learn", std::to_string(results.parts.train.count())) +
         fact("to choose", std::to_string(results.parts.choose.count())) +
         fact("to test", std::to_string(results.parts.test.count())) + "</dl>\n";
}

/// Misread shares over the epochs, on the scale that the better half of the curves needs.
std::string curvePlot(const std::string& id, const std::vector<Curve>& curves, const std::string& caption) {
  double epochs = 1, top = 0.05;
  std::string legend = "<ul class=\"legend\">";
  for (size_t i = 0; i < curves.size(); ++i) {
    epochs = std::max(epochs, curves[i].epochs.back());
    // What comes before the second test is off the scale anyway.
    for (size_t k = 0; k < curves[i].rates.size(); ++k)
      if (curves[i].epochs[k] >= 2) top = std::max(top, 1.1 * (1 - curves[i].rates[k]));
    legend += "<li class=\"" + series(i) + "\"><span class=\"swatch\"></span>" + escaped(curves[i].name) + "</li>";
  }
  top = std::min(top, 0.4);
  SvgPlot plot("Misread share after every epoch", {0, epochs, "epoch"}, {0, 100 * top, "misread, per cent"});
  for (size_t i = 0; i < curves.size(); ++i) {
    std::vector<double> misread;
    for (const double rate : curves[i].rates) misread.push_back(std::min(100 * (1 - rate), 100 * top));
    plot.line(curves[i].epochs, misread, series(i));
  }
  return figure(id, legend + "</ul>", plot.svg(), caption);
}

std::string trainingSection(const Results& results) {
  if (results.training.empty()) return "";
  std::string html =
      "<h2 id=\"learning\">Learning</h2>\n" +
      curvePlot("curves", results.training,
                "Misread share of the rows of the choice, epoch by epoch. Each network keeps the weights "
                "of its best test.") +
      "<div class=\"card wide\"><table class=\"ranking\"><thead><tr><th>Network</th><th "
      "class=\"number\">Right, rows of the choice</th><th class=\"number\">Right, test</th><th "
      "class=\"number\">Seconds</th></tr></thead><tbody>\n";
  for (size_t i = 0; i < results.tested.size(); ++i) {
    const Tested& tested = results.tested[i];
    const auto curve = std::find_if(results.training.begin(), results.training.end(),
                                    [&](const Curve& c) { return c.name == tested.name; });
    html += "<tr><td>" + escaped(tested.name) + "</td>";
    html += curve == results.training.end() ? number("-") : number(percent(curve->best));
    html += number(percent(tested.rate));
    html += curve == results.training.end() ? number("-") : number(shortNumber(curve->seconds, 2));
    html += "</tr>\n";
  }
  return html + "</tbody></table></div>\n";
}

std::string modelSection(const std::vector<Model>& models) {
  std::vector<const Model*> all;
  size_t weights = 0;
  for (const Model& model : models) {
    all.push_back(&model);
    weights += model.weights().size();
  }
  return "<h2 id=\"networks\">The networks</h2>\n" +
         figure(
             "models", "", drawnModels(all),
             "Layers and their sizes; " + std::to_string(weights) +
                 " weights. The stack gets the joined outputs of the two above it. A soft-max makes shares of its ten "
                 "outputs.");
}

std::string confusionSection(const Results& results) {
  const Digits& test = results.parts.test;
  std::vector<std::vector<int>> counts(kClasses, std::vector<int>(kClasses));
  struct Miss {
    int32_t row;
    int answer;
    double share;
  };
  std::vector<Miss> misses;
  for (int32_t i = 0; i < test.count(); ++i) {
    const double* shares = &results.shares[static_cast<size_t>(i) * kClasses];
    const int answer = answerOf(shares), label = test.labels[static_cast<size_t>(i)];
    ++counts[static_cast<size_t>(label)][static_cast<size_t>(answer)];
    if (answer != label) misses.push_back({i, answer, shares[answer]});
  }
  std::sort(misses.begin(), misses.end(), [](const Miss& a, const Miss& b) { return a.share > b.share; });
  std::string html =
      "<h2 id=\"test\">The test</h2>\n<p>" + std::to_string(test.count() - static_cast<int32_t>(misses.size())) +
      " of " + std::to_string(test.count()) + " pictures that no training has seen are read right.</p>\n" +
      figure("confusion", "", drawnConfusion(counts), "Rows: what the picture is. Columns: what is read.");
  if (misses.empty()) return html;
  html +=
      "<h2 id=\"misread\">Misread digits</h2>\n<figure class=\"card\" id=\"digits\"><div style=\"display:flex;"
      "flex-wrap:wrap;gap:18px\">\n";
  for (size_t k = 0; k < std::min(misses.size(), kShown); ++k)
    html += "<div style=\"width:96px\">" + drawnDigit(test.picture(misses[k].row)) + "<div class=\"soft\">a " +
            std::to_string(test.labels[static_cast<size_t>(misses[k].row)]) + ", read as " +
            std::to_string(misses[k].answer) + " (" + percent(misses[k].share, 0) + ")</div></div>\n";
  return html +
         "</div><figcaption>The surest errors first; in brackets the share that the network gives to its answer." +
         (misses.size() > kShown ? " " + std::to_string(misses.size() - kShown) + " more are not shown." : "") +
         "</figcaption></figure>\n";
}

/// The polling may have missed an epoch.
std::string rateAfter(const Curve& curve, double epoch) {
  const auto at = std::find(curve.epochs.begin(), curve.epochs.end(), epoch);
  return at == curve.epochs.end() ? "-" : percent(curve.rates[static_cast<size_t>(at - curve.epochs.begin())]);
}

std::string stepperSection(std::vector<Curve> steppers) {
  if (steppers.empty()) return "";
  std::stable_sort(steppers.begin(), steppers.end(), [](const Curve& a, const Curve& b) { return a.best > b.best; });
  const std::vector<Curve> plotted(steppers.begin(),
                                   steppers.begin() + static_cast<std::ptrdiff_t>(std::min(steppers.size(), kPlotted)));
  std::string html =
      "<h2 id=\"steppers\">Step rules side by side</h2>\n<p>The dense network from the same weights, on the "
      "same rows.</p>\n" +
      curvePlot("rules", plotted, "The best of them on the rows of the choice.") +
      "<div class=\"card wide\"><table class=\"ranking\"><thead><tr><th>Rule</th><th class=\"number\">Rate "
      "at the start</th><th class=\"number\">Right after one epoch</th><th class=\"number\">Right at "
      "best</th><th class=\"number\">Seconds</th></tr></thead><tbody>\n";
  for (const Curve& curve : steppers)
    html += "<tr><td>" + escaped(curve.name) + "</td>" + number(shortNumber(curve.rate, 3)) +
            number(rateAfter(curve, 1)) + number(percent(curve.best)) + number(shortNumber(curve.seconds, 2)) +
            "</tr>\n";
  return html + "</tbody></table></div>\n";
}

}  // namespace

std::string reportPage(const Results& results, const std::vector<Model>& models, const Options& options) {
  std::string body =
      "<h1>Handwritten digits</h1>\n<p class=\"soft\">" + escaped(options.data) + ", " + today() + "</p>\n";
  if (results.stopped)
    body += "<p class=\"notice\">The training was ended early. What follows is from the best weights so far.</p>\n";
  body += facts(results) + trainingSection(results) + confusionSection(results) + modelSection(models) +
          stepperSection(results.steppers);
  body += "<p class=\"soft\">Batches of " + std::to_string(options.batch) + " rows, learning rate " +
          shortNumber(options.rate, 4) + " to a twentieth of it, seed " + std::to_string(options.seed) + ".</p>\n";
  return htmlPage("Handwritten digits", body);
}
