// SPDX-License-Identifier: Apache-2.0
// Peaks and surfaces: NIST's certified peaks, and points on surfaces that are known.
#include <fstream>
#include <numbers>

#include "expresssearch/host.h"

namespace {

/// NIST's Gauss1 to Gauss3 (two Gaussian peaks over a decaying exponential, noise of variance 6.25): residual sum of
/// squares, then centre and width of the peaks as exp(-((x-u)/w)^2).
TEST(Peaks, OfNistLieWithinTheCertifiedValues) {
  struct Certified {
    const char* file;
    double residual, u1, w1, u2, w2;
    int32_t birds;
  } sets[] = {{"Gauss1", 1315.8222432, 67.481, 23.130, 178.998, 18.389, 64},
              {"Gauss2", 1247.5282092, 107.031, 23.579, 153.270, 19.526, 64},
              {"Gauss3", 1244.4846360, 111.636, 23.301, 147.762, 19.668, 96}};
  for (const Certified& set : sets) {
    SCOPED_TRACE(set.file);
    std::ifstream file(std::string(ORVANE_REFERENCE_DIR "/expresssearch/") + set.file + ".dat");
    Vector x(250), y(250);
    std::string line;
    for (int i = 0; i < 60; ++i) std::getline(file, line);
    for (std::size_t i = 0; i < 250; ++i) ASSERT_TRUE(file >> y[i] >> x[i]);
    Search search({x, y});
    search.limits(set.residual, 0.0);
    api_ES_SetBirdParam(search.es, set.birds, 0, 0);  // the starts alone find them
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

TEST(Surfaces, HoldTheirPointsAndPredictNewOnes) {
  std::mt19937 rng(6);
  const Vector x = draws(rng, 90, 0.5, 1.5), y = draws(rng, 90, 0.5, 1.5);
  using Height = double (*)(double, double);
  const Height sphere = [](double a, double b) { return std::sqrt(9 - a * a - b * b); },
               plane = [](double a, double b) { return 1 + 2 * a + 3 * b; },
               // x^2 + 2 y^2 + z^2 + x y + x z/2 - y z - z = 9
      turned = [](double a, double b) {
        const double h = (a / 2 - b - 1) / 2;
        return -h + std::sqrt(h * h + 9 - a * a - 2 * b * b - a * b);
      };
  struct Row {
    const char* name;
    int kind;
    int32_t maxTerms;
    Height z;
    bool pair;  ///< of x and z only
  } rows[] = {{"plane", 60, 4, plane, false},
              {"sphere", 60, 7, sphere, false},
              {"turned", 60, 10, turned, false},
              {"sphere", 62, 7, sphere, false},
              {"ellipsoid", 62, 7, [](double a, double b) { return std::sqrt(9 - a * a / 2 - b * b / 3); }, false},
              {"plane", 62, 7, plane, false},
              {"powers", 62, 5, [](double a, double) { return std::pow(2 + std::pow(a, 1.5), 0.4); }, true},
              {"pair", 61, 8, [](double a, double) { return 1 / (1 + a * a); }, true},
              {"pairs", 61, 16, [](double a, double b) { return a * b * b + 2; }, false}};
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.name) + " of kind " + std::to_string(row.kind));
    std::vector<Vector> columns = row.pair ? std::vector<Vector>{x, x} : std::vector<Vector>{x, y, x};
    columns.back() = tabulated(x.size(), [&](std::size_t i) { return row.z(x[i], y[i]); });
    Search search(columns);
    search.limits(1e-18, 0.0);
    api_ES_SetSolverParam(search.es, 500, 30, 1e-12, 1e-20);
    const Found best = search.run(row.maxTerms, row.kind).best();
    EXPECT_LT(best.error(), 1e-15);
    EXPECT_EQ(best.coef.size(), static_cast<std::size_t>(row.maxTerms));
    const Vector truth = columns.back();
    if (row.kind > 60) {
      for (double& z : columns.back())  // only where to look for the solution; 16 parameters leave others near to it
        z *= row.maxTerms < 16 ? 1.05 : 1.0;
      EXPECT_LT(squaredError(Search(columns).values(best.handle), truth), 1e-12);
      continue;
    }
    for (std::size_t i = 0; i < x.size(); ++i) {  // A of columns, squares, products, and the constant
      const double p[] = {x[i], y[i], truth[i]};
      double value = best.coef.back();
      std::size_t k = 0;
      for (const double v : p) value += best.coef[k++] * v;
      for (std::size_t a = 0; a < 3 && row.maxTerms > 4; ++a) value += best.coef[k++] * p[a] * p[a];
      for (const auto& [a, b] : {std::pair{0, 1}, {0, 2}, {1, 2}})
        if (row.maxTerms > 7) value += best.coef[k++] * p[a] * p[b];
      EXPECT_NEAR(value, 0.0, 1e-9);
    }
  }
}

}  // namespace
