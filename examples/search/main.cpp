// SPDX-License-Identifier: Apache-2.0
// A host of the library: finds laws in data.

#include <algorithm>
#include <cstdio>
#include <string>

#include "command_line.h"
#include "complaint.h"
#include "csv.h"
#include "formula.h"
#include "hunt.h"
#include "page.h"
#include "report.h"
#include "studies.h"

namespace {

constexpr const char* kUsage =
    "usage: orvane-search [OPTION...] [FILE]\n"
    "\n"
    "Looks for formulas in the studies that the repository ships, or in a FILE of your own: comma-separated numbers "
    "with\n"
    "a header, the last column as a function of the others. Writes one HTML page. Ctrl-C ends a search and keeps what "
    "it\n"
    "has found.\n"
    "  --report FILE    the page (out/search.html)\n"
    "  --data FOLDER    where the shipped studies are (examples/data)\n"
    "  --study NAME     only this one of them\n"
    "  --kind KIND      rational, powers (free exponents) or peaks, for a FILE (rational)\n"
    "  --degree N       powers and products of the columns up to this degree, 1 to 6, for a FILE (3)\n"
    "  --parameters N   parameters of a formula at most, 1 to 16, for a FILE (5; powers 4; peaks 4, 1 and 3 for each)\n"
    "  --seconds S      a study ends after so long; 0 for never (0)\n"
    "  --help           this text\n";

struct Options {
  std::string report = "out/search.html", data = "examples/data", study, file;
  uint8_t kind = ES_KIND_RATIONAL;
  int degree = 3, parameters = 0;  // 0: what the kind begins with
  double seconds = 0;
  bool help = false;
};

uint8_t kindOf(const std::string& text) {
  if (text == "rational") return ES_KIND_RATIONAL;
  if (text == "powers") return ES_KIND_POWERS;
  if (text == "peaks") return ES_KIND_PEAKS;
  throw Complaint("--kind: " + inQuotes(text) + " is none of rational, powers, peaks");
}

void set(Options& options, const std::string& option, const std::string& value) {
  if (option == "--report")
    options.report = value;
  else if (option == "--data")
    options.data = value;
  else if (option == "--study")
    options.study = value;
  else if (option == "--kind")
    options.kind = kindOf(value);
  else if (option == "--degree")
    options.degree = static_cast<int>(integerOption(option, value, 1, 6));
  else if (option == "--parameters")
    options.parameters = static_cast<int>(integerOption(option, value, 1, 16));
  else
    options.seconds = numberOption(option, value, 0, 1e6);
}

Options readOptions(int argc, char** argv) {
  static constexpr const char* kNames[] = {"--report", "--data",       "--study",  "--kind",
                                           "--degree", "--parameters", "--seconds"};
  Options options;
  options.help = !readCommandLine(argc, argv, kNames, options.file,
                                  [&options](const auto& option, const auto& value) { set(options, option, value); });
  return options;
}

int parametersOf(const Options& options) {
  if (options.parameters > 0) return options.parameters;
  return options.kind == ES_KIND_RATIONAL ? 5 : 4;
}

int run(const Options& options) {
  const std::vector<Study> studies =
      options.file.empty() ? shippedStudies(options.data, options.study)
                           : std::vector{ownStudy(options.file, options.kind, options.degree, parametersOf(options))};
  checkPagePath(options.report, options.file);
  catchInterrupt();
  std::vector<Hunt> hunts;
  for (const Study& study : studies) {
    if (interrupted) break;
    hunts.push_back(hunt(study, options.seconds, interrupted));
    const Hunt& made = hunts.back();
    std::printf("%-18s %s\n", study.id.c_str(),
                made.front.empty() ? "no formula" : plainFormula(study, made.terms, made.front[made.chosen]).c_str());
    std::fflush(stdout);
  }
  if (interrupted) std::fprintf(stderr, "Ended early\n");
  writePage(options.report, htmlPage("Laws from data", report(studies, hunts)));
  std::fprintf(stderr, "Report: %s\n", options.report.c_str());
  return interrupted ? kInterrupted : 0;
}

}  // namespace

int main(int argc, char** argv) {
  return runHost(
      "orvane-search", kUsage, [=] { return readOptions(argc, argv); }, run);
}
