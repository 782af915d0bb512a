// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <vector>

#include "classifiers.h"

/// Counts by true class (rows) and answered class (columns).
using Confusion = std::vector<std::vector<int>>;

/// One set, tried: what cross-validation says, the classifiers trained on all of it, and those of two features.
struct Trial {
  Confusion machineTable, treeTable;
  std::unique_ptr<Machines> machines, machinesOfPair;
  std::unique_ptr<Trees> trees, treesOfPair;
  double seconds = 0;
};

Trial tried(const Samples& samples, const Settings& settings, int folds, Stopper& stopper);

/// Share of the samples on the diagonal.
double rightShare(const Confusion& table);
