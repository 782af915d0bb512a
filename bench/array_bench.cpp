// SPDX-License-Identifier: Apache-2.0
// Array functions beside a host's loop that calls the function of one element through its export: time per element.
#include <dlfcn.h>
#include <orvane/array.h>

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "harness.h"

namespace {

constexpr int32_t kCount = 4096;

// Uniform in [low, high), the same on every run.
std::vector<double> places(double low, double high, std::size_t count = kCount) {
  std::mt19937_64 words(1);
  std::vector<double> values(count);
  for (double& v : values) v = low + (high - low) * (static_cast<double>(words() >> 11) * 0x1p-53);
  return values;
}

void perElement(benchmark::State& state) { state.counters["ns_per_element"] = harness::nanosecondsEach(kCount); }

/// A function of one or two numbers, named in the list of functions, on arrays of places between two ends.
struct Timed {
  const char* name;
  double low, high;
};

constexpr Timed kTimed[] = {
    {"math_sign", -2, 2},     {"math_stepFun", -2, 2},   {"math_sin", -10, 10},
    {"math_log10", 0.1, 10},  {"math_logSign", -10, 10}, {"math_erf", -2, 2},
    {"math_gamma", 0.5, 20},  {"math_drawson", -5, 5},   {"math_ellipticK", 0, 0.99},
    {"math_lambertW", 0, 10}, {"math_AiryAi", -5, 5},    {"math_pow", 0.5, 3},
    {"math_AGM", 0.5, 3},     {"math_beta", 0.5, 3},     {"math_jacobiEllipticSn", 0.1, 0.9},
};

/// Fills an array again and again with what `fill` makes of the places and of the same in reverse.
template <class Fill>
void registerFill(const std::string& name, const Timed& timed, Fill fill) {
  benchmark::RegisterBenchmark(name.c_str(), [timed, fill](benchmark::State& state) {
    const std::vector<double> a = places(timed.low, timed.high), b(a.rbegin(), a.rend());
    std::vector<double> out(kCount);
    for (auto _ : state) {
      fill(a.data(), b.data(), out.data());
      benchmark::DoNotOptimize(out.data());
      benchmark::ClobberMemory();
    }
    perElement(state);
  });
}

/// The array function and a loop over the export, called by its pointer as a host does.
void registerTimed(const Timed& timed) {
  const functions::Function& f = functions::row(timed.name);
  void* const symbol = dlsym(RTLD_DEFAULT, timed.name);
  const auto code = static_cast<uint8_t>(f.arrayCode);
  const std::string name = f.name.substr(std::string("math_").size());
  if (f.count == 1) {
    const auto one = reinterpret_cast<double (*)(double)>(symbol);
    registerFill(name + "/orvane", timed,
                 [code](const double* a, const double*, double* out) { apiFun_calcFun(a, kCount, out, code); });
    registerFill(name + "/loop", timed, [one](const double* a, const double*, double* out) {
      for (int32_t i = 0; i < kCount; ++i) out[i] = one(a[i]);
    });
  } else {
    const auto two = reinterpret_cast<double (*)(double, double)>(symbol);
    registerFill(name + "/orvane", timed, [code](const double* a, const double* b, double* out) {
      apiFun_calcFun2(a, kCount, b, kCount, out, code);
    });
    registerFill(name + "/loop", timed, [two](const double* a, const double* b, double* out) {
      for (int32_t i = 0; i < kCount; ++i) out[i] = two(a[i], b[i]);
    });
  }
}

// Another array each time: a processor learns the branches of a single one.
class Rotation {
 public:
  const double* next() { return pool.data() + (turn++ % kArrays) * kCount; }

 private:
  static constexpr std::size_t kArrays = 64;
  std::vector<double> pool = places(-1, 1, kArrays* kCount);
  std::size_t turn = 0;
};

template <class Sort>
void sortValues(benchmark::State& state, Sort sort) {
  Rotation sources;
  std::vector<double> out(kCount);
  for (auto _ : state) {
    const double* source = sources.next();
    std::copy(source, source + kCount, out.begin());
    sort(out);
    benchmark::DoNotOptimize(out.data());
  }
  perElement(state);
}

template <class Sort>
void sortPlaces(benchmark::State& state, Sort sort) {
  Rotation sources;
  std::vector<uint32_t> out(kCount);
  for (auto _ : state) {
    sort(sources.next(), out);
    benchmark::DoNotOptimize(out.data());
  }
  perElement(state);
}

void normalArray(benchmark::State& state) {
  std::vector<double> out(kCount);
  uint64_t seed = 0;
  for (auto _ : state) {
    apiFun_randFun(out.data(), kCount, 1, ++seed, 200);
    benchmark::DoNotOptimize(out.data());
  }
  perElement(state);
}

void normalLoop(benchmark::State& state) {
  std::vector<double> out(kCount);
  uint64_t seed = 0;
  for (auto _ : state) {
    std::mt19937_64 words(++seed);
    std::normal_distribution<double> normal;
    for (double& v : out) v = normal(words);
    benchmark::DoNotOptimize(out.data());
  }
  perElement(state);
}

}  // namespace

int main(int argc, char** argv) {
  for (const Timed& timed : kTimed) registerTimed(timed);
  benchmark::RegisterBenchmark("sort/orvane", [](benchmark::State& state) {
    sortValues(state, [](std::vector<double>& v) { apiFun_SortForValue(v.data(), kCount, 0); });
  });
  benchmark::RegisterBenchmark("sort/std", [](benchmark::State& state) {
    sortValues(state, [](std::vector<double>& v) { std::sort(v.begin(), v.end()); });
  });
  benchmark::RegisterBenchmark("sort_index/orvane", [](benchmark::State& state) {
    sortPlaces(state,
               [](const double* x, std::vector<uint32_t>& out) { apiFun_SortForIndex(x, kCount, 0, out.data()); });
  });
  benchmark::RegisterBenchmark("sort_index/std", [](benchmark::State& state) {
    sortPlaces(state, [](const double* x, std::vector<uint32_t>& out) {
      std::iota(out.begin(), out.end(), 0u);
      std::sort(out.begin(), out.end(), [x](uint32_t a, uint32_t b) { return x[a] < x[b]; });
    });
  });
  benchmark::RegisterBenchmark("normal/orvane", normalArray);
  benchmark::RegisterBenchmark("normal/std", normalLoop);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
