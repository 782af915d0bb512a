// SPDX-License-Identifier: Apache-2.0
// A host of the library: a production plan, a portfolio and a delivery tour on one page.
#include <cstdio>
#include <string>

#include "command_line.h"
#include "complaint.h"
#include "page.h"
#include "portfolio.h"
#include "production.h"
#include "tour.h"

namespace {

constexpr const char* kUsage =
    "usage: orvane-programmes [OPTION...] CITIES\n"
    "\n"
    "Plans a production (a linear programme), spreads a portfolio (a quadratic programme, also in whole lots) and "
    "finds a\n"
    "delivery tour through the cities of a CSV file with the columns city, latitude, longitude. Writes one HTML page.\n"
    "  --report FILE    the page (out/programmes.html)\n"
    "  --return PERCENT wanted return of the portfolio, 2.5 to 8 (5)\n"
    "  --lots N         lots of the portfolio, 1 to 100 (20)\n"
    "  --threads N      worker threads for the tour, 1 to 256 (2)\n"
    "  --help           this text\n";

struct Options {
  std::string report = "out/programmes.html", cities;
  double wantedReturn = 5;
  int lots = 20, threads = 2;
  bool help = false;
};

Options readOptions(int argc, char** argv) {
  static constexpr const char* kNames[] = {"--report", "--return", "--lots", "--threads"};
  Options options;
  options.help =
      !readCommandLine(argc, argv, kNames, options.cities, [&options](const auto& option, const auto& value) {
        if (option == "--report") options.report = value;
        if (option == "--return")
          options.wantedReturn = numberOption(option, value, returnRange().first, returnRange().second);
        if (option == "--lots") options.lots = static_cast<int>(integerOption(option, value, 1, 100));
        if (option == "--threads") options.threads = static_cast<int>(integerOption(option, value, 1, 256));
      });
  if (options.help) return options;
  if (options.cities.empty()) throw Complaint("no file given");
  return options;
}

int run(const Options& options) {
  const std::vector<City> cities = readCities(options.cities);
  checkPagePath(options.report, options.cities);
  const Production real = plannedProduction(false), whole = plannedProduction(true);
  const Frontier spread = frontier(options.wantedReturn, options.lots);
  const Tour tour = deliveryTour(cities, options.threads);

  std::printf("production: %.2f euro, in whole pieces %.2f euro\n", real.profit, whole.profit);
  std::printf("portfolio:  %.3f %% return with %.3f %% deviation", spread.wanted.expected, spread.wanted.deviation);
  if (spread.wantedLots.found) std::printf(", in %d lots %.3f %%", options.lots, spread.wantedLots.deviation);
  std::printf("\ntour:       %.0f km through %zu cities, nearest neighbour %.0f km\n", tour.length, cities.size(),
              tour.nearest);

  writePage(options.report,
            htmlPage("Plan, portfolio, tour", "<h1>Plan, portfolio, tour</h1>\n<p class=\"soft\">Three programmes, " +
                                                  today() + "</p>\n" + productionSection(real, whole) +
                                                  portfolioSection(spread) + tourSection(cities, tour)));
  std::fprintf(stderr, "Report: %s\n", options.report.c_str());
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  return runHost(
      "orvane-programmes", kUsage, [=] { return readOptions(argc, argv); }, run);
}
