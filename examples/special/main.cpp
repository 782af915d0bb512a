// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <string>

#include "atlas.h"
#include "command_line.h"
#include "complaint.h"
#include "page.h"

namespace {

constexpr const char* kUsage =
    "usage: orvane-atlas [--report FILE]\n"
    "\n"
    "Draws the special functions, family by family, and writes one HTML page (atlas.html). Ends with 1 when a curve\n"
    "misses a value that is known in closed form.\n";

struct Options {
  std::string report = "atlas.html";
  bool help = false;
};

Options readOptions(int argc, char** argv) {
  static constexpr const char* kNames[] = {"--report"};
  Options options;
  std::string file;
  options.help =
      !readCommandLine(argc, argv, kNames, file, [&](const auto&, const auto& value) { options.report = value; });
  if (!file.empty()) throw Complaint("no file is read: " + file);
  return options;
}

int drawAtlas(const Options& options) {
  checkPagePath(options.report, "");
  const std::vector<Plate> all = plates();
  writePage(options.report, atlasPage(all));
  size_t curves = 0, marks = 0;
  for (const Plate& plate : all) {
    curves += plate.curves.size();
    marks += plate.marks.size();
  }
  const std::vector<std::string> missed = missedMarks(all);
  for (const std::string& line : missed) std::fprintf(stderr, "orvane-atlas: %s\n", line.c_str());
  std::printf("%zu plots, %zu curves, %zu marked values, %zu missed\nreport: %s\n", all.size(), curves, marks,
              missed.size(), options.report.c_str());
  return missed.empty() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  return runHost(
      "orvane-atlas", kUsage, [=] { return readOptions(argc, argv); }, drawAtlas);
}
