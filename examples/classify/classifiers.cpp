// SPDX-License-Identifier: Apache-2.0
#include "classifiers.h"

#include <algorithm>
#include <cmath>

namespace {

/// The classes that have a classifier of their own: of two the first alone.
std::size_t toTrain(const Samples& samples) { return samples.classes.size() == 2 ? 1 : samples.classes.size(); }

std::size_t surest(const Row& values, double neutral) {
  if (values.size() == 1) return values[0] > neutral ? 0 : 1;
  return static_cast<std::size_t>(std::max_element(values.begin(), values.end()) - values.begin());
}

Owned<Data2D> tableOf(const std::vector<Row>& rows) {
  Owned<Data2D> table(
      api_Data2D_Create(static_cast<uint32_t>(rows.size()), static_cast<uint32_t>(rows.front().size())));
  for (std::size_t i = 0; i < rows.size(); ++i)
    api_Data2D_SetRowValue(table.get(), static_cast<int32_t>(i), rows[i].data());
  return table;
}

}  // namespace

void Stopper::train(const std::function<void()>& training, const std::function<void()>& stop) {
  {
    const std::lock_guard guard(lock);
    if (stopped) return;
    current = stop;
  }
  training();
  const std::lock_guard guard(lock);
  current = nullptr;
}

// A training clears its stop at the start: the host goes on asking until it ends.
void Stopper::askStop() {
  const std::lock_guard guard(lock);
  stopped = true;
  if (current) current();
}

Machines::Machines(const Samples& samples, const Settings& settings, Stopper& stopper)
    : standard(samples.rows), support(samples.size(), false) {
  const std::size_t dim = samples.features.size();
  std::vector<double> x;
  for (const Row& row : samples.rows) {
    const Row scaled = standard.of(row);
    x.insert(x.end(), scaled.begin(), scaled.end());
  }
  const double width = settings.width > 0 ? settings.width : std::sqrt(static_cast<double>(dim) / 2);
  const double params[] = {width, 0, 0};
  for (std::size_t k = 0; k < toTrain(samples); ++k) {
    std::vector<double> y;
    for (const std::size_t label : samples.labels) y.push_back(label == k ? 1 : -1);
    SVM* svm = machines.emplace_back(svm_create()).get();
    svm_setXDim(svm, static_cast<int32_t>(dim));
    svm_setData(svm, x.data(), y.data(), static_cast<int32_t>(y.size()));
    svm_setOther(svm, params, settings.c);
    svm_setType(svm, ORVANE_SVM_GAUSS);
    svm_limit(svm, 2, 0, 1000000000);  // to the optimum, not to 99 of 100
    stopper.train([svm] { svm_solve(svm); }, [svm] { svm_stop(svm); });
    std::vector<double> a(static_cast<std::size_t>(svm_getA(svm, nullptr)));
    svm_getA(svm, a.data());
    for (std::size_t i = 0; i < a.size(); ++i)
      if (a[i] > 0) support[i] = true;
  }
}

std::size_t Machines::classOf(const Row& row) const {
  const Row scaled = standard.of(row);
  Row values;
  for (const Owned<SVM>& machine : machines) values.push_back(svm_predict(machine.get(), scaled.data(), false));
  return surest(values, 0);
}

Trees::Trees(const Samples& samples, const Settings& settings, Stopper& stopper) {
  const Owned<Data2D> rows = tableOf(samples.rows);
  const bool twoClasses = toTrain(samples) == 1;
  for (std::size_t k = 0; k < toTrain(samples); ++k) {
    std::vector<Row> labels;
    for (const std::size_t label : samples.labels) labels.push_back({label == k ? 1.0 : 0.0});
    CartTree* tree = trees.emplace_back(cart_Create()).get();
    cart_SetData(tree, rows.get(), tableOf(labels).get(), nullptr, twoClasses);
    // The bound on the score is taken away: it would leave out the best splits.
    cart_SetLimitCondition(tree, settings.least, 0, 0, static_cast<uint8_t>(settings.depth));
    stopper.train([tree] { cart_Train(tree); }, [tree] { cart_Stop(tree); });
  }
}

std::size_t Trees::classOf(const Row& row) const {
  Row values;
  for (const Owned<CartTree>& tree : trees) values.push_back(cart_Predict(tree.get(), row.data()));
  return surest(values, 0);
}
