// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <orvane/action.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "handle.h"

/// A layer, or a few alike, in the drawing of a network.
struct Box {
  std::string what, size;
};

/// A network with the layers and variables that it is made of, which it does not own itself.
class Model {
  // Before the network, which goes first.
  std::vector<Owned<NetVar>> vars;
  std::vector<Owned<NetLayer>> layers;

 public:
  Model(std::string title, int32_t inputs, std::string inputName);

  std::string name;
  std::vector<Box> boxes;
  Owned<NetGraph> net{api_CreateNetWork()};

  /// W x + b on the last layer, with weights of mean 0 and a spread that keeps the size of the numbers.
  void affine(int32_t outputs, std::mt19937& rng);
  /// An activation of every number of the last layer; `hidden` is the last one of them.
  void activation(uint8_t kind, const std::string& what);
  NetLayer* hidden = nullptr;
  /// `kernels` convolutions of 3 by 3 cells over the picture, each followed by the largest of every 2 by 2 cells.
  void convolutions(int32_t kernels, std::mt19937& rng);
  /// Hands the graph to the network. Nothing else may be added.
  void finish();

  std::vector<double> weights() const;
  void setWeights(const std::vector<double>& values) { api_NetWorkSetVar(net.get(), values.data()); }

 private:
  NetLayer* layer(int32_t size, uint8_t kind, NetLayer* from);
  NetVar* variable(int32_t rows, int32_t cols, double spread, std::mt19937& rng);

  NetLayer *input, *last;
};

/// One hidden layer of tanh.
Model denseModel(int32_t hidden, std::mt19937& rng);
/// Convolutions and pools, then one layer.
Model convolutionModel(int32_t kernels, std::mt19937& rng);
/// Makes ten numbers out of the joined outputs of `members` networks.
Model judgeModel(int32_t members, std::mt19937& rng);
/// Ten numbers to ten shares.
Model shareModel();
