// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstddef>
#include <ctime>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "handles.h"
#include "options.h"

/// How far a fit is.
struct Progress {
  double share = 0;      ///< 0 to 1
  std::string bestName;  ///< empty as long as nothing has been fitted
  double bestError = 0;
};

/// A distribution and what its fit found.
struct Fit {
  PDFFun* fun;  ///< borrowed from the run
  std::string name;
  double error;  ///< sum over the distinct values of (fitted - empirical distribution function)^2
  std::vector<double> params;
  bool settled;  ///< the last search made the error less by one per cent at most
};

/// Fits of many distributions on a thread of its own, polled and stopped from the outside.
///
/// The library's call hands every distribution out once; one that comes up while all threads are busy is passed over.
/// So the thread calls for as many at a time as there are threads. When all have had their turn it goes through them
/// again: a search that was near its best finds nothing new then, and one that was not is told from that.
class FitRun {
 public:
  /// Starts at once. Takes the distributions over from the options, which must outlive the run.
  FitRun(const std::vector<double>& values, Options& options);
  ~FitRun();
  FitRun(const FitRun&) = delete;
  FitRun& operator=(const FitRun&) = delete;

  bool finished() const { return done; }
  Progress progress();
  /// Asks the fit to end soon; to be called again until finished, since a stop between two calls reaches no solver.
  void stop();
  /// The fits, the smallest error first; only when finished.
  std::vector<Fit> fits() const;
  /// Names of those that have no fit; only when finished.
  std::vector<std::string> unfitted() const;
  size_t asked() const { return funs.size(); }

 private:
  void work();
  void awaitOtherSecond(size_t from);
  void search(size_t from, size_t count);

  const Options& options;
  std::vector<FunHandle> funs;
  std::vector<double> errors;  ///< after the last turn of each
  std::vector<uint8_t> settled;
  std::vector<std::time_t> begun;  ///< when a turn that starts with this one was last begun
  MangerHandle manger;
  std::atomic<bool> stopAsked{false};
  std::atomic<bool> done{false};

  std::mutex mutex;  // guards the four below
  size_t turnsDone = 0;
  size_t atWork = 0;
  std::string bestName;
  double bestError;

  double lastShare = 0;  // of the polling thread alone
  std::thread worker;
};
