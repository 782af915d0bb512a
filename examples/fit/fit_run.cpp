// SPDX-License-Identifier: Apache-2.0
#include "fit_run.h"

#include <algorithm>
#include <cmath>

namespace {

// The library's error of a distribution that no solver has improved.
constexpr double kUnfitted = 1e300;

bool isFitted(double error) { return error < kUnfitted; }

}  // namespace

FitRun::FitRun(const std::vector<double>& values, Options& options)
    : options(options), funs(std::move(options.funs)), manger(pdfManger_create()), bestError(kUnfitted) {
  pdfManger_setData(manger.get(), values.data(), static_cast<int32_t>(values.size()));
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
  std::vector<PDFFun*> left;
  for (const FunHandle& fun : funs) left.push_back(fun.get());
  int emptyRounds = 0;
  while (!left.empty() && !stopAsked && emptyRounds < 2) {
    const size_t before = left.size();
    {
      const std::lock_guard lock(mutex);
      roundSize = before;
    }
    pdfManger_optimizer(manger.get(), left.data(), static_cast<int32_t>(left.size()), options.solvers.data(),
                        static_cast<int32_t>(options.solvers.size()), options.population, options.iterations,
                        options.threads, options.precision);
    notice(left);
    std::erase_if(left, [](const PDFFun* fun) { return isFitted(pdf_getError(fun)); });
    emptyRounds = left.size() < before ? 0 : emptyRounds + 1;
    // The first ones of a round are those that surely had a thread: let the others be first next time.
    std::rotate(left.begin(), left.begin() + static_cast<std::ptrdiff_t>(left.size() / 2), left.end());
  }
  done = true;
}

/// Keeps the best fit of a round that has ended.
void FitRun::notice(const std::vector<PDFFun*>& round) {
  const std::lock_guard lock(mutex);
  roundSize = 0;
  for (const PDFFun* fun : round) {
    const double error = pdf_getError(fun);
    if (!isFitted(error)) continue;
    ++fittedBefore;
    if (error < bestError) {
      bestError = error;
      bestName = pdf_getName(fun);
    }
  }
}

Progress FitRun::progress() {
  // Null and unfitted beyond what the library writes: between two rounds its list may be shorter than the arrays.
  std::vector<PDFFun*> sorted(funs.size(), nullptr);
  std::vector<double> errors(funs.size(), kUnfitted);
  pdfManger_getSortPDF(manger.get(), sorted.data(), errors.data());
  const int64_t thousandths = pdfManger_getProcess(manger.get());

  const std::lock_guard lock(mutex);
  if (sorted.front() != nullptr && errors.front() < bestError) {
    bestError = errors.front();
    bestName = pdf_getName(sorted.front());
  }
  // 1000 is also what an idle manager tells, so it counts as nothing: the end of a round moves fittedBefore on.
  const double inRound = thousandths < 1000 ? static_cast<double>(thousandths) / 1000.0 : 0.0;
  const double share =
      (static_cast<double>(fittedBefore) + inRound * static_cast<double>(roundSize)) / static_cast<double>(funs.size());
  lastShare = std::max(lastShare, share);
  return {lastShare, bestName, bestError};
}

void FitRun::stop() {
  stopAsked = true;
  pdfManger_stop(manger.get());
}

std::vector<Fit> FitRun::fits() const {
  std::vector<Fit> result;
  for (const FunHandle& fun : funs) {
    const double error = pdf_getError(fun.get());
    if (!isFitted(error)) continue;
    Fit fit{fun.get(), pdf_getName(fun.get()), error, {}};
    fit.params.resize(static_cast<size_t>(pdf_getParam(fun.get(), nullptr, 0)));
    pdf_getParam(fun.get(), fit.params.data(), static_cast<int32_t>(fit.params.size()));
    result.push_back(std::move(fit));
  }
  std::stable_sort(result.begin(), result.end(), [](const Fit& a, const Fit& b) { return a.error < b.error; });
  return result;
}

std::vector<std::string> FitRun::unfitted() const {
  std::vector<std::string> names;
  for (const FunHandle& fun : funs)
    if (!isFitted(pdf_getError(fun.get()))) names.emplace_back(pdf_getName(fun.get()));
  return names;
}
