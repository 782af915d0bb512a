// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <span>
#include <string>
#include <vector>

#include "frame/base_data.h"
#include "frame/data_stream.h"
#include "network/graph/net_var.h"

namespace NetWork {

struct NetLayer_s;

/// Forward writes y of all samples of the pass. Backward adds to dy of the inputs and to grad of the variables.
using LayerFun = void (*)(NetLayer_s& layer);

using VarIndex = std::map<const NetVar_s*, int32_t>;
using LayerIndex = std::map<const NetLayer_s*, int32_t>;

/// A vector of activations and what they are computed from.
struct NetLayer_s : BaseData {
  NetLayer_s(int32_t size, uint8_t kind);

  /// Everything but kind and size, which a reader needs beforehand to make the layer. Variables and layers are written
  /// as their index, a missing one as -1.
  virtual void write(DataStream& stream, const VarIndex& varIndex, const LayerIndex& layerIndex) const;
  /// An index that `vars` or `layers` does not have makes the stream bad.
  virtual void read(DataStream& stream, std::span<NetVar_s* const> vars, std::span<NetLayer_s* const> layers);

  std::size_t size() const { return value.size(); }
  /// Everything that the layer reads from: input1, input2 and the members of its list.
  std::vector<NetLayer_s*> inputs() const;
  /// var1, var2 and the members of its list.
  std::vector<NetVar_s*> variables() const;
  /// To be called when the wiring changes: networks that have tested this layer must test it again.
  void rewired() { ++edits; }

  std::string name;
  uint8_t kind;
  uint8_t back = 1;  ///< 0: backward is skipped, no gradient passes
  LayerFun forward = nullptr;
  LayerFun backward = nullptr;
  NetVar_s* var1 = nullptr;
  NetVar_s* var2 = nullptr;
  NetLayer_s* input1 = nullptr;
  NetLayer_s* input2 = nullptr;
  int32_t dropCount = 0;           ///< entries that a training pass sets to 0
  std::vector<int32_t> dropIndex;  ///< places among which they are chosen
  std::vector<double> value;       ///< activations of one sample
  std::vector<double> delta;       ///< gradient by them

  // What a pass works on: `samples` vectors of the layer's size one after another. For one sample these are value and
  // delta, for several they lie in the block of the network.
  int32_t samples = 1;
  double* y = nullptr;
  double* dy = nullptr;
  bool wantsDelta = true;            ///< false: nobody reads dy, functions with costly terms may leave them out
  std::vector<std::size_t> dropped;  ///< places of y that the last pass has set to 0
  uint32_t edits = 0;
};

/// Reads or writes a part of another vector, from startIndex on.
struct NetPartLayer_s final : NetLayer_s {
  NetPartLayer_s(int32_t size, uint8_t kind) : NetLayer_s(size, kind) { typeCode = 17; }
  void write(DataStream& stream, const VarIndex& varIndex, const LayerIndex& layerIndex) const override;
  void read(DataStream& stream, std::span<NetVar_s* const> vars, std::span<NetLayer_s* const> layers) override;

  int32_t startIndex = 0;
};

/// A window that moves over the grid of inputRow by inputCol cells that begins at startIndex of the input.
struct NetPoolLayer_s final : NetLayer_s {
  struct Cell {
    double value;
    int32_t index;
  };

  NetPoolLayer_s(int32_t size, uint8_t kind) : NetLayer_s(size, kind) { typeCode = 18; }
  void write(DataStream& stream, const VarIndex& varIndex, const LayerIndex& layerIndex) const override;
  void read(DataStream& stream, std::span<NetVar_s* const> vars, std::span<NetLayer_s* const> layers) override;

  int32_t startIndex = 0;
  int32_t inputRow = 0, inputCol = 0, windowRow = 0, windowCol = 0, moveRow = 0, moveCol = 0;
  std::vector<int32_t> poolIndex;                  ///< [size] cell of the input that an output was taken from
  std::vector<std::unique_ptr<Cell>> windowCells;  ///< [windowRow*windowCol] the window, for kinds that order it
  std::unique_ptr<std::mt19937> rng;               ///< PoolStochastic only

  std::vector<int32_t> blockIndex;  ///< poolIndex of a block of samples
  int32_t* chosen = nullptr;        ///< [samples*size] of the pass: one of the two
};

/// Joins other layers.
struct NetAssemblyLayer_s final : NetLayer_s {
  NetAssemblyLayer_s(int32_t size, uint8_t kind) : NetLayer_s(size, kind) { typeCode = 19; }
  void write(DataStream& stream, const VarIndex& varIndex, const LayerIndex& layerIndex) const override;
  void read(DataStream& stream, std::span<NetVar_s* const> vars, std::span<NetLayer_s* const> layers) override;

  std::vector<NetLayer_s*> layers;
};

/// Has more variables than two.
struct NetMulVarLayer_s final : NetLayer_s {
  NetMulVarLayer_s(int32_t size, uint8_t kind) : NetLayer_s(size, kind) { typeCode = 20; }
  void write(DataStream& stream, const VarIndex& varIndex, const LayerIndex& layerIndex) const override;
  void read(DataStream& stream, std::span<NetVar_s* const> vars, std::span<NetLayer_s* const> layers) override;

  std::vector<NetVar_s*> vars;
};

}  // namespace NetWork
