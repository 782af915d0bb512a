// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "frame/base_data.h"
#include "network/graph/net_work.h"

/// Predictors made of networks, and their training as one thing. All of them use objects that the host owns.
namespace Action {

class OptNetSet_c;

/// Lengths of the rows that go in and come out.
struct RowSizes {
  std::size_t in = 0, out = 0;
};

class ActionBase_c : public BaseData {
 public:
  /// Sizes the work buffers.
  virtual void prepare() {}
  /// 1, or the code of what is missing. `sizes` are those of the data it is to be trained on.
  virtual int32_t check(RowSizes sizes) = 0;
  /// One row in, one row out, of inputSize and outputSize. Entries that nothing computes are NaN.
  virtual void predict(std::span<const double> in, std::span<double> out) = 0;
  virtual std::size_t inputSize() const = 0;
  virtual std::size_t outputSize() const = 0;

  RowSizes sizes() const { return {inputSize(), outputSize()}; }
  void predictRow(const double* in, double* out) { predict({in, inputSize()}, {out, outputSize()}); }

 protected:
  ActionBase_c() = default;
};

/// One network.
class NetAction_c : public ActionBase_c {
 public:
  explicit NetAction_c(uint16_t code = 0) : mode(code) { typeCode = 2; }

  int32_t check(RowSizes sizes) override;
  void predict(std::span<const double> in, std::span<double> out) override;
  std::size_t inputSize() const override;
  std::size_t outputSize() const override;
  /// Whether `other` is this action or lies beneath it.
  virtual bool holds(const NetAction_c* other) const { return other == this; }

  uint16_t mode;
  NetWork::NetWork_c* network = nullptr;  ///< not owned
};

class NetSetAction_c;
/// Makes the row of a set out of its members' rows.
using Combine = void (*)(NetSetAction_c& set, std::span<const double> in, std::span<double> out);

/// Several actions as one predictor.
class NetSetAction_c : public NetAction_c {
 public:
  explicit NetSetAction_c(uint16_t code);

  void add(NetAction_c* action);

  void prepare() override;
  int32_t check(RowSizes sizes) override;
  void predict(std::span<const double> in, std::span<double> out) override;
  std::size_t inputSize() const override;
  std::size_t outputSize() const override;
  bool holds(const NetAction_c* other) const override;

  Combine combine;
  std::vector<NetAction_c*> actions;  ///< not owned

  /// Runs one member; its row stays until the next call.
  std::span<const double> runMember(NetAction_c& member, std::span<const double> in);
  /// Runs all members but the last and joins their rows; valid until the next call.
  std::span<const double> joinedRow(std::span<const double> in);

 private:
  std::vector<double> row, joined;
};

}  // namespace Action
