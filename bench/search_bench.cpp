// SPDX-License-Identifier: Apache-2.0
// Candidates a second of the expression search: 1,000 rows, terms drawn from 30, 6 parameters. `items_per_second` is
// candidates. The number of drawn terms keeps one search short.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <vector>

#include "orvane/expression_search.h"
#include "orvane/frame.h"

namespace {

using Vector = std::vector<double>;
constexpr int32_t kRows = 1000, kTerms = 30;

enum Data {
  kNoise,  // every candidate is as bad as the others: all rows are seen
  kLaw     // most candidates are given up after some rows
};

Vector draws(std::mt19937& rng, double lo, double hi) {
  Vector out(kRows);
  for (double& v : out) v = lo + (hi - lo) * static_cast<double>(rng()) / 4294967296.0;
  return out;
}

void searchTerms(benchmark::State& state, Data data, double errorLimit, double fitLimit, int32_t maxTerms, uint8_t kind,
                 uint8_t transform, int32_t drawn) {
  std::mt19937 rng(1);
  std::vector<Vector> terms;
  for (int32_t i = 0; i < kTerms; ++i) terms.push_back(draws(rng, 0.5, 2.0));
  Vector y = draws(rng, 0.5, 2.0);
  if (data == kLaw)
    for (std::size_t i = 0; i < y.size(); ++i)
      y[i] = terms[3][i] * terms[5][i] + terms[9][i] / terms[7][i] + 0.1 * y[i];
  int64_t judged = 0;
  for (auto _ : state) {
    ExpressSearch* es = api_ES_Create();
    for (const Vector& term : terms) api_ES_AddX(es, term.data(), kRows);
    api_ES_SetY(es, y.data(), kRows);
    api_ES_SetLimitCondition(es, errorLimit, fitLimit, drawn);
    api_ES_Search(es, maxTerms, kind, transform);
    judged += api_ES_GetSearchNum(es);
    api_FreeHandle(es);
  }
  state.SetItemsProcessed(judged);
}

BENCHMARK_CAPTURE(searchTerms, rational_noise, kNoise, 0.0, 0.0, 6, 0, 0, 14);
BENCHMARK_CAPTURE(searchTerms, rational_law, kLaw, 0.0, 0.0, 6, 0, 0, 14);
BENCHMARK_CAPTURE(searchTerms, rational_correlation, kNoise, 1e300, 0.999, 6, 0, 0, 14);  // no error to give up at
BENCHMARK_CAPTURE(searchTerms, rational_sqrt, kNoise, 0.0, 0.0, 6, 0, 3, 14);
BENCHMARK_CAPTURE(searchTerms, rational_atanh, kLaw, 0.0, 0.0, 6, 0, 102, 14);
BENCHMARK_CAPTURE(searchTerms, powers, kLaw, 0.0, 0.0, 6, 1, 0, 6);

}  // namespace
