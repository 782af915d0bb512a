// SPDX-License-Identifier: Apache-2.0
// Hypergeometric, zeta, integral and polynomial functions: time per call beside largest and median error, on the grids
// of the reference tables. Peers: GSL, Boost.Math (default policy, and doubles only) and the standard library. Rows
// that a peer gets wrong by more than 1e-6 are counted as `wrong`, and its errors are those of the other rows.
#include <benchmark/benchmark.h>
#include <gsl/gsl_errno.h>
#include <gsl/gsl_sf.h>

#include <algorithm>
#include <boost/math/special_functions.hpp>
#include <boost/math/special_functions/hypergeometric_0F1.hpp>
#include <boost/math/special_functions/hypergeometric_1F1.hpp>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "orvane/hypergeometric.h"
#include "orvane/integral_functions.h"
#include "orvane/polynomial_functions.h"
#include "orvane/zeta.h"

namespace {

struct Row {
  double v[4] = {}, expected = 0;
};

using Call = double (*)(const double*);
using Filter = bool (*)(const double*);

// Rows with a finite value other than 0 inside the range that every peer takes.
std::vector<Row> rowsOf(const std::string& name, Filter filter) {
  std::ifstream file(std::string(ORVANE_REFERENCE_DIR) + "/special/" + name + ".csv");
  std::vector<Row> rows;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line[0] == '#') continue;
    std::vector<std::string> cells;
    std::istringstream stream(line);
    for (std::string cell; std::getline(stream, cell, ',');) cells.push_back(cell);
    Row row;
    for (std::size_t i = 1; i + 2 < cells.size(); ++i) row.v[i - 1] = std::strtod(cells[i].c_str(), nullptr);
    row.expected = std::strtod(cells[cells.size() - 2].c_str(), nullptr);
    if (std::isfinite(row.expected) && row.expected != 0 && filter(row.v)) rows.push_back(row);
  }
  return rows;
}

void run(benchmark::State& state, const std::string& table, Filter filter, Call call) {
  const std::vector<Row> rows = rowsOf(table, filter);
  std::vector<double> errors;
  double wrong = 0;
  for (const Row& row : rows) {
    const double error = std::abs(call(row.v) / row.expected - 1);
    if (error < 1e-6)
      errors.push_back(error / std::numeric_limits<double>::epsilon());
    else
      ++wrong;
  }
  for (auto _ : state)
    for (const Row& row : rows) benchmark::DoNotOptimize(call(row.v));
  std::sort(errors.begin(), errors.end());
  state.counters["ns_per_call"] =
      benchmark::Counter(static_cast<double>(rows.size()) * 1e-9,
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
  state.counters["max_ulp"] = errors.empty() ? 0 : errors.back();
  state.counters["median_ulp"] = errors.empty() ? 0 : errors[errors.size() / 2];
  state.counters["wrong"] = wrong;
  state.counters["rows"] = static_cast<double>(rows.size());
}

// A peer that throws outside its domain gives NaN there.
template <class F>
double quiet(F&& f) {
  try {
    return f();
  } catch (const std::exception&) {
    return std::numeric_limits<double>::quiet_NaN();
  }
}

// GSL's error-handling form: no message, NaN on failure.
template <class F>
double gsl(F&& f) {
  gsl_sf_result r;
  const int status = f(&r);
  return status == GSL_SUCCESS || status == GSL_EUNDRFLW || status == GSL_ELOSS
             ? r.val
             : std::numeric_limits<double>::quiet_NaN();
}

namespace bm = boost::math;
using DoubleOnly = bm::policies::policy<bm::policies::promote_double<false>>;
int whole(double x) { return static_cast<int>(x); }
unsigned count(double x) { return static_cast<unsigned>(x); }

double fermiByGsl(const double* v) {
  if (v[0] == -0.5) return gsl([&](gsl_sf_result* r) { return gsl_sf_fermi_dirac_mhalf_e(v[1], r); });
  if (v[0] == 0.5) return gsl([&](gsl_sf_result* r) { return gsl_sf_fermi_dirac_half_e(v[1], r); });
  if (v[0] == 1.5) return gsl([&](gsl_sf_result* r) { return gsl_sf_fermi_dirac_3half_e(v[1], r); });
  return gsl([&](gsl_sf_result* r) { return gsl_sf_fermi_dirac_int_e(whole(v[0]), v[1], r); });
}

bool isFermiOfGsl(const double* v) { return v[0] <= 3 && v[0] >= -1 && v[0] != -1.5; }

}  // namespace

#define CASE(title, table, filter, expression)                                    \
  benchmark::RegisterBenchmark(                                                   \
      title, run, table, [](const double* v) -> bool { return (void)v, filter; }, \
      [](const double* v) -> double { return expression; })
#define GSL(call) gsl([&](gsl_sf_result* r) { return call; })
#define BOOST(call) quiet([&] { return static_cast<double>(call); })

int main(int argc, char** argv) {
  gsl_set_error_handler_off();
  CASE("zeta/orvane", "math_zeta", true, math_zeta(v[0]));
  CASE("zeta/std", "math_zeta", true, std::riemann_zeta(v[0]));
  CASE("zeta/gsl", "math_zeta", true, GSL(gsl_sf_zeta_e(v[0], r)));
  CASE("zeta/boost", "math_zeta", true, BOOST(bm::zeta(v[0])));
  CASE("zeta/boost_double", "math_zeta", true, BOOST(bm::zeta(v[0], DoubleOnly())));
  CASE("hurwitz_zeta/orvane", "math_hurwitzZeta", v[0] > 1 && v[1] > 0, math_hurwitzZeta(v[0], v[1]));
  CASE("hurwitz_zeta/gsl", "math_hurwitzZeta", v[0] > 1 && v[1] > 0, GSL(gsl_sf_hzeta_e(v[0], v[1], r)));
  CASE("eta/orvane", "math_dirichletEta", true, math_dirichletEta(v[0]));
  CASE("eta/gsl", "math_dirichletEta", true, GSL(gsl_sf_eta_e(v[0], r)));
  CASE("dilogarithm/orvane", "math_polyLogarithm2", true, math_polyLogarithm2(v[0]));
  CASE("dilogarithm/gsl", "math_polyLogarithm2", true, GSL(gsl_sf_dilog_e(v[0], r)));
  CASE("clausen_2/orvane", "math_ClausenS", v[0] == 2, math_Clausen(2, v[1]));
  CASE("clausen_2/gsl", "math_ClausenS", v[0] == 2, GSL(gsl_sf_clausen_e(v[1], r)));
  CASE("fermi_dirac_half/orvane", "math_fermiDirac", isFermiOfGsl(v) && v[0] != whole(v[0]),
       math_fermiDirac(v[0], v[1]));
  CASE("fermi_dirac_half/gsl", "math_fermiDirac", isFermiOfGsl(v) && v[0] != whole(v[0]), fermiByGsl(v));
  CASE("fermi_dirac_whole/orvane", "math_fermiDirac", isFermiOfGsl(v) && v[0] == whole(v[0]),
       math_fermiDirac(v[0], v[1]));
  CASE("fermi_dirac_whole/gsl", "math_fermiDirac", isFermiOfGsl(v) && v[0] == whole(v[0]), fermiByGsl(v));
  CASE("Ei/orvane", "math_expIntegral", true, math_expIntegral(v[0]));
  CASE("Ei/std", "math_expIntegral", true, std::expint(v[0]));
  CASE("Ei/gsl", "math_expIntegral", true, GSL(gsl_sf_expint_Ei_e(v[0], r)));
  CASE("Ei/boost", "math_expIntegral", true, BOOST(bm::expint(v[0])));
  CASE("Ei/boost_double", "math_expIntegral", true, BOOST(bm::expint(v[0], DoubleOnly())));
  CASE("E_n/orvane", "math_expIntegralP", v[0] > 1 && v[0] == whole(v[0]) && v[1] < 100, math_expIntegralP(v[0], v[1]));
  CASE("E_n/gsl", "math_expIntegralP", v[0] > 1 && v[0] == whole(v[0]) && v[1] < 100,
       GSL(gsl_sf_expint_En_e(whole(v[0]), v[1], r)));
  CASE("E_n/boost", "math_expIntegralP", v[0] > 1 && v[0] == whole(v[0]) && v[1] < 100,
       BOOST(bm::expint(count(v[0]), v[1])));
  CASE("E_n/boost_double", "math_expIntegralP", v[0] > 1 && v[0] == whole(v[0]) && v[1] < 100,
       BOOST(bm::expint(count(v[0]), v[1], DoubleOnly())));
  CASE("Si/orvane", "math_sineIntegral", true, math_sineIntegral(v[0]));
  CASE("Si/gsl", "math_sineIntegral", true, GSL(gsl_sf_Si_e(v[0], r)));
  CASE("Ci/orvane", "math_cosineIntegral", true, math_cosineIntegral(v[0]));
  CASE("Ci/gsl", "math_cosineIntegral", true, GSL(gsl_sf_Ci_e(v[0], r)));
  CASE("Shi/orvane", "math_sinhIntegral", true, math_sinhIntegral(v[0]));
  CASE("Shi/gsl", "math_sinhIntegral", true, GSL(gsl_sf_Shi_e(v[0], r)));
  CASE("Chi/orvane", "math_coshIntegral", true, math_coshIntegral(v[0]));
  CASE("Chi/gsl", "math_coshIntegral", true, GSL(gsl_sf_Chi_e(v[0], r)));
  CASE("0F1/orvane", "math_Hypergeometric0F1", true, math_Hypergeometric0F1(v[0], v[1]));
  CASE("0F1/gsl", "math_Hypergeometric0F1", true, GSL(gsl_sf_hyperg_0F1_e(v[0], v[1], r)));
  CASE("0F1/boost", "math_Hypergeometric0F1", true, BOOST(bm::hypergeometric_0F1(v[0], v[1])));
  CASE("0F1/boost_double", "math_Hypergeometric0F1", true, BOOST(bm::hypergeometric_0F1(v[0], v[1], DoubleOnly())));
  CASE("1F1/orvane", "math_Hypergeometric1F1", true, math_Hypergeometric1F1(v[0], v[1], v[2]));
  CASE("1F1/gsl", "math_Hypergeometric1F1", true, GSL(gsl_sf_hyperg_1F1_e(v[0], v[1], v[2], r)));
  CASE("1F1/boost", "math_Hypergeometric1F1", true, BOOST(bm::hypergeometric_1F1(v[0], v[1], v[2])));
  CASE("1F1/boost_double", "math_Hypergeometric1F1", true,
       BOOST(bm::hypergeometric_1F1(v[0], v[1], v[2], DoubleOnly())));
  CASE("2F1/orvane", "math_Hypergeometric2F1", std::abs(v[3]) < 1, math_Hypergeometric2F1(v[0], v[1], v[2], v[3]));
  CASE("2F1/gsl", "math_Hypergeometric2F1", std::abs(v[3]) < 1, GSL(gsl_sf_hyperg_2F1_e(v[0], v[1], v[2], v[3], r)));
  CASE("U/orvane", "math_hypergeometricU", v[2] > 0, math_hypergeometricU(v[0], v[1], v[2]));
  CASE("U/gsl", "math_hypergeometricU", v[2] > 0, GSL(gsl_sf_hyperg_U_e(v[0], v[1], v[2], r)));
  CASE("legendre/orvane", "math_polyLegendre", v[0] > 0 && std::abs(v[1]) <= 1 && v[0] < 1e4,
       math_polyLegendre(whole(v[0]), v[1]));
  CASE("legendre/std", "math_polyLegendre", v[0] > 0 && std::abs(v[1]) <= 1 && v[0] < 1e4,
       std::legendre(count(v[0]), v[1]));
  CASE("legendre/gsl", "math_polyLegendre", v[0] > 0 && std::abs(v[1]) <= 1 && v[0] < 1e4,
       GSL(gsl_sf_legendre_Pl_e(whole(v[0]), v[1], r)));
  CASE("legendre/boost_double", "math_polyLegendre", v[0] > 0 && std::abs(v[1]) <= 1 && v[0] < 1e4,
       BOOST(bm::legendre_p(whole(v[0]), v[1], DoubleOnly())));
  CASE("laguerre/orvane", "math_polyLaguerre", v[0] > 0 && v[1] > 0, math_polyLaguerre(whole(v[0]), v[1]));
  CASE("laguerre/std", "math_polyLaguerre", v[0] > 0 && v[1] > 0, std::laguerre(count(v[0]), v[1]));
  CASE("laguerre/gsl", "math_polyLaguerre", v[0] > 0 && v[1] > 0, GSL(gsl_sf_laguerre_n_e(whole(v[0]), 0, v[1], r)));
  CASE("laguerre/boost_double", "math_polyLaguerre", v[0] > 0 && v[1] > 0,
       BOOST(bm::laguerre(count(v[0]), v[1], DoubleOnly())));
  CASE("hermite/orvane", "math_polyHermite", v[0] > 0, math_polyHermite(whole(v[0]), v[1]));
  CASE("hermite/std", "math_polyHermite", v[0] > 0, std::hermite(count(v[0]), v[1]));
  CASE("hermite/gsl", "math_polyHermite", v[0] > 0, GSL(gsl_sf_hermite_e(whole(v[0]), v[1], r)));
  CASE("hermite/boost_double", "math_polyHermite", v[0] > 0, BOOST(bm::hermite(count(v[0]), v[1], DoubleOnly())));
  // Without a peer here.
  CASE("polylog/orvane", "math_polyLog", true, math_polyLog(v[0], v[1]));
  CASE("fresnel_c/orvane", "math_fresnelC", true, math_fresnelC(v[0]));
  CASE("barnes_g/orvane", "math_barnesG", true, math_barnesG(v[0]));
  CASE("mittag_leffler/orvane", "math_mittagLeffler", true, math_mittagLeffler(v[0], v[1], v[2]));
  CASE("inv_zeta/orvane", "math_invZeta", true, math_invZeta(v[0]));
  CASE("inv_chi/orvane", "math_invCoshIntegral", true, math_invCoshIntegral(v[0]));
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
