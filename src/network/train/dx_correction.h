// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <random>
#include <span>

#include "frame/base_data.h"
#include "frame/data_stream.h"
#include "frame/random.h"

namespace NetWork {

/// Changes a step before it is taken.
class NetDxCorrection_c : public BaseData {
 public:
  virtual void correct(std::span<double> dx) = 0;
  virtual void write(DataStream&) const {}
  virtual void read(DataStream&) {}

  std::mt19937* rng = nullptr;  ///< the optimiser's, attached when a try begins

 protected:
  NetDxCorrection_c() { typeCode = 35; }
};

class NetDxCorrectionByNothing_c final : public NetDxCorrection_c {
 public:
  NetDxCorrectionByNothing_c() { typeCode = 36; }
  void correct(std::span<double>) override {}
};

/// Entries beyond maxStep become a random 80 to 100 % of it.
class NetDxCorrectionByMaxStep_c final : public NetDxCorrection_c {
 public:
  explicit NetDxCorrectionByMaxStep_c(double most) : maxStep(most) { typeCode = 37; }
  void correct(std::span<double> dx) override;
  void write(DataStream& stream) const override { stream.put(maxStep); }
  void read(DataStream& stream) override { maxStep = stream.take<double>(); }

  double maxStep;

 private:
  UniformDistribution uniform;
};

}  // namespace NetWork
