// SPDX-License-Identifier: Apache-2.0
// What an evaluation costs beside the objective: the whole run of each population solver on a sphere, divided by its
// evaluations, beside NLopt's ESCH.
#include <benchmark/benchmark.h>
#include <orvane/frame.h>
#include <orvane/optimizer.h>
#include <time.h>

#include <chrono>
#include <string>
#include <thread>
#include <vector>
#ifdef ORVANE_BENCH_NLOPT
#include <nlopt.h>
#endif

namespace {

constexpr int kVariables[] = {2, 10};
constexpr uint32_t kPopulation = 30;
constexpr int64_t kIterations = 1000;

int variables;
int64_t evaluations;

double sphere(const double* x) {
  ++evaluations;
  double sum = 0;
  for (int i = 0; i < variables; ++i) sum += x[i] * x[i];
  return sum;
}

double processorTime() {
  timespec now;
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

// A run is one iteration; what is reported is its time an evaluation.
template <class Run>
void measure(benchmark::State& state, int n, Run run) {
  variables = n;
  for (auto _ : state) {
    evaluations = 0;
    const double start = processorTime();
    run();
    state.SetIterationTime((processorTime() - start) / static_cast<double>(evaluations));
  }
  state.counters["evaluations"] = static_cast<double>(evaluations);
}

void solve(uint8_t solver, int n) {
  OptSolver* os = os_createOptSolver(1);
  os_setFun(os, sphere, nullptr, nullptr, 1, n);
  const double low = -5, high = 5;
  os_setMinVar(os, &low, 1);
  os_setMaxVar(os, &high, 1);
  os_setOptimizer(os, solver, 0, kPopulation, 0, 0, kIterations, -1);
  os_solve(os);
  while (os_getState(os) == ORVANE_OPTIMIZER_RUNNING) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  api_FreeHandle(os);
}

#ifdef ORVANE_BENCH_NLOPT
double sphereOfNlopt(unsigned, const double* x, double*, void*) { return sphere(x); }

void solveByNlopt(int n) {
  nlopt_opt opt = nlopt_create(NLOPT_GN_ESCH, static_cast<unsigned>(n));
  nlopt_set_lower_bounds1(opt, -5);
  nlopt_set_upper_bounds1(opt, 5);
  nlopt_set_min_objective(opt, sphereOfNlopt, nullptr);
  nlopt_set_maxeval(opt, static_cast<int>(kPopulation * kIterations));
  std::vector<double> x(static_cast<std::size_t>(n), 1.0);
  double value;
  nlopt_optimize(opt, x.data(), &value);
  nlopt_destroy(opt);
}
#endif

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  const std::vector<std::string> names{"LG", "LG2", "GTO", "RUN", "SC", "SC walk", "SWO", "SWO flag", "ISWO", "INS"};
  for (const int n : kVariables)
    for (std::size_t i = 0; i < names.size(); ++i) {
      const std::string task = names[i] + ", " + std::to_string(n) + " variables";
      const auto add = [&](const char* library, auto run) {
        benchmark::RegisterBenchmark((task + "/" + library).c_str(),
                                     [n, run](benchmark::State& state) { measure(state, n, run); })
            ->UseManualTime()
            ->Iterations(3);
      };
      add("orvane", [i, n] { solve(static_cast<uint8_t>(i + ORVANE_SOLVER_LG), n); });
#ifdef ORVANE_BENCH_NLOPT
      add("NLopt ESCH", [n] { solveByNlopt(n); });
#endif
    }
  benchmark::RunSpecifiedBenchmarks();
}
