// SPDX-License-Identifier: Apache-2.0
// Networks as a host builds them.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <random>

#include "network/layer_cases.h"

namespace {

Numbers run(NetGraph* net, const Numbers& x) {
  Numbers y(static_cast<std::size_t>(api_GetOutputSize(net)));
  EXPECT_TRUE(api_RunWork(net, x.data(), y.data()));
  return y;
}

Numbers flat(NetGraph* net) {
  Numbers all(static_cast<std::size_t>(api_NetWorkGetVarSize(net)));
  api_NetWorkGetVar(net, all.data());
  return all;
}

/// 2-3-2 with tanh, every number fixed by hand; the bias of the first layer is not trained.
struct Small {
  Parts parts;
  NetVar* w1 = parts.var(3, 2, {0.5, -1, 2, 0.25, -0.75, 1.5});
  NetVar* b1 = parts.var(1, 3, {0.1, -0.2, 0.3});
  NetVar* w2 = parts.var(2, 3, {1, -2, 0.5, 0.125, 3, -1});
  NetLayer* in = parts.layer(2, ORVANE_LAYER_COPY);
  NetLayer* sum = parts.layer(3, ORVANE_LAYER_W_DOT_X, w1, in);
  NetLayer* bias = parts.layer(3, ORVANE_LAYER_X_ADD_A, b1, sum);
  NetLayer* bent = parts.layer(3, ORVANE_LAYER_TANH, bias);
  NetLayer* out = parts.layer(2, ORVANE_LAYER_W_DOT_X, w2, bent);
  NetGraph* net = parts.net();
  Small() {
    api_SetNetVarFixed(b1, 1);
    EXPECT_EQ(api_NetWorkInit(net, in, out), ORVANE_NETWORK_READY);
  }
};

TEST(Graph, RefusesWhatIsNoNetwork) {
  Parts parts;
  NetGraph* net = parts.net();
  NetLayer* in = parts.layer(3, ORVANE_LAYER_COPY);
  const auto init = [&](NetLayer* out) { return api_NetWorkInit(net, in, out); };
  double number = 7;
  EXPECT_FALSE(api_RunWork(net, &number, &number));
  api_NetWorkGetDiffValue(net, &number);
  api_NetRandValue(net, 1);
  EXPECT_EQ(number, 7);
  EXPECT_EQ(api_GetInputSize(net) + api_GetOutputSize(net) + api_NetWorkGetVarSize(net), 0);
  EXPECT_EQ(init(in), ORVANE_NETWORK_NO_ENDS);
  EXPECT_EQ(init(nullptr), ORVANE_NETWORK_NO_ENDS);
  EXPECT_EQ(api_NetWorkInit(net, nullptr, in), ORVANE_NETWORK_NO_ENDS);
  for (const int size : {0, -1, -2147483647}) {
    NetLayer* empty = parts.layer(0, ORVANE_LAYER_COPY, in);
    NetLayer* negative = parts.layer(static_cast<std::size_t>(size), ORVANE_LAYER_COPY, in);
    EXPECT_EQ(init(empty), ORVANE_NETWORK_NO_VALUE);
    EXPECT_EQ(init(negative), ORVANE_NETWORK_NO_VALUE) << size;
  }
  EXPECT_EQ(init(parts.layer(3, 250, in)), ORVANE_NETWORK_NO_KIND);
  EXPECT_EQ(init(parts.layer(3, ORVANE_LAYER_SIN, parts.layer(3, ORVANE_LAYER_SIN))), ORVANE_NETWORK_NOT_REACHED);

  // A ring on the way, and one beside it that the output reads as well.
  NetLayer* a = parts.layer(3, ORVANE_LAYER_X1_ADD_X2, in);
  NetLayer* b = parts.layer(3, ORVANE_LAYER_SIN, a);
  api_SetInput2ToNetLayer(a, b);
  EXPECT_EQ(init(b), ORVANE_NETWORK_CYCLE);
  NetLayer* self = parts.layer(3, ORVANE_LAYER_SIN);
  api_SetInput1ToNetLayer(self, self);
  EXPECT_EQ(init(parts.layer(3, ORVANE_LAYER_X1_ADD_X2, in, self)), ORVANE_NETWORK_CYCLE);
  EXPECT_FALSE(api_RunWork(net, &number, &number));

  // A window that grows after the network was ready.
  NetLayer* median = parts.layer(2, ORVANE_LAYER_POOL_MEDIAN, in);
  api_SetLayerInputDim(median, 1, 3);
  api_SetLayerWindowDim(median, 1, 2);
  api_SetMoveDiff(median, 1, 1);
  EXPECT_EQ(init(median), ORVANE_NETWORK_READY);
  api_SetLayerWindowDim(median, 1, 3);
  EXPECT_EQ(init(median), ORVANE_NETWORK_WINDOW_SIZE);
}

TEST(Graph, DeepGraphsAndLayersUsedTwice) {
  Parts parts;
  NetLayer* in = parts.layer(1, ORVANE_LAYER_COPY);
  NetLayer* square = parts.layer(1, ORVANE_LAYER_X1_MUL_X2, in, in);
  NetLayer* sum = parts.layer(1, ORVANE_LAYER_X1_ADD_X2, square, in);
  NetLayer* deep = parts.layer(1, ORVANE_LAYER_X1_MUL_X2, sum, square);  // x^4 + x^3
  for (int i = 0; i < 20000; ++i) deep = parts.layer(1, ORVANE_LAYER_COPY, deep);
  NetGraph* net = parts.net();
  ASSERT_EQ(api_NetWorkInit(net, in, deep), ORVANE_NETWORK_READY);
  EXPECT_EQ(run(net, {3}), Numbers{108});
  double slope = 0;
  api_NetWorkGetDiffValue(net, &slope);
  EXPECT_EQ(slope, 4 * 27 + 3 * 9);
}

TEST(Graph, VariablesAreOneRowWithoutTheFixedOnes) {
  Small a, b;
  EXPECT_EQ(flat(a.net), (Numbers{0.5, -1, 2, 0.25, -0.75, 1.5, 1, -2, 0.5, 0.125, 3, -1}));
  EXPECT_EQ(api_GetNetVarRowNum(a.w1), 3);
  EXPECT_EQ(api_GetNetVarColNum(a.w1), 2);
  api_NetRandValue(a.net, 1);
  EXPECT_NE(run(a.net, {0.3, -0.7}), run(b.net, {0.3, -0.7}));
  api_NetWorkSetVar(b.net, flat(a.net).data());
  EXPECT_EQ(run(a.net, {0.3, -0.7}), run(b.net, {0.3, -0.7}));

  Numbers y = run(a.net, {0.3, -0.7}), layer(2), middle(3);
  api_GetNetLayerValue(a.out, layer.data());
  EXPECT_EQ(layer, y);
  EXPECT_EQ(api_GetNetLayerSize(a.bent), 3);
  api_GetNetLayerValue(a.bent, middle.data());
  EXPECT_NEAR(middle[0], std::tanh(flat(a.net)[0] * 0.3 + flat(a.net)[1] * -0.7 + 0.1), 1e-15);

  api_SetNetVarFixed(b.b1, 0);
  EXPECT_EQ(api_NetWorkGetVarSize(b.net), 15);
  api_SetNetVarV(b.b1, 2);
  Numbers bias(3);
  api_GetNetVarValue(b.b1, bias.data());
  EXPECT_EQ(bias, Numbers(3, 2));
  EXPECT_EQ(flat(b.net)[6], 2);
}

// KEPT rows Var_seed and Part_end
TEST(Graph, OddThingsThatStay) {
  Parts parts;
  Numbers first(6), second(6), third(6);
  NetVar *a = nullptr, *b = nullptr;
  for (bool oneSecond = false; !oneSecond;) {
    const auto now = std::time(nullptr);
    a = parts.var(2, 3), b = parts.var(2, 3);
    oneSecond = now == std::time(nullptr);
    std::mt19937 rng(static_cast<uint32_t>(now));
    for (double& v : third) {
      const double low = static_cast<double>(rng()), high = static_cast<double>(rng());
      v = (low + high * 4294967296.0) / 18446744073709551616.0;
    }
  }
  api_GetNetVarValue(a, first.data());
  api_GetNetVarValue(b, second.data());
  EXPECT_EQ(first, second);
  EXPECT_EQ(first, third);

  NetLayer* in = parts.layer(4, ORVANE_LAYER_COPY);
  NetLayer* last = parts.layer(2, ORVANE_LAYER_GET_PART, in);
  api_SetLayerIndex(last, 2);
  EXPECT_EQ(api_NetWorkInit(parts.net(), in, last), ORVANE_NETWORK_WIRING);
  api_SetLayerIndex(last, 1);
  EXPECT_EQ(api_NetWorkInit(parts.net(), in, last), ORVANE_NETWORK_READY);
}

TEST(Graph, RandomStart) {
  for (const double scale : {3.0, 0.5, 0.0, -4.0, std::nan("")}) {
    Small small;
    api_SetVarFlag(small.w1, ORVANE_SIGN_NEGATIVE);
    api_SetVarFlag(small.b1, ORVANE_SIGN_POSITIVE);
    api_SetNetVarFixed(small.b1, 0);
    api_NetRandValue(small.net, scale);
    const double s = scale > 0.1 ? scale : 0.1, limit = s * std::sqrt(6.0 / 5);
    std::mt19937 rng(5489);
    Numbers draws(15), free;
    double largest = 1;
    for (double& r : draws) {
      const double low = static_cast<double>(rng()), high = static_cast<double>(rng());
      largest = std::max(largest, r = s * (low + high * 4294967296.0) / 18446744073709551616.0);
    }
    const Numbers values = flat(small.net);
    for (std::size_t i = 0; i < 9; ++i)
      EXPECT_DOUBLE_EQ(values[i], (i < 6 ? -1 : 1) * (draws[i] + 1e-12) / largest) << scale;
    const auto [low, high] = std::minmax_element(values.begin() + 9, values.end());
    EXPECT_LT(*low, 0);
    EXPECT_GT(*high, 0);
    EXPECT_TRUE(*low >= -limit && *high<limit&& * high - *low> limit / 2) << scale << " " << *low << " " << *high;
  }
}

TEST(Graph, JacobianAndLayersWithoutBackward) {
  Small small;
  const Numbers x{0.3, -0.7}, y = run(small.net, x);
  Numbers jacobian(4);
  api_NetWorkGetDiffValue(small.net, jacobian.data());
  const double h = 1e-6;
  for (std::size_t i = 0; i < 2; ++i) {
    Numbers up = x, down = x;
    up[i] += h, down[i] -= h;
    const Numbers above = run(small.net, up), below = run(small.net, down);
    for (std::size_t o = 0; o < 2; ++o) EXPECT_NEAR(jacobian[o * 2 + i], (above[o] - below[o]) / (2 * h), 1e-8);
  }
  api_SetNetLayerValue(small.in, x.data());
  Numbers again(4);
  api_NetWorkGetDiffValue(small.net, again.data());
  EXPECT_EQ(again, jacobian);
}

TEST(Graph, NewWiringNeedsANewTest) {
  Small small;
  const Numbers x{0.3, -0.7}, before = run(small.net, x);
  NetLayer* copy = small.parts.layer(3, ORVANE_LAYER_COPY, small.bias);
  api_SetInput1ToNetLayer(small.out, copy);
  Numbers y(2, 5), jacobian(4, 5);
  EXPECT_FALSE(api_RunWork(small.net, x.data(), y.data()));
  api_NetWorkGetDiffValue(small.net, jacobian.data());
  EXPECT_EQ(y, Numbers(2, 5));
  EXPECT_EQ(jacobian, Numbers(4, 5));
  ASSERT_EQ(api_NetWorkInit(small.net, small.in, small.out), ORVANE_NETWORK_READY);
  EXPECT_NE(run(small.net, x), before);
  api_SetInput1ToNetLayer(small.out, small.bent);
  ASSERT_EQ(api_NetWorkInit(small.net, small.in, small.out), ORVANE_NETWORK_READY);
  EXPECT_EQ(run(small.net, x), before);
}

TEST(Graph, SettersLeaveOtherLayersAlone) {
  Parts parts;
  NetLayer* in = parts.layer(2, ORVANE_LAYER_COPY);
  NetLayer* plain = parts.layer(2, ORVANE_LAYER_SIN, in);
  EXPECT_FALSE(api_SetLayerInputDim(plain, 1, 1) || api_SetLayerWindowDim(plain, 1, 1) || api_SetMoveDiff(plain, 1, 1));
  api_SetLayerIndex(plain, 7);
  api_AddVarToNetLayer(plain, parts.var(1, 1));
  api_AddAssemblyLayer(plain, in);
  api_AddAssemblyLayer(parts.layer(2, ORVANE_LAYER_ASSEMBLY), nullptr);
  api_AddVarToNetLayer(parts.layer(2, ORVANE_LAYER_QUADRATIC), nullptr);
  NetGraph* net = parts.net();
  ASSERT_EQ(api_NetWorkInit(net, in, plain), ORVANE_NETWORK_READY);
  EXPECT_DOUBLE_EQ(run(net, {1, 2})[1], std::sin(2.0));
}

TEST(Graph, VectorsWithoutScale) {
  for (const int kind : {ORVANE_LAYER_ZSCORE_NORM, ORVANE_LAYER_LINE_NORM, ORVANE_LAYER_LAYER_NORM,
                         ORVANE_LAYER_SQRT_NORM, ORVANE_LAYER_SQUARED_NORM}) {
    Parts parts;
    NetLayer* in = parts.layer(3, ORVANE_LAYER_COPY);
    NetGraph* net = parts.net();
    ASSERT_EQ(api_NetWorkInit(net, in, parts.layer(3, kind, in)), ORVANE_NETWORK_READY);
    EXPECT_EQ(run(net, {0, 0, 0}), Numbers(3, 0)) << kind;
    Numbers jacobian(9);
    api_NetWorkGetDiffValue(net, jacobian.data());
    for (const double v : jacobian) EXPECT_TRUE(std::isfinite(v)) << kind;
    // Without a scale only the shift is left: by the mean, or by the first entry.
    EXPECT_DOUBLE_EQ(jacobian[0], kind == ORVANE_LAYER_ZSCORE_NORM  ? 2.0 / 3
                                  : kind == ORVANE_LAYER_LAYER_NORM ? 1e6 * 2 / 3
                                                                    : 0);
  }
}

TEST(Graph, StochasticPoolTakesEveryCellAlike) {
  Parts parts;
  NetLayer* in = parts.layer(4, ORVANE_LAYER_COPY);
  NetLayer* pool = parts.layer(1, ORVANE_LAYER_POOL_STOCHASTIC, in);
  api_SetLayerInputDim(pool, 2, 2);
  api_SetLayerWindowDim(pool, 2, 2);
  api_SetMoveDiff(pool, 1, 1);
  NetGraph* net = parts.net();
  ASSERT_EQ(api_NetWorkInit(net, in, pool), ORVANE_NETWORK_READY);
  Numbers jacobian(4), counts(4);
  for (int i = 0; i < 4000; ++i) {
    api_NetWorkGetDiffValue(net, jacobian.data());
    const auto cell = std::find(jacobian.begin(), jacobian.end(), 1.0);
    ASSERT_NE(cell, jacobian.end());
    ASSERT_EQ(std::count(jacobian.begin(), jacobian.end(), 0.0), 3);
    ++counts[static_cast<std::size_t>(cell - jacobian.begin())];
    const double y = run(net, {10, 11, 12, 13})[0];
    ASSERT_TRUE(y >= 10 && y <= 13 && y == std::floor(y));
  }
  for (const double n : counts) EXPECT_NEAR(n, 1000, 5 * std::sqrt(750.0));  // five deviations
}

std::string exported(NetGraph* net) {
  const std::string path = testing::TempDir() + "orvane_network.txt";
  api_NetExportInfo(net, path.c_str());
  std::ifstream file(path, std::ios::binary);
  const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  file.close();
  std::remove(path.c_str());
  return text;
}

TEST(Graph, TextForPeople) {
  Small small;
  const std::string rule = "\n-------------------\n\n";
  // KEPT row Var_names
  EXPECT_EQ(exported(small.net),
            "Layer : layer1\nType  : Input\nSize  : 2" + rule +
                "Layer : layer2\nType  : W_dot_x\nSize  : 3\nInputLayer :layer1\nInputVar :layer1\n" + rule +
                "Layer : layer3\nType  : x_add_a\nSize  : 3\nInputLayer :layer2\nInputVar :layer2\n" + rule +
                "Layer : layer4\nType  : Tanh\nSize  : 3\nInputLayer :layer3\n" + rule +
                "Layer : layer5\nType  : W_dot_x\nSize  : 2\nInputLayer :layer4\nInputVar :layer3\n" + rule +
                "Var   :layer1\nSize  :3x2\nValue = [0.5, -1\n2, 0.25\n-0.75, 1.5\n]\n\n"
                "Var   :layer2\nSize  :1x3\nValue = [0.1, -0.2, 0.3\n]\n\n"
                "Var   :layer3\nSize  :2x3\nValue = [1, -2, 0.5\n0.125, 3, -1\n]\n\n");
  api_NetExportInfo(small.net, "/no/such/folder/network.txt");
  api_NetExportInfo(small.net, "");
  api_NetExportInfo(small.net, nullptr);
  EXPECT_EQ(exported(small.parts.net()), "");
}

TEST(Graph, TextOfListsWindowsAndPairs) {
  Parts parts;
  NetLayer* in = parts.layer(4, ORVANE_LAYER_COPY);
  NetLayer* conv = parts.layer(2, ORVANE_LAYER_CONVOLUTION, parts.var(2, 1, {1, 2}), in);
  api_SetVar2ToNetLayer(conv, parts.var(1, 1, {0.5}));
  api_SetLayerInputDim(conv, 2, 2);
  api_SetLayerWindowDim(conv, 2, 1);
  api_SetMoveDiff(conv, 3, 1);
  NetLayer* form = parts.layer(1, ORVANE_LAYER_QUADRATIC, conv);
  api_AddVarToNetLayer(form, parts.var(2, 2, {1, 0, 0, 1}));
  NetLayer* join = parts.layer(3, ORVANE_LAYER_ASSEMBLY);
  api_AddAssemblyLayer(join, conv);
  api_AddAssemblyLayer(join, form);
  NetGraph* net = parts.net();
  ASSERT_EQ(api_NetWorkInit(net, in, parts.layer(3, ORVANE_LAYER_X1_MUL_X2, join, form)), ORVANE_NETWORK_READY);
  const std::string text = exported(net), rule = "\n-------------------\n\n";
  EXPECT_EQ(
      text.substr(text.find(rule) + rule.size(), text.find("Var   :") - text.find(rule) - rule.size()),
      "Layer : layer2\nType  : Convolution\nSize  : 2\nInputLayer :layer1\nInputVar1 : layer1\nInputVar2 : layer2\n"
      "StartIndex : 0\nMoveCol    : 1\nMoveRow    : 3\nWindowCol  : 1\nWindowRow  : 2\n" +
          rule + "Layer : layer3\nType  : Quadratic\nSize  : 1\nInputLayer :layer2\n\nInputVar0  :layer3" + rule +
          "Layer : layer4\nType  : Assembly\nSize  : 3\n\nInputLayer0  :layer2\nInputLayer1  :layer3" + rule +
          "Layer : layer5\nType  : x1_mul_x2\nSize  : 3\nInputLayer1 : layer4\nInputLayer2 : layer3\n" + rule);
  EXPECT_NE(text.find("Size  :1x1\nValue = [0.5\n]\n\n"), std::string::npos);
}

}  // namespace
