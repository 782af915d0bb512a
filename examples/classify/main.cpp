// SPDX-License-Identifier: Apache-2.0
// A host of the library: trains support vector machines and trees, and shows what they have learnt.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <thread>

#include "command_line.h"
#include "complaint.h"
#include "csv.h"
#include "page.h"
#include "report.h"

namespace {

constexpr const char* kUsage =
    "usage: orvane-classify [OPTION...] [FILE]\n"
    "\n"
    "Trains support vector machines and trees on the sets that the repository ships, or on a FILE of your own:\n"
    "comma-separated with a header, numbers, and the class in the last column. Writes one HTML page. Ctrl-C ends a\n"
    "training.\n"
    "  --report FILE    the page (out/classify.html)\n"
    "  --data FOLDER    where the shipped sets are (examples/data)\n"
    "  --set NAME       only this one of them\n"
    "  --pair A,B       the two features of the maps\n"
    "  --folds N        parts of the cross-validation, 2 to 100 (10)\n"
    "  --c C            bound of the multipliers, above 0 to 1e9 (10)\n"
    "  --width W        width of the Gaussian kernel, up to 1e6; 0 for the root of half the number of features (0)\n"
    "  --depth N        depth of the trees, 0 to 12 (4)\n"
    "  --least N        samples of a node that is split, 2 to 100000 (5)\n"
    "  --help           this text\n";

struct Options {
  std::string report = "out/classify.html", data = "examples/data", set, pair, file;
  Settings settings;
  int folds = 10;
  bool help = false;
};

void set(Options& options, const std::string& option, const std::string& value) {
  if (option == "--report")
    options.report = value;
  else if (option == "--data")
    options.data = value;
  else if (option == "--set")
    options.set = value;
  else if (option == "--pair")
    options.pair = value;
  else if (option == "--folds")
    options.folds = static_cast<int>(integerOption(option, value, 2, 100));
  else if (option == "--c")
    options.settings.c = numberOption(option, value, 1e-300, 1e9);
  else if (option == "--width")
    options.settings.width = numberOption(option, value, 0, 1e6);
  else if (option == "--depth")
    options.settings.depth = static_cast<int>(integerOption(option, value, 0, 12));
  else
    options.settings.least = static_cast<int>(integerOption(option, value, 2, 100000));
}

Options readOptions(int argc, char** argv) {
  static constexpr const char* kNames[] = {"--report", "--data",  "--set",   "--pair", "--folds",
                                           "--c",      "--width", "--depth", "--least"};
  Options options;
  options.help = !readCommandLine(argc, argv, kNames, options.file,
                                  [&options](const auto& option, const auto& value) { set(options, option, value); });
  return options;
}

/// Tries a set on a thread of its own; this one waits, and stops it when it is interrupted.
Trial watched(const Samples& samples, const Options& options, Stopper& stopper) {
  Trial trial;
  std::atomic<bool> ended = false;
  std::thread worker([&] {
    trial = tried(samples, options.settings, options.folds, stopper);
    ended = true;
  });
  while (!ended) {
    if (interrupted) stopper.askStop();
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  worker.join();
  return trial;
}

int run(const Options& options) {
  std::vector<Samples> sets =
      options.file.empty() ? shippedSets(options.data, options.set) : std::vector{readSamples(options.file)};
  for (Samples& samples : sets) {
    if (!options.pair.empty()) choosePair(samples, options.pair);
    foldsOf(samples, options.folds);  // complains before any work
  }
  checkPagePath(options.report, options.file);
  catchInterrupt();
  std::string html = "<h1>Classifiers</h1>\n<p class=\"soft\">Support vector machines and trees, " + today() + "</p>\n";
  for (const Samples& samples : sets) {
    Stopper stopper;
    const Trial trial = watched(samples, options, stopper);
    if (!stopper.asked())
      std::printf("%-14s %4zu samples: machine %.1f %% right, tree %.1f %%, %.2g s\n", samples.id.c_str(),
                  samples.size(), 100 * rightShare(trial.machineTable), 100 * rightShare(trial.treeTable),
                  trial.seconds);
    std::fflush(stdout);
    html += section(samples, trial, options.folds, stopper.asked());
    if (interrupted) break;
  }
  if (interrupted) std::fprintf(stderr, "Ended early\n");
  writePage(options.report, htmlPage("Classifiers", html));
  std::fprintf(stderr, "Report: %s\n", options.report.c_str());
  return interrupted ? kInterrupted : 0;
}

}  // namespace

int main(int argc, char** argv) {
  return runHost(
      "orvane-classify", kUsage, [=] { return readOptions(argc, argv); }, run);
}
