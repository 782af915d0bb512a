// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <orvane/decision_tree.h>
#include <orvane/support_vector_machine.h>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "handle.h"
#include "samples.h"

struct Settings {
  double c = 10;
  double width = 0;  ///< of the Gaussian kernel; 0 for the square root of half the number of features
  int depth = 4;
  int least = 5;  ///< samples of a node that is split
};

/// What trains at the moment, so that another thread can stop it.
class Stopper {
 public:
  /// Trains, unless a stop was asked for; `stop` ends the training from another thread.
  void train(const std::function<void()>& training, const std::function<void()>& stop);
  void askStop();
  bool asked() const { return stopped; }

 private:
  std::mutex lock;
  std::function<void()> current;
  std::atomic<bool> stopped = false;
};

/// A classifier for several classes: one machine a class, against the others, and the class that is surest; for two
/// classes one machine alone.
class Classifier {
 public:
  virtual ~Classifier() = default;
  virtual std::size_t classOf(const Row& row) const = 0;
};

/// Support vector machines with a Gaussian kernel, on features of mean 0 and deviation 1.
class Machines final : public Classifier {
 public:
  Machines(const Samples& samples, const Settings& settings, Stopper& stopper);
  std::size_t classOf(const Row& row) const override;
  /// Whether a sample is a support vector of any machine.
  const std::vector<bool>& supports() const { return support; }

 private:
  Standard standard;
  std::vector<Owned<SVM>> machines;
  std::vector<bool> support;
};

/// Trees: of two classes one, of more one of the share of each class.
class Trees final : public Classifier {
 public:
  Trees(const Samples& samples, const Settings& settings, Stopper& stopper);
  std::size_t classOf(const Row& row) const override;

  std::size_t count() const { return trees.size(); }
  const CartTree* tree(std::size_t k) const { return trees[k].get(); }

 private:
  std::vector<Owned<CartTree>> trees;
};
