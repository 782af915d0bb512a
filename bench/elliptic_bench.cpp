// SPDX-License-Identifier: Apache-2.0
// Elliptic integrals and Jacobi functions: time per call and errors on the ordinary rows of the reference tables,
// beside GSL and Boost.Math (default policy, and doubles only). Peers take the modulus: its root is part of their time.
// Rows that a peer gets wrong by more than 1e-6 are counted as `wrong`.
#include <benchmark/benchmark.h>
#include <gsl/gsl_errno.h>
#include <gsl/gsl_sf.h>

#include <algorithm>
#include <array>
#include <boost/math/special_functions.hpp>
#include <boost/math/special_functions/ellint_rg.hpp>
#include <boost/math/special_functions/heuman_lambda.hpp>
#include <boost/math/special_functions/jacobi_zeta.hpp>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "orvane/elliptic.h"

namespace {

using Row = std::array<double, 5>;  // arguments, expected value last
using Call = double (*)(const double*);

// Ordinary rows with a finite value other than 0; the argument `parameter` (if any) is an m from 0 to below 1.
std::vector<Row> rowsOf(const std::string& name, int parameter) {
  std::ifstream file(std::string(ORVANE_REFERENCE_DIR) + "/special/" + name + ".csv");
  std::vector<Row> rows;
  for (std::string line; std::getline(file, line);) {
    if (line.rfind("ordinary", 0) != 0 && line.rfind("series", 0) != 0) continue;
    std::vector<std::string> cells;
    std::istringstream stream(line);
    for (std::string cell; std::getline(stream, cell, ',');) cells.push_back(cell);
    Row row{};
    for (std::size_t i = 1; i + 2 < cells.size(); ++i) row[i - 1] = std::strtod(cells[i].c_str(), nullptr);
    row[4] = std::strtod(cells[cells.size() - 2].c_str(), nullptr);
    const double m = parameter < 0 ? 0 : row[static_cast<std::size_t>(parameter)];
    if (std::isfinite(row[4]) && row[4] != 0 && m >= 0 && m < 1) rows.push_back(row);
  }
  return rows;
}

void run(benchmark::State& state, const std::string& table, int parameter, Call call) {
  const std::vector<Row> rows = rowsOf(table, parameter);
  std::vector<double> errors;
  double wrong = 0;
  for (const Row& row : rows) {
    const double error = std::abs(call(row.data()) / row[4] - 1) / std::numeric_limits<double>::epsilon();
    if (error * std::numeric_limits<double>::epsilon() < 1e-6)
      errors.push_back(error);
    else
      ++wrong;
  }
  for (auto _ : state)
    for (const Row& row : rows) benchmark::DoNotOptimize(call(row.data()));
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
constexpr gsl_mode_t kMode = GSL_PREC_DOUBLE;

// A peer that throws outside its domain gives NaN there.
template <class F>
double quiet(F&& f) {
  try {
    return f();
  } catch (const std::exception&) {
    return std::numeric_limits<double>::quiet_NaN();
  }
}

double gslJacobi(double u, double m, int which) {
  double values[3] = {};
  gsl_sf_elljac_e(u, m, &values[0], &values[1], &values[2]);
  return values[which];
}

#define ENTRY(title, table, parameter, expression) \
  benchmark::RegisterBenchmark(title, run, table, parameter, [](const double* a) -> double { return expression; })
#define GSL(name, table, parameter, expression) ENTRY(name "/gsl", table, parameter, expression)
// The same call with Boost's default policy and with doubles only; the expression names the policy `p`.
#define BOOST_PAIR(name, table, parameter, expression)      \
  ENTRY(name "/boost", table, parameter, quiet([&] {        \
          constexpr bm::policies::policy<> p;               \
          return expression;                                \
        }));                                                \
  ENTRY(name "/boost_double", table, parameter, quiet([&] { \
          constexpr DoubleOnly p;                           \
          return expression;                                \
        }))

}  // namespace

int main(int argc, char** argv) {
  gsl_set_error_handler_off();
  ENTRY("RF/orvane", "math_ellipticRF", -1, math_ellipticRF(a[0], a[1], a[2]));
  GSL("RF", "math_ellipticRF", -1, gsl_sf_ellint_RF(a[0], a[1], a[2], kMode));
  BOOST_PAIR("RF", "math_ellipticRF", -1, bm::ellint_rf(a[0], a[1], a[2], p));
  ENTRY("RD/orvane", "math_ellipticRD", -1, math_ellipticRD(a[0], a[1], a[2]));
  GSL("RD", "math_ellipticRD", -1, gsl_sf_ellint_RD(a[0], a[1], a[2], kMode));
  BOOST_PAIR("RD", "math_ellipticRD", -1, bm::ellint_rd(a[0], a[1], a[2], p));
  ENTRY("RG/orvane", "math_ellipticRG", -1, math_ellipticRG(a[0], a[1], a[2]));
  BOOST_PAIR("RG", "math_ellipticRG", -1, bm::ellint_rg(a[0], a[1], a[2], p));
  ENTRY("RJ/orvane", "math_ellipticRJ", -1, math_ellipticRJ(a[0], a[1], a[2], a[3]));
  GSL("RJ", "math_ellipticRJ", -1, gsl_sf_ellint_RJ(a[0], a[1], a[2], a[3], kMode));
  BOOST_PAIR("RJ", "math_ellipticRJ", -1, bm::ellint_rj(a[0], a[1], a[2], a[3], p));
  ENTRY("RC/orvane", "math_ellipticRC", -1, math_ellipticRC(a[0], a[1]));
  GSL("RC", "math_ellipticRC", -1, gsl_sf_ellint_RC(a[0], a[1], kMode));
  BOOST_PAIR("RC", "math_ellipticRC", -1, bm::ellint_rc(a[0], a[1], p));
  ENTRY("K/orvane", "math_ellipticK", 0, math_ellipticK(a[0]));
  GSL("K", "math_ellipticK", 0, gsl_sf_ellint_Kcomp(std::sqrt(a[0]), kMode));
  BOOST_PAIR("K", "math_ellipticK", 0, bm::ellint_1(std::sqrt(a[0]), p));
  ENTRY("E/orvane", "math_ellipticE", 0, math_ellipticE(a[0]));
  GSL("E", "math_ellipticE", 0, gsl_sf_ellint_Ecomp(std::sqrt(a[0]), kMode));
  BOOST_PAIR("E", "math_ellipticE", 0, bm::ellint_2(std::sqrt(a[0]), p));
  ENTRY("PI2/orvane", "math_ellipticPI2", 1, math_ellipticPI2(a[0], a[1]));
  GSL("PI2", "math_ellipticPI2", 1, gsl_sf_ellint_Pcomp(std::sqrt(a[1]), -a[0], kMode));
  BOOST_PAIR("PI2", "math_ellipticPI2", 1, bm::ellint_3(std::sqrt(a[1]), a[0], p));
  ENTRY("F/orvane", "math_ellipticF", 1, math_ellipticF(a[0], a[1]));
  GSL("F", "math_ellipticF", 1, gsl_sf_ellint_F(a[0], std::sqrt(a[1]), kMode));
  BOOST_PAIR("F", "math_ellipticF", 1, bm::ellint_1(std::sqrt(a[1]), a[0], p));
  ENTRY("E2/orvane", "math_ellipticE2", 1, math_ellipticE2(a[0], a[1]));
  GSL("E2", "math_ellipticE2", 1, gsl_sf_ellint_E(a[0], std::sqrt(a[1]), kMode));
  BOOST_PAIR("E2", "math_ellipticE2", 1, bm::ellint_2(std::sqrt(a[1]), a[0], p));
  ENTRY("PI/orvane", "math_ellipticPI", 2, math_ellipticPI(a[0], a[1], a[2]));
  GSL("PI", "math_ellipticPI", 2, gsl_sf_ellint_P(a[1], std::sqrt(a[2]), -a[0], kMode));
  BOOST_PAIR("PI", "math_ellipticPI", 2, bm::ellint_3(std::sqrt(a[2]), a[0], a[1], p));
  ENTRY("heuman/orvane", "math_heumannLambda", 1, math_heumannLambda(a[0], a[1]));
  BOOST_PAIR("heuman", "math_heumannLambda", 1, bm::heuman_lambda(std::sqrt(a[1]), a[0], p));
  ENTRY("zeta/orvane", "math_jacobiZeta", 1, math_jacobiZeta(a[0], a[1]));
  BOOST_PAIR("zeta", "math_jacobiZeta", 1, bm::jacobi_zeta(std::sqrt(a[1]), a[0], p));
  ENTRY("sn/orvane", "math_jacobiEllipticSn", 1, math_jacobiEllipticSn(a[0], a[1]));
  GSL("sn", "math_jacobiEllipticSn", 1, gslJacobi(a[0], a[1], 0));
  BOOST_PAIR("sn", "math_jacobiEllipticSn", 1, bm::jacobi_sn(std::sqrt(a[1]), a[0], p));
  ENTRY("cn/orvane", "math_jacobiEllipticCn", 1, math_jacobiEllipticCn(a[0], a[1]));
  GSL("cn", "math_jacobiEllipticCn", 1, gslJacobi(a[0], a[1], 1));
  BOOST_PAIR("cn", "math_jacobiEllipticCn", 1, bm::jacobi_cn(std::sqrt(a[1]), a[0], p));
  ENTRY("dn/orvane", "math_jacobiEllipticDn", 1, math_jacobiEllipticDn(a[0], a[1]));
  GSL("dn", "math_jacobiEllipticDn", 1, gslJacobi(a[0], a[1], 2));
  BOOST_PAIR("dn", "math_jacobiEllipticDn", 1, bm::jacobi_dn(std::sqrt(a[1]), a[0], p));
  // Without a peer in these versions.
  ENTRY("AGM/orvane", "math_AGM", -1, math_AGM(a[0], a[1]));
  ENTRY("cel/orvane", "math_bulirschCel", -1, math_bulirschCel(a[0], a[1], a[2], a[3]));
  ENTRY("el1/orvane", "math_bulirschEl1", -1, math_bulirschEl1(a[0], a[1]));
  ENTRY("el2/orvane", "math_bulirschEl2", -1, math_bulirschEl2(a[0], a[1], a[2], a[3]));
  ENTRY("el3/orvane", "math_bulirschEl3", -1, math_bulirschEl3(a[0], a[1], a[2]));
  ENTRY("am/orvane", "math_jacobiEllipticAm", 1, math_jacobiEllipticAm(a[0], a[1]));
  ENTRY("theta1/orvane", "math_jacobiTheta1", 1, math_jacobiTheta1(a[0], a[1]));
  ENTRY("theta3/orvane", "math_jacobiTheta3", 1, math_jacobiTheta3(a[0], a[1]));
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
