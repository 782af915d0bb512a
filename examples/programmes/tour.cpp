// SPDX-License-Identifier: Apache-2.0
#include "tour.h"

#include <orvane/paths.h>

#include <cmath>
#include <numbers>

#include "complaint.h"
#include "page.h"
#include "svg_plot.h"

namespace {

constexpr double kEarthRadius = 6371;  // kilometres, the mean

}  // namespace

double kilometres(const City& a, const City& b) {
  const double degree = std::numbers::pi / 180;
  const double north = std::sin((a.latitude - b.latitude) * degree / 2),
               east = std::sin((a.longitude - b.longitude) * degree / 2);
  const double square = north * north + std::cos(a.latitude * degree) * std::cos(b.latitude * degree) * east * east;
  return 2 * kEarthRadius * std::asin(std::sqrt(square));
}

Tour deliveryTour(const std::vector<City>& cities, int threads) {
  const size_t n = cities.size();
  if (n < 3) throw Complaint("a tour needs three cities");
  std::vector<double> weights(n * n);
  std::vector<const double*> rows;
  for (size_t i = 0; i < n; ++i) {
    for (size_t j = 0; j < n; ++j) weights[i * n + j] = kilometres(cities[i], cities[j]);
    rows.push_back(&weights[i * n]);
  }
  Tour tour{std::vector<uint32_t>(n), 0, 0};
  tour.length = api_Prog_SolveTSP(rows.data(), static_cast<int32_t>(n), threads, tour.order.data());
  if (tour.length >= 1e300) throw Complaint("there is no tour");

  std::vector<uint32_t> greedy{0};
  std::vector<char> left(n, 1);
  left[0] = 0;
  while (greedy.size() < n) {
    uint32_t next = 0;
    double least = 1e300;
    for (uint32_t j = 0; j < n; ++j)
      if (left[j] && rows[greedy.back()][j] < least) least = rows[greedy.back()][next = j];
    left[next] = 0;
    greedy.push_back(next);
  }
  tour.nearest = api_TSP_clacTSP(rows.data(), 1, static_cast<int32_t>(n), greedy.data(), static_cast<int32_t>(n));
  return tour;
}

std::string tourSection(const std::vector<City>& cities, const Tour& tour) {
  std::string html =
      "<h2 id=\"tour\">A delivery tour</h2>\n<p>A lorry calls at " + std::to_string(cities.size()) +
      " cities and comes home; distances are those of the great circle.</p>\n<p class=\"answer\">Length: "
      "<strong>" +
      shortNumber(std::round(tour.length)) + " km</strong>, " + shortNumber(100 * (1 - tour.length / tour.nearest), 3) +
      " % less than by always going to the nearest city left.</p>\n";
  html += figure("map", "", drawnMap(cities, tour), "The tour on a map that is true to scale at its middle latitude.");
  html +=
      "<details><summary>All legs</summary><div class=\"card wide\"><table class=\"ranking\"><thead><tr><th "
      "class=\"number\">Leg</th><th>From</th><th>To</th><th class=\"number\">Kilometres</th></tr></thead><tbody>\n";
  for (size_t k = 0; k < tour.order.size(); ++k) {
    const City &from = cities[tour.order[k]], &to = cities[tour.order[(k + 1) % tour.order.size()]];
    html += "<tr><td class=\"number\">" + std::to_string(k + 1) + "</td><td>" + escaped(from.name) + "</td><td>" +
            escaped(to.name) + "</td><td class=\"number\">" + shortNumber(std::round(kilometres(from, to))) +
            "</td></tr>\n";
  }
  return html + "</tbody></table></div></details>\n";
}
