// SPDX-License-Identifier: Apache-2.0
// Every kind of layer against tests/reference/network/layers.csv.
#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "network/layer_cases.h"
#include "network/layers/kind_table.h"
#include "network/native_network.h"

namespace {

NetWork::NetWork_c& trained(CaseGraph& graph) {
  NetWork::NetWork_c& net = native(graph.net);
  // The target of a sample is the gradient itself.
  net.costGrad = [](std::span<const double> y, const double* target, std::span<double> delta) {
    std::copy_n(target, y.size(), delta.data());
  };
  return net;
}

Numbers predict(CaseGraph& graph, const Numbers& x) {
  Numbers y(static_cast<std::size_t>(api_GetOutputSize(graph.net)));
  EXPECT_TRUE(api_RunWork(graph.net, x.data(), y.data()));
  return y;
}

Numbers gradients(CaseGraph& graph, const std::vector<Numbers>& rows, const Numbers& cotangent) {
  NetWork::NetWork_c& net = trained(graph);
  std::vector<const double*> in, targets(rows.size(), cotangent.data());
  for (const Numbers& row : rows) in.push_back(row.data());
  net.clearGrad();
  EXPECT_TRUE(net.addGradients(in, targets));
  Numbers flat(net.varSize());
  net.getGrad(flat.data());
  return flat;
}

/// cotangent' J for the entries of x.
Numbers gradientByInput(CaseGraph& graph, const Numbers& cotangent) {
  const std::size_t m = graph.x.size(), n = static_cast<std::size_t>(api_GetOutputSize(graph.net));
  Numbers jacobian(n * m), sums(m);
  api_NetWorkGetDiffValue(graph.net, jacobian.data());
  for (std::size_t o = 0; o < cotangent.size(); ++o)
    for (std::size_t i = 0; i < m; ++i)
      if (jacobian[o * m + i] != 0) sums[i] += cotangent[o] * jacobian[o * m + i];
  return sums;
}

bool alike(double a, double b, double size) {
  return a == b || (std::isnan(a) && std::isnan(b)) || std::abs(a - b) <= 1e-13 * size;
}

/// A block of samples gives the bits of each alone, and the sum of their gradients.
void checkBlock(CaseGraph& graph, const Numbers& cotangent, const std::string& what) {
  std::vector<Numbers> rows;
  for (int s = 0; s < 7; ++s) {
    rows.push_back(graph.x);
    for (double& v : rows.back()) v *= 1 - 0.015625 * s;
  }
  std::vector<const double*> in;
  for (const Numbers& row : rows) in.push_back(row.data());
  const std::size_t n = static_cast<std::size_t>(api_GetOutputSize(graph.net));
  Numbers together(rows.size() * n);
  ASSERT_TRUE(native(graph.net).predict(in, together.data()));
  Numbers sum(native(graph.net).varSize()), size(sum.size());
  for (std::size_t s = 0; s < rows.size(); ++s) {
    const Numbers alone = predict(graph, rows[s]), grad = gradients(graph, {rows[s]}, cotangent);
    for (std::size_t i = 0; i < n; ++i) EXPECT_TRUE(alike(together[s * n + i], alone[i], 0)) << what << " sample " << s;
    for (std::size_t k = 0; k < sum.size(); ++k) sum[k] += grad[k], size[k] += std::abs(grad[k]);
  }
  const Numbers grad = gradients(graph, rows, cotangent);
  for (std::size_t k = 0; k < sum.size(); ++k)
    EXPECT_TRUE(alike(grad[k], sum[k], size[k])) << what << " variable " << k << ": " << grad[k] << " " << sum[k];
}

TEST(Layers, ValuesAndGradientsOfEveryKind) {
  std::set<int> seen{ORVANE_LAYER_POOL_STOCHASTIC};  // has a test of its own
  for (const LayerCase& c : layerCases()) {
    seen.insert(c.kind);
    CaseGraph graph(c);
    ASSERT_EQ(graph.result, ORVANE_NETWORK_READY) << c.text();
    Numbers cotangent = c.cotangent, y = predict(graph, graph.x);
    cotangent.resize(y.size());
    y.resize(static_cast<std::size_t>(c.size));
    c.values.check(y, c.text());

    const Numbers byX = gradientByInput(graph, cotangent);
    auto at = byX.begin();
    for (std::size_t k = 0; k < c.inputs.size(); ++k) {
      const auto end = at + static_cast<std::ptrdiff_t>(c.inputs[k].size());
      c.byInput[k].check(Numbers(at, end), c.text() + " by input");
      at = end;
    }
    const Numbers flat = gradients(graph, {graph.x, graph.x, graph.x}, cotangent);
    auto from = flat.begin();
    for (std::size_t k = 0; k < c.vars.size(); ++k) {
      const auto end = from + static_cast<std::ptrdiff_t>(c.vars[k].values.size());
      c.byVar[k].check(Numbers(from, end), c.text() + " by variable", 3);
      from = end;
    }
    EXPECT_EQ(NetWork::findKind(c.kind)->name, c.name);
    checkBlock(graph, cotangent, c.text());
  }
  for (int code = 0; code < 256; ++code)
    EXPECT_EQ(seen.contains(code), NetWork::findKind(code) != nullptr) << "kind " << code;
}

}  // namespace
