// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstddef>
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
};

/// One fit of many distributions on a thread of its own, polled and stopped from the outside.
///
/// The library's call hands every distribution out once; one that comes up while all threads are busy is passed over.
/// A host that wants all of them calls again for those that are left, and that is what the thread does: round after
/// round with the distributions that have no error yet, until none is left or two rounds in a row have brought none
/// (solvers that find no finite error leave a distribution unfitted for good).
class FitRun {
 public:
  /// Starts at once. Takes the distributions over from the options, which must outlive the run.
  FitRun(const std::vector<double>& values, Options& options);
  ~FitRun();
  FitRun(const FitRun&) = delete;
  FitRun& operator=(const FitRun&) = delete;

  bool finished() const { return done; }
  Progress progress();
  /// Asks the fit to end soon; to be called again until finished, since a stop between two rounds reaches no solver.
  void stop();
  /// The fits, the smallest error first; only when finished.
  std::vector<Fit> fits() const;
  /// Names of those that have no fit; only when finished.
  std::vector<std::string> unfitted() const;
  size_t asked() const { return funs.size(); }

 private:
  void work();
  void notice(const std::vector<PDFFun*>& round);

  const Options& options;
  std::vector<FunHandle> funs;
  MangerHandle manger;
  std::atomic<bool> stopAsked{false};
  std::atomic<bool> done{false};

  std::mutex mutex;  // guards the four below
  size_t fittedBefore = 0;
  size_t roundSize = 0;
  std::string bestName;
  double bestError;

  double lastShare = 0;  // of the polling thread alone
  std::thread worker;
};
