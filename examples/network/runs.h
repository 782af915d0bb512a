// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "digits.h"
#include "models.h"
#include "options.h"

/// How the rows of the choice were answered after every epoch.
struct Curve {
  std::string name;
  std::vector<double> epochs, rates;
  double rate = 0;  ///< learning rate at the start
  double best = 0;
  double seconds = 0;
};

/// A training that goes on, for the progress line.
struct Progress {
  std::string name;
  double epoch, epochs, best;
};

/// What a run asks of the program around it.
struct Watcher {
  std::function<void(const Progress&)> show;
  std::function<bool()> stopAsked;
};

/// Two networks on the pictures and a third one on their joined outputs, trained as one thing.
class Stack {
 public:
  Stack(const Options& options, std::mt19937& rng);

  /// Trains until the epochs are over or a stop is asked for; a curve a network that was trained.
  std::vector<Curve> train(const Parts& parts, const Options& options, const Watcher& watcher);

  std::vector<Model> models;           ///< the last one is the judge
  std::vector<Owned<NetAction>> each;  ///< an action a model
  Owned<NetAction> all;                ///< the stack of them
};

/// The same network from the same weights by one step rule after another.
std::vector<Curve> compareSteppers(const Parts& parts, const Options& options, const Watcher& watcher);

/// Ten outputs of an action for every picture.
std::vector<double> outputsOf(NetAction* action, const Digits& digits);

/// Place of the largest of ten outputs.
int answerOf(const double* outputs);

/// Share of right answers.
double rateOf(const std::vector<double>& outputs, const Digits& digits);
