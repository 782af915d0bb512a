// SPDX-License-Identifier: Apache-2.0
#include "classify/tree/cart_tree.h"

#include <algorithm>

#include "classify/tree/growth.h"

namespace NetWork {
namespace {

// A host's tree may lack a feature: no class is equal to it, and no threshold is above it.
bool goesLeft(const CartNode& node, const Row& row) {
  const auto index = static_cast<std::size_t>(node.compareIndex);
  if (node.splitKind == SplitKind::byReal) return index < row.reals.size() && node.compareReal > row.reals[index];
  return index >= row.classes.size() || row.classes[index] != node.compareClass;
}

}  // namespace

void CartTree::setData(const Data2D_c& rows, const Data2D_c& labels, const uint8_t* flagBytes, bool labelsAreClasses) {
  isClass = labelsAreClasses;
  const std::size_t columns = rows.colCount();
  flags.assign(columns, false);
  for (std::size_t i = 0; i < columns; ++i) flags[i] = flagBytes != nullptr && flagBytes[i] != 0;
  classNum = static_cast<int32_t>(std::count(flags.begin(), flags.end(), true));
  realNum = static_cast<int32_t>(columns) - classNum;

  const bool labelsInRow = labels.rowCount() == 1;
  samples = {};
  samples.count = std::min(rows.rowCount(), labelsInRow ? labels.colCount() : labels.rowCount());
  samples.classes.resize(static_cast<std::size_t>(classNum));
  samples.reals.resize(static_cast<std::size_t>(realNum));
  for (std::size_t i = 0; i < samples.count; ++i) {
    const Row row(flags, rows.rows[i].data());
    for (std::size_t k = 0; k < row.classes.size(); ++k) samples.classes[k].push_back(row.classes[k]);
    for (std::size_t k = 0; k < row.reals.size(); ++k) samples.reals[k].push_back(row.reals[k]);
    const double label = labelsInRow ? labels.at(0, i) : labels.at(i, 0);
    if (isClass)
      samples.classLabels.push_back(label > 0.5);
    else
      samples.realLabels.push_back(label);
  }
}

bool CartTree::train() {
  if (samples.count == 0) return false;
  stop = false;
  grown = Growth(*this, samples).run();
  root = grown.front();
  return true;
}

double CartTree::predict(const double* x) const {
  std::shared_ptr<const CartNode> node = root.lock();
  if (node == nullptr) return 0.0;
  const Row row(flags, x);
  // Brent's search for a ring, which a host may have linked: it leads nowhere.
  const CartNode* mark = nullptr;
  for (std::size_t step = 0, nextMark = 1; node->splitKind != SplitKind::leaf; ++step) {
    if (node.get() == mark) return 0.0;
    if (step == nextMark) {
      mark = node.get();
      nextMark *= 2;
    }
    auto left = node->left.lock(), right = node->right.lock();
    if (left == nullptr && right == nullptr) break;
    const bool toLeft = right == nullptr || (left != nullptr && goesLeft(*node, row));
    node = toLeft ? std::move(left) : std::move(right);
  }
  if (!isClass) return node->value;
  return node->leafClass ? 1.0 : -1.0;
}

}  // namespace NetWork
