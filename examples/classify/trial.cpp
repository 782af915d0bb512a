// SPDX-License-Identifier: Apache-2.0
#include "trial.h"

#include <chrono>
#include <numeric>

Trial tried(const Samples& samples, const Settings& settings, int folds, Stopper& stopper) {
  const auto start = std::chrono::steady_clock::now();
  const std::size_t classes = samples.classes.size();
  const std::vector<int> fold = foldsOf(samples, folds);
  Trial trial;
  trial.machineTable = trial.treeTable = Confusion(classes, std::vector<int>(classes, 0));
  for (int f = 0; f < folds && !stopper.asked(); ++f) {
    std::vector<std::size_t> rest;
    for (std::size_t i = 0; i < samples.size(); ++i)
      if (fold[i] != f) rest.push_back(i);
    const Samples known = samples.part(rest);
    const Machines machines(known, settings, stopper);
    const Trees trees(known, settings, stopper);
    if (stopper.asked()) break;
    for (std::size_t i = 0; i < samples.size(); ++i)
      if (fold[i] == f) {
        ++trial.machineTable[samples.labels[i]][machines.classOf(samples.rows[i])];
        ++trial.treeTable[samples.labels[i]][trees.classOf(samples.rows[i])];
      }
  }
  trial.machines = std::make_unique<Machines>(samples, settings, stopper);
  trial.trees = std::make_unique<Trees>(samples, settings, stopper);
  const Samples pair = samples.only(samples.pair);
  trial.machinesOfPair = std::make_unique<Machines>(pair, settings, stopper);
  trial.treesOfPair = std::make_unique<Trees>(pair, settings, stopper);
  trial.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  return trial;
}

double rightShare(const Confusion& table) {
  int right = 0, all = 0;
  for (std::size_t k = 0; k < table.size(); ++k) {
    right += table[k][k];
    all += std::accumulate(table[k].begin(), table[k].end(), 0);
  }
  return all == 0 ? 0 : static_cast<double>(right) / all;
}
