// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <mutex>
#include <random>
#include <span>
#include <string>
#include <vector>

#include "frame/base_data.h"
#include "network/graph/net_layer.h"

namespace NetWork {

/// Writes the gradient of the loss by the output: delta, given the output and the target of one sample.
using CostGrad = void (*)(std::span<const double> output, const double* target, std::span<double> delta);

/// Rows of samples, each at its own place.
using SampleRows = std::span<const double* const>;

/// A graph of layers with one input and one output.
///
/// Passes over many samples take as many at once as stay in the cache. Passes exclude each other by a lock, so that a
/// host's prediction on another thread waits for a block of samples, not for a training.
class NetWork_c final : public BaseData {
 public:
  NetWork_c() { typeCode = 21; }

  int32_t init(NetLayer_s* in, NetLayer_s* out);
  /// Whether init has succeeded and no layer was rewired since. Every pass tests it and does nothing without.
  bool usable() const;
  std::size_t inputSize() const { return input == nullptr ? 0 : input->size(); }
  std::size_t outputSize() const { return output == nullptr ? 0 : output->size(); }

  /// One row; refused while training.
  bool runWork(const double* in, double* out);
  /// The same without that refusal, for those who train.
  bool predict(const double* in, double* out);
  /// Many rows, results one after another.
  bool predict(SampleRows in, double* out);
  /// Derivative of the output by the input at the input's activations, one row an output.
  bool inputJacobian(double* out);

  /// For the owner of a training. While it is on, addGradients drops entries and runWork is refused.
  void setTraining(bool on);
  bool isTraining() const;
  /// Forward, costGrad and backward of samples; their gradients add up in `grad` of the variables, fixed ones too.
  bool addGradients(SampleRows in, SampleRows targets);
  /// One row without drop: its output, and the derivative of the output by the trainable numbers, one row an output.
  bool varJacobian(const double* in, double* out, double* jacobian);
  /// Samples that one block holds; a good step between two looks at a stop flag.
  std::size_t blockSamples() const { return room; }

  /// The trainable numbers as one row: variable after variable of `vars`, row after row, fixed ones left out.
  std::size_t varSize() const;
  void getVar(double* out) const;
  void setVar(const double* in);
  void getGrad(double* out) const;
  void clearGrad();
  /// After every step of a training.
  void applySignRule();
  void randValue(double scale);

  /// For people; a file that cannot be written is ignored.
  void exportInfo(const char* path) const;

  uint8_t ready = 0;
  CostGrad costGrad = nullptr;
  NetLayer_s* input = nullptr;
  NetLayer_s* output = nullptr;
  std::vector<NetVar_s*> vars;      ///< in the order of first use
  std::vector<NetLayer_s*> layers;  ///< in the order of computation, without the input
  std::mt19937* rng = nullptr;      ///< of the training that owns the network, or null

 private:
  int32_t collectLayers();
  void collectVars();
  int32_t testLayers();

  void planBlock();
  bool bindOne();
  void bindBlock(std::size_t samples);
  void forward(bool drop);
  void backward();
  bool predictOne(const double* in, double* out);
  void clearDelta();

  std::vector<uint32_t> testedEdits;  ///< of `layers`, at init
  std::size_t room = 1;
  std::vector<double> block;  ///< y of all layers for `room` samples, then dy
  mutable std::mutex passes;
  uint8_t training = 0;  ///< under `passes`
};

}  // namespace NetWork
