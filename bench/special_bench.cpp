// SPDX-License-Identifier: Apache-2.0
// Special functions: time per call beside largest and median error, on the grids of the reference tables. Peers: GSL,
// Boost.Math (default policy, and doubles only) and the C run-time. Rows that a peer gets wrong by more than 1e-6 are
// counted as `wrong`, and its errors are those of the other rows.
#include <benchmark/benchmark.h>
#include <gsl/gsl_errno.h>
#include <gsl/gsl_sf.h>

#include <algorithm>
#include <boost/math/special_functions.hpp>
#include <boost/math/special_functions/lambert_w.hpp>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "orvane/special.h"

namespace {

struct Row {
  double x = 0, y = 0, expected = 0;
};

// Rows with a finite value other than 0, inside the range that every peer takes.
std::vector<Row> rowsOf(const std::string& name, bool positive) {
  std::ifstream file(std::string(ORVANE_REFERENCE_DIR) + "/special/" + name + ".csv");
  std::vector<Row> rows;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line[0] == '#') continue;
    std::vector<std::string> cells;
    std::istringstream stream(line);
    for (std::string cell; std::getline(stream, cell, ',');) cells.push_back(cell);
    const auto number = [&](std::size_t i) { return std::strtod(cells[i].c_str(), nullptr); };
    const Row row{number(1), cells.size() > 4 ? number(2) : 0, number(cells.size() - 2)};
    const bool broken = cells.size() < 5 || row.x != std::floor(row.x);
    if (std::isfinite(row.expected) && row.expected != 0 && (!positive || (row.x > 0 && row.y >= 0 && broken)))
      rows.push_back(row);
  }
  return rows;
}

using Call = double (*)(const Row&);

void run(benchmark::State& state, const std::string& table, bool positive, Call call) {
  const std::vector<Row> rows = rowsOf(table, positive);
  std::vector<double> errors;
  double wrong = 0;
  for (const Row& row : rows) {
    const double error = std::abs(call(row) / row.expected - 1) / std::numeric_limits<double>::epsilon();
    if (error * std::numeric_limits<double>::epsilon() < 1e-6)
      errors.push_back(error);
    else
      ++wrong;
  }
  for (auto _ : state)
    for (const Row& row : rows) benchmark::DoNotOptimize(call(row));
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(rows.size()));
  std::sort(errors.begin(), errors.end());
  state.counters["ns_per_call"] =
      benchmark::Counter(static_cast<double>(rows.size()) * 1e-9,
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
  state.counters["max_ulp"] = errors.empty() ? 0 : errors.back();
  state.counters["median_ulp"] = errors.empty() ? 0 : errors[errors.size() / 2];
  state.counters["wrong"] = wrong;
}

namespace bm = boost::math;
using DoubleOnly = bm::policies::policy<bm::policies::promote_double<false>>;

#define ENTRY(title, table, positive, expression) \
  benchmark::RegisterBenchmark(title, run, table, positive, [](const Row& r) -> double { return expression; })

// A peer that throws outside its domain gives NaN there.
template <class F>
double quiet(F&& f) {
  try {
    return f();
  } catch (const std::exception&) {
    return std::numeric_limits<double>::quiet_NaN();
  }
}

}  // namespace

int main(int argc, char** argv) {
  gsl_set_error_handler_off();
  ENTRY("gamma/orvane", "math_gamma", false, math_gamma(r.x));
  ENTRY("gamma/runtime", "math_gamma", false, std::tgamma(r.x));
  ENTRY("gamma/gsl", "math_gamma", false, gsl_sf_gamma(r.x));
  ENTRY("gamma/boost", "math_gamma", false, quiet([&] { return bm::tgamma(r.x); }));
  ENTRY("gamma/boost_double", "math_gamma", false, quiet([&] { return bm::tgamma(r.x, DoubleOnly()); }));
  ENTRY("digamma/orvane", "math_digamma", false, math_digamma(r.x));
  ENTRY("digamma/gsl", "math_digamma", false, gsl_sf_psi(r.x));
  ENTRY("digamma/boost", "math_digamma", false, quiet([&] { return bm::digamma(r.x); }));
  ENTRY("digamma/boost_double", "math_digamma", false, quiet([&] { return bm::digamma(r.x, DoubleOnly()); }));
  ENTRY("erf/orvane", "math_erf", false, math_erf(r.x));
  ENTRY("erf/gsl", "math_erf", false, gsl_sf_erf(r.x));
  ENTRY("erf/boost", "math_erf", false, quiet([&] { return bm::erf(r.x); }));
  ENTRY("erf/boost_double", "math_erf", false, quiet([&] { return bm::erf(r.x, DoubleOnly()); }));
  ENTRY("dawson/orvane", "math_drawson", false, math_drawson(r.x));
  ENTRY("dawson/gsl", "math_drawson", false, gsl_sf_dawson(r.x));
  ENTRY("inverse_erf/orvane", "math_invErf", false, math_invErf(r.x));
  ENTRY("inverse_erf/boost", "math_invErf", false, quiet([&] { return bm::erf_inv(r.x); }));
  ENTRY("inverse_erf/boost_double", "math_invErf", false, quiet([&] { return bm::erf_inv(r.x, DoubleOnly()); }));
  ENTRY("gamma_p/orvane", "math_RLowerIncompleteGamma", true, math_RLowerIncompleteGamma(r.x, r.y));
  ENTRY("gamma_p/gsl", "math_RLowerIncompleteGamma", true, gsl_sf_gamma_inc_P(r.x, r.y));
  ENTRY("gamma_p/boost", "math_RLowerIncompleteGamma", true, quiet([&] { return bm::gamma_p(r.x, r.y); }));
  ENTRY("gamma_p/boost_double", "math_RLowerIncompleteGamma", true,
        quiet([&] { return bm::gamma_p(r.x, r.y, DoubleOnly()); }));
  ENTRY("gamma_q/orvane", "math_RUpperIncompleteGamma", true, math_RUpperIncompleteGamma(r.x, r.y));
  ENTRY("gamma_q/gsl", "math_RUpperIncompleteGamma", true, gsl_sf_gamma_inc_Q(r.x, r.y));
  ENTRY("gamma_q/boost", "math_RUpperIncompleteGamma", true, quiet([&] { return bm::gamma_q(r.x, r.y); }));
  ENTRY("gamma_q/boost_double", "math_RUpperIncompleteGamma", true,
        quiet([&] { return bm::gamma_q(r.x, r.y, DoubleOnly()); }));
  ENTRY("beta/orvane", "math_beta", true, math_beta(r.x, r.y));
  ENTRY("beta/gsl", "math_beta", true, gsl_sf_beta(r.x, r.y));
  ENTRY("beta/boost", "math_beta", true, quiet([&] { return bm::beta(r.x, r.y); }));
  ENTRY("beta/boost_double", "math_beta", true, quiet([&] { return bm::beta(r.x, r.y, DoubleOnly()); }));
  ENTRY("lambert_w/orvane", "math_lambertW", false, math_lambertW(r.x));
  ENTRY("lambert_w/gsl", "math_lambertW", false, gsl_sf_lambert_W0(r.x));
  ENTRY("lambert_w/boost", "math_lambertW", false, quiet([&] { return bm::lambert_w0(r.x); }));
  ENTRY("lambert_w/boost_double", "math_lambertW", false, quiet([&] { return bm::lambert_w0(r.x, DoubleOnly()); }));
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
