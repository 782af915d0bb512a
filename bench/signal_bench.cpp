// SPDX-License-Identifier: Apache-2.0
// Fourier transforms beside FFTW: `FFTW` makes its plan in every call, as data_FFT does, `FFTW planned` has it ready;
// both plan by estimate. Filters and sliding windows by size and width alone; bench/signal_peers.py has their peers.
#include <benchmark/benchmark.h>
#include <orvane/orvane.h>
#ifdef ORVANE_BENCH_FFTW
#include <fftw3.h>
#endif

#include <random>
#include <string>
#include <vector>

namespace {

std::vector<double> drawn(std::size_t n) {
  std::mt19937_64 words(1);
  std::vector<double> x(n);
  for (double& v : x) v = static_cast<double>(words() >> 11) * 0x1p-53 - 0.5;
  return x;
}

void fft(benchmark::State& state, int32_t n) {
  const std::vector<double> re = drawn(static_cast<std::size_t>(n)), im(re.rbegin(), re.rend());
  std::vector<double> a(re.size()), b(re.size());
  for (auto _ : state) {
    data_FFT(re.data(), n, im.data(), n, a.data(), b.data());
    benchmark::ClobberMemory();
  }
}

#ifdef ORVANE_BENCH_FFTW
void fftw(benchmark::State& state, int32_t n, bool planned) {
  const auto size = static_cast<std::size_t>(n);
  const std::vector<double> source = drawn(2 * size);
  auto* in = fftw_alloc_complex(size);
  auto* out = fftw_alloc_complex(size);
  const auto make = [&] { return fftw_plan_dft_1d(n, in, out, FFTW_FORWARD, FFTW_ESTIMATE); };
  fftw_plan ready = make();
  for (std::size_t i = 0; i < 2 * size; ++i) in[i / 2][i % 2] = source[i];
  for (auto _ : state) {
    fftw_plan plan = planned ? ready : make();
    fftw_execute(plan);
    if (!planned) fftw_destroy_plan(plan);
    benchmark::ClobberMemory();
  }
  fftw_destroy_plan(ready);
  fftw_free(in);
  fftw_free(out);
}
#endif

void window(benchmark::State& state, void (*filter)(const double*, double*, int32_t, int32_t), int32_t width) {
  const std::vector<double> x = drawn(1000000);
  std::vector<double> y(x.size());
  for (auto _ : state) {
    filter(x.data(), y.data(), static_cast<int32_t>(x.size()), width);
    benchmark::ClobberMemory();
  }
}

}  // namespace

int main(int argc, char** argv) {
  for (const int32_t n : {64, 100, 1000, 1009, 1024, 2018, 4096, 65536, 1 << 20, 999983}) {
    const std::string name = "data_FFT " + std::to_string(n);
    benchmark::RegisterBenchmark((name + "/orvane").c_str(), fft, n);
#ifdef ORVANE_BENCH_FFTW
    benchmark::RegisterBenchmark((name + "/FFTW").c_str(), fftw, n, false);
    benchmark::RegisterBenchmark((name + "/FFTW planned").c_str(), fftw, n, true);
#endif
  }
  for (const int32_t width : {3, 9, 15, 17, 33, 101, 1001, 10001, 100001}) {
    const std::string text = " of 10^6, width " + std::to_string(width) + "/orvane";
    benchmark::RegisterBenchmark(("median" + text).c_str(), window, filterByMedianFilter, width);
    benchmark::RegisterBenchmark(("maximum" + text).c_str(), window, filterByMaxFilter, width);
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
