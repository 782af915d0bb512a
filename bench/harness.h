// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <benchmark/benchmark.h>

#include <exception>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/functions.h"
#include "support/reference_rows.h"

/// Functions of one family beside peers, on the rows of their reference tables. A row that one of the routines of a
/// case gets wrong is dropped for all of them before any is timed, so that every time is that of the same correct
/// values.
namespace harness {

using functions::Call;

struct Routine {
  std::string name;
  Call call;
};

/// Arguments of a row that a case takes.
using Filter = bool (*)(const double* v);
inline bool any(const double*) { return true; }

struct Case {
  std::string title, function;  ///< the function's name in the list is also that of its table
  Filter filter;
  std::vector<Routine> peers;
};

constexpr double kWrong = 1e-6;  ///< from this relative error on a row is wrong

/// The rows of a case that are timed, and what each routine does on them.
struct Prepared {
  struct Errors {
    double wrong = 0, largest = 0, median = 0;  ///< a count; ulps on the rows that are left
  };
  std::vector<ReferenceRow> rows;
  std::vector<Errors> errors;  ///< of the routines
};

/// A row at which the routine throws is wrong, too.
inline bool isRight(const Routine& routine, const ReferenceRow& row) {
  try {
    return std::abs(routine.call(row.arguments.data()) / row.expected - 1) < kWrong;
  } catch (const std::exception&) {
    return false;
  }
}

inline Prepared prepare(const Case& one, const std::vector<Routine>& routines) {
  Prepared ready;
  ready.errors.resize(routines.size());
  for (const ReferenceRow& row : readReference("special/" + one.function + ".csv")) {
    const double size = std::abs(row.expected);
    if (!(size > 1e-300 && size < 1e300) || !one.filter(row.arguments.data())) continue;
    bool wrong = false;
    for (std::size_t i = 0; i < routines.size(); ++i)
      if (!isRight(routines[i], row)) {
        ++ready.errors[i].wrong;
        wrong = true;
      }
    if (!wrong) ready.rows.push_back(row);
  }
  for (std::size_t i = 0; i < routines.size() && !ready.rows.empty(); ++i) {
    std::vector<double> ulps;
    for (const ReferenceRow& row : ready.rows)
      ulps.push_back(ulpError(routines[i].call(row.arguments.data()), row.expected));
    std::sort(ulps.begin(), ulps.end());
    ready.errors[i].largest = ulps.back();
    ready.errors[i].median = ulps[ulps.size() / 2];
  }
  return ready;
}

inline benchmark::Counter nanosecondsEach(std::size_t count) {
  return {static_cast<double>(count) * 1e-9,
          benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert};
}

/// Registers every case as title/orvane, title/peer, ... and runs what the command line asks for.
inline int run(const std::vector<Case>& cases, int argc, char** argv) {
  for (const Case& one : cases) {
    std::vector<Routine> routines{{"orvane", functions::find(one.function)}};
    routines.insert(routines.end(), one.peers.begin(), one.peers.end());
    const auto ready = std::make_shared<std::unique_ptr<Prepared>>();  // when the first of them runs
    for (std::size_t i = 0; i < routines.size(); ++i)
      benchmark::RegisterBenchmark((one.title + "/" + routines[i].name).c_str(), [=](benchmark::State& state) {
        if (*ready == nullptr) *ready = std::make_unique<Prepared>(prepare(one, routines));
        const Prepared& on = **ready;
        if (on.rows.empty()) return state.SkipWithError("no row that all get right");
        for (auto _ : state)
          for (const ReferenceRow& row : on.rows) benchmark::DoNotOptimize(routines[i].call(row.arguments.data()));
        state.counters["ns_per_call"] = nanosecondsEach(on.rows.size());
        state.counters["rows"] = static_cast<double>(on.rows.size());
        state.counters["wrong"] = on.errors[i].wrong;
        state.counters["max_ulp"] = on.errors[i].largest;
        state.counters["median_ulp"] = on.errors[i].median;
      });
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

}  // namespace harness
