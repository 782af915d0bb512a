// SPDX-License-Identifier: Apache-2.0
// The hypergeometric series on the arguments of a distribution fit: the public routine beside the GMP series that it
// stands for, on 512 arguments of each family of the test. The counter "same" is the share of bit-identical values,
// "terms" the mean length of the series.
#include <benchmark/benchmark.h>

#include <bit>
#include <string>

#include "special/hypergeometric/hypergeometric.h"
#include "special/hypergeometric/hypergeometric_series_gmp.h"
#include "special/hypergeometric_families.h"

namespace {

using namespace SpecialFunction;
using families::Arguments;

using Call = double (*)(const double*, int32_t, const double*, int32_t, double);

double at(Call call, const Arguments& x) {
  return call(x.a.data(), static_cast<int32_t>(x.a.size()), x.b.data(), static_cast<int32_t>(x.b.size()), x.z);
}

double terms(const Arguments& x) {
  double n = 0, term = 1;
  do {
    for (const double a : x.a) term *= a + n;
    for (const double b : x.b) term /= b + n;
    term *= x.z / ++n;
  } while (std::abs(term) > 1e-17 && std::isfinite(term));
  return n;
}

std::vector<Arguments> draw(const families::Family& wanted) {
  std::vector<Arguments> drawn;
  families::forFamilies(1, [&](const families::Family& family, const Arguments& x) {
    if (&family == &wanted && drawn.size() < 512) drawn.push_back(x);
  });
  return drawn;
}

void run(benchmark::State& state, const families::Family& family, Call call) {
  const std::vector<Arguments> all = draw(family);
  std::size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(at(call, all[i]));
    i = (i + 1) % all.size();
  }
  double same = 0, length = 0;
  for (const Arguments& x : all) {
    same += std::bit_cast<uint64_t>(at(call, x)) == std::bit_cast<uint64_t>(at(calcHypergeometricPFQByGMP, x));
    length += terms(x);
  }
  state.counters["same"] = same / static_cast<double>(all.size());
  state.counters["terms"] = length / static_cast<double>(all.size());
}

const bool kRegistered = [] {
  for (const families::Family& family : families::kFamilies)
    for (const auto& [name, call] :
         {std::pair{"/gmp", &calcHypergeometricPFQByGMP}, {"/orvane", &calcHypergeometricPFQ}})
      benchmark::RegisterBenchmark((family.name + std::string(name)).c_str(),
                                   [&family, call = call](benchmark::State& s) { run(s, family, call); });
  return true;
}();

}  // namespace
