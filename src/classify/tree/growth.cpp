// SPDX-License-Identifier: Apache-2.0
#include "classify/tree/growth.h"

#include <algorithm>
#include <bitset>
#include <cmath>
#include <numeric>

namespace NetWork {
namespace {

ClassFeatures allClassFeatures(const Samples& samples) {
  if (samples.classes.empty()) return nullptr;
  std::vector<ClassFeature> features;
  for (const std::vector<uint8_t>& column : samples.classes) {
    std::bitset<256> present;
    for (const uint8_t value : column) present.set(value);
    ClassFeature feature{static_cast<int32_t>(features.size()), {}};
    for (std::size_t value = 0; value < present.size(); ++value)
      if (present[value]) feature.values.push_back(static_cast<uint8_t>(value));
    features.push_back(std::move(feature));
  }
  return std::make_shared<const std::vector<ClassFeature>>(std::move(features));
}

RealFeatures allRealFeatures(const Samples& samples) {
  if (samples.reals.empty()) return nullptr;
  std::vector<int32_t> features(samples.reals.size());
  std::iota(features.begin(), features.end(), 0);
  return std::make_shared<const std::vector<int32_t>>(std::move(features));
}

template <class Item>
std::shared_ptr<const std::vector<Item>> without(const std::vector<Item>& list, std::size_t place) {
  if (list.size() == 1) return nullptr;
  std::vector<Item> rest = list;
  rest.erase(rest.begin() + static_cast<std::ptrdiff_t>(place));
  return std::make_shared<const std::vector<Item>>(std::move(rest));
}

// The value that was asked for goes; of two values the feature.
ClassFeatures withoutValue(const std::vector<ClassFeature>& list, const Split& split) {
  if (list[split.place].values.size() <= 2) return without(list, split.place);
  std::vector<ClassFeature> rest = list;
  std::erase(rest[split.place].values, split.classValue);
  return std::make_shared<const std::vector<ClassFeature>>(std::move(rest));
}

}  // namespace

Growth::Growth(const CartTree& tree, const Samples& samples) : tree(tree), samples(samples) {
  members.resize(samples.count);
  std::iota(members.begin(), members.end(), 0u);
  spare.resize(samples.count);
  for (const std::vector<double>& column : samples.reals) {
    std::vector<uint32_t> order = members;
    std::stable_sort(order.begin(), order.end(), [&column](uint32_t a, uint32_t b) {
      return column[a] < column[b] || (std::isnan(column[b]) && !std::isnan(column[a]));
    });
    ascending.push_back(std::move(order));
  }
}

std::vector<std::shared_ptr<CartNode>> Growth::run() {
  nodes.push_back(std::make_shared<CartNode>());
  waiting.push_back(
      {nodes.front(), 0, samples.count, tree.maxDepth, allClassFeatures(samples), allRealFeatures(samples)});
  for (; !waiting.empty(); waiting.pop_front()) {
    const Work work = waiting.front();
    if (tree.stop.load(std::memory_order_relaxed))
      makeLeaf(work);
    else
      grow(work);
  }
  return std::move(nodes);
}

void Growth::grow(const Work& work) {
  if (work.depth == 0 || static_cast<int64_t>(work.end - work.begin) < tree.minCount) return makeLeaf(work);
  const auto best = bestSplit(
      {samples, membersOf(work), work.classFeatures, work.realFeatures, ascending, work.begin, tree.minValueGap},
      tree.isClass);
  // KEPT: a split that is very good is not made; expected: a bound on the gain (kept.csv: MinSplitScore_good)
  if (!best || tree.minSplitScore > best->score) return makeLeaf(work);
  split(work, *best);
}

void Growth::split(const Work& work, const Split& split) {
  CartNode& node = *work.node;
  node.splitKind = split.kind;
  node.compareIndex = split.index;
  node.compareClass = split.classValue;
  node.compareReal = split.threshold;

  const bool byClass = split.kind == SplitKind::byClass;
  const ClassFeatures classes = byClass ? withoutValue(*work.classFeatures, split) : work.classFeatures;
  const RealFeatures reals = byClass ? work.realFeatures : without(*work.realFeatures, split.place);

  const auto part = [&](std::vector<uint32_t>& order) {
    const auto first = order.begin() + static_cast<std::ptrdiff_t>(work.begin);
    const auto last = order.begin() + static_cast<std::ptrdiff_t>(work.end);
    auto left = first;
    auto right = spare.begin();
    for (auto sample = first; sample != last; ++sample)
      (split.goesLeft(samples, *sample) ? *left++ : *right++) = *sample;
    std::copy(spare.begin(), right, left);
    return static_cast<std::size_t>(left - order.begin());
  };
  const std::size_t middle = part(members);
  if (reals != nullptr)
    for (const int32_t feature : *reals) part(ascending[static_cast<std::size_t>(feature)]);

  if (middle > work.begin) node.left = append(work, work.begin, middle, classes, reals);
  if (middle < work.end) node.right = append(work, middle, work.end, classes, reals);
}

std::shared_ptr<CartNode> Growth::append(const Work& parent, std::size_t begin, std::size_t end,
                                         const ClassFeatures& classes, const RealFeatures& reals) {
  auto node = std::make_shared<CartNode>();
  nodes.push_back(node);
  waiting.push_back({node, begin, end, parent.depth - 1, classes, reals});
  return node;
}

void Growth::makeLeaf(const Work& work) {
  if (tree.isClass) {
    int64_t balance = 0;
    for (const uint32_t sample : membersOf(work)) balance += samples.classLabels[sample] != 0 ? 1 : -1;
    work.node->leafClass = balance > 0;
  } else {
    double sum = 0;
    for (const uint32_t sample : membersOf(work)) sum += samples.realLabels[sample];
    work.node->value = sum / static_cast<double>(work.end - work.begin);
  }
}

}  // namespace NetWork
