// SPDX-License-Identifier: Apache-2.0
// The whole road of a fit: all 342 distributions, or the first few of them, to one sample. Prints a Markdown table.
//
//   fit_bench <sample file> [solver] [population] [iterations] [threads] [count] [seconds]
//
// A fit that has not ended after `seconds` (0: no limit) is stopped, and the table says so.
// The sample file holds one value a line. Each of `threads` managers takes distribution after distribution from one
// list, so that every one of them gets a run.
#include <orvane/frame.h>
#include <orvane/pdf.h>
#include <orvane/pdf_manager.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <future>
#include <string>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double since(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

struct Settings {
  uint8_t solver;
  int32_t popSize, maxIter, threads, limit;
};

struct Result {
  int32_t code;
  std::string name;
  double seconds, error;
  bool stopped;
};

void fitAll(const std::vector<double>& sample, const Settings& settings, std::atomic<std::size_t>& next,
            std::vector<Result>& results) {
  PDFManger* manager = pdfManger_create();
  pdfManger_setData(manager, sample.data(), static_cast<int32_t>(sample.size()));
  for (std::size_t i = next++; i < results.size(); i = next++) {
    PDFFun* fun = pdf_initPDFFun(results[i].code);
    const auto start = Clock::now();
    std::promise<void> ended;
    bool stopped = false;
    std::thread watch([&, end = ended.get_future()] {
      if (settings.limit <= 0) return;
      stopped = end.wait_for(std::chrono::seconds(settings.limit)) == std::future_status::timeout;
      if (stopped) pdfManger_stop(manager);
    });
    pdfManger_optimizer(manager, &fun, 1, &settings.solver, 1, settings.popSize, settings.maxIter, 1, 1e-12);
    ended.set_value();
    watch.join();
    results[i] = {results[i].code, pdf_getName(fun), since(start), pdf_getError(fun), stopped};
    api_FreeHandle(fun);
  }
  api_FreeHandle(manager);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr,
                 "usage: fit_bench <sample file> [solver] [population] [iterations] [threads] [count] [seconds]\n");
    return 2;
  }
  const auto argument = [&](int i, int fallback) { return argc > i ? std::atoi(argv[i]) : fallback; };
  const Settings settings{static_cast<uint8_t>(argument(2, 1)), argument(3, 20), argument(4, 50), argument(5, 2),
                          argument(7, 0)};
  std::vector<double> sample;
  std::ifstream file(argv[1]);
  for (double v; file >> v;) sample.push_back(v);

  std::vector<int32_t> codes(static_cast<std::size_t>(pdf_getAllPDFFun(nullptr, 0)));
  pdf_getAllPDFFun(codes.data(), static_cast<int32_t>(codes.size()));
  codes.resize(std::min(codes.size(), static_cast<std::size_t>(argument(6, 1000000))));
  std::vector<Result> results;
  for (int32_t code : codes) results.push_back({code, "", 0.0, 0.0, false});

  const auto start = Clock::now();
  std::atomic<std::size_t> next = 0;
  std::vector<std::thread> workers;
  for (int32_t t = 0; t < settings.threads; ++t) workers.emplace_back([&] { fitAll(sample, settings, next, results); });
  for (std::thread& worker : workers) worker.join();
  const double total = since(start);

  const auto fitted = std::count_if(results.begin(), results.end(), [](const Result& r) { return r.error < 1e300; });
  std::printf(
      "%zu values, solver %d, population %d, %d iterations, %d threads: %zu distributions in %.2f s, %td with a "
      "finite error.\n\n",
      sample.size(), settings.solver, settings.popSize, settings.maxIter, settings.threads, results.size(), total,
      fitted);

  std::printf("| distribution | code | s | error | ended |\n|---|---|---|---|---|\n");
  for (const Result& r : results)
    std::printf("| %s | %d | %.4f | %.9g | %s |\n", r.name.c_str(), r.code, r.seconds, r.error,
                r.stopped ? "stopped" : "yes");
  return 0;
}
