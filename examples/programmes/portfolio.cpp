// SPDX-License-Identifier: Apache-2.0
#include "portfolio.h"

#include <orvane/quadratic_programme.h>

#include <algorithm>
#include <cmath>

#include "handle.h"
#include "page.h"
#include "svg_plot.h"

namespace {

struct Asset {
  const char* name;
  double expected, deviation;  // per cent a year
};

// Made up, of the size that such classes have had.
constexpr Asset kAssets[] = {{"government bonds", 2.5, 4},   {"corporate bonds", 3.6, 6.5}, {"property", 4.8, 11},
                             {"shares, developed", 6.8, 16}, {"shares, emerging", 8.0, 23}, {"gold", 3.2, 15}};
constexpr int kCount = 6;
constexpr double kCorrelation[kCount][kCount] = {{1, 0.6, 0.1, -0.1, -0.05, 0.2}, {0.6, 1, 0.35, 0.35, 0.35, 0.15},
                                                 {0.1, 0.35, 1, 0.6, 0.5, 0.05},  {-0.1, 0.35, 0.6, 1, 0.7, 0},
                                                 {-0.05, 0.35, 0.5, 0.7, 1, 0.1}, {0.2, 0.15, 0.05, 0, 0.1, 1}};

// The least variance sum of C_ij x_i x_j under sum of x = total and sum of r x >= wanted * total. There is no linear
// part, so the scale of the quadratic one does not matter; it is kept near 1.
Portfolio least(double wanted, int lotCount) {
  const Owned<QuadProgramme> solver(quadProg_createSolver());
  quadProg_initTempVar(solver.get(), kCount);
  const double total = lotCount > 0 ? lotCount : 1;
  std::vector<int32_t> i, j, all;
  std::vector<double> quad, ones, returns;
  for (int32_t a = 0; a < kCount; ++a) {
    all.push_back(a);
    ones.push_back(1);
    returns.push_back(kAssets[a].expected);
    for (int32_t b = 0; b < kCount; ++b) {
      i.push_back(a);
      j.push_back(b);
      quad.push_back(-kCorrelation[a][b] * kAssets[a].deviation * kAssets[b].deviation / 100);
    }
  }
  quadProg_setMaxExpress(solver.get(), i.data(), j.data(), quad.data(), static_cast<int32_t>(quad.size()), nullptr,
                         nullptr, 0, 0);
  quadProg_addConstraint(solver.get(), all.data(), ones.data(), kCount, total, 2);
  quadProg_addConstraint(solver.get(), all.data(), returns.data(), kCount, wanted * total, 1);
  if (lotCount > 0) {
    const std::vector<uint8_t> kinds(kCount, 1);
    quadProg_setVarKind(solver.get(), kinds.data(), kCount);
  }
  Portfolio result;
  if (quadProg_solveTemp(solver.get()) != 1) return result;
  result.found = true;
  result.shares.resize(kCount);
  const double variance = quadProg_getTempResult(solver.get(), result.shares.data());
  result.deviation = std::sqrt(std::max(variance, 0.0) * 100) / total;
  for (double& share : result.shares) share = std::max(share / total, 0.0);
  for (int a = 0; a < kCount; ++a) result.expected += result.shares[a] * kAssets[a].expected;
  return result;
}

std::string percent(double share) { return shortNumber(std::abs(share) < 5e-6 ? 0 : 100 * share, 4) + " %"; }

}  // namespace

std::pair<double, double> returnRange() {
  const auto [low, high] = std::minmax_element(std::begin(kAssets), std::end(kAssets),
                                               [](const Asset& a, const Asset& b) { return a.expected < b.expected; });
  return {low->expected, high->expected};
}

Frontier frontier(double wantedReturn, int lotCount) {
  Frontier result;
  result.lotCount = lotCount;
  const auto [low, high] = returnRange();
  constexpr int kSteps = 40;
  for (int k = 0; k <= kSteps; ++k) {
    const double wanted = low + (high - low) * k / kSteps;
    result.fractional.push_back(least(wanted, 0));
    if (k % 2 == 0) result.lots.push_back(least(wanted, lotCount));
  }
  result.wanted = least(wantedReturn, 0);
  result.wantedLots = least(wantedReturn, lotCount);
  return result;
}

std::string portfolioSection(const Frontier& frontier) {
  std::string html =
      "<h2 id=\"portfolio\">A portfolio: a quadratic programme</h2>\n<p>A sum is spread over six classes of "
      "assets so that its return is expected to reach a wanted size and varies as little as possible; then "
      "the same in " +
      std::to_string(frontier.lotCount) + " equal lots, of which none can be split. The figures are made up.</p>\n" +
      formula(
          "\\min x^\\top C x \\quad\\text{under}\\quad \\sum_i x_i = 1,\\; \\sum_i r_i x_i \\ge r,\\; "
          "x_i \\ge 0");
  html += "<p class=\"answer\">For " + shortNumber(frontier.wanted.expected, 4) +
          " % a year: a standard deviation of "
          "<strong>" +
          shortNumber(frontier.wanted.deviation, 4) + " %</strong>";
  if (frontier.wantedLots.found)
    html += ", in lots <strong>" + shortNumber(frontier.wantedLots.deviation, 4) + " %</strong>";
  html +=
      ".</p>\n<div class=\"card wide\"><table class=\"ranking\"><thead><tr><th>Asset</th><th "
      "class=\"number\">Return</th>"
      "<th class=\"number\">Deviation</th><th class=\"number\">Share</th><th "
      "class=\"number\">Lots</th></tr></thead><tbody>\n";
  for (int a = 0; a < kCount; ++a) {
    html += std::string("<tr><td>") + kAssets[a].name + "</td><td class=\"number\">" +
            shortNumber(kAssets[a].expected) + " %</td><td class=\"number\">" + shortNumber(kAssets[a].deviation) +
            " %</td><td class=\"number\">" + percent(frontier.wanted.shares[a]) + "</td><td class=\"number\">" +
            (frontier.wantedLots.found ? std::to_string(std::lround(frontier.wantedLots.shares[a] * frontier.lotCount))
                                       : "-") +
            "</td></tr>\n";
  }
  html += "</tbody></table></div>\n";
  std::vector<double> xs, ys, lotXs, lotYs;
  for (const Portfolio& p : frontier.fractional)
    if (p.found) xs.push_back(p.deviation), ys.push_back(p.expected);
  for (const Portfolio& p : frontier.lots)
    if (p.found) lotXs.push_back(p.deviation), lotYs.push_back(p.expected);
  SvgPlot plot("Frontier of the portfolios", {0, 25, "standard deviation, per cent"},
               {2, 8.5, "expected return, per cent"});
  plot.line(xs, ys, "s1", "any shares");
  plot.dots(lotXs, lotYs, "s2", "lots");
  return html +
         figure("frontier",
                "<ul class=\"legend\"><li class=\"s1\"><span class=\"swatch\"></span>any shares</li><li "
                "class=\"s2\"><span class=\"swatch\"></span>whole lots</li></ul>\n",
                plot.svg(),
                "Least deviation for each return. Below the least of all the return comes for nothing: there the "
                "curve stands still.");
}
