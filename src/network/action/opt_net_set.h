// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstdint>

#include "network/action/opt_net_action.h"

namespace Action {

/// Holds the data and one root action and runs the whole tree. One thread drives it; others may stop it and ask for the
/// optimiser that runs. While a run goes on, the setters do nothing.
class OptNetSet_c final : public BaseData {
 public:
  OptNetSet_c() { typeCode = 6; }

  void setRoot(OptNetAction_c* action);
  /// A store of zeros for rows that follow one by one.
  void setDataDim(int32_t rows, int32_t cols, int32_t slot);
  void setData(const double* values, int32_t rows, int32_t cols, int32_t slot);
  void setRow(const double* values, int32_t row, int32_t slot);
  /// Rows of someone else, not copied.
  void setData(const NetWork::RowSet& rows, int32_t slot);

  int32_t init();
  bool optimize();
  void requestStop();
  void setPreDot(uint8_t byte);

  std::atomic<uint8_t> ready = 0;
  OptNetAction_c* root = nullptr;                           ///< not owned
  std::atomic<NetWork::NetOptimizer_c*> current = nullptr;  ///< runs now, or ran last

 private:
  enum Slot { trainX, trainY, testX, testY, kSlots };

  NetWork::RowSet* storeFor(int32_t slot);
  int32_t checkData() const;

  const NetWork::RowSet* data[kSlots] = {};
  NetWork::RowSet store[kSlots];
  std::atomic<uint8_t> running = 0;
};

}  // namespace Action
