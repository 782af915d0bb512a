// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <numeric>
#include <sstream>

#include "prog/drawn_problem.h"
#include "support/csv.h"
#include "support/numbers.h"

namespace {

using Values = std::vector<double>;
using Ids = std::vector<uint32_t>;

struct Graph {
  Ids from, to;
  Values weight;
  int32_t size() const { return static_cast<int32_t>(from.size()); }
};

struct Found {
  int status;
  Ids path;
  double cost;
};

Found shortest(const Graph& graph, uint32_t start, uint32_t end, std::size_t room) {
  Ids path(std::max<std::size_t>(room, 2), 777);
  uint32_t length = 777;
  double cost = -7;
  const int status = progMinimumDistance1(graph.from.data(), graph.to.data(), graph.weight.data(), graph.size(), start,
                                          end, path.data(), &length, &cost);
  if (status == 1)
    path.resize(length);
  else
    EXPECT_TRUE(length == 777 && path[0] == 777);  // untouched
  return {status, path, cost};
}

TEST(Paths, ShortestAsByScipy) {
  for (const auto& cells : readCsv("prog/paths.csv")) {
    const uint32_t n = static_cast<uint32_t>(std::stoul(cells[0])), start = static_cast<uint32_t>(std::stoul(cells[3])),
                   end = static_cast<uint32_t>(std::stoul(cells[4]));
    Draw d(std::stoull(cells[2]));
    Graph graph;
    for (int e = std::stoi(cells[1]); e > 0; --e) {
      graph.from.push_back(static_cast<uint32_t>(d.below(static_cast<int>(n))));
      graph.to.push_back(static_cast<uint32_t>(d.below(static_cast<int>(n))));
      graph.weight.push_back(1 + d.below(1000));
    }
    const double cost = cells[5] == "inf" ? 1e300 : std::stod(cells[5]);
    const Found found = shortest(graph, start, end, n);
    const std::string name = cells[0] + " " + cells[1] + " " + cells[2];
    EXPECT_EQ(found.status, cost < 1e300 ? 1 : 0) << name;
    EXPECT_EQ(found.cost, cost) << name;

    // Sparse ids give the same; the handle's path leads along edges and costs what it should.
    Graph wide = graph;
    for (Ids* ids : {&wide.from, &wide.to})
      for (uint32_t& id : *ids) id = id * 21474 + 5;
    EXPECT_EQ(shortest(wide, start * 21474 + 5, end * 21474 + 5, n).cost, cost) << name;
    ShortestPath* search =
        progSP_Create(graph.from.data(), graph.to.data(), graph.weight.data(), graph.size(), start, end);
    Ids path(progSP_getPath(search, nullptr));
    progSP_getPath(search, path.data());
    EXPECT_EQ(progSP_calcWeight(search, graph.weight.data()), cost) << name;
    if (found.status == 1) {
      EXPECT_EQ(path, found.path) << name;
      EXPECT_EQ(path.front(), start);
      EXPECT_EQ(path.back(), end);
      EXPECT_EQ(progSP_calcSPError(search, path.data(), static_cast<int32_t>(path.size())), 0) << name;
      Values doubled = graph.weight;
      for (double& w : doubled) w *= 2;
      EXPECT_EQ(progSP_calcWeight(search, doubled.data()), 2 * cost) << name;
    } else {
      EXPECT_TRUE(path.empty());
    }
    api_FreeHandle(search);
    if (n > 1000) continue;
    Values matrix(static_cast<std::size_t>(n) * n, kInf);
    for (int32_t e = 0; e < graph.size(); ++e) {
      double& cell = matrix[graph.from[e] * n + graph.to[e]];
      cell = std::min(cell, graph.weight[e]);
    }
    Ids ids(std::max(n, 2u));
    uint32_t length = 0;
    double least = 0;
    EXPECT_EQ(progMinimumDistance2(matrix.data(), n, 0, start, end, ids.data(), &length, &least), found.status) << name;
    EXPECT_EQ(least, cost) << name;
    search = progSP_Create2(matrix.data(), n, start, end);
    EXPECT_EQ(progSP_calcWeight(search, matrix.data()), cost) << name;
    api_FreeHandle(search);
  }
}

TEST(Paths, EdgesOfTheRange) {
  const Graph line{{1, 2, 3, 1}, {2, 3, 4, 3}, {1, 1, 1, 5}};
  EXPECT_EQ(shortest(line, 1, 4, 4).path, (Ids{1, 2, 3, 4}));
  EXPECT_EQ(shortest(line, 1, 4, 4).cost, 3);
  EXPECT_EQ(shortest(line, 4, 1, 4).status, 0);  // directed
  EXPECT_EQ(shortest(line, 4, 1, 4).cost, 1e300);
  for (uint32_t missing : {0u, 5u, 4294967295u}) {
    EXPECT_EQ(shortest(line, missing, 4, 4).status, 0);
    EXPECT_EQ(shortest(line, 1, missing, 4).status, 0);
  }
  // start equal to end needs no graph, not even the vertex.
  for (const Graph& graph : {line, Graph{}}) {
    const Found here = shortest(graph, 9, 9, 4);
    EXPECT_EQ(here.status, 1);
    EXPECT_EQ(here.path, (Ids{9, 9}));
    EXPECT_EQ(here.cost, 0);
  }
  EXPECT_EQ(shortest({}, 1, 2, 2).cost, 1e300);
  const Graph far{{4294967295u, 0}, {0, 4000000000u}, {0.5, 0}};
  EXPECT_EQ(shortest(far, 4294967295u, 4000000000u, 3).path, (Ids{4294967295u, 0, 4000000000u}));

  for (double bad : {-1.0, -1e-300, -kInf, kNaN}) {
    Graph broken = line;
    broken.weight[3] = bad;  // even on an edge that the path would not take
    EXPECT_EQ(shortest(broken, 1, 4, 4).cost, 1e300) << bad;
  }
  for (double absent : {1e100, 1e300, kInf}) {
    Graph cut = line;
    cut.weight[1] = absent;
    EXPECT_EQ(shortest(cut, 1, 4, 4).path, (Ids{1, 3, 4})) << absent;
    cut.weight[2] = absent;
    EXPECT_EQ(shortest(cut, 1, 4, 4).cost, 1e300) << absent;
  }
  Graph dear = line;
  dear.weight[1] = 9e99;
  dear.weight[3] = 9.9e99;
  EXPECT_EQ(shortest(dear, 1, 4, 4).cost, 9e99);

  ShortestPath* search = progSP_Create(line.from.data(), line.to.data(), line.weight.data(), 4, 1, 4);
  const auto error = [&](const Ids& path) {
    return progSP_calcSPError(search, path.data(), static_cast<int32_t>(path.size()));
  };
  EXPECT_EQ(error({1, 3, 4}), 3);
  EXPECT_EQ(error({1, 2, 4}), 1e300);  // no such edge
  EXPECT_EQ(error({1, 3}), 1e300);     // another end
  EXPECT_EQ(error({1, 77, 4}), 1e300);
  EXPECT_EQ(error({}), 1e300);
  const Values closed{1, kInf, 1, 5};
  EXPECT_EQ(progSP_calcWeight(search, closed.data()), 1e300);
  api_FreeHandle(search);
}

struct Nodes {
  Values weight;
  std::vector<const double*> rows;

  explicit Nodes(Values w) : weight(std::move(w)) {
    const auto n = static_cast<std::size_t>(std::lround(std::sqrt(static_cast<double>(weight.size()))));
    for (std::size_t i = 0; i < n; ++i) rows.push_back(weight.data() + i * n);
  }
  Nodes(const Nodes&) = delete;
  int32_t size() const { return static_cast<int32_t>(rows.size()); }
  double length(const Ids& tour) const {
    return api_TSP_clacTSP(rows.data(), 1, size(), tour.data(), static_cast<int32_t>(tour.size()));
  }
};

Values rounded(const std::vector<std::pair<double, double>>& points) {
  Values weight;
  for (const auto& [x, y] : points)
    for (const auto& [u, v] : points) weight.push_back(std::floor(std::hypot(x - u, y - v) + 0.5));
  return weight;
}

// A permutation from node 0 on, of the length that is told; the length.
double checkedTour(const Nodes& nodes, int32_t threads) {
  Ids tour(nodes.rows.size(), 777);
  const double length = api_Prog_SolveTSP(nodes.rows.data(), nodes.size(), threads, tour.data());
  Ids sorted = tour;
  std::sort(sorted.begin(), sorted.end());
  Ids all(tour.size());
  std::iota(all.begin(), all.end(), 0);
  EXPECT_EQ(sorted, all);
  EXPECT_EQ(tour[0], 0u);
  EXPECT_NEAR(length, nodes.length(tour), 1e-12 * std::abs(length));
  return length;
}

TEST(Tours, NearTheOptimum) {
  double sum = 0, count = 0;
  for (const auto& cells : readCsv("prog/tours.csv")) {
    std::vector<std::pair<double, double>> points;
    if (cells[0] == "drawn") {
      Draw d(std::stoull(cells[2]));
      for (int k = std::stoi(cells[1]); k > 0; --k) {
        const double x = d.below(10000);
        points.push_back({x, d.below(10000)});
      }
    } else {
      for (const auto& place : readCsv("prog/tours/" + cells[0] + ".csv"))
        points.push_back({std::stod(place[0]), std::stod(place[1])});
    }
    const Nodes nodes(rounded(points));
    const double length = checkedTour(nodes, 2), known = std::stod(cells[3]);
    std::cout << cells[0] << cells[1] << ": " << length << ", " << 100 * (length / known - 1)
              << " % above the best known\n";
    EXPECT_LE(length, 1.05 * known) << cells[0] << cells[1];
    EXPECT_TRUE(cells[0] == "drawn" || length >= known) << cells[0];
    sum += length / known - 1;
    ++count;
    if (points.size() > 300) continue;
    for (int32_t threads : {1, 3, 1000}) EXPECT_EQ(checkedTour(nodes, threads), length) << cells[0];
  }
  EXPECT_LE(sum / count, 0.01);  // 0.0029 where this was written
}

// All tours of a few nodes.
double leastOf(const Nodes& nodes) {
  Ids tour(nodes.rows.size());
  std::iota(tour.begin(), tour.end(), 0);
  double least = kInf;
  do least = std::min(least, nodes.length(tour));
  while (std::next_permutation(tour.begin() + 1, tour.end()));
  return least;
}

TEST(Tours, FewNodes) {
  Draw d(1);
  for (int n = 2; n <= 8; ++n) {
    for (int round = 0; round < 12; ++round) {
      const bool directed = round % 3 == 2;
      Values weight(static_cast<std::size_t>(n) * n, kNaN);  // the diagonal is not read
      for (int i = 0; i < n; ++i)
        for (int j = 0; j < i; ++j) {
          weight[i * n + j] = weight[j * n + i] = 1 + d.unit();
          if (directed) weight[j * n + i] = 1 + d.unit();
        }
      const Nodes nodes(weight);
      const double length = checkedTour(nodes, 1 + round % 4);
      EXPECT_LE(length, leastOf(nodes) * (directed ? 1.35 : 1.2)) << n << " " << round;
      EXPECT_GE(length, leastOf(nodes) - 1e-12);
    }
  }
}

TEST(Tours, GrownAtBothEnds) {
  // On a line the two ends grow alternately and close over the whole length, from every start; nothing shortens that.
  const Values places{0, 0, 1, 0, 3, 0, 7, 0, 12, 0};
  TravellingSalesman* tsp = api_TSP_initBy2DPosition(places.data(), 5);
  Ids tour(5, 777);
  EXPECT_EQ(api_TSP_getPath(tsp, tour.data()), 5);
  EXPECT_NEAR(api_TSP_calcTSPError(tsp, tour.data(), 5), 0, 1e-12);
  const Ids straight{0, 1, 2, 3, 4}, crossed{0, 2, 1, 4, 3};
  EXPECT_NEAR(api_TSP_calcTSPError(tsp, straight.data(), 5), 0, 1e-12);
  EXPECT_NEAR(api_TSP_calcTSPError(tsp, crossed.data(), 5), 28 - 24, 1e-12);
  const Ids twice{0, 1, 2, 2, 4}, outside{0, 1, 2, 3, 5};
  EXPECT_EQ(api_TSP_calcTSPError(tsp, twice.data(), 5), 1e300);
  EXPECT_EQ(api_TSP_calcTSPError(tsp, outside.data(), 5), 1e300);
  EXPECT_EQ(api_TSP_calcTSPError(tsp, straight.data(), 4), 1e300);
  api_FreeHandle(tsp);

  const Values cube{0, 0, 0, 0, 0, 1, 0, 1, 0, 0, 1, 1, 1, 0, 0, 1, 0, 1, 1, 1, 0, 1, 1, 1};
  tsp = api_TSP_initBy3DPosition(cube.data(), 8);
  Ids round(8);
  EXPECT_EQ(api_TSP_getPath(tsp, round.data()), 8);
  double length = 0;
  for (int k = 0; k < 8; ++k) {
    double square = 0;
    for (int axis = 0; axis < 3; ++axis)
      square += std::pow(cube[round[k] * 3 + axis] - cube[round[(k + 1) % 8] * 3 + axis], 2);
    length += std::sqrt(square);
  }
  EXPECT_NEAR(length, 8, 1e-12);  // a Hamiltonian cycle over the edges
  api_FreeHandle(tsp);
}

TEST(Tours, WithoutEdges) {
  Ids tour(3, 777);
  const auto solve = [&](Values weight) {
    const Nodes nodes(std::move(weight));
    return api_Prog_SolveTSP(nodes.rows.data(), nodes.size(), 2, tour.data());
  };
  EXPECT_EQ(solve({0, 1, 2, 1, 0, 3, 1e100, 1e200, 0}), 1e300);  // the last row reaches nobody
  EXPECT_EQ(solve({0, 1, 2, 1, 0, 3, kNaN, kInf, 0}), 1e300);
  EXPECT_EQ(solve({0, 1, 1e100, 1, 0, 1e100, 1, 1, 0}), 1e300);  // nobody reaches the last one
  EXPECT_EQ(solve({0, 1, -kInf, 1, 0, -kInf, 1, 1, 0}), 1e300);
  EXPECT_EQ(solve({5}), 1e300);
  EXPECT_EQ(api_Prog_SolveTSP(nullptr, 0, 2, tour.data()), 1e300);
  EXPECT_EQ(api_Prog_SolveTSP(nullptr, -3, 0, tour.data()), 1e300);
  EXPECT_EQ(tour, (Ids{777, 777, 777}));
  EXPECT_EQ(solve({0, 1, 1e100, 1e100, 0, 2, 4, 1e100, 0}), 7);  // one direction alone closes
  EXPECT_EQ(tour, (Ids{0, 1, 2}));
  EXPECT_EQ(solve({0, -1, 5, 5, 0, -2, -4, 5, 0}), -7);

  for (int32_t n : {0, -1}) {
    TravellingSalesman* none = api_TSP_initBy2DPosition(nullptr, n);
    EXPECT_EQ(api_TSP_getPath(none, tour.data()), 0);
    EXPECT_EQ(api_TSP_calcTSPError(none, tour.data(), 0), 1e300);
    api_FreeHandle(none);
  }
}

TEST(Tours, WeightsThatCancel) {
  // From a to b it costs p(a) + p(b), or p(b) - p(a): all tours are as long, 0, and only rounding tells them apart.
  Draw d(5);
  for (int n = 20; n < 120; n += 5) {
    Values potential(n), sum, climb;
    for (double& p : potential) p = std::sqrt(d.unit());
    const double mean = std::accumulate(potential.begin(), potential.end(), 0.0) / n;
    for (double& p : potential) p -= mean;
    for (double from : potential)
      for (double to : potential) sum.push_back(from + to), climb.push_back(to - from);
    EXPECT_NEAR(checkedTour(Nodes(sum), 1), 0, 1e-11);
    EXPECT_NEAR(checkedTour(Nodes(climb), 1), 0, 1e-11);
  }
}

TEST(Tours, EdgesOfTheRange) {
  // Three edges just below 1e100 make a tour above it.
  Ids tour(12, 777);
  const Nodes dear(Values(9, 5e99));
  EXPECT_DOUBLE_EQ(api_Prog_SolveTSP(dear.rows.data(), 3, 1, tour.data()), 1.5e100);
  // What is no edge stays none, whatever it would save.
  Draw d(6);
  int closed = 0;
  for (int round = 0; round < 300; ++round) {
    const int n = 5 + d.below(8);
    Values weight(static_cast<std::size_t>(n) * n);
    for (int i = 0; i < n; ++i)
      for (int j = 0; j <= i; ++j)
        weight[i * n + j] = weight[j * n + i] = d.below(2) == 0 ? 1e100 : (round % 2 == 0 ? 9e99 : -1e301) * d.unit();
    const Nodes nodes(weight);
    if (!(api_Prog_SolveTSP(nodes.rows.data(), n, 1, tour.data()) < 1e300)) continue;
    ++closed;
    for (int k = 0; k < n; ++k) EXPECT_LT(weight[tour[k] * n + tour[(k + 1) % n]], 1e100) << round;
  }
  EXPECT_GT(closed, 20);
}

TEST(Tours, LengthOfAGivenTour) {
  const Values wide{0, -9, 1, -9, 2, -9, 3, -9, 0, -9, 4, -9, 5, -9, 6, -9, 0, -9};
  const std::vector<const double*> rows{&wide[0], &wide[6], &wide[12]};
  const Ids tour{0, 1, 2}, back{2, 1, 0}, outside{0, 3};
  EXPECT_EQ(api_TSP_clacTSP(rows.data(), 2, 3, tour.data(), 3), 1 + 4 + 5);
  EXPECT_EQ(api_TSP_clacTSP(rows.data(), 2, 3, back.data(), 3), 6 + 3 + 2);
  EXPECT_EQ(api_TSP_clacTSP(rows.data(), 2, 3, tour.data(), 1), 0);
  EXPECT_EQ(api_TSP_clacTSP(rows.data(), 2, 3, tour.data(), 0), 0);
  EXPECT_EQ(api_TSP_clacTSP(rows.data(), 2, 3, outside.data(), 2), 1e300);
  EXPECT_EQ(api_TSP_clacTSP(rows.data(), 2, -3, tour.data(), 3), 1e300);
}

}  // namespace
