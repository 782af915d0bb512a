// SPDX-License-Identifier: Apache-2.0
#include "hunt.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <thread>

#include "formula.h"

namespace {

using Clock = std::chrono::steady_clock;

double since(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

/// A search that holds the terms of the inputs, or for peaks the columns.
std::shared_ptr<ExpressSearch> searchOf(const Study& study, const std::vector<Term>& terms, const Columns& inputs,
                                        const Vector& y) {
  std::shared_ptr<ExpressSearch> search(api_ES_Create(), Release());
  const auto rows = static_cast<int32_t>(y.size());
  if (study.kind == ES_KIND_PEAKS) {
    api_ES_AddOriginalData(search.get(), inputs.front().data(), rows);
    api_ES_AddOriginalData(search.get(), y.data(), rows);
    return search;
  }
  Columns values = valuesOf(terms, inputs, study.logarithms);
  for (std::size_t k = 0; k < study.units.size(); ++k)  // the terms are the inputs then
    for (double& v : values[k]) v /= study.units[k];
  for (const Vector& column : values) api_ES_AddX(search.get(), column.data(), rows);
  Vector scaled = y;
  for (double& v : scaled) v /= study.outputUnit;
  api_ES_SetY(search.get(), scaled.data(), rows);
  return search;
}

Found read(const Study& study, std::shared_ptr<ExpressSearch> owner, const SearchResult* handle) {
  Found found{.owner = std::move(owner), .handle = handle};
  double info[7];
  api_ES_GetResultInfo(handle, info);
  found.kind = static_cast<int>(info[0]);
  found.parameters = static_cast<int>(info[2]);
  found.error = info[5] * study.outputUnit * study.outputUnit;
  found.correlation = info[6];
  const auto room = static_cast<std::size_t>(found.parameters) + 2;
  found.top.resize(room);
  found.bottom.resize(room);
  found.topTerms.assign(room, -1);
  found.bottomTerms.assign(room, -1);
  api_ES_GetResultForTwoIndex(handle, found.top.data(), found.topTerms.data(), found.bottom.data(),
                              found.bottomTerms.data());
  // Each list ends with its constant and 1e300.
  const auto cut = [](Vector& list, double& constant) {
    list.erase(std::find(list.begin(), list.end(), 1e300), list.end());
    constant = list.back();
    list.pop_back();
  };
  cut(found.top, found.c0);
  cut(found.bottom, found.d0);
  std::erase(found.topTerms, -1);
  std::erase(found.bottomTerms, -1);
  return found;
}

/// A search on a thread of its own, watched from this one.
class Watch {
 public:
  Watch(const Study& study, const std::vector<Term>& terms, double seconds, const volatile std::atomic<bool>& stop)
      : study(study), terms(terms), seconds(seconds), interrupted(stop) {}

  void run(const std::shared_ptr<ExpressSearch>& search, int parameters, int64_t before) {
    std::atomic<bool> ended = false;
    std::thread worker([&] {
      api_ES_Search(search.get(), parameters, study.kind, ES_TRANSFORM_NONE);
      ended = true;
    });
    const bool terminal = isatty(STDERR_FILENO) != 0;
    auto shown = Clock::now();
    while (!ended) {
      if (over()) api_ES_Stop(search.get());
      if (terminal && since(shown) > 0.1) {
        shown = Clock::now();
        show(search, parameters, before);
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    worker.join();
    if (terminal) std::fputs("\r\x1b[K", stderr);
  }

  bool over() const { return interrupted || (seconds > 0 && since(start) > seconds); }

 private:
  void show(const std::shared_ptr<ExpressSearch>& search, int parameters, int64_t before) const {
    double info[7];
    const SearchResult* best = api_ES_GetBestResult(search.get(), info);
    std::string text = best == nullptr ? "" : "  " + plainFormula(study, terms, read(study, search, best));
    if (text.size() > 90) text = text.substr(0, 87) + "...";
    std::fprintf(stderr, "\r%s: %d parameters, %lld formulas%s\x1b[K", study.id.c_str(), parameters,
                 static_cast<long long>(before + api_ES_GetSearchNum(search.get())), text.c_str());
    std::fflush(stderr);
  }

  const Study& study;
  const std::vector<Term>& terms;
  double seconds;
  const volatile std::atomic<bool>& interrupted;
  Clock::time_point start = Clock::now();
};

/// Bayes's information criterion: what a further parameter must gain to be worth it.
double criterion(const Study& study, const Found& found) {
  const auto n = static_cast<double>(study.y.size());
  double square = 0;
  for (const double y : study.y) square += y * y;
  return n * std::log(std::max(found.error, 1e-24 * square) / n) + found.parameters * std::log(n);
}

void settle(const Study& study, const std::shared_ptr<ExpressSearch>& search) {
  api_ES_SetLimitCondition(search.get(), 0, -1, 0);
  api_ES_SetSolverParam(search.get(), 2000, 50, 1e-12, 1e-16);
  if (study.kind == ES_KIND_PEAKS) api_ES_SetBirdParam(search.get(), 96, 2, 1);
}

}  // namespace

Hunt hunt(const Study& study, double seconds, const volatile std::atomic<bool>& interrupted) {
  Hunt hunt;
  const auto start = Clock::now();
  if (study.kind != ES_KIND_PEAKS) hunt.terms = termsOf(study.inputs, study.degree, study.logarithms);
  Watch watch(study, hunt.terms, seconds, interrupted);
  const int step = study.kind == ES_KIND_POWERS ? 2 : 1;
  for (int parameters = study.least; parameters <= study.most && !watch.over(); parameters += step) {
    if (static_cast<std::size_t>(parameters) >= study.y.size()) break;
    const auto search = searchOf(study, hunt.terms, study.x, study.y);
    settle(study, search);
    watch.run(search, parameters, hunt.candidates);
    hunt.candidates += api_ES_GetSearchNum(search.get());
    if (const SearchResult* best = api_ES_GetBestResult(search.get(), nullptr))
      hunt.front.push_back(read(study, search, best));
  }
  for (std::size_t i = 0; i < hunt.front.size(); ++i)
    if (criterion(study, hunt.front[i]) < criterion(study, hunt.front[hunt.chosen])) hunt.chosen = i;

  if (!hunt.front.empty() && study.kind == ES_KIND_RATIONAL && !watch.over()) {
    const Found& best = hunt.front[hunt.chosen];
    const auto search = searchOf(study, hunt.terms, study.x, study.y);
    settle(study, search);
    api_ES_SetLimitCondition(search.get(), 9 * best.error, -1, 0);  // three times as far off, on the mean
    watch.run(search, best.parameters, hunt.candidates);
    for (uint32_t i = 0; i < api_ES_GetResultNum(search.get()); ++i)
      hunt.ranking.push_back(
          read(study, search, api_ES_GetResultByIndex(search.get(), static_cast<int32_t>(i), nullptr)));
    std::sort(hunt.ranking.begin(), hunt.ranking.end(),
              [](const Found& a, const Found& b) { return a.error < b.error; });
    hunt.ranking.resize(std::min<std::size_t>(hunt.ranking.size(), 5));
  }
  hunt.stopped = watch.over();
  hunt.seconds = since(start);
  return hunt;
}

Vector valuesAt(const Study& study, const Hunt& hunt, const Found& found, const Columns& inputs) {
  Vector values(inputs.front().size());
  const auto there = searchOf(study, hunt.terms, inputs, values);
  api_ES_CalExpress(there.get(), found.handle, values.data());
  for (double& v : values) v *= study.outputUnit;
  return values;
}
