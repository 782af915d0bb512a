// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>
#include <limits>

#include "frame/numbers.h"
#include "network/train/net_optimizer.h"

namespace NetWork {

/// Runs the dog-leg over all training rows. An iteration of it counts as a step.
void NetOptimizer_c::makeDenseSteps(NetSolverByDogLeg& dense) {
  constexpr int32_t kMost = std::numeric_limits<int32_t>::max();
  const std::size_t outputCount = data.trainX->size() * net->outputSize();
  const std::vector<PenaltyRow> penalties = penaltyRows();
  const std::size_t count = outputCount + penalties.size();
  if (count > static_cast<std::size_t>(kMost)) return;
  Solver::SolverByDogLeg_c& dogLeg = dense.dogLeg;
  dogLeg.init(static_cast<int32_t>(net->varSize()), static_cast<int32_t>(count));
  dogLeg.rng = &rng;
  dogLeg.stop = 0;
  dogLeg.iterLimit = static_cast<int32_t>(std::min<int64_t>(iterCount, kMost));
  dogLeg.noImproveLimit = 512;
  dogLeg.targetError = evalByClass ? 0.0 : errorTarget * static_cast<double>(outputCount);

  dogLeg.limitFun = [this](std::span<double> x) {
    net->setVar(x.data());
    net->applySignRule();
    net->getVar(x.data());
  };
  dogLeg.resFun = [&](std::span<const double> x, std::span<double> r) {
    net->setVar(x.data());
    for (std::size_t i = 0; i < penalties.size(); ++i) r[outputCount + i] = penalties[i].factor * x[penalties[i].place];
    if (!residuals(r)) std::ranges::fill(r, kNaN);  // ends the solve with the best point so far
  };
  int32_t sinceTest = 0;
  dogLeg.jacFun = [&](std::span<const double> x, std::span<double> rows) {
    net->setVar(x.data());
    if (sinceTest == testPeriod) {
      sinceTest = 0;
      if (evaluate()) dogLeg.stop = 1;
      net->setTraining(true);
    }
    ++sinceTest;
    iter = iter + 1;
    if (!jacobian(rows)) dogLeg.stop = 1;
    const auto tail = rows.subspan(outputCount * x.size());
    std::ranges::fill(tail, 0.0);
    for (std::size_t i = 0; i < penalties.size(); ++i) tail[i * x.size() + penalties[i].place] = penalties[i].factor;
  };
  net->getVar(current.data());
  dogLeg.solve(current);
  net->setVar(dogLeg.var.data());
  dogLeg.limitFun = nullptr;
  dogLeg.resFun = nullptr;
  dogLeg.jacFun = nullptr;
  if (!stop) evaluate();
}

/// Penalties of kind 2 as residuals: sum r^2/2/rows + weight*w^2 has the residual sqrt(2*rows*weight) w.
std::vector<NetOptimizer_c::PenaltyRow> NetOptimizer_c::penaltyRows() const {
  std::vector<PenaltyRow> all;
  std::size_t place = 0;
  for (NetVar_s* var : net->vars) {
    if (var->fixed) continue;
    const auto found = regVar.find(var);
    const bool has = found != regVar.end() && found->second.kind == 2 && found->second.weight > 0.0;
    for (std::size_t i = 0; i < var->value.size(); ++i, ++place)
      if (has) all.push_back({place, std::sqrt(2.0 * static_cast<double>(data.trainX->size()) * found->second.weight)});
  }
  return all;
}

/// Outputs less targets of all training rows; false when stopped.
bool NetOptimizer_c::residuals(std::span<double> r) {
  const std::size_t width = net->outputSize(), block = net->blockSamples(), rows = data.trainX->size();
  sampleX.resize(std::max(sampleX.size(), block));
  for (std::size_t i = 0; i < rows; i += block) {
    if (stop) return false;
    const std::size_t samples = std::min(block, rows - i);
    for (std::size_t k = 0; k < samples; ++k) sampleX[k] = (*data.trainX)[i + k].data();
    net->predict({sampleX.data(), samples}, &r[i * width]);
    for (std::size_t k = 0; k < samples; ++k)
      for (std::size_t o = 0; o < width; ++o) r[(i + k) * width + o] -= (*data.trainY)[i + k][o];
  }
  return true;
}

/// Their derivatives by the trainable numbers; false when stopped.
bool NetOptimizer_c::jacobian(std::span<double> rows) {
  const std::size_t width = net->outputSize(), n = current.size();
  outputs.resize(std::max(outputs.size(), width));
  for (std::size_t i = 0; i < data.trainX->size(); ++i) {
    if (stop) return false;
    net->varJacobian((*data.trainX)[i].data(), outputs.data(), &rows[i * width * n]);
  }
  return true;
}

}  // namespace NetWork
