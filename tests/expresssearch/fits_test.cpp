// SPDX-License-Identifier: Apache-2.0
// Peaks and surfaces: NIST's certified peaks, and points on surfaces that are known.
#include <fstream>
#include <numbers>
#include <sstream>

#include "expresssearch/host.h"

namespace {

/// NIST's Gauss1 to Gauss3 (two Gaussian peaks over a decaying exponential, noise of variance 6.25): residual sum of
/// squares, then centre and width of the peaks as exp(-((x-u)/w)^2), with standard deviations.
struct Certified {
  const char* file;
  double residual, u1, w1, u2, w2;
  int32_t birds;
};
const Certified kCertified[] = {
    {"Gauss1", 1315.8222432, 67.481, 23.130, 178.998, 18.389, 32},
    {"Gauss2", 1247.5282092, 107.031, 23.579, 153.270, 19.526, 32},
    {"Gauss3", 1244.4846360, 111.636, 23.301, 147.762, 19.668, 64},
};

TEST(Peaks, OfNistLieWithinTheCertifiedValues) {
  for (const Certified& set : kCertified) {
    SCOPED_TRACE(set.file);
    std::ifstream file(std::string(ORVANE_REFERENCE_DIR "/expresssearch/") + set.file + ".dat");
    Vector x, y;
    std::string line;
    for (int i = 1; std::getline(file, line); ++i)
      if (i > 60) {
        std::istringstream cells(line);
        double cell[2];
        if (cells >> cell[0] >> cell[1]) y.push_back(cell[0]), x.push_back(cell[1]);
      }
    ASSERT_EQ(x.size(), 250u);
    Search search({x, y});
    search.limits(set.residual, 0.0);
    api_ES_SetBirdParam(search.es, set.birds, 8, 2);
    const Found best = search.run(10, ES_KIND_PEAKS).best();
    // The base is a Lorentzian slope here: the residual is certified, the peaks lean a little on the base.
    EXPECT_LE(best.error(), set.residual);
    ASSERT_EQ(best.coef.size(), 7u);
    const std::size_t low = best.coef[1] < best.coef[4] ? 0 : 3, high = 3 - low;
    EXPECT_NEAR(best.coef[low + 1], set.u1, 0.3);
    EXPECT_NEAR(best.coef[high + 1], set.u2, 0.3);
    EXPECT_NEAR(best.coef[low + 2] * std::numbers::sqrt2, set.w1, 0.4);
    EXPECT_NEAR(best.coef[high + 2] * std::numbers::sqrt2, set.w2, 0.4);
    EXPECT_NEAR(squaredError(search.values(best.handle), y), best.error(), 1e-9 * best.error());
  }
}

/// Points c + r*(unit vector), the vector turned by a rotation about (1, 1, 1) where `turn` is not 0.
std::vector<Vector> ellipsoid(const double (&c)[3], const double (&r)[3], double turn) {
  std::mt19937 rng(5);
  const Vector u = draws(rng, 120, -1, 1), phi = draws(rng, 120, 0, 2 * std::numbers::pi);
  const double a = (1 + 2 * std::cos(turn)) / 3, b = (1 - std::cos(turn)) / 3, d = std::sin(turn) / std::sqrt(3.0);
  std::vector<Vector> out(3);
  for (std::size_t i = 0; i < u.size(); ++i) {
    const double s = std::sqrt(1 - u[i] * u[i]);
    const double p[] = {r[0] * s * std::cos(phi[i]), r[1] * s * std::sin(phi[i]), r[2] * u[i]};
    for (std::size_t k = 0; k < 3; ++k)
      out[k].push_back(c[k] + a * p[k] + (b - d) * p[(k + 1) % 3] + (b + d) * p[(k + 2) % 3]);
  }
  return out;
}

TEST(Surfaces, QuadricsHoldTheirPoints) {
  struct Row {
    const char* name;
    std::vector<Vector> columns;
    int32_t maxTerms;
  } rows[] = {{"sphere", ellipsoid({3, 1, 0}, {2, 2, 2}, 0), 7},
              {"axes", ellipsoid({3, 1, -1}, {1, 2, 3}, 0), 7},
              {"turned", ellipsoid({3, 1, -1}, {1, 2, 3}, 0.7), 10},
              {"plane", ellipsoid({0, 0, 0}, {2, 2, 2}, 0), 4}};
  for (std::size_t i = 0; i < 120; ++i)
    rows[3].columns[2][i] = 1 + 2 * rows[3].columns[0][i] - 3 * rows[3].columns[1][i];
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Search search(row.columns);
    const Found best = search.run(row.maxTerms, ES_KIND_SURFACE).best();
    EXPECT_EQ(search.judged(), 2u);
    ASSERT_EQ(best.coef.size(), static_cast<std::size_t>(row.maxTerms));
    const double size = *std::max_element(best.coef.begin(), best.coef.end());
    for (std::size_t i = 0; i < 120; ++i) {
      const double p[] = {row.columns[0][i], row.columns[1][i], row.columns[2][i]};
      double value = best.coef.back();
      std::size_t k = 0;
      for (const double x : p) value += best.coef[k++] * x;
      if (row.maxTerms > 4)
        for (const double x : p) value += best.coef[k++] * x * x;
      if (row.maxTerms > 7)
        for (const auto& [a, b] : {std::pair{0, 1}, {0, 2}, {1, 2}}) value += best.coef[k++] * p[a] * p[b];
      EXPECT_NEAR(value, 0.0, 1e-11 * size);
    }
  }
}

TEST(Surfaces, PowersHoldTheirPointsAndPredictNewOnes) {
  std::mt19937 rng(6);
  const Vector x = draws(rng, 90, 0.5, 1.5), y = draws(rng, 90, 0.5, 1.5);
  struct Row {
    const char* name;
    uint8_t kind;
    int32_t maxTerms;
    double (*z)(double x, double y);
    bool pair;  ///< of x and z only
  } rows[] = {
      {"sphere", ES_KIND_POWER_SURFACE, 7, [](double a, double b) { return std::sqrt(9 - a * a - b * b); }, false},
      {"ellipsoid", ES_KIND_POWER_SURFACE, 7, [](double a, double b) { return std::sqrt(9 - a * a / 2 - b * b / 3); },
       false},
      {"plane", ES_KIND_POWER_SURFACE, 7, [](double a, double b) { return 1 + 2 * a + 3 * b; }, false},
      {"powers", ES_KIND_POWER_SURFACE, 5, [](double a, double) { return std::pow(2 + std::pow(a, 1.5), 0.4); }, true},
      {"pair", ES_KIND_PAIR_SURFACE, 8, [](double a, double) { return 1 / (1 + a * a); }, true},
      {"pairs", ES_KIND_PAIR_SURFACE, 16, [](double a, double b) { return a * b * b + 2; }, false}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    std::vector<Vector> columns = row.pair ? std::vector<Vector>{x, x} : std::vector<Vector>{x, y, x};
    for (std::size_t i = 0; i < x.size(); ++i) columns.back()[i] = row.z(x[i], y[i]);
    Search search(columns);
    search.limits(1e-18, 0.0);
    api_ES_SetSolverParam(search.es, 500, 30, 1e-12, 1e-20);
    const Found best = search.run(row.maxTerms, row.kind).best();
    EXPECT_LT(best.error(), 1e-15);
    const Vector truth = columns.back();
    for (double& z : columns.back()) z *= 1.05;  // only where to look for the solution
    EXPECT_LT(squaredError(Search(columns).values(best.handle), truth), 1e-12);
  }
}

}  // namespace
