// SPDX-License-Identifier: Apache-2.0
// A host of the library: rotations, coordinates, a mesh and the stock store on one page.
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <string>

#include "complaint.h"
#include "page.h"
#include "sections.h"

namespace {

constexpr int kBadInput = 2;
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

struct TextOption {
  const char* name;
  std::string Options::*value;
};
constexpr TextOption kTexts[] = {{"--report", &Options::report},     {"--store", &Options::store},
                                 {"--station", &Options::station},   {"--nodes", &Options::nodes},
                                 {"--elements", &Options::elements}, {"--river", &Options::river}};

struct NumberOption {
  const char* name;
  double Options::*value;
  double least, most;
};
constexpr NumberOption kNumbers[] = {{"--height", &Options::height, 160, 40000},
                                     {"--inclination", &Options::inclination, 0, 180},
                                     {"--noise", &Options::noise, 0, 5}};

double number(const NumberOption& option, const std::string& text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !(value >= option.least && value <= option.most))
    throw Complaint(std::string(option.name) + ": \"" + text + "\" is no number from " +
                    std::to_string(static_cast<int>(option.least)) + " to " +
                    std::to_string(static_cast<int>(option.most)));
  return value;
}

Options readOptions(int argc, char** argv) {
  Options options;
  for (int k = 1; k < argc; ++k) {
    const std::string name = argv[k];
    if (name == "-h" || name == "--help") {
      options.help = true;
      return options;
    }
    if (name.empty() || name[0] != '-') {
      if (!options.cities.empty()) throw Complaint("more than one file given");
      options.cities = name;
      continue;
    }
    const auto isNamed = [&](const auto& option) { return name == option.name; };
    const auto* text = std::find_if(std::begin(kTexts), std::end(kTexts), isNamed);
    const auto* value = std::find_if(std::begin(kNumbers), std::end(kNumbers), isNamed);
    if (text == std::end(kTexts) && value == std::end(kNumbers)) throw Complaint("unknown option " + name);
    if (++k == argc) throw Complaint(name + " needs a value");
    if (text != std::end(kTexts))
      options.*text->value = argv[k];
    else
      options.*value->value = number(*value, argv[k]);
  }
  if (options.cities.empty()) throw Complaint("no file given");
  return options;
}

const City& stationAmong(const std::vector<City>& cities, const std::string& wanted) {
  const std::string name = wanted.empty() ? "Berlin" : wanted;
  const auto found = std::find_if(cities.begin(), cities.end(), [&](const City& city) { return city.name == name; });
  if (found == cities.end() && !wanted.empty()) throw Complaint("--station: \"" + wanted + "\" is none of the cities");
  return found != cities.end() ? *found : cities.front();
}

void run(const Options& options) {
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
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const Options options = readOptions(argc, argv);
    if (options.help)
      std::fputs(kUsage, stdout);
    else
      run(options);
    return 0;
  } catch (const Complaint& complaint) {
    std::fprintf(stderr, "orvane-space: %s\n", complaint.what());
    return kBadInput;
  }
}
