// SPDX-License-Identifier: Apache-2.0
// What a training does with a network: passes over samples, shared variables, drop, the lock, the sign rules.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <thread>

#include "network/graph/wiring.h"
#include "network/layer_cases.h"
#include "network/native_network.h"

namespace {

/// in(2) -> w (2x2) -> tanh -> w again -> out, loss (y - t)^2/2.
struct Shared {
  Parts parts;
  NetVar* w = parts.var(2, 2, {0.5, -0.3, 0.8, 0.2});
  NetLayer* in = parts.layer(2, ORVANE_LAYER_COPY);
  NetLayer* first = parts.layer(2, ORVANE_LAYER_W_DOT_X, w, in);
  NetLayer* bent = parts.layer(2, ORVANE_LAYER_TANH, first);
  NetLayer* out = parts.layer(2, ORVANE_LAYER_W_DOT_X, w, bent);
  NetWork::NetWork_c& net = native(parts.net());

  Shared() {
    EXPECT_EQ(net.init(&native(in), &native(out)), ORVANE_NETWORK_READY);
    net.costGrad = [](std::span<const double> y, const double* t, std::span<double> delta) {
      for (std::size_t i = 0; i < y.size(); ++i) delta[i] = y[i] - t[i];
    };
  }
  Numbers gradient(const Numbers& x, const Numbers& t) {
    const double *row = x.data(), *target = t.data();
    net.clearGrad();
    EXPECT_TRUE(net.addGradients({&row, 1}, {&target, 1}));
    Numbers grad(net.varSize());
    net.getGrad(grad.data());
    return grad;
  }
};

/// tanh(w x) and w tanh(w x), and the gradient of |y - t|^2/2 by w through each use of w.
Numbers byHand(const Numbers& w, const Numbers& x, const Numbers& t, bool throughFirst) {
  const Numbers h{std::tanh(w[0] * x[0] + w[1] * x[1]), std::tanh(w[2] * x[0] + w[3] * x[1])};
  const Numbers d{w[0] * h[0] + w[1] * h[1] - t[0], w[2] * h[0] + w[3] * h[1] - t[1]};
  Numbers grad{d[0] * h[0], d[0] * h[1], d[1] * h[0], d[1] * h[1]};
  for (std::size_t i = 0; throughFirst && i < 2; ++i)
    for (std::size_t j = 0; j < 2; ++j) grad[2 * i + j] += (d[0] * w[i] + d[1] * w[2 + i]) * (1 - h[i] * h[i]) * x[j];
  return grad;
}

TEST(TrainingPass, GradientsOfASharedVariableAdd) {
  Shared s;
  const Numbers w{0.5, -0.3, 0.8, 0.2}, x{0.7, -1.1}, t{1, 2};
  const Numbers both = s.gradient(x, t), expected = byHand(w, x, t, true);
  for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR(both[i], expected[i], 1e-15);

  native(s.bent).back = 0;
  const Numbers last = s.gradient(x, t), expectedLast = byHand(w, x, t, false);
  for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR(last[i], expectedLast[i], 1e-15);

  // The same, by outputs.
  native(s.bent).back = 1;
  Numbers y(2), jacobian(8);
  ASSERT_TRUE(s.net.varJacobian(x.data(), y.data(), jacobian.data()));
  for (std::size_t i = 0; i < 4; ++i)
    EXPECT_NEAR((y[0] - 1) * jacobian[i] + (y[1] - 2) * jacobian[4 + i], expected[i], 1e-15);
}

TEST(TrainingPass, DropActsOnlyInTraining) {
  Parts parts;
  constexpr std::size_t n = 40;
  NetLayer* in = parts.layer(n, ORVANE_LAYER_COPY);
  NetVar* a = parts.var(1, n, Numbers(n, 1));
  NetLayer* scaled = parts.layer(n, ORVANE_LAYER_X_MUL_A, a, in);
  NetWork::NetWork_c& net = native(parts.net());
  ASSERT_EQ(net.init(&native(in), &native(scaled)), ORVANE_NETWORK_READY);
  NetWork::NetLayer_s& layer = native(scaled);
  layer.dropCount = 15;
  for (int32_t i = 0; i < static_cast<int32_t>(n); ++i) layer.dropIndex.push_back(i);
  static int zeros;
  net.costGrad = [](std::span<const double> y, const double*, std::span<double> delta) {
    zeros += static_cast<int>(std::ranges::count(y, 0.0));
    std::ranges::fill(delta, 1.0);
  };
  const Numbers x(n, 3);
  const std::vector<const double*> rows(10, x.data());
  Numbers grad(n), y(n);
  for (const bool training : {false, true}) {
    zeros = 0;
    net.setTraining(training);
    net.clearGrad();
    ASSERT_TRUE(net.addGradients(rows, rows));
    net.getGrad(grad.data());
    EXPECT_EQ(zeros, training ? 150 : 0);
    // Every sample drops 15 places of its own: nothing of them reaches the variable.
    EXPECT_EQ(std::accumulate(grad.begin(), grad.end(), 0.0), 3.0 * (training ? 250 : 400));
    EXPECT_EQ(*std::ranges::max_element(grad) > *std::ranges::min_element(grad), training);
    EXPECT_NE(net.runWork(x.data(), y.data()), training);
  }
  EXPECT_TRUE(net.predict(x.data(), y.data()));
  EXPECT_EQ(y, x);
}

TEST(TrainingPass, PredictionsOfAnotherThreadWaitOrAreRefused) {
  Shared s;
  const Numbers x{0.7, -1.1}, t{1, 2};
  Numbers expected(2);
  ASSERT_TRUE(s.net.runWork(x.data(), expected.data()));
  std::atomic<bool> done = false;
  std::atomic<int> served = 0;
  std::thread host([&] {
    Numbers y(2);
    while (!done)
      if (s.net.runWork(x.data(), y.data())) {
        ++served;
        EXPECT_EQ(y, expected);
      }
  });
  const std::vector<const double*> rows(100, x.data()), targets(100, t.data());
  Numbers values(200);
  for (int i = 0; i < 200; ++i) {
    s.net.setTraining(true);
    s.net.addGradients(rows, targets);
    s.net.setTraining(false);
    s.net.predict(rows, values.data());
  }
  while (served == 0) std::this_thread::yield();
  done = true;
  host.join();
  for (std::size_t i = 0; i < values.size(); ++i) EXPECT_EQ(values[i], expected[i % 2]);
}

TEST(TrainingPass, SignRules) {
  const Numbers start{-1, -2e-8, -1e-9, 0, 1e-9, 2e-8, 1};
  const std::pair<int, Numbers> rules[] = {{ORVANE_SIGN_FREE, start},
                                           {ORVANE_SIGN_POSITIVE, {0.001, 0.001, 0.001, 0.001, 0.001, 2e-8, 1}},
                                           {ORVANE_SIGN_NOT_NEGATIVE, {0, 0, -1e-9, 0, 1e-9, 2e-8, 1}},
                                           {ORVANE_SIGN_NEGATIVE, {-1, -2e-8, -0.001, -0.001, -0.001, -0.001, -0.001}},
                                           {ORVANE_SIGN_NOT_POSITIVE, {-1, -2e-8, -1e-9, 0, 1e-9, 0, 0}},
                                           {ORVANE_SIGN_NOT_ZERO, {-1, -2e-8, -0.001, -0.001, 0.001, 2e-8, 1}},
                                           {77, start}};
  for (const auto& [rule, expected] : rules) {
    Parts parts;
    NetVar* var = parts.var(1, 7, start);
    api_SetVarFlag(var, static_cast<uint8_t>(rule));
    native(var).applySignRule();
    Numbers values(7);
    api_GetNetVarValue(var, values.data());
    EXPECT_EQ(values, expected) << rule;
  }
}

TEST(TrainingPass, LayersAreWrittenAndReadBack) {
  using namespace NetWork;
  NetVar_s a(1, 1), b(1, 1);
  const auto in = makeLayer(4, ORVANE_LAYER_COPY), part = makeLayer(1, ORVANE_LAYER_GET_PART);
  const auto pool = makeLayer(1, ORVANE_LAYER_CONVOLUTION), join = makeLayer(2, ORVANE_LAYER_ASSEMBLY);
  const auto form = makeLayer(1, ORVANE_LAYER_QUADRATIC);
  const std::vector<NetVar_s*> vars{&a, &b};
  const std::vector<NetLayer_s*> layers{in.get(), part.get(), pool.get(), join.get(), form.get()};
  part->name = "a part";
  part->input1 = in.get(), part->input2 = join.get(), part->var2 = &b, part->back = 0, part->dropCount = 3;
  static_cast<NetPartLayer_s&>(*part).startIndex = 2;
  auto& window = static_cast<NetPoolLayer_s&>(*pool);
  window.startIndex = 1, window.inputRow = 2, window.inputCol = 3, window.windowRow = 4, window.windowCol = 5;
  window.moveRow = 6, window.moveCol = 7;
  static_cast<NetAssemblyLayer_s&>(*join).layers = {part.get(), in.get()};
  static_cast<NetMulVarLayer_s&>(*form).vars = {&b, &a, &b};
  const VarIndex varIndex{{&a, 0}, {&b, 1}};
  LayerIndex layerIndex;
  for (const NetLayer_s* layer : layers) layerIndex.emplace(layer, static_cast<int32_t>(layerIndex.size()));

  const auto bytes = [&](const NetLayer_s& layer) {
    DataStream stream;
    layer.write(stream, varIndex, layerIndex);
    return stream.bytes;
  };
  for (const NetLayer_s* layer : layers) {
    DataStream stream;
    stream.bytes = bytes(*layer);
    const auto copy = makeLayer(static_cast<int32_t>(layer->size()), layer->kind);
    copy->read(stream, vars, layers);
    EXPECT_FALSE(stream.bad());
    EXPECT_EQ(stream.left(), 0u);
    EXPECT_EQ(copy->name, layer->name);
    EXPECT_EQ(copy->inputs(), layer->inputs());
    EXPECT_EQ(copy->variables(), layer->variables());
    EXPECT_EQ(bytes(*copy), stream.bytes);
    for (std::size_t cut = 0; cut < stream.bytes.size(); ++cut) {
      DataStream damaged;
      damaged.bytes.assign(stream.bytes.begin(), stream.bytes.begin() + static_cast<std::ptrdiff_t>(cut));
      copy->read(damaged, vars, layers);
      EXPECT_TRUE(damaged.bad()) << cut;
    }
    DataStream strange;  // indices that do not exist
    strange.bytes = bytes(*layer);
    copy->read(strange, {}, {});
    EXPECT_EQ(strange.bad(), !layer->inputs().empty() || !layer->variables().empty());
  }
}

}  // namespace
