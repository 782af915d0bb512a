// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <string>

#include "atlas.h"
#include "complaint.h"
#include "page.h"

namespace {

constexpr const char* kUsage =
    "usage: orvane-atlas [--report FILE]\n"
    "\n"
    "Draws the special functions, family by family, and writes one HTML page (atlas.html). Ends with 1 when a curve\n"
    "misses a value that is known in closed form.\n";

std::string reportPath(int argc, char** argv) {
  std::string path = "atlas.html";
  for (int i = 1; i < argc; i += 2) {
    if (std::string(argv[i]) != "--report") throw Complaint("unknown option " + std::string(argv[i]));
    if (i + 1 == argc) throw Complaint("--report needs a value");
    path = argv[i + 1];
  }
  return path;
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc > 1 && (std::string(argv[1]) == "--help" || std::string(argv[1]) == "-h")) {
    std::fputs(kUsage, stdout);
    return 0;
  }
  const std::string path = reportPath(argc, argv);
  checkPagePath(path, "");
  const std::vector<Plate> all = plates();
  writePage(path, atlasPage(all));
  size_t curves = 0, marks = 0;
  for (const Plate& plate : all) {
    curves += plate.curves.size();
    marks += plate.marks.size();
  }
  const std::vector<std::string> missed = missedMarks(all);
  for (const std::string& line : missed) std::fprintf(stderr, "orvane-atlas: %s\n", line.c_str());
  std::printf("%zu plots, %zu curves, %zu marked values, %zu missed\nreport: %s\n", all.size(), curves, marks,
              missed.size(), path.c_str());
  return missed.empty() ? 0 : 1;
} catch (const Complaint& complaint) {
  std::fprintf(stderr, "orvane-atlas: %s\n", complaint.what());
  return 2;
}
