// SPDX-License-Identifier: Apache-2.0
// Exponential and logarithmic map of rotations beside Eigen's; the nearest of a million nodes.
#include <benchmark/benchmark.h>
#include <orvane/frame.h>
#include <orvane/mesh.h>
#include <orvane/rotation.h>

#include <Eigen/Geometry>
#include <array>
#include <cmath>
#include <random>
#include <vector>

namespace {

constexpr std::size_t kCount = 1024;

const std::vector<std::array<double, 3>>& vectors() {
  static const auto drawn = [] {
    std::mt19937 generator(1);
    std::normal_distribution<double> normal;
    std::vector<std::array<double, 3>> all(kCount);
    for (auto& v : all) v = {normal(generator), normal(generator), normal(generator)};
    return all;
  }();
  return drawn;
}

using RowMajor = Eigen::Matrix<double, 3, 3, Eigen::RowMajor>;

RowMajor exponential(const std::array<double, 3>& v) {
  const Eigen::Vector3d phi(v[0], v[1], v[2]);
  const double angle = phi.norm();
  return Eigen::AngleAxisd(angle, phi / angle).toRotationMatrix();
}

const std::vector<RowMajor>& matrices() {
  static const auto all = [] {
    std::vector<RowMajor> made;
    for (const auto& v : vectors()) made.push_back(exponential(v));
    return made;
  }();
  return all;
}

void count(benchmark::State& state) {
  state.counters["ns_per_call"] = {kCount * 1e-9,
                                   benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert};
}

void exponentialByOrvane(benchmark::State& state) {
  SO3* rotation = slam_SO3_create();
  double R[9];
  for (auto _ : state)
    for (const auto& v : vectors()) {
      slam_SO3_setByAxis(rotation, v.data());
      slam_SO3_toR(rotation, R);
      benchmark::DoNotOptimize(R);
    }
  api_FreeHandle(rotation);
  count(state);
}
BENCHMARK(exponentialByOrvane)->Name("exponential/orvane");

void exponentialByEigen(benchmark::State& state) {
  for (auto _ : state)
    for (const auto& v : vectors()) benchmark::DoNotOptimize(exponential(v));
  count(state);
}
BENCHMARK(exponentialByEigen)->Name("exponential/Eigen");

void logarithmByOrvane(benchmark::State& state) {
  SO3* rotation = slam_SO3_create();
  double phi[3];
  for (auto _ : state)
    for (const RowMajor& R : matrices()) {
      slam_SO3_setByR(rotation, R.data());
      slam_SO3_toAxis(rotation, phi);
      benchmark::DoNotOptimize(phi);
    }
  api_FreeHandle(rotation);
  count(state);
}
BENCHMARK(logarithmByOrvane)->Name("logarithm/orvane");

void logarithmByEigen(benchmark::State& state) {
  for (auto _ : state)
    for (const RowMajor& R : matrices()) {
      const Eigen::AngleAxisd turn(R);
      benchmark::DoNotOptimize(Eigen::Vector3d(turn.angle() * turn.axis()));
    }
  count(state);
}
BENCHMARK(logarithmByEigen)->Name("logarithm/Eigen");

void nearestNode(benchmark::State& state) {
  std::mt19937 generator(2);
  std::uniform_real_distribution<double> unit(0, 1);
  for (int32_t id = mesh2D_getNodeSize() + 1; id <= 1'000'000; ++id)
    mesh2D_addNode(id, unit(generator), unit(generator));
  mesh2D_initBuild();
  std::vector<std::array<double, 2>> places(1 << 16);
  for (auto& place : places) place = {unit(generator), unit(generator)};
  double distance = 0;
  std::size_t next = 0;
  for (auto _ : state)
    for (std::size_t i = 0; i < kCount; ++i) {
      const auto& [x, y] = places[next++ % places.size()];
      benchmark::DoNotOptimize(mesh2D_findNearestNodeID(x, y, &distance));
    }
  count(state);
}
BENCHMARK(nearestNode)->Name("nearest of a million nodes/orvane");

}  // namespace
