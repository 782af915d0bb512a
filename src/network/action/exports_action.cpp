// SPDX-License-Identifier: Apache-2.0
#include "frame/native_data2d.h"
#include "network/action/action_table.h"
#include "network/native_training.h"
#include "orvane/action.h"

using NetWork::nativeOrNull;

template <>
struct NativeOf<void> {
  using type = BaseData;
};
template <>
struct NativeOf<NetAction> {
  using type = Action::NetAction_c;
};
template <>
struct NativeOf<OptNetSet> {
  using type = Action::OptNetSet_c;
};

namespace {
/// The action behind a handle as the class that a call is for; null for another.
template <class T>
T* as(NetAction* action) {
  return dynamic_cast<T*>(nativeOrNull(action));
}
}  // namespace

void* action_Create(int32_t code) { return registered<void>(Action::makeAction(code)); }

void action_NetAction_SetNetWork(NetAction* action, NetGraph* network) {
  native(action).network = nativeOrNull(network);
}

int32_t action_NetAction_Check(NetAction* action) { return native(action).check(native(action).sizes()); }

int32_t action_NetAction_GetInputSize(const NetAction* action) {
  return static_cast<int32_t>(native(action).inputSize());
}

int32_t action_NetAction_GetOutputSize(const NetAction* action) {
  return static_cast<int32_t>(native(action).outputSize());
}

void action_NetAction_Predict(NetAction* action, const double* in, double* out) { native(action).predictRow(in, out); }

void action_NetSetAction_AddAction(NetAction* set, NetAction* action) {
  if (auto* actions = as<Action::NetSetAction_c>(set)) actions->add(nativeOrNull(action));
}

void action_OptNetAction_SetNetOptimizer(NetAction* action, NetOptimizer* optimizer) {
  if (auto* opt = as<Action::OptNetAction_c>(action)) opt->optimizer = nativeOrNull(optimizer);
}

void action_OptNetSetAction_AddOptNet(NetAction* set, NetAction* action) {
  if (auto* members = as<Action::OptNetSetAction_c>(set)) members->addMember(as<Action::OptNetAction_c>(action));
}

void action_OptNetSet_SetRoot(OptNetSet* set, NetAction* root) {
  native(set).setRoot(as<Action::OptNetAction_c>(root));
}

void action_OptNetSet_SetDataDim(OptNetSet* set, int32_t rows, int32_t cols, int32_t slot) {
  native(set).setDataDim(rows, cols, slot);
}

void action_OptNetSet_SetDataByArray(OptNetSet* set, const double* data, int32_t rows, int32_t cols, int32_t slot) {
  native(set).setData(data, rows, cols, slot);
}

void action_OptNetSet_SetDataByRow(OptNetSet* set, const double* data, int32_t row, int32_t slot) {
  native(set).setRow(data, row, slot);
}

void action_OptNetSet_SetDataByData2D(OptNetSet* set, const Data2D* data, int32_t slot) {
  native(set).setData(native(data).rows, slot);
}

int32_t action_OptNetSet_Init(OptNetSet* set) { return native(set).init(); }

bool action_OptNetSet_Optimize(OptNetSet* set) { return native(set).optimize(); }

void action_OptNetSet_Stop(OptNetSet* set) { native(set).requestStop(); }

void action_OptNetSet_SetPreDotValue(OptNetSet* set, uint8_t value) { native(set).setPreDot(value); }

NetOptimizer* action_OptNetSet_CurrentOptimizer(const OptNetSet* set) {
  return handleOf<NetOptimizer>(native(set).current.load());
}
