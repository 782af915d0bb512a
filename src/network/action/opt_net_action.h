// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>

#include "network/action/mode_table.h"
#include "network/action/net_action.h"
#include "network/train/net_optimizer.h"

namespace Action {

/// A network with its optimiser.
class OptNetAction_c : public NetSetAction_c {
 public:
  explicit OptNetAction_c(uint16_t code = 300) : NetSetAction_c(code) { typeCode = 4; }

  int32_t check(RowSizes sizes) override;
  void predict(std::span<const double> in, std::span<double> out) override { NetAction_c::predict(in, out); }
  std::size_t inputSize() const override { return NetAction_c::inputSize(); }
  std::size_t outputSize() const override { return NetAction_c::outputSize(); }

  virtual void requestStop();
  /// False where something is missing. A stop that came before holds: clearStop begins a run.
  virtual bool optimize(const NetWork::DataSets& data);
  virtual void bindSet(OptNetSet_c* driver) { set = driver; }
  virtual void setPreDot(uint8_t byte);
  virtual void clearStop();

  bool isStopped() const { return stop.load() != 0; }

  std::atomic<uint8_t> stop = 0;
  NetWork::NetOptimizer_c* optimizer = nullptr;  ///< not owned
  OptNetSet_c* set = nullptr;                    ///< whose run this is
};

/// Several of them, trained as the mode says.
class OptNetSetAction_c final : public OptNetAction_c {
 public:
  explicit OptNetSetAction_c(uint16_t code) : OptNetAction_c(code), train(modeRow(code).train) { typeCode = 5; }

  void addMember(OptNetAction_c* member);

  int32_t check(RowSizes sizes) override;
  void predict(std::span<const double> in, std::span<double> out) override { NetSetAction_c::predict(in, out); }
  std::size_t inputSize() const override { return NetSetAction_c::inputSize(); }
  std::size_t outputSize() const override { return NetSetAction_c::outputSize(); }

  void requestStop() override;
  bool optimize(const NetWork::DataSets& data) override;
  void bindSet(OptNetSet_c* driver) override;
  void setPreDot(uint8_t byte) override;
  void clearStop() override;

  Train train;
  std::vector<OptNetAction_c*> members;  ///< those of `actions` that train
};

}  // namespace Action
