// SPDX-License-Identifier: Apache-2.0
// Networks as a host builds them.
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <random>
#include <string>

#include "network/host.h"

namespace {

/// 2-3-2 with tanh, every number fixed by hand; the bias of the first layer is not trained.
struct Small {
  Host host;
  NetVar* w1 = host.var(3, 2, {0.5, -1, 2, 0.25, -0.75, 1.5});
  NetVar* b1 = host.var(1, 3, {0.1, -0.2, 0.3});
  NetVar* w2 = host.var(2, 3, {1, -2, 0.5, 0.125, 3, -1});
  NetLayer* in = host.layer(2, ORVANE_LAYER_COPY);
  NetLayer* bias = host.layer(3, ORVANE_LAYER_X_ADD_A, b1, host.layer(3, ORVANE_LAYER_W_DOT_X, w1, in));
  NetLayer* bent = host.layer(3, ORVANE_LAYER_TANH, bias);
  NetLayer* out = host.layer(2, ORVANE_LAYER_W_DOT_X, w2, bent);
  NetGraph* net = host.network(in, out);
  Small() { api_SetNetVarFixed(b1, 1); }
};

/// Uniform on [0, 1) by two words of the generator.
double draw(std::mt19937& rng) {
  const double low = static_cast<double>(rng()), high = static_cast<double>(rng());
  return (low + high * 0x1p32) * 0x1p-64;
}

TEST(Graph, RefusesWhatIsNoNetwork) {
  Host host;
  NetGraph* net = host.own(api_CreateNetWork());
  NetLayer* in = host.layer(3, ORVANE_LAYER_COPY);
  double number = 7;
  EXPECT_FALSE(api_RunWork(net, &number, &number));
  api_NetWorkGetDiffValue(net, &number);
  api_NetRandValue(net, 1);
  EXPECT_EQ(number, 7);
  EXPECT_EQ(api_GetInputSize(net) + api_GetOutputSize(net) + api_NetWorkGetVarSize(net), 0);
  EXPECT_EQ(api_NetWorkInit(net, nullptr, in), ORVANE_NETWORK_NO_ENDS);

  NetLayer* ring = host.layer(3, ORVANE_LAYER_X1_ADD_X2, in);
  NetLayer* closed = host.layer(3, ORVANE_LAYER_SIN, ring);
  api_SetInput2ToNetLayer(ring, closed);
  NetLayer* self = host.layer(3, ORVANE_LAYER_SIN);
  api_SetInput1ToNetLayer(self, self);
  const std::pair<NetLayer*, int32_t> cases[] = {
      {in, ORVANE_NETWORK_NO_ENDS},
      {nullptr, ORVANE_NETWORK_NO_ENDS},
      {host.layer(0, ORVANE_LAYER_COPY, in), ORVANE_NETWORK_NO_VALUE},
      {host.layer(-2147483647, ORVANE_LAYER_COPY, in), ORVANE_NETWORK_NO_VALUE},
      {host.layer(3, 250, in), ORVANE_NETWORK_NO_KIND},
      {host.layer(3, ORVANE_LAYER_SIN, host.layer(3, ORVANE_LAYER_SIN)), ORVANE_NETWORK_NOT_REACHED},
      {closed, ORVANE_NETWORK_CYCLE},
      {host.layer(3, ORVANE_LAYER_X1_ADD_X2, in, self), ORVANE_NETWORK_CYCLE}};
  for (const auto& [out, code] : cases) {
    EXPECT_EQ(api_NetWorkInit(net, in, out), code);
    EXPECT_FALSE(api_RunWork(net, &number, &number));
  }
  // A window that grows after the network was ready.
  NetLayer* median = host.window(2, ORVANE_LAYER_POOL_MEDIAN, in, 1, 3, 1, 2);
  EXPECT_EQ(api_NetWorkInit(net, in, median), ORVANE_NETWORK_READY);
  api_SetLayerWindowDim(median, 1, 3);
  EXPECT_EQ(api_NetWorkInit(net, in, median), ORVANE_NETWORK_WINDOW_SIZE);

  // Functions for other layers leave a layer alone.
  NetLayer* plain = host.layer(3, ORVANE_LAYER_SIN, in);
  EXPECT_FALSE(api_SetLayerInputDim(plain, 1, 1) || api_SetLayerWindowDim(plain, 1, 1) || api_SetMoveDiff(plain, 1, 1));
  api_SetLayerIndex(plain, 7);
  api_AddVarToNetLayer(plain, host.var(1, 1));
  api_AddAssemblyLayer(plain, in);
  api_AddAssemblyLayer(host.layer(2, ORVANE_LAYER_ASSEMBLY), nullptr);
  api_AddVarToNetLayer(host.layer(2, ORVANE_LAYER_QUADRATIC), nullptr);
  EXPECT_DOUBLE_EQ(predict(host.network(in, plain), {1, 2, 3})[1], std::sin(2.0));
  // Factors that overflow only together.
  EXPECT_EQ(predict(host.network(in, host.layer(3, ORVANE_LAYER_GELU, in)), {-1.7e308, 0, 0}), Numbers(3, 0));
}

TEST(Graph, DeepGraphsAndLayersUsedTwice) {
  Host host;
  NetLayer* in = host.layer(1, ORVANE_LAYER_COPY);
  NetLayer* square = host.layer(1, ORVANE_LAYER_X1_MUL_X2, in, in);
  NetLayer* sum = host.layer(1, ORVANE_LAYER_X1_ADD_X2, square, in);
  NetLayer* deep = host.layer(1, ORVANE_LAYER_X1_MUL_X2, sum, square);  // x^4 + x^3
  for (int i = 0; i < 20000; ++i) deep = host.layer(1, ORVANE_LAYER_COPY, deep);
  NetGraph* net = host.network(in, deep);
  EXPECT_EQ(predict(net, {3}), Numbers{108});
  double slope = 0;
  api_NetWorkGetDiffValue(net, &slope);
  EXPECT_EQ(slope, 4 * 27 + 3 * 9);
}

TEST(Graph, VariablesAreOneRowWithoutTheFixedOnes) {
  Small a, b;
  const Numbers x{0.3, -0.7};
  EXPECT_EQ(flat(a.net), (Numbers{0.5, -1, 2, 0.25, -0.75, 1.5, 1, -2, 0.5, 0.125, 3, -1}));
  EXPECT_EQ(api_GetNetVarRowNum(a.w1), 3);
  EXPECT_EQ(api_GetNetVarColNum(a.w1), 2);
  api_NetRandValue(a.net, 1);
  EXPECT_NE(predict(a.net, x), predict(b.net, x));
  api_NetWorkSetVar(b.net, flat(a.net).data());
  EXPECT_EQ(predict(a.net, x), predict(b.net, x));

  Numbers layer(2), middle(3), bias(3);
  api_GetNetLayerValue(a.out, layer.data());
  EXPECT_EQ(layer, predict(a.net, x));
  EXPECT_EQ(api_GetNetLayerSize(a.bent), 3);
  api_GetNetLayerValue(a.bent, middle.data());
  EXPECT_NEAR(middle[0], std::tanh(flat(a.net)[0] * 0.3 + flat(a.net)[1] * -0.7 + 0.1), 1e-15);
  api_SetNetVarFixed(b.b1, 0);
  EXPECT_EQ(api_NetWorkGetVarSize(b.net), 15);
  api_SetNetVarV(b.b1, 2);
  api_GetNetVarValue(b.b1, bias.data());
  EXPECT_EQ(bias, Numbers(3, 2));
  EXPECT_EQ(flat(b.net)[6], 2);
}

TEST(Graph, RandomNumbers) {
  // KEPT row Var_seed: variables of one second begin with the same numbers.
  Host host;
  Numbers first(6), second(6), expected(6);
  for (bool oneSecond = false; !oneSecond;) {
    const auto now = std::time(nullptr);
    NetVar *a = host.var(2, 3), *b = host.var(2, 3);
    oneSecond = now == std::time(nullptr);
    std::mt19937 rng(static_cast<uint32_t>(now));
    for (double& v : expected) v = draw(rng);
    api_GetNetVarValue(a, first.data());
    api_GetNetVarValue(b, second.data());
  }
  EXPECT_EQ(first, second);
  EXPECT_EQ(first, expected);

  for (const double scale : {3.0, 0.5, 0.0, -4.0, std::nan("")}) {
    Small small;
    api_SetVarFlag(small.w1, ORVANE_SIGN_NEGATIVE);
    api_SetVarFlag(small.b1, ORVANE_SIGN_POSITIVE);
    api_SetNetVarFixed(small.b1, 0);
    api_NetRandValue(small.net, scale);
    const double s = scale > 0.1 ? scale : 0.1, limit = s * std::sqrt(6.0 / 5);
    std::mt19937 rng(5489);
    Numbers draws(15);
    for (double& r : draws) r = s * draw(rng);
    const double largest = std::max(1.0, *std::ranges::max_element(draws));
    const Numbers values = flat(small.net);
    for (std::size_t i = 0; i < 9; ++i)
      EXPECT_DOUBLE_EQ(values[i], (i < 6 ? -1 : 1) * (draws[i] + 1e-12) / largest) << scale;
    for (std::size_t i = 9; i < 15; ++i) EXPECT_DOUBLE_EQ(values[i], limit * (2 * draw(rng) - 1)) << scale;
  }
}

TEST(Graph, JacobianByDifferences) {
  Small small;
  const Numbers x{0.3, -0.7}, y = predict(small.net, x);
  Numbers jacobian(4);
  api_SetNetLayerValue(small.in, Numbers{5, 5}.data());
  api_SetNetLayerValue(small.in, x.data());
  api_NetWorkGetDiffValue(small.net, jacobian.data());
  for (std::size_t i = 0; i < 2; ++i) {
    Numbers up = x, down = x;
    up[i] += 1e-6, down[i] -= 1e-6;
    const Numbers above = predict(small.net, up), below = predict(small.net, down);
    for (std::size_t o = 0; o < 2; ++o) EXPECT_NEAR(jacobian[o * 2 + i], (above[o] - below[o]) / 2e-6, 1e-8);
  }
}

TEST(Graph, NewWiringNeedsANewTest) {
  Small small;
  const Numbers x{0.3, -0.7}, before = predict(small.net, x);
  api_SetInput1ToNetLayer(small.out, small.host.layer(3, ORVANE_LAYER_COPY, small.bias));
  Numbers y(2, 5), jacobian(4, 5);
  EXPECT_FALSE(api_RunWork(small.net, x.data(), y.data()));
  api_NetWorkGetDiffValue(small.net, jacobian.data());
  EXPECT_EQ(y, Numbers(2, 5));
  EXPECT_EQ(jacobian, Numbers(4, 5));
  ASSERT_EQ(api_NetWorkInit(small.net, small.in, small.out), ORVANE_NETWORK_READY);
  EXPECT_NE(predict(small.net, x), before);
  api_SetInput1ToNetLayer(small.out, small.bent);
  ASSERT_EQ(api_NetWorkInit(small.net, small.in, small.out), ORVANE_NETWORK_READY);
  EXPECT_EQ(predict(small.net, x), before);
}

TEST(Graph, VectorsWithoutScale) {
  for (const int kind : {ORVANE_LAYER_ZSCORE_NORM, ORVANE_LAYER_LINE_NORM, ORVANE_LAYER_LAYER_NORM,
                         ORVANE_LAYER_SQRT_NORM, ORVANE_LAYER_SQUARED_NORM}) {
    Host host;
    NetLayer* in = host.layer(3, ORVANE_LAYER_COPY);
    NetGraph* net = host.network(in, host.layer(3, kind, in));
    EXPECT_EQ(predict(net, {0, 0, 0}), Numbers(3, 0)) << kind;
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
  Host host;
  NetLayer* in = host.layer(4, ORVANE_LAYER_COPY);
  NetGraph* net = host.network(in, host.window(1, ORVANE_LAYER_POOL_STOCHASTIC, in, 2, 2, 2, 2));
  Numbers jacobian(4), counts(4);
  for (int i = 0; i < 4000; ++i) {
    api_NetWorkGetDiffValue(net, jacobian.data());
    const auto cell = std::find(jacobian.begin(), jacobian.end(), 1.0);
    ASSERT_NE(cell, jacobian.end());
    ASSERT_EQ(std::count(jacobian.begin(), jacobian.end(), 0.0), 3);
    ++counts[static_cast<std::size_t>(cell - jacobian.begin())];
    const double y = predict(net, {10, 11, 12, 13})[0];
    ASSERT_TRUE(y >= 10 && y <= 13 && y == std::floor(y));
  }
  for (const double n : counts) EXPECT_NEAR(n, 1000, 5 * std::sqrt(750.0));  // five deviations
}

std::string exported(NetGraph* net) {
  const std::string path = testing::TempDir() + "orvane_network.txt";
  api_NetExportInfo(net, path.c_str());
  std::ifstream file(path, std::ios::binary);
  const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  std::remove(path.c_str());
  return text;
}

TEST(Graph, TextForPeople) {
  Host host;
  NetLayer* in = host.layer(4, ORVANE_LAYER_COPY);
  NetLayer* conv = host.window(2, ORVANE_LAYER_CONVOLUTION, in, 2, 2, 2, 1, 3);
  api_SetVarToNetLayer(conv, host.var(2, 1, {1, 0.1}));
  api_SetVar2ToNetLayer(conv, host.var(1, 1, {0.5}));
  NetLayer* form = host.layer(1, ORVANE_LAYER_QUADRATIC, conv);
  api_AddVarToNetLayer(form, host.var(2, 2, {1, 0, -2.5, 1}));
  NetLayer* join = host.layer(3, ORVANE_LAYER_ASSEMBLY);
  api_AddAssemblyLayer(join, conv);
  api_AddAssemblyLayer(join, form);
  NetLayer* product = host.layer(3, ORVANE_LAYER_X1_MUL_X2, join, form);
  NetGraph* net = host.network(in, host.layer(3, ORVANE_LAYER_X_ADD_A, host.var(1, 3, {1, 2, 3}), product));
  const std::string rule = "\n-------------------\n\n";
  // KEPT row Var_names
  EXPECT_EQ(exported(net),
            "Layer : layer1\nType  : Input\nSize  : 4" + rule +
                "Layer : layer2\nType  : Convolution\nSize  : 2\nInputLayer :layer1\nInputVar1 : layer1\n"
                "InputVar2 : layer2\nStartIndex : 0\nMoveCol    : 1\nMoveRow    : 3\nWindowCol  : 1\nWindowRow  : 2\n" +
                rule + "Layer : layer3\nType  : Quadratic\nSize  : 1\nInputLayer :layer2\n\nInputVar0  :layer3" + rule +
                "Layer : layer4\nType  : Assembly\nSize  : 3\n\nInputLayer0  :layer2\nInputLayer1  :layer3" + rule +
                "Layer : layer5\nType  : x1_mul_x2\nSize  : 3\nInputLayer1 : layer4\nInputLayer2 : layer3\n" + rule +
                "Layer : layer6\nType  : x_add_a\nSize  : 3\nInputLayer :layer5\nInputVar :layer4\n" + rule +
                "Var   :layer1\nSize  :2x1\nValue = [1\n0.1\n]\n\nVar   :layer2\nSize  :1x1\nValue = [0.5\n]\n\n"
                "Var   :layer3\nSize  :2x2\nValue = [1, 0\n-2.5, 1\n]\n\n"
                "Var   :layer4\nSize  :1x3\nValue = [1, 2, 3\n]\n\n");
  for (const char* path : {"/no/such/folder/network.txt", "", static_cast<const char*>(nullptr)})
    api_NetExportInfo(net, path);
  EXPECT_EQ(exported(host.own(api_CreateNetWork())), "");
}

}  // namespace
