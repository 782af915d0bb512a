// SPDX-License-Identifier: Apache-2.0
#include "network/action/opt_net_set.h"

#include <algorithm>

namespace Action {

using NetWork::RowSet;

void OptNetSet_c::setRoot(OptNetAction_c* action) {
  if (running) return;
  ready.exchange(0);
  root = action;
}

/// The store of a slot, which the slot then uses; null for a slot that does not exist, or while a run goes on.
RowSet* OptNetSet_c::storeFor(int32_t slot) {
  if (slot < 0 || slot >= kSlots || running) return nullptr;
  ready.exchange(0);
  data[slot] = &store[slot];
  return &store[slot];
}

void OptNetSet_c::setDataDim(int32_t rows, int32_t cols, int32_t slot) {
  if (RowSet* set = storeFor(slot))
    set->assign(static_cast<std::size_t>(std::max(rows, 0)),
                std::vector<double>(static_cast<std::size_t>(std::max(cols, 0))));
}

void OptNetSet_c::setData(const double* values, int32_t rows, int32_t cols, int32_t slot) {
  if (RowSet* set = storeFor(slot)) {
    set->clear();
    NetWork::appendRows(*set, values, rows, cols);
  }
}

void OptNetSet_c::setRow(const double* values, int32_t row, int32_t slot) {
  if (slot < 0 || slot >= kSlots || running || row < 0 || values == nullptr) return;
  RowSet& set = store[slot];
  if (static_cast<std::size_t>(row) >= set.size()) return;
  auto& target = set[static_cast<std::size_t>(row)];
  std::copy_n(values, target.size(), target.begin());
}

void OptNetSet_c::setData(const RowSet& rows, int32_t slot) {
  if (RowSet* set = storeFor(slot)) {
    set->clear();
    data[slot] = &rows;
  }
}

int32_t OptNetSet_c::checkData() const {
  // A slot that was never set, or rows, or columns of row 0.
  const auto missing = [this](Slot slot) { return data[slot] == nullptr; };
  const auto rows = [this](Slot slot) { return data[slot]->size(); };
  const auto cols = [this](Slot slot) { return data[slot]->empty() ? 0 : data[slot]->front().size(); };
  if (!missing(trainX)) {
    if (missing(trainY)) return 101;
    if (rows(trainX) == 0) return 102;
    if (rows(trainX) != rows(trainY)) return 103;
    if (!missing(testX)) {
      if (missing(testY)) return 104;
      if (rows(testX) == 0) return 105;
      if (rows(testX) != rows(testY)) return 106;
    }
    if (cols(trainX) == 0) return 107;
    if (cols(trainY) == 0) return 108;
    if (!missing(testX) && cols(testX) != cols(trainX)) return 109;
    if (!missing(testX) && cols(testY) != cols(trainY)) return 110;
    return 1;
  }
  if (missing(testX)) return 116;
  if (missing(testY)) return 111;
  if (rows(testX) == 0) return 112;
  if (rows(testX) != rows(testY)) return 113;
  if (cols(testX) == 0) return 114;
  if (cols(testY) == 0) return 115;
  return 1;
}

int32_t OptNetSet_c::init() {
  if (running) return 0;
  ready.exchange(0);
  if (root == nullptr) return 100;
  if (const int32_t code = checkData(); code != 1) return code;
  const int x = data[trainX] != nullptr ? trainX : testX;
  const int32_t code = root->check({data[x]->front().size(), data[x + 1]->front().size()});
  if (code != 1) return code;
  root->bindSet(this);
  ready.exchange(1);
  return 1;
}

bool OptNetSet_c::optimize() {
  current = nullptr;
  if (!ready) init();
  if (!ready || running.exchange(1)) return false;
  struct Guard {
    std::atomic<uint8_t>& flag;
    ~Guard() { flag.exchange(0); }
  } const guard{running};
  root->clearStop();
  const int train = data[trainX] != nullptr ? trainX : testX;
  const int test = data[testX] != nullptr ? testX : trainX;
  return root->optimize({data[train], data[train + 1], data[test], data[test + 1]});
}

void OptNetSet_c::requestStop() {
  if (ready) root->requestStop();
}

void OptNetSet_c::setPreDot(uint8_t byte) {
  if (root != nullptr) root->setPreDot(byte);
}

}  // namespace Action
