// SPDX-License-Identifier: Apache-2.0
#include <orvane/line_equation.h>
#include <orvane/rotation.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <random>

#include "complaint.h"
#include "draw.h"
#include "handle.h"
#include "page.h"
#include "sections.h"

namespace {

constexpr int32_t kPairs = 50, kSteps = 8;
constexpr unsigned kPairSeed = 20;
constexpr double kDegrees = 57.29577951308232;
constexpr std::array<double, 9> kCamera = {800, 0, 320, 0, 780, 240, 0, 0, 1};
constexpr std::array<double, 6> kTruth = {0.12, -0.25, 0.06, 0.9, 0.2, 0.38};

struct Pixels {
  std::vector<double> first, second;
};

// Points before both cameras, drawn evenly in a box; their pixels with a normal error.
Pixels drawnPixels(double noise) {
  std::mt19937 generator(kPairSeed);
  std::uniform_real_distribution<double> unit(-1, 1);
  std::normal_distribution<double> normal;
  const Owned<SO3> rotation(slam_SO3_create());
  slam_SO3_setByAxis(rotation.get(), kTruth.data());
  double R[9];
  slam_SO3_toR(rotation.get(), R);
  Pixels pixels;
  for (int32_t i = 0; i < kPairs; ++i) {
    const double x[] = {2.5 * unit(generator), 2 * unit(generator), 6 + 2 * unit(generator)};
    double y[3];
    for (int k = 0; k < 3; ++k) y[k] = R[3 * k] * x[0] + R[3 * k + 1] * x[1] + R[3 * k + 2] * x[2] + kTruth[3 + k];
    const auto see = [&](std::vector<double>& out, const double* p) {
      out.push_back(kCamera[0] * p[0] / p[2] + kCamera[2] + noise * normal(generator));
      out.push_back(kCamera[4] * p[1] / p[2] + kCamera[5] + noise * normal(generator));
    };
    see(pixels.first, x);
    see(pixels.second, y);
  }
  return pixels;
}

/// How far a pose is from the truth, in degrees: by its rotation, and by the direction of its translation.
struct Error {
  double rotation, direction;
};

Error errorOf(const double* T) {
  const Owned<SO3> estimate(slam_SO3_create());
  const double R[] = {T[0], T[1], T[2], T[4], T[5], T[6], T[8], T[9], T[10]};
  slam_SO3_setByR(estimate.get(), R);
  const double undo[] = {-kTruth[0], -kTruth[1], -kTruth[2]};
  slam_SO3_updateLeftDx(estimate.get(), undo);
  double rest[3];
  slam_SO3_toAxis(estimate.get(), rest);
  const double dot = T[3] * kTruth[3] + T[7] * kTruth[4] + T[11] * kTruth[5];
  const double length = std::hypot(T[3], T[7], T[11]) * std::hypot(kTruth[3], kTruth[4], kTruth[5]);
  return {kDegrees * std::hypot(rest[0], rest[1], rest[2]), kDegrees * std::acos(std::min(dot / length, 1.0))};
}

// One step of Gauss and Newton. The pairs say nothing on the translation's length: it is kept, by one more equation.
void step(PoleConstraint2DTo2D* views) {
  std::vector<double> e(kPairs), J(6 * kPairs);
  double T[16];
  slam_PloeCon2DTo2D_calcOptError(views, e.data());
  slam_PloeCon2DTo2D_calcOptJacobi(views, J.data());
  slam_PloeCon2DTo2D_getT12(views, T);
  const double along[] = {0, 0, 0, T[3], T[7], T[11]};
  double normal[36] = {}, right[6] = {}, dx[6];
  for (int p = 0; p < 6; ++p) {
    for (int q = 0; q < 6; ++q) {
      normal[6 * p + q] = along[p] * along[q];
      for (int32_t i = 0; i < kPairs; ++i) normal[6 * p + q] += J[6 * i + p] * J[6 * i + q];
    }
    for (int32_t i = 0; i < kPairs; ++i) right[p] -= J[6 * i + p] * e[i];
  }
  api_solveLineEquation(normal, right, 6, 6, 1, dx);
  slam_PloeCon2DTo2D_calcOptUpdate(views, dx);
}

}  // namespace

std::string twoViewsSection(double noise) {
  const Pixels pixels = drawnPixels(noise);
  const Owned<PoleConstraint2DTo2D> views(slam_CreatePoleConstraint2DTo2D(
      kCamera.data(), kCamera.data(), nullptr, pixels.first.data(), pixels.second.data(), nullptr, kPairs));
  const double start[] = {0, 0, 0, 1, 0, 0};
  slam_PloeCon2DTo2D_setT12(views.get(), start);

  std::vector<double> steps, sums;
  std::vector<std::vector<std::string>> rows;
  Error last{};
  for (int32_t k = 0; k <= kSteps; ++k) {
    if (k > 0) step(views.get());
    double T[16];
    slam_PloeCon2DTo2D_getT12(views.get(), T);
    last = errorOf(T);
    const double sum = slam_PloeCon2DTo2D_getSquaredError(views.get());
    if (!std::isfinite(sum)) throw Complaint("the pose of the two views is lost");
    steps.push_back(k);
    sums.push_back(std::log10(std::max(sum, 1e-32)));
    rows.push_back({std::to_string(k), shortNumber(sum, 4), shortNumber(last.rotation, 3) + "°",
                    shortNumber(last.direction, 3) + "°"});
  }
  std::printf("two views:  rotation within %.3g, direction within %.3g degrees after %d steps\n", last.rotation,
              last.direction, kSteps);
  SvgPlot plot("Squared error", {0, kSteps, "step"},
               {std::floor(sums.back()) - 1, std::ceil(sums.front()) + 1, "log10 of the squared error"});
  plot.line(steps, sums, "s1");
  plot.dots(steps, sums, "s1");
  return "<h2 id=\"views\">Where the second camera stood</h2>\n<p>" + std::to_string(kPairs) +
         " points are seen by two cameras; their pixels have a normal error of " + shortNumber(noise) +
         " (drawn, not measured). Each pair bounds the pose by one equation, and a few steps of least squares over its "
         "derivatives find the rotation and the direction of the translation.</p>\n" +
         formula(
             "p_2^\\top [t]_\\times R\\, p_1 = 0,\\qquad R \\leftarrow \\exp([\\mathrm{d}\\varphi]_\\times)\\, R,"
             "\\quad t \\leftarrow t + \\mathrm{d}t") +
         "<p class=\"answer\">The rotation is found within <strong>" + shortNumber(last.rotation, 2) +
         "°</strong>, the direction within <strong>" + shortNumber(last.direction, 2) + "°</strong>.</p>\n" +
         figure("views", "", plot.svg(), "From no rotation at all and a wrong direction.") +
         table({"Step", "Squared error", "Rotation off by", "Direction off by"}, rows);
}
