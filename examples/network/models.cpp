// SPDX-License-Identifier: Apache-2.0
#include "models.h"

#include <cmath>
#include <stdexcept>

#include "digits.h"

namespace {

constexpr int32_t kKernelSide = 3, kPoolSide = 2;
constexpr int32_t kConvolved = kSide - kKernelSide + 1;  // cells a side that a kernel leaves
constexpr int32_t kPooled = kConvolved / kPoolSide;

std::string times(int32_t a, int32_t b) { return std::to_string(a) + " × " + std::to_string(b); }

}  // namespace

Model::Model(std::string title, int32_t inputs, std::string inputName) : name(std::move(title)) {
  input = last = layer(inputs, ORVANE_LAYER_COPY, nullptr);
  boxes.push_back({std::move(inputName), std::to_string(inputs)});
}

NetLayer* Model::layer(int32_t size, uint8_t kind, NetLayer* from) {
  layers.emplace_back(api_CreateNetLayer(size, kind));
  if (from != nullptr) api_SetInput1ToNetLayer(layers.back().get(), from);
  return layers.back().get();
}

NetVar* Model::variable(int32_t rows, int32_t cols, double spread, std::mt19937& rng) {
  std::vector<double> values(static_cast<size_t>(rows) * cols);
  std::normal_distribution<double> normal;
  for (double& v : values) v = spread * normal(rng);
  vars.emplace_back(api_CreateNetVar(rows, cols));
  api_SetNetVarValue(vars.back().get(), values.data());
  return vars.back().get();
}

void Model::affine(int32_t outputs, std::mt19937& rng) {
  const int32_t inputs = api_GetNetLayerSize(last);
  last = layer(outputs, ORVANE_LAYER_W_DOT_X, last);
  api_SetVarToNetLayer(last, variable(outputs, inputs, 1 / std::sqrt(static_cast<double>(inputs)), rng));
  last = layer(outputs, ORVANE_LAYER_X_ADD_A, last);
  api_SetVarToNetLayer(last, variable(1, outputs, 0, rng));
  boxes.push_back({"W x + b", std::to_string(outputs)});
}

void Model::activation(uint8_t kind, const std::string& what) {
  hidden = last = layer(api_GetNetLayerSize(last), kind, last);
  boxes.push_back({what, boxes.back().size});
}

void Model::convolutions(int32_t kernels, std::mt19937& rng) {
  NetLayer* joined = layer(kernels * kPooled * kPooled, ORVANE_LAYER_ASSEMBLY, nullptr);
  for (int32_t k = 0; k < kernels; ++k) {
    NetLayer* window = layer(kConvolved * kConvolved, ORVANE_LAYER_CONVOLUTION, last);
    api_SetVarToNetLayer(window, variable(kKernelSide, kKernelSide, 1.0 / kKernelSide, rng));
    api_SetVar2ToNetLayer(window, variable(1, 1, 0, rng));
    api_SetLayerInputDim(window, kSide, kSide);
    api_SetLayerWindowDim(window, kKernelSide, kKernelSide);
    api_SetMoveDiff(window, 1, 1);
    NetLayer* pool = layer(kPooled * kPooled, ORVANE_LAYER_POOL_MAX, window);
    api_SetLayerInputDim(pool, kConvolved, kConvolved);
    api_SetLayerWindowDim(pool, kPoolSide, kPoolSide);
    api_SetMoveDiff(pool, kPoolSide, kPoolSide);
    api_AddAssemblyLayer(joined, pool);
  }
  last = joined;
  boxes.push_back({"convolutions 3 × 3", times(kernels, kConvolved * kConvolved)});
  boxes.push_back({"largest of 2 × 2", times(kernels, kPooled * kPooled)});
}

void Model::finish() {
  if (api_NetWorkInit(net.get(), input, last) != ORVANE_NETWORK_READY)
    throw std::logic_error("the graph of \"" + name + "\" does not fit together");
}

std::vector<double> Model::weights() const {
  std::vector<double> values(static_cast<size_t>(api_NetWorkGetVarSize(net.get())));
  api_NetWorkGetVar(net.get(), values.data());
  return values;
}

Model denseModel(int32_t hidden, std::mt19937& rng) {
  Model model("dense", kPixels, "picture");
  model.affine(hidden, rng);
  model.activation(ORVANE_LAYER_TANH, "tanh");
  model.affine(kClasses, rng);
  model.finish();
  return model;
}

Model convolutionModel(int32_t kernels, std::mt19937& rng) {
  Model model("convolution", kPixels, "picture");
  model.convolutions(kernels, rng);
  model.activation(ORVANE_LAYER_RELU, "joined, ReLU");
  model.affine(kClasses, rng);
  model.finish();
  return model;
}

Model judgeModel(int32_t members, std::mt19937& rng) {
  Model model("stack", members * kClasses, "joined outputs");
  model.affine(kClasses, rng);
  model.finish();
  return model;
}

Model shareModel() {
  Model model("shares", kClasses, "output");
  model.activation(ORVANE_LAYER_SOFT_MAX, "soft-max");
  model.finish();
  return model;
}
