// SPDX-License-Identifier: Apache-2.0
// A host of the library: fits distributions to a column of a CSV file and writes a report.
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <string>
#include <thread>

#include "command_line.h"
#include "complaint.h"
#include "csv_column.h"
#include "fit_run.h"
#include "options.h"
#include "page.h"
#include "report.h"

namespace {

void drawProgress(const Progress& progress) {
  constexpr int kCells = 30;
  const int full = static_cast<int>(progress.share * kCells);
  std::string bar(static_cast<size_t>(full), '#');
  bar.resize(kCells, '.');
  std::fprintf(stderr, "\r[%s] %3d %%", bar.c_str(), static_cast<int>(100 * progress.share));
  if (!progress.bestName.empty())
    std::fprintf(stderr, "  best so far: %s, error %.4g", progress.bestName.c_str(), progress.bestError);
  std::fprintf(stderr, "\x1b[K");
  std::fflush(stderr);
}

/// Polls until the run ends, and tells whether it was ended early. A terminal sees the progress; a file or a pipe is
/// spared the control characters.
bool watch(FitRun& run, double seconds) {
  const auto start = std::chrono::steady_clock::now();
  bool early = false;
  const bool terminal = isatty(STDERR_FILENO) != 0;
  while (!run.finished()) {
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
    early = early || interrupted || (seconds > 0 && passed.count() > seconds);
    if (early) run.stop();
    if (terminal) drawProgress(run.progress());
    std::this_thread::sleep_for(std::chrono::milliseconds(terminal ? 80 : 20));
  }
  if (terminal) std::fprintf(stderr, "\r\x1b[K");
  return early;
}

void printRanking(const Results& results) {
  int width = 12;
  for (const Fit& fit : results.fits) width = std::max(width, static_cast<int>(fit.name.size()));
  std::printf("%4s  %-*s  %12s  %s\n", "rank", width, "distribution", "error", "parameters");
  int rank = 0;
  for (const Fit& fit : results.fits) {
    std::printf("%4d  %-*s  %12.6g ", ++rank, width, fit.name.c_str(), fit.error);
    for (size_t i = 0; i < fit.params.size(); ++i) std::printf(" %c=%.6g", parameterLetter(i), fit.params[i]);
    std::printf("\n");
  }
  std::string open;
  for (const Fit& fit : results.fits)
    if (!fit.settled) open += (open.empty() ? "not settled: " : ", ") + fit.name;
  if (!open.empty()) std::printf("%s\n", open.c_str());
  if (results.unfitted.empty()) return;
  std::printf("without a fit:");
  for (size_t i = 0; i < results.unfitted.size(); ++i) std::printf("%s %s", i ? "," : "", results.unfitted[i].c_str());
  std::printf("\n");
}

int fit(Options options) {
  Results results;
  const bool terminal = isatty(STDERR_FILENO) != 0;
  if (terminal) std::fprintf(stderr, "Reading %s", options.dataPath.c_str());
  try {
    results.column = readColumn(options);
  } catch (...) {
    if (terminal) std::fprintf(stderr, "\r\x1b[K");
    throw;
  }
  if (terminal) std::fprintf(stderr, "\r\x1b[K");
  checkPagePath(options.reportPath, options.dataPath);
  std::fprintf(stderr, "Fitting %zu distribution%s to %zu values of \"%s\" on %d thread%s\n", options.funs.size(),
               options.funs.size() == 1 ? "" : "s", results.column.values.size(), results.column.name.c_str(),
               options.threads, options.threads == 1 ? "" : "s");
  if (results.column.values.size() > static_cast<size_t>(options.points))
    std::fprintf(stderr, "Fitted to %d evenly spaced ones of the sorted values (--points)\n", options.points);

  catchInterrupt();
  const auto start = std::chrono::steady_clock::now();
  FitRun run(results.column.values, options);
  results.stopped = watch(run, options.seconds);
  results.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  results.fits = run.fits();
  results.unfitted = run.unfitted();

  const int code = interrupted ? kInterrupted : 0;
  if (results.stopped)
    std::fprintf(stderr, "Ended early: %zu of %zu distributions have a fit\n", results.fits.size(), run.asked());
  if (results.fits.empty()) {
    std::fprintf(stderr, "No distribution has a fit, there is nothing to report\n");
    return code;
  }
  printRanking(results);
  writePage(options.reportPath, reportPage(results, options));
  std::fprintf(stderr, "Report: %s\n", options.reportPath.c_str());
  return code;
}

}  // namespace

int main(int argc, char** argv) {
  return runHost(
      "orvane-fit", usage(), [=] { return readOptions(argc, argv); }, fit);
}
