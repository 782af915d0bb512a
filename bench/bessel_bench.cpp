// SPDX-License-Identifier: Apache-2.0
// Bessel functions and relatives: time per call beside largest and median error, on the grids of the reference tables.
// Peers: GSL, Boost.Math (doubles only) and the mathematical functions of the standard library. Rows that a peer gets
// wrong by more than 1e-6, or throws at, are counted as `wrong`; its errors are those of the other rows.
#include <benchmark/benchmark.h>
#include <gsl/gsl_errno.h>
#include <gsl/gsl_sf.h>

#include <algorithm>
#include <boost/math/special_functions.hpp>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "orvane/bessel.h"

namespace {

struct Row {
  double x = 0, y = 0, expected = 0;  // order and point, or the point in x
};

// Rows with a finite value, order and point in the range that every peer takes.
std::vector<Row> rowsOf(const std::string& name, bool positive, bool whole) {
  std::ifstream file(std::string(ORVANE_REFERENCE_DIR) + "/special/" + name + ".csv");
  std::vector<Row> rows;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line[0] == '#') continue;
    std::vector<std::string> cells;
    std::istringstream stream(line);
    for (std::string cell; std::getline(stream, cell, ',');) cells.push_back(cell);
    const auto number = [&](std::size_t i) { return std::strtod(cells[i].c_str(), nullptr); };
    const Row row{number(1), cells.size() > 4 ? number(2) : 0, number(cells.size() - 2)};
    if (!std::isfinite(row.expected) || std::abs(row.expected) < 1e-300 || std::abs(row.expected) > 1e300) continue;
    if (positive && (row.x < 0 || (cells.size() > 4 && row.y <= 0))) continue;
    if (whole && row.x != std::floor(row.x)) continue;
    rows.push_back(row);
  }
  return rows;
}

using Call = double (*)(const Row&);

void run(benchmark::State& state, const std::string& table, bool positive, bool whole, Call call) {
  std::vector<Row> rows = rowsOf(table, positive, whole);
  std::vector<double> errors;
  double wrong = 0;
  const auto isWrong = [&](const Row& row) {
    const double error = std::abs(call(row) / row.expected - 1);
    if (!(error < 1e-6)) return true;
    errors.push_back(error / std::numeric_limits<double>::epsilon());
    return false;
  };
  const auto end = std::remove_if(rows.begin(), rows.end(), isWrong);
  wrong = static_cast<double>(rows.end() - end);
  rows.erase(end, rows.end());
  for (auto _ : state)
    for (const Row& row : rows) benchmark::DoNotOptimize(call(row));
  std::sort(errors.begin(), errors.end());
  state.counters["ns_per_call"] =
      benchmark::Counter(static_cast<double>(rows.size()) * 1e-9,
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
  state.counters["rows"] = static_cast<double>(rows.size());
  state.counters["wrong"] = wrong;
  state.counters["max_ulp"] = errors.empty() ? 0 : errors.back();
  state.counters["median_ulp"] = errors.empty() ? 0 : errors[errors.size() / 2];
}

namespace bm = boost::math;
using DoubleOnly = bm::policies::policy<bm::policies::promote_double<false>>;

// A peer that throws outside its domain gives NaN there.
template <class F>
double quiet(F&& f) {
  try {
    return f();
  } catch (const std::exception&) {
    return std::numeric_limits<double>::quiet_NaN();
  }
}

#define ENTRY(title, table, positive, whole, expression) \
  benchmark::RegisterBenchmark(                          \
      title, run, table, positive, whole, +[](const Row& r) -> double { return quiet([&] { return expression; }); })

int order(const Row& r) { return static_cast<int>(r.x); }

}  // namespace

int main(int argc, char** argv) {
  gsl_set_error_handler_off();
  ENTRY("BesselJ/orvane", "math_BesselJ", true, false, math_BesselJ(r.x, r.y));
  ENTRY("BesselJ/standard", "math_BesselJ", true, false, std::cyl_bessel_j(r.x, r.y));
  ENTRY("BesselJ/gsl", "math_BesselJ", true, false, gsl_sf_bessel_Jnu(r.x, r.y));
  ENTRY("BesselJ/boost", "math_BesselJ", true, false, bm::cyl_bessel_j(r.x, r.y, DoubleOnly()));
  ENTRY("BesselY/orvane", "math_BesselY", true, false, math_BesselY(r.x, r.y));
  ENTRY("BesselY/standard", "math_BesselY", true, false, std::cyl_neumann(r.x, r.y));
  ENTRY("BesselY/gsl", "math_BesselY", true, false, gsl_sf_bessel_Ynu(r.x, r.y));
  ENTRY("BesselY/boost", "math_BesselY", true, false, bm::cyl_neumann(r.x, r.y, DoubleOnly()));
  ENTRY("BesselI/orvane", "math_BesselI", true, false, math_BesselI(r.x, r.y));
  ENTRY("BesselI/standard", "math_BesselI", true, false, std::cyl_bessel_i(r.x, r.y));
  ENTRY("BesselI/gsl", "math_BesselI", true, false, gsl_sf_bessel_Inu(r.x, r.y));
  ENTRY("BesselI/boost", "math_BesselI", true, false, bm::cyl_bessel_i(r.x, r.y, DoubleOnly()));
  ENTRY("BesselK/orvane", "math_BesselK", true, false, math_BesselK(r.x, r.y));
  ENTRY("BesselK/standard", "math_BesselK", true, false, std::cyl_bessel_k(r.x, r.y));
  ENTRY("BesselK/gsl", "math_BesselK", true, false, gsl_sf_bessel_Knu(r.x, r.y));
  ENTRY("BesselK/boost", "math_BesselK", true, false, bm::cyl_bessel_k(r.x, r.y, DoubleOnly()));
  ENTRY("SphericalBesselJ/orvane", "math_SphericalBesselJ", true, true, math_SphericalBesselJ(r.x, r.y));
  ENTRY("SphericalBesselJ/standard", "math_SphericalBesselJ", true, true,
        std::sph_bessel(static_cast<unsigned>(order(r)), r.y));
  ENTRY("SphericalBesselJ/gsl", "math_SphericalBesselJ", true, true, gsl_sf_bessel_jl(order(r), r.y));
  ENTRY("SphericalBesselJ/boost", "math_SphericalBesselJ", true, true,
        bm::sph_bessel(static_cast<unsigned>(order(r)), r.y, DoubleOnly()));
  ENTRY("SphericalBesselY/orvane", "math_SphericalBesselY", true, true, math_SphericalBesselY(r.x, r.y));
  ENTRY("SphericalBesselY/standard", "math_SphericalBesselY", true, true,
        std::sph_neumann(static_cast<unsigned>(order(r)), r.y));
  ENTRY("SphericalBesselY/gsl", "math_SphericalBesselY", true, true, gsl_sf_bessel_yl(order(r), r.y));
  ENTRY("SphericalBesselY/boost", "math_SphericalBesselY", true, true,
        bm::sph_neumann(static_cast<unsigned>(order(r)), r.y, DoubleOnly()));
  ENTRY("AiryAi/orvane", "math_AiryAi", false, false, math_AiryAi(r.x));
  ENTRY("AiryAi/gsl", "math_AiryAi", false, false, gsl_sf_airy_Ai(r.x, GSL_PREC_DOUBLE));
  ENTRY("AiryAi/boost", "math_AiryAi", false, false, bm::airy_ai(r.x, DoubleOnly()));
  ENTRY("AiryBi/orvane", "math_AiryBi", false, false, math_AiryBi(r.x));
  ENTRY("AiryBi/gsl", "math_AiryBi", false, false, gsl_sf_airy_Bi(r.x, GSL_PREC_DOUBLE));
  ENTRY("AiryBi/boost", "math_AiryBi", false, false, bm::airy_bi(r.x, DoubleOnly()));
  ENTRY("DiffAiryAi/orvane", "math_DiffAiryAi", false, false, math_DiffAiryAi(r.x));
  ENTRY("DiffAiryAi/gsl", "math_DiffAiryAi", false, false, gsl_sf_airy_Ai_deriv(r.x, GSL_PREC_DOUBLE));
  ENTRY("DiffAiryAi/boost", "math_DiffAiryAi", false, false, bm::airy_ai_prime(r.x, DoubleOnly()));
  ENTRY("DiffAiryBi/orvane", "math_DiffAiryBi", false, false, math_DiffAiryBi(r.x));
  ENTRY("DiffAiryBi/gsl", "math_DiffAiryBi", false, false, gsl_sf_airy_Bi_deriv(r.x, GSL_PREC_DOUBLE));
  ENTRY("DiffAiryBi/boost", "math_DiffAiryBi", false, false, bm::airy_bi_prime(r.x, DoubleOnly()));
  ENTRY("AiryAiZero/orvane", "math_AiryAiZero", true, true, math_AiryAiZero(r.x));
  ENTRY("AiryAiZero/gsl", "math_AiryAiZero", true, true,
        r.x > 1e9 ? r.expected : gsl_sf_airy_zero_Ai(static_cast<unsigned>(order(r))));
  ENTRY("AiryAiZero/boost", "math_AiryAiZero", true, true,
        r.x > 1e9 ? r.expected : bm::airy_ai_zero<double>(order(r), DoubleOnly()));
  for (const char* table : {"AiryGi", "AiryHi", "DiffAiryGi", "DiffAiryHi"}) {
    const std::string name = table;
    const Call call = name == "AiryGi"       ? +[](const Row& r) { return math_AiryGi(r.x); }
                      : name == "AiryHi"     ? +[](const Row& r) { return math_AiryHi(r.x); }
                      : name == "DiffAiryGi" ? +[](const Row& r) { return math_DiffAiryGi(r.x); }
                                             : +[](const Row& r) { return math_DiffAiryHi(r.x); };
    benchmark::RegisterBenchmark((name + "/orvane").c_str(), run, "math_" + name, false, false, call);
  }
  ENTRY("StruveH/orvane", "math_StruveH", false, false, math_StruveH(r.x, r.y));
  ENTRY("StruveL/orvane", "math_StruveL", false, false, math_StruveL(r.x, r.y));
  ENTRY("angerJ/orvane", "math_angerJ", false, false, math_angerJ(r.x, r.y));
  ENTRY("weberE/orvane", "math_weberE", false, false, math_weberE(r.x, r.y));
  ENTRY("ParabolicCylinderD/orvane", "math_ParabolicCylinderD", false, false, math_ParabolicCylinderD(r.x, r.y));
  // The peer for x > 0: 2^(nu/2) exp(-x^2/4) U(-nu/2, 1/2, x^2/2).
  ENTRY("ParabolicCylinderD_right/orvane", "math_ParabolicCylinderD", true, false, math_ParabolicCylinderD(r.x, r.y));
  ENTRY("ParabolicCylinderD_right/gsl", "math_ParabolicCylinderD", true, false,
        std::exp2(r.x / 2) * std::exp(-r.y * r.y / 4) * gsl_sf_hyperg_U(-r.x / 2, 0.5, r.y * r.y / 2));
  ENTRY("ParabolicCylinderU/orvane", "math_ParabolicCylinderU", false, false, math_ParabolicCylinderU(r.x, r.y));
  ENTRY("ParabolicCylinderV/orvane", "math_ParabolicCylinderV", false, false, math_ParabolicCylinderV(r.x, r.y));
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
