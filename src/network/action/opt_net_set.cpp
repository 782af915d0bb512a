// SPDX-License-Identifier: Apache-2.0
#include "network/action/opt_net_set.h"

#include <algorithm>

#include "orvane/action.h"

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
    if (missing(trainY)) return ORVANE_ACTION_TRAIN_WITHOUT_TARGET;
    if (rows(trainX) == 0) return ORVANE_ACTION_TRAIN_NO_ROWS;
    if (rows(trainX) != rows(trainY)) return ORVANE_ACTION_TRAIN_ROWS_DIFFER;
    if (!missing(testX)) {
      if (missing(testY)) return ORVANE_ACTION_TEST_WITHOUT_TARGET;
      if (rows(testX) == 0) return ORVANE_ACTION_TEST_NO_ROWS;
      if (rows(testX) != rows(testY)) return ORVANE_ACTION_TEST_ROWS_DIFFER;
    }
    if (cols(trainX) == 0) return ORVANE_ACTION_TRAIN_INPUT_NO_COLUMNS;
    if (cols(trainY) == 0) return ORVANE_ACTION_TRAIN_TARGET_NO_COLUMNS;
    if (!missing(testX) && cols(testX) != cols(trainX)) return ORVANE_ACTION_TEST_INPUT_COLUMNS;
    if (!missing(testX) && cols(testY) != cols(trainY)) return ORVANE_ACTION_TEST_TARGET_COLUMNS;
    return ORVANE_ACTION_OK;
  }
  if (missing(testX)) return ORVANE_ACTION_NO_DATA;
  if (missing(testY)) return ORVANE_ACTION_ONLY_TEST_WITHOUT_TARGET;
  if (rows(testX) == 0) return ORVANE_ACTION_ONLY_TEST_NO_ROWS;
  if (rows(testX) != rows(testY)) return ORVANE_ACTION_ONLY_TEST_ROWS_DIFFER;
  if (cols(testX) == 0) return ORVANE_ACTION_ONLY_TEST_INPUT_NO_COLUMNS;
  if (cols(testY) == 0) return ORVANE_ACTION_ONLY_TEST_TARGET_NO_COLUMNS;
  return ORVANE_ACTION_OK;
}

int32_t OptNetSet_c::init() {
  if (running) return 0;
  ready.exchange(0);
  if (root == nullptr) return ORVANE_ACTION_NO_ROOT;
  if (const int32_t code = checkData(); code != ORVANE_ACTION_OK) return code;
  const int x = data[trainX] != nullptr ? trainX : testX;
  const int32_t code = root->check({data[x]->front().size(), data[x + 1]->front().size()});
  if (code != ORVANE_ACTION_OK) return code;
  root->bindSet(this);
  ready.exchange(1);
  return ORVANE_ACTION_OK;
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
