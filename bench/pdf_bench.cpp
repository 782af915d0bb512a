// SPDX-License-Identifier: Apache-2.0
// The measure of a fit, the sum of squared distances to an empirical distribution function of 1000 points, for all
// distributions, and beside some the same sum written by hand. Time per item is time per point.
#include <benchmark/benchmark.h>

#include <cmath>
#include <string>
#include <vector>

#include "pdf/factory.h"

namespace {

constexpr std::size_t kPoints = 1000;

struct Data {
  // Points inside every default support and the series' circle of convergence.
  explicit Data(int32_t base) : x(kPoints), cdf(kPoints) {
    const double low = base == 1 ? -4 : base == 3 ? -0.99 : base == 51 ? -1.7 : 0.01;
    const double high = base == 1 ? -0.01 : base == 3 ? -0.01 : base == 51 ? 1.7 : base == 32 || base == 40 ? 0.95 : 4;
    for (std::size_t i = 0; i < kPoints; ++i) {
      cdf[i] = (static_cast<double>(i) + 0.5) / kPoints;
      x[i] = low + (high - low) * cdf[i];
    }
  }
  std::vector<double> x, cdf;
};

void fitMeasure(benchmark::State& state, int32_t code) {
  const Data data(code % 10000);
  const auto fun = PDF::makePDFFun(code);
  for (auto _ : state) benchmark::DoNotOptimize(fun->cdfSquaredError(data.x, data.cdf));
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(kPoints));
}

template <class Formula>
void byHand(benchmark::State& state, Formula formula) {
  const Data data(43);
  for (auto _ : state) {
    double sum = 0;
    for (std::size_t i = 0; i < kPoints; ++i) {
      const double d = formula(data.x[i]) - data.cdf[i];
      sum += d * d;
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(kPoints));
}

const int registered = [] {
  for (const int32_t code : PDF::allPDFCodes())
    benchmark::RegisterBenchmark(("pdf/" + PDF::makePDFFun(code)->getName() + "/orvane").c_str(), fitMeasure, code);
  const auto hand = [](const char* name, auto formula) {
    benchmark::RegisterBenchmark((std::string("pdf/") + name + "/hand").c_str(),
                                 [formula](benchmark::State& state) { byHand(state, formula); });
  };
  // The parameters are volatile, so that they are as unknown to the compiler as those of a fit.
  static volatile double zero = 0, one = 1;
  const double a = zero, b = one;
  hand("Normal", [a, b](double x) { return (std::erf((x - a) / b / 1.4142135623730951) + 1) / 2; });
  hand("Exponential", [a, b](double x) { return x < a ? 0 : 1 - std::exp(-b * (x - a)); });
  hand("Weibull", [b](double x) { return x > b ? 1 - std::exp(-std::pow((x - b) / b, b)) : 0; });
  hand("Cauchy", [a, b](double x) { return std::atan((x - a) / b) / 3.141592653589793 + 0.5; });
  hand("Gumbel", [a, b](double x) { return 1 - std::exp(-std::exp((x - a) / b)); });
  hand("Lomax", [a, b](double x) { return x > a ? 1 - std::pow(b * (x - a) + 1, -b) : 0; });
  hand("Rayleigh", [a, b](double x) { return x < a ? 0 : 1 - std::exp(-(x - a) / b * ((x - a) / b) / 2); });
  hand("GenExp-Normal", [a, b](double x) {
    const double Psi = (std::erf((x - a) / b / 1.4142135623730951) + 1) / 2;
    return (std::exp(b * Psi) - 1) / (std::exp(b) - 1);
  });
  return 0;
}();

}  // namespace
