// SPDX-License-Identifier: Apache-2.0
// A host of the library: filters, transforms and smooths a record and looks at what is left.
#include <cstdio>
#include <string>

#include "command_line.h"
#include "complaint.h"
#include "filters.h"
#include "page.h"
#include "residuals.h"
#include "smoothers.h"
#include "spectrum.h"
#include "svg_plot.h"

namespace {

std::string usage() {
  return "usage: orvane-signal [OPTION...] FILE\n"
         "\n"
         "Filters, transforms and smooths an evenly sampled column of a CSV file with a header and writes one HTML "
         "page.\n"
         "  --column NAME    the column (co2)\n"
         "  --rate N         samples a unit of time, 2 to 1000 (12: months, years)\n"
         "  --edge F         edge of the low-passes in cycles a unit of time, above 0 and below half the rate (0.5)\n"
         "  --window NAME    window of the spectrum (blackman-harris):\n"
         "                   " +
         windowNames() +
         "\n"
         "  --report FILE    the page (out/signal.html)\n"
         "  --output FILE    all series as CSV\n"
         "  --help           this text\n";
}

struct Options {
  std::string column = "co2", window = "blackman-harris", report = "out/signal.html", output, file;
  double rate = 12, edge = 0.5;
  bool help = false;
};

Options readOptions(int argc, char** argv) {
  static constexpr const char* kNames[] = {"--column", "--window", "--report", "--output", "--rate", "--edge"};
  Options options;
  options.help = !readCommandLine(argc, argv, kNames, options.file, [&options](const auto& option, const auto& value) {
    if (option == "--column") options.column = value;
    if (option == "--window") options.window = value;
    if (option == "--report") options.report = value;
    if (option == "--output") options.output = value;
    if (option == "--rate") options.rate = numberOption(option, value, 2, 1000);
    if (option == "--edge") options.edge = numberOption(option, value, 1e-6, 500);
  });
  if (options.help) return options;
  if (options.file.empty()) throw Complaint("no file given");
  return options;
}

int run(const Options& options) {
  const NamedWindow window = windowNamed(options.window);
  Record record = readRecord(options.file, options.column, options.rate);
  checkPagePath(options.report, options.file);
  if (!options.output.empty()) checkPagePath(options.output, options.file);
  decompose(record);
  const Spectrum spectrum = spectrumOf(record, window);
  takeBand(record, spectrum);
  const std::string filters = filterSection(record, options.edge);

  std::printf("values:   %zu of %s\n", record.value.size(), record.name.c_str());
  for (const Peak& peak : spectrum.peaks)
    std::printf("peak:     %.4f cycles a unit of time, amplitude %.4g\n", peak.frequency, peak.amplitude);
  for (const TestResult& test : normalityTests(record.residual))
    std::printf("residual: p %.4g (%s)\n", test.p, test.name.c_str());

  writePage(options.report, htmlPage(record.name + ": a signal",
                                     "<h1>" + escaped(record.name) + "</h1>\n<p class=\"soft\">" +
                                         std::to_string(record.value.size()) + " values from " + escaped(options.file) +
                                         ", " + shortNumber(record.rate) + " a unit of time; " + today() + "</p>\n" +
                                         recordSection(record) + spectrumSection(record, spectrum) + filters +
                                         smootherSection(record) + residualSection(record)));
  std::fprintf(stderr, "Report: %s\n", options.report.c_str());
  if (!options.output.empty()) writeCsv(options.output, record);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  return runHost(
      "orvane-signal", usage(), [=] { return readOptions(argc, argv); }, run);
}
