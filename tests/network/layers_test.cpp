// SPDX-License-Identifier: Apache-2.0
// Every kind of layer against tests/reference/network/layers.csv, and what a training does with layers.
#include <algorithm>
#include <atomic>
#include <numeric>
#include <set>
#include <thread>

#include "network/graph/wiring.h"
#include "network/layer_cases.h"
#include "network/layers/kind_table.h"
#include "network/native_network.h"
#include "network/train/stepper_table.h"

namespace {

/// Gradients by the trainable numbers, added up over the rows. The target of a row is the gradient itself.
Numbers gradients(NetGraph* handle, const std::vector<Numbers>& rows, const Numbers& cotangent) {
  NetWork::NetWork_c& net = native(handle);
  net.costGrad = [](std::span<const double> y, const double* target, std::span<double> delta) {
    std::copy_n(target, y.size(), delta.data());
  };
  std::vector<const double*> in, targets(rows.size(), cotangent.data());
  for (const Numbers& row : rows) in.push_back(row.data());
  net.clearGrad();
  EXPECT_TRUE(net.addGradients(in, targets));
  Numbers sum(net.varSize());
  net.getGrad(sum.data());
  return sum;
}

/// cotangent' J for the entries of x.
Numbers gradientByInput(CaseGraph& graph, const Numbers& cotangent) {
  const std::size_t m = graph.x.size();
  Numbers jacobian(cotangent.size() * m), sums(m);
  api_NetWorkGetDiffValue(graph.net, jacobian.data());
  for (std::size_t k = 0; k < jacobian.size(); ++k)
    if (jacobian[k] != 0) sums[k % m] += cotangent[k / m] * jacobian[k];
  return sums;
}

bool alike(double a, double b, double size) {
  return a == b || (std::isnan(a) && std::isnan(b)) || std::abs(a - b) <= 1e-13 * size;
}

/// A block of samples gives the bits of each alone, and the sum of their gradients.
void checkBlock(CaseGraph& graph, const Numbers& cotangent, const std::string& what) {
  std::vector<Numbers> rows(7, graph.x);
  std::vector<const double*> in;
  for (std::size_t s = 0; s < rows.size(); ++s) {
    for (double& v : rows[s]) v *= 1 - 0.015625 * static_cast<double>(s);
    in.push_back(rows[s].data());
  }
  const std::size_t n = cotangent.size();
  Numbers together(rows.size() * n), sum(native(graph.net).varSize()), size(sum.size());
  ASSERT_TRUE(native(graph.net).predict(in, together.data()));
  for (std::size_t s = 0; s < rows.size(); ++s) {
    const Numbers alone = predict(graph.net, rows[s]), grad = gradients(graph.net, {rows[s]}, cotangent);
    for (std::size_t i = 0; i < n; ++i) EXPECT_TRUE(alike(together[s * n + i], alone[i], 0)) << what << " sample " << s;
    for (std::size_t k = 0; k < sum.size(); ++k) sum[k] += grad[k], size[k] += std::abs(grad[k]);
  }
  const Numbers grad = gradients(graph.net, rows, cotangent);
  for (std::size_t k = 0; k < sum.size(); ++k)
    EXPECT_TRUE(alike(grad[k], sum[k], size[k])) << what << " variable " << k << ": " << grad[k] << " " << sum[k];
}

/// Checks the numbers of `all` list by list.
void checkLists(const Numbers& all, const std::vector<Expected>& expected, const std::string& what, double times = 1) {
  std::size_t at = 0;
  for (const Expected& list : expected) {
    list.check(std::span(all).subspan(at, list.values.size()), what, times);
    at += list.values.size();
  }
}

TEST(Layers, ValuesAndGradientsOfEveryKind) {
  std::set<int> seen{ORVANE_LAYER_POOL_STOCHASTIC};  // has a test of its own
  for (const LayerCase& c : LayerCase::all()) {
    seen.insert(c.kind);
    CaseGraph graph(c);
    ASSERT_EQ(graph.result, ORVANE_NETWORK_READY) << c.text();
    Numbers cotangent = c.cotangent;
    const Numbers y = predict(graph.net, graph.x);
    cotangent.resize(y.size());
    checkLists(y, c.expected[0], c.text());
    checkLists(gradientByInput(graph, cotangent), c.expected[1], c.text() + " by input");
    checkLists(gradients(graph.net, {graph.x, graph.x, graph.x}, cotangent), c.expected[2], c.text() + " by variable",
               3);
    EXPECT_EQ(NetWork::findKind(c.kind)->name, c.name);
    checkBlock(graph, cotangent, c.text());
  }
  for (int code = 0; code < 256; ++code)
    EXPECT_EQ(seen.contains(code), NetWork::findKind(code) != nullptr) << "kind " << code;
}

/// in(2) -> w (2x2) -> tanh -> w again; tanh(w x) and w tanh(w x) by hand, and the gradient of d.y by w.
TEST(TrainingPass, GradientsOfASharedVariableAdd) {
  Host host;
  const Numbers w{0.5, -0.3, 0.8, 0.2}, x{0.7, -1.1}, d{1, -2};
  NetVar* shared = host.var(2, 2, w);
  NetLayer* in = host.layer(2, ORVANE_LAYER_COPY);
  NetLayer* bent = host.layer(2, ORVANE_LAYER_TANH, host.layer(2, ORVANE_LAYER_W_DOT_X, shared, in));
  NetGraph* net = host.network(in, host.layer(2, ORVANE_LAYER_W_DOT_X, shared, bent));
  const Numbers h{std::tanh(w[0] * x[0] + w[1] * x[1]), std::tanh(w[2] * x[0] + w[3] * x[1])};
  for (const bool through : {false, true}) {  // a layer with back 0 lets nothing pass
    native(bent).back = through;
    const Numbers got = gradients(net, {x}, d);
    Numbers y(2), jacobian(8);
    ASSERT_TRUE(native(net).varJacobian(x.data(), y.data(), jacobian.data()));
    for (std::size_t i = 0; i < 2; ++i)
      for (std::size_t j = 0; j < 2; ++j) {
        const double first = (d[0] * w[i] + d[1] * w[2 + i]) * (1 - h[i] * h[i]) * x[j];
        const double expected = d[i] * h[j] + (through ? first : 0);
        EXPECT_NEAR(got[2 * i + j], expected, 1e-15);
        EXPECT_NEAR(d[0] * jacobian[2 * i + j] + d[1] * jacobian[4 + 2 * i + j], expected, 1e-15);
      }
  }
}

TEST(TrainingPass, DropActsOnlyInTraining) {
  Host host;
  constexpr std::size_t n = 40;
  NetLayer* in = host.layer(n, ORVANE_LAYER_COPY);
  NetLayer* scaled = host.layer(n, ORVANE_LAYER_X_MUL_A, host.var(1, n, Numbers(n, 1)), in);
  NetGraph* net = host.network(in, scaled);
  native(scaled).dropCount = 15;
  native(scaled).dropIndex.resize(n);
  std::iota(native(scaled).dropIndex.begin(), native(scaled).dropIndex.end(), 0);
  const Numbers x(n, 3);
  Numbers y(n);
  for (const bool training : {false, true}) {
    native(net).setTraining(training);
    // Every sample drops 15 places of its own: nothing of them reaches the variable.
    const Numbers grad = gradients(net, std::vector<Numbers>(10, x), Numbers(n, 1));
    EXPECT_EQ(std::accumulate(grad.begin(), grad.end(), 0.0), 3.0 * (training ? 250 : 400));
    EXPECT_EQ(*std::ranges::max_element(grad) > *std::ranges::min_element(grad), training);
    EXPECT_NE(api_RunWork(net, x.data(), y.data()), training);
  }
  EXPECT_TRUE(native(net).predict(x.data(), y.data()));
  EXPECT_EQ(y, x);
}

TEST(TrainingPass, PredictionsOfAnotherThreadWaitOrAreRefused) {
  Host host;
  NetGraph* net = host.tanhNet({2, 5, 2});
  const Numbers x{0.7, -1.1}, expected = predict(net, x);
  std::atomic<bool> done = false;
  std::atomic<int> served = 0;
  std::thread other([&] {
    Numbers y(2);
    while (!done)
      if (api_RunWork(net, x.data(), y.data())) {
        ++served;
        EXPECT_EQ(y, expected);
      }
  });
  for (int i = 0; i < 200; ++i) {
    native(net).setTraining(true);
    gradients(net, std::vector<Numbers>(100, x), x);
    native(net).setTraining(false);
  }
  while (served == 0) std::this_thread::yield();
  done = true;
  other.join();
}

TEST(Streams, LayersAndStepRules) {
  using namespace NetWork;
  NetVar_s a(1, 1), b(1, 1);
  std::vector<std::unique_ptr<NetLayer_s>> made;
  const int kinds[] = {ORVANE_LAYER_COPY, ORVANE_LAYER_GET_PART, ORVANE_LAYER_CONVOLUTION, ORVANE_LAYER_ASSEMBLY,
                       ORVANE_LAYER_QUADRATIC};
  std::vector<NetLayer_s*> layers;
  LayerIndex layerIndex;
  for (const int kind : kinds) {
    made.push_back(makeLayer(2, static_cast<uint8_t>(kind)));
    layerIndex.emplace(made.back().get(), static_cast<int32_t>(layers.size()));
    layers.push_back(made.back().get());
  }
  NetLayer_s& part = *layers[1];
  part.name = "a part";
  part.input1 = layers[0], part.input2 = layers[3], part.var2 = &b, part.back = 0, part.dropCount = 3;
  static_cast<NetPartLayer_s&>(part).startIndex = 2;
  auto& window = static_cast<NetPoolLayer_s&>(*layers[2]);
  window.startIndex = 1, window.inputRow = 2, window.inputCol = 3, window.windowRow = 4, window.windowCol = 5;
  window.moveRow = 6, window.moveCol = 7;
  static_cast<NetAssemblyLayer_s&>(*layers[3]).layers = {layers[1], layers[0]};
  static_cast<NetMulVarLayer_s&>(*layers[4]).vars = {&b, &a, &b};
  const VarIndex varIndex{{&a, 0}, {&b, 1}};
  const std::vector<NetVar_s*> vars{&a, &b};
  for (const NetLayer_s* layer : layers) {
    DataStream stream, strange;
    layer->write(stream, varIndex, layerIndex);
    const auto copy = makeLayer(2, layer->kind);
    copy->read(stream, vars, layers);
    EXPECT_EQ(copy->name, layer->name);
    EXPECT_EQ(copy->inputs(), layer->inputs());
    EXPECT_EQ(copy->variables(), layer->variables());
    copy->write(strange, varIndex, layerIndex);
    EXPECT_EQ(strange.bytes, stream.bytes);
    for (std::size_t cut = 0; cut < stream.bytes.size(); ++cut) {
      DataStream damaged;
      damaged.bytes.assign(stream.bytes.begin(), stream.bytes.begin() + static_cast<std::ptrdiff_t>(cut));
      copy->read(damaged, vars, layers);
      EXPECT_TRUE(damaged.bad()) << cut;
    }
    copy->read(strange, {}, {});  // indices that do not exist
    EXPECT_EQ(strange.bad(), !layer->inputs().empty() || !layer->variables().empty());
  }

  const int codes[] = {60, 60, 28, 24, 34, 26, 27, 25, 23, 29, 30, 31, 32, 33, 63, 66, 67, 68};
  for (int kind = 0; kind <= 17; ++kind) {
    const auto rule = makeStepper(kind);
    EXPECT_EQ(rule->typeCode, codes[kind]);
    EXPECT_EQ(rule->needVar, kind == 15 || kind == 16);
    // The state goes through a stream: what was read makes the steps of what was written.
    Numbers g{0.5, -2, 1e-3}, w{1, 2, 3};
    rule->init(3), rule->vars = w.data(), rule->step(g);
    DataStream stream;
    rule->write(stream);
    const auto copy = makeStepper(kind);
    copy->read(stream), copy->vars = w.data();
    EXPECT_TRUE(!stream.bad() && stream.left() == 0) << kind;
    Numbers first{0.25, 1, 1}, second = first;
    rule->step(first), copy->step(second);
    EXPECT_EQ(first, second) << kind;
    DataStream cut;
    rule->write(cut);
    cut.bytes.pop_back();
    copy->read(cut);
    EXPECT_TRUE(cut.bad()) << kind;
  }
}

}  // namespace
