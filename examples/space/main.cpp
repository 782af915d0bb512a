// SPDX-License-Identifier: Apache-2.0
// A host of the library: rotations, coordinates, a mesh and the stock store on one page.
#include <algorithm>
#include <cstdio>
#include <string>

#include "command_line.h"
#include "complaint.h"
#include "page.h"
#include "sections.h"

namespace {

constexpr const char* kUsage =
    "usage: orvane-space [OPTION...] CITIES\n"
    "\n"
    "Flies a satellite over the cities of a CSV file (columns city, latitude, longitude), lays two map datums side by\n"
    "side, finds the pose of a second camera, looks for nearest nodes in a mesh and keeps series in the stock store.\n"
    "Writes one HTML page.\n"
    "  --report FILE        the page (out/space.html)\n"
    "  --store FILE         the file of the stock store (out/space.stock)\n"
    "  --station CITY       the city from which the satellite is seen (Berlin, or else the first one)\n"
    "  --height KM          of the orbit, 160 to 40000 (420)\n"
    "  --inclination DEG    of the orbit, 0 to 180 (51.64)\n"
    "  --noise PIXELS       of the two views, 0 to 5 (0.3)\n"
    "  --nodes FILE         nodes of the mesh: a title, then id, x, y (examples/data/capitals_nodes.csv)\n"
    "  --elements FILE      its triangles: a title, then id and three nodes (examples/data/capitals_elements.csv)\n"
    "  --river FILE         yearly flows: a title, then year;flow (examples/data/nile.csv)\n"
    "  --help               this text\n";

struct Options {
  std::string cities, report = "out/space.html", store = "out/space.stock", station;
  std::string nodes = "examples/data/capitals_nodes.csv", elements = "examples/data/capitals_elements.csv",
              river = "examples/data/nile.csv";
  double height = 420, inclination = 51.64, noise = 0.3;
  bool help = false;
};

Options readOptions(int argc, char** argv) {
  static constexpr const char* kNames[] = {"--report", "--store",  "--station",     "--nodes", "--elements",
                                           "--river",  "--height", "--inclination", "--noise"};
  Options options;
  options.help =
      !readCommandLine(argc, argv, kNames, options.cities, [&options](const auto& option, const auto& value) {
        if (option == "--report") options.report = value;
        if (option == "--store") options.store = value;
        if (option == "--station") options.station = value;
        if (option == "--nodes") options.nodes = value;
        if (option == "--elements") options.elements = value;
        if (option == "--river") options.river = value;
        if (option == "--height") options.height = numberOption(option, value, 160, 40000);
        if (option == "--inclination") options.inclination = numberOption(option, value, 0, 180);
        if (option == "--noise") options.noise = numberOption(option, value, 0, 5);
      });
  if (!options.help && options.cities.empty()) throw Complaint("no file given");
  return options;
}

const City& stationAmong(const std::vector<City>& cities, const std::string& wanted) {
  const std::string name = wanted.empty() ? "Berlin" : wanted;
  const auto found = std::find_if(cities.begin(), cities.end(), [&](const City& city) { return city.name == name; });
  if (found == cities.end() && !wanted.empty()) throw Complaint("--station: \"" + wanted + "\" is none of the cities");
  return found != cities.end() ? *found : cities.front();
}

int run(const Options& options) {
  const std::vector<City> cities = readCities(options.cities);
  const City& station = stationAmong(cities, options.station);
  for (const std::string& made : {options.report, options.store})
    for (const std::string& given : {options.cities, options.nodes, options.elements, options.river})
      checkPagePath(made, given);
  std::string body = "<h1>Around the earth</h1>\n<p class=\"soft\">Rotations, coordinates, a mesh and a store, " +
                     today() + "</p>\n" + satelliteSection(cities, station, options.height, options.inclination);
  body += datumSection();
  body += twoViewsSection(options.noise);
  body += meshSection(cities, options.nodes, options.elements);
  body += seriesSection(options.river, options.store);
  writePage(options.report, htmlPage("Around the earth", body));
  std::fprintf(stderr, "Report: %s\n", options.report.c_str());
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  return runHost(
      "orvane-space", kUsage, [=] { return readOptions(argc, argv); }, run);
}
