// SPDX-License-Identifier: Apache-2.0
#include "fit_run.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>

#include "sample.h"

namespace {

// The library's error of a distribution that no solver has improved.
constexpr double kUnfitted = 1e300;

// A search that improves less than this counts as settled.
constexpr double kSettled = 0.99;

bool isFitted(double error) { return error < kUnfitted; }

}  // namespace

FitRun::FitRun(const std::vector<double>& values, Options& options)
    : options(options),
      funs(std::move(options.funs)),
      errors(funs.size(), kUnfitted),
      settled(funs.size(), 0),
      begun(funs.size(), 0),
      manger(pdfManger_create()),
      bestError(kUnfitted) {
  const std::vector<double> points = thinned(values, static_cast<size_t>(options.points));
  pdfManger_setData(manger.get(), points.data(), static_cast<int32_t>(points.size()));
  worker = std::thread(&FitRun::work, this);
}

FitRun::~FitRun() {
  while (!finished()) {
    stop();
    std::this_thread::yield();
  }
  worker.join();
}

void FitRun::work() {
  const auto threads = static_cast<size_t>(options.threads);
  for (int32_t pass = 0; pass <= options.repeats; ++pass)
    for (size_t from = 0; from < funs.size() && !stopAsked; from += threads) {
      awaitOtherSecond(from);
      search(from, std::min(threads, funs.size() - from));
    }
  done = true;
}

// A solver's generator is seeded from the time in seconds: a search begun in the same second as the one before would
// repeat it, and every fit would seem settled.
void FitRun::awaitOtherSecond(size_t from) {
  while (std::time(nullptr) == begun[from] && !stopAsked) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  begun[from] = std::time(nullptr);
}

/// One turn of each of `count` distributions.
void FitRun::search(size_t from, size_t count) {
  std::vector<PDFFun*> turn;
  for (size_t i = from; i < from + count; ++i) turn.push_back(funs[i].get());
  {
    const std::lock_guard lock(mutex);
    atWork = count;
  }
  pdfManger_optimizer(manger.get(), turn.data(), static_cast<int32_t>(count), options.solvers.data(),
                      static_cast<int32_t>(options.solvers.size()), options.population, options.iterations,
                      options.threads, options.precision);
  const std::lock_guard lock(mutex);
  atWork = 0;
  turnsDone += count;
  for (size_t i = 0; i < count; ++i) {
    const double error = pdf_getError(turn[i]);
    double& before = errors[from + i];
    settled[from + i] = !stopAsked && isFitted(before) && error >= kSettled * before;
    before = error;
    if (error < bestError) {
      bestError = error;
      bestName = pdf_getName(turn[i]);
    }
  }
}

Progress FitRun::progress() {
  // Null and unfitted beyond what the library writes: its list may be shorter than the arrays.
  std::vector<PDFFun*> sorted(funs.size(), nullptr);
  std::vector<double> soFar(funs.size(), kUnfitted);
  pdfManger_getSortPDF(manger.get(), sorted.data(), soFar.data());
  const int64_t thousandths = pdfManger_getProcess(manger.get());

  const std::lock_guard lock(mutex);
  if (sorted.front() != nullptr && soFar.front() < bestError) {
    bestError = soFar.front();
    bestName = pdf_getName(sorted.front());
  }
  // 1000 is also what an idle manager tells, so it counts as nothing: the end of a turn moves turnsDone on.
  const double inTurn = thousandths < 1000 ? static_cast<double>(thousandths) / 1000.0 : 0.0;
  const auto turns = static_cast<double>(funs.size()) * (options.repeats + 1);
  lastShare = std::max(lastShare, (static_cast<double>(turnsDone) + inTurn * static_cast<double>(atWork)) / turns);
  return {lastShare, bestName, bestError};
}

void FitRun::stop() {
  stopAsked = true;
  pdfManger_stop(manger.get());
}

std::vector<Fit> FitRun::fits() const {
  std::vector<Fit> result;
  for (size_t i = 0; i < funs.size(); ++i) {
    const FunHandle& fun = funs[i];
    if (!isFitted(errors[i])) continue;
    Fit fit{fun.get(), pdf_getName(fun.get()), errors[i], {}, settled[i] != 0};
    fit.params.resize(static_cast<size_t>(pdf_getParam(fun.get(), nullptr, 0)));
    pdf_getParam(fun.get(), fit.params.data(), static_cast<int32_t>(fit.params.size()));
    result.push_back(std::move(fit));
  }
  std::stable_sort(result.begin(), result.end(), [](const Fit& a, const Fit& b) { return a.error < b.error; });
  return result;
}

std::vector<std::string> FitRun::unfitted() const {
  std::vector<std::string> names;
  for (size_t i = 0; i < funs.size(); ++i)
    if (!isFitted(errors[i])) names.emplace_back(pdf_getName(funs[i].get()));
  return names;
}
