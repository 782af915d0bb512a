// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <orvane/mesh.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "stores/files.h"

namespace {

std::string written(const std::string& name, const std::string& content) {
  const std::string path = pathOf("mesh_" + name);
  write(path, content);
  return path;
}

// A load of a file that is not there is the way to an empty mesh.
class Mesh : public testing::Test {
 protected:
  void SetUp() override { EXPECT_FALSE(mesh2D_loadNode(pathOf("mesh_missing").c_str(), 0, 1)); }
};

TEST_F(Mesh, NodesElementsAndRanges) {
  EXPECT_TRUE(mesh2D_addNode(5, 1, 2));
  EXPECT_FALSE(mesh2D_addNode(5, 9, 9));
  EXPECT_TRUE(mesh2D_addNode(-1, 3, -4));
  EXPECT_TRUE(mesh2D_addNode(2, 0, 7));
  const int32_t triangle[] = {5, -1, 77};
  EXPECT_TRUE(mesh2D_addElement(1, triangle, 3));
  EXPECT_FALSE(mesh2D_addElement(1, triangle, 2));
  EXPECT_TRUE(mesh2D_addElement(0, triangle, 2));
  int32_t ids[3], nodes[5];
  EXPECT_EQ(mesh2D_getAllNodeID(ids), 3);
  EXPECT_EQ(ids[0], -1);
  EXPECT_EQ(ids[2], 5);
  EXPECT_EQ(mesh2D_getAllElementID(ids), 2);
  EXPECT_EQ(mesh2D_getAllElementNodeID(nullptr), 5);
  mesh2D_getAllElementNodeID(nodes);
  EXPECT_EQ(nodes[4], 77);
  EXPECT_EQ(mesh2D_getElementNodeID(9, nodes), 0);

  mesh2D_initBuild();
  double a, b, c, d;
  mesh2D_getRange(&a, &b, &c, &d);
  EXPECT_EQ(a, 0);
  EXPECT_EQ(b, 3);
  EXPECT_EQ(c, -4);
  EXPECT_EQ(d, 7);
  mesh2D_setCurrentRange(1, 0, 7, 2);  // exchanged ends; edges belong to it
  mesh2D_getCurrentRange(&a, &b, &c, &d);
  EXPECT_EQ(a, 0);
  EXPECT_EQ(d, 7);
  EXPECT_EQ(mesh2D_getSortNodePosition(nullptr, nullptr), 2);
  double x[2], y[2];
  mesh2D_getSortNodePosition(x, y);
  const int32_t asked[] = {5, 2, -1};
  int32_t places[3] = {9, 9, 9};
  EXPECT_FALSE(mesh2D_getNodeIndex(asked, 3, places));
  EXPECT_EQ(places[2], 9);
  EXPECT_EQ(x[places[0]], 1);
  EXPECT_EQ(y[places[1]], 7);
  const int32_t pair[] = {5, 8};
  double positions[4];
  EXPECT_FALSE(mesh2D_getNodePosition(pair, 2, positions));
  EXPECT_EQ(positions[1], 2);
  EXPECT_TRUE(std::isnan(positions[3]));
  double distance;
  EXPECT_EQ(mesh2D_findNearestNodeID(3, -4, &distance), 5);  // node -1 is not visible
  mesh2D_setCurrentRange(50, 60, 50, 60);
  EXPECT_EQ(mesh2D_findNearestNodeID(0, 0, &distance), 0);
  EXPECT_DOUBLE_EQ(distance, std::sqrt(1.449459118e308));
}

// The answer of the linear scan, over meshes with ties, clusters, lines, huge offsets and values that are no numbers.
TEST_F(Mesh, NearestNodeIsThatOfTheScan) {
  std::mt19937 generator(8);
  std::uniform_real_distribution<double> unit(0, 1);
  for (int round = 0; round < 12; ++round) {
    EXPECT_FALSE(mesh2D_loadNode("", 0, 1));
    std::vector<double> xs, ys;
    for (int i = 0; i < 700; ++i) {
      double x = unit(generator), y = unit(generator);
      if (round % 4 == 1) x = std::floor(x * 12), y = std::floor(y * 12);
      if (round % 4 == 2) x = 1e9 + x * 1e-3, y = round > 6 ? 3 : y * 1e6;
      if (round % 4 == 3) x = std::exp(40 * x), y = -std::exp(300 * y);
      if (i % 97 == 5) x = std::nan("");
      if (i % 101 == 7) y = HUGE_VAL;
      xs.push_back(x), ys.push_back(y);
      mesh2D_addNode(i + 1, x, y);
    }
    mesh2D_initBuild();
    for (int query = 0; query < 300; ++query) {
      const std::size_t near = generator() % xs.size();
      const double wide = query % 3 == 0 ? 1 : query % 3 == 1 ? 1e-2 : 1e3;
      double x = xs[near] + wide * (unit(generator) - 0.5), y = ys[near] + wide * (unit(generator) - 0.5);
      if (round % 4 == 1 && query % 2 == 0) x = std::floor(x) + 0.5, y = std::floor(y);
      double best = 1.449459118e308;
      int32_t expected = 0;
      for (std::size_t i = 0; i < xs.size(); ++i) {
        double sum = std::pow(xs[i] - x, 2);
        if (!(sum < best)) continue;
        sum += std::pow(ys[i] - y, 2);
        if (!(sum < best)) continue;
        best = sum;
        expected = static_cast<int32_t>(i + 1);
      }
      double distance = -1;
      EXPECT_EQ(mesh2D_findNearestNodeID(x, y, &distance), expected) << round << " " << x << " " << y;
      EXPECT_EQ(distance, std::sqrt(best));
    }
  }
}

TEST_F(Mesh, SavedMeshComesBack) {
  EXPECT_FALSE(mesh2D_saveNode(pathOf("mesh_none").c_str()));
  for (int32_t i = 0; i < 450; ++i) mesh2D_addNode(3 * i - 40, i / 7.0, -1e300 / (i + 1));
  const int32_t corners[] = {-40, -37, -34};
  mesh2D_addElement(12, corners, 3);
  mesh2D_addElement(-3, corners + 1, 2);
  const std::string nodes = pathOf("mesh_nodes"), elements = pathOf("mesh_elements"), again = pathOf("mesh_again");
  ASSERT_TRUE(mesh2D_saveNode(nodes.c_str()));
  ASSERT_TRUE(mesh2D_saveElement(elements.c_str()));
  EXPECT_EQ(contentOf(elements), "ElementSize: 2\n-3, -37, -34\n12, -40, -37, -34\n");
  EXPECT_TRUE(contentOf(nodes).starts_with("NodeSize: 450\n-40, 0, -1.00000000000000005e+300\n"));
  char line[100];
  std::snprintf(line, sizeof line, "\n-37, %.18g, %.18g\n", 1 / 7.0, -1e300 / 2);
  EXPECT_NE(contentOf(nodes).find(line), std::string::npos);
  EXPECT_FALSE(mesh2D_saveNode((pathOf("mesh_no folder") + "/x").c_str()));
  EXPECT_FALSE(mesh2D_saveNode("/dev/full"));

  SetUp();
  ASSERT_TRUE(mesh2D_loadNode(nodes.c_str(), 1, 1000));
  EXPECT_EQ(mesh2D_getNodeSize(), 450);
  ASSERT_TRUE(mesh2D_saveNode(again.c_str()));
  EXPECT_EQ(contentOf(again), contentOf(nodes));
  EXPECT_FALSE(mesh2D_loadElement(elements.c_str(), 1, 2, 3));  // the first line has two nodes
  EXPECT_EQ(mesh2D_getNodeSize(), 0);
  ASSERT_TRUE(mesh2D_loadElement(elements.c_str(), 1, 2, 2));
  EXPECT_EQ(mesh2D_getElementSize(), 2);
}

TEST_F(Mesh, HostileLines) {
  const std::string path =
      written("hostile", "head\n1,2\n 7 , 1.5 ,\t-2e3x \r\n8,+3,0x10,surplus\n\nword,nan,inf\n999999999999,1,1\n" +
                             std::string(10 << 20, '9'));
  ASSERT_TRUE(mesh2D_loadNode(path.c_str(), 1, 100));
  double p[8];
  const int32_t ids[] = {7, 8, 0, 2147483647};
  ASSERT_TRUE(mesh2D_getNodePosition(ids, 4, p));
  EXPECT_EQ(p[0], 1.5);
  EXPECT_EQ(p[1], -2000);
  EXPECT_EQ(p[2], 3);
  EXPECT_EQ(p[3], 16);
  EXPECT_TRUE(std::isnan(p[4]));
  EXPECT_EQ(mesh2D_getNodeSize(), 4);

  SetUp();
  ASSERT_TRUE(mesh2D_loadNode(path.c_str(), 1, 2));  // the short line counts
  EXPECT_EQ(mesh2D_getNodeSize(), 1);
  EXPECT_FALSE(mesh2D_loadNode(path.c_str(), 1, 100));  // an id is there already: the mesh is empty
  EXPECT_EQ(mesh2D_getNodeSize(), 0);
  EXPECT_TRUE(mesh2D_loadNode(path.c_str(), 1000, 5));
  EXPECT_TRUE(mesh2D_loadNode(path.c_str(), -1, -1));
  EXPECT_FALSE(mesh2D_loadElement(path.c_str(), 1, 1, 2147483647));
  EXPECT_FALSE(mesh2D_loadNode(testing::TempDir().c_str(), 0, 5));
}

}  // namespace
