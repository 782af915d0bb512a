// SPDX-License-Identifier: Apache-2.0
#include "production.h"

#include <orvane/line_programme.h>

#include <algorithm>

#include "complaint.h"
#include "handle.h"
#include "page.h"
#include "svg_plot.h"

namespace {

// A joinery, a week. The figures are made up.
Production joinery() {
  return {{{"table", 140, {9, 5.5, 3, 0.9}, 40},
           {"chair", 48, {2.5, 3, 1.5, 0.3}, 200},
           {"shelf", 75, {7, 2, 1, 0.6}, 80},
           {"desk", 190, {14, 6.5, 4, 1.4}, 25},
           {"bed frame", 165, {16, 5, 2, 1.1}, 30}},
          {{"timber", "board", 620}, {"joiners", "hour", 380}, {"machines", "hour", 210}, {"varnish", "litre", 60}}};
}

// Solves for the plan with the stocks as they stand; the profit.
double solve(Production& plan, bool wholePieces) {
  const auto n = static_cast<int32_t>(plan.products.size());
  const Owned<LineProgramme> solver(lineProg_CreateSolver());
  const std::vector<uint8_t> kinds(plan.products.size(), wholePieces ? 1 : 0);
  lineProg_SetVarCount(solver.get(), kinds.data(), n);
  std::vector<int32_t> all;
  std::vector<double> profits;
  for (int32_t j = 0; j < n; ++j) {
    all.push_back(j);
    profits.push_back(plan.products[j].profit);
  }
  lineProg_SetMaxExpress(solver.get(), all.data(), profits.data(), n);
  for (size_t r = 0; r < plan.resources.size(); ++r) {
    std::vector<double> needs;
    for (const auto& product : plan.products) needs.push_back(product.needs[r]);
    lineProg_AddConstraint(solver.get(), all.data(), needs.data(), n, 0, plan.resources[r].stock);
  }
  const double one = 1;
  for (int32_t j = 0; j < n; ++j) lineProg_AddConstraint(solver.get(), &j, &one, 1, 0, plan.products[j].most);
  if (lineProg_Solve(solver.get()) != 1) throw Complaint("the production plan has no solution");
  std::vector<double> made(plan.products.size());
  lineProg_GetVar(solver.get(), made.data());
  for (int32_t j = 0; j < n; ++j) plan.products[j].made = made[j];
  return lineProg_GetMaxValue(solver.get());
}

std::string cell(double value, int digits = 5) {
  return "<td class=\"number\">" + shortNumber(std::max(value, 0.0), digits) + "</td>";
}

}  // namespace

Production plannedProduction(bool wholePieces) {
  Production plan = joinery();
  plan.profit = solve(plan, wholePieces);
  for (size_t r = 0; r < plan.resources.size(); ++r) {
    auto& resource = plan.resources[r];
    for (const auto& product : plan.products) resource.used += product.made * product.needs[r];
    Production more = plan;
    more.resources[r].stock += 1;
    resource.worth = solve(more, wholePieces) - plan.profit;
  }
  return plan;
}

std::string productionSection(const Production& real, const Production& whole) {
  std::string html =
      "<h2 id=\"production\">A production plan: a linear programme</h2>\n<p>A joinery makes five products from four "
      "resources. What should it make in a week? The figures are made up.</p>\n" +
      formula("\\max \\sum_j p_j x_j \\quad\\text{under}\\quad \\sum_j a_{rj} x_j \\le b_r,\\; 0 \\le x_j \\le m_j") +
      "<p class=\"answer\">Greatest profit: <strong>" + shortNumber(real.profit, 7) + " euro</strong>; <strong>" +
      shortNumber(whole.profit, 7) + " euro</strong> when every piece must be finished.</p>\n";
  html +=
      "<div class=\"card wide\"><table class=\"ranking\"><thead><tr><th>Product</th><th class=\"number\">Profit a "
      "piece</th><th class=\"number\">Can be sold</th><th class=\"number\">Made</th><th class=\"number\">Made, whole "
      "pieces</th></tr></thead><tbody>\n";
  for (size_t j = 0; j < real.products.size(); ++j) {
    const auto& product = real.products[j];
    html += "<tr><td>" + escaped(product.name) + "</td>" + cell(product.profit) + cell(product.most) +
            cell(product.made) + cell(whole.products[j].made) + "</tr>\n";
  }
  html +=
      "</tbody></table></div>\n<div class=\"card wide\"><table class=\"ranking\"><thead><tr><th>Resource</th><th "
      "class=\"number\">There</th><th class=\"number\">Used</th><th class=\"number\">One more is worth</th></tr>"
      "</thead><tbody>\n";
  for (const auto& resource : real.resources)
    html += "<tr><td>" + escaped(resource.name) + " <span class=\"soft\">(" + resource.unit + "s)</span></td>" +
            cell(resource.stock) + cell(resource.used) + cell(resource.worth, 4) + "</tr>\n";
  return html + "</tbody></table></div>\n";
}
