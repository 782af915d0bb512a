// SPDX-License-Identifier: Apache-2.0
// Array functions beside a host's loop that calls the function of one element through its export: time per element.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "orvane/orvane.h"

namespace {

constexpr int32_t kCount = 4096;

// Uniform in [low, high), the same on every run.
std::vector<double> places(double low, double high, std::size_t count = kCount) {
  std::mt19937_64 words(1);
  std::vector<double> values(count);
  for (double& v : values) v = low + (high - low) * (static_cast<double>(words() >> 11) * 0x1p-53);
  return values;
}

void perElement(benchmark::State& state) {
  state.counters["ns_per_element"] =
      benchmark::Counter(kCount * 1e-9, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

struct One {
  const char* name;
  uint8_t code;
  double (*call)(double);
  double low, high;
};

constexpr One kOne[] = {
    {"sign", 133, math_sign, -2, 2},
    {"stepFun", 164, math_stepFun, -2, 2},
    {"sin", 10, math_sin, -10, 10},
    {"log10", 114, math_log10, 0.1, 10},
    {"logSign", 121, math_logSign, -10, 10},
    {"erf", 72, math_erf, -2, 2},
    {"gamma", 81, math_gamma, 0.5, 20},
    {"dawson", 47, math_drawson, -5, 5},
    {"ellipticK", 61, math_ellipticK, 0, 0.99},
    {"lambertW", 113, math_lambertW, 0, 10},
    {"AiryAi", 9, math_AiryAi, -5, 5},
};

void loopOne(benchmark::State& state, const One* f) {
  const std::vector<double> source = places(f->low, f->high);
  std::vector<double> out(kCount);
  for (auto _ : state) {
    for (std::size_t i = 0; i < source.size(); ++i) out[i] = f->call(source[i]);
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
  perElement(state);
}

void arrayOne(benchmark::State& state, const One* f) {
  const std::vector<double> source = places(f->low, f->high);
  std::vector<double> out(kCount);
  for (auto _ : state) {
    apiFun_calcFun(source.data(), kCount, out.data(), f->code);
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
  perElement(state);
}

struct Two {
  const char* name;
  uint8_t code;
  double (*call)(double, double);
  double low, high;
};

constexpr Two kTwo[] = {
    {"pow", 132, math_pow, 0.5, 3},
    {"AGM", 8, math_AGM, 0.5, 3},
    {"beta", 31, math_beta, 0.5, 3},
    {"jacobiEllipticSn", 107, math_jacobiEllipticSn, 0.1, 0.9},
};

void loopTwo(benchmark::State& state, const Two* f) {
  const std::vector<double> a = places(f->low, f->high);
  const std::vector<double> b(a.rbegin(), a.rend());
  std::vector<double> out(kCount);
  for (auto _ : state) {
    for (std::size_t i = 0; i < a.size(); ++i) out[i] = f->call(a[i], b[i]);
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
  perElement(state);
}

void arrayTwo(benchmark::State& state, const Two* f) {
  const std::vector<double> a = places(f->low, f->high);
  const std::vector<double> b(a.rbegin(), a.rend());
  std::vector<double> out(kCount);
  for (auto _ : state) {
    apiFun_calcFun2(a.data(), kCount, b.data(), kCount, out.data(), f->code);
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
  perElement(state);
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
  for (const One& f : kOne) {
    benchmark::RegisterBenchmark((std::string(f.name) + "/orvane").c_str(), arrayOne, &f);
    benchmark::RegisterBenchmark((std::string(f.name) + "/loop").c_str(), loopOne, &f);
  }
  for (const Two& f : kTwo) {
    benchmark::RegisterBenchmark((std::string(f.name) + "/orvane").c_str(), arrayTwo, &f);
    benchmark::RegisterBenchmark((std::string(f.name) + "/loop").c_str(), loopTwo, &f);
  }
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
