// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "network/native_network.h"
#include "network/train/net_optimizer.h"
#include "orvane/network_training.h"

template <>
struct NativeOf<NetOptimizer> {
  using type = NetWork::NetOptimizer_c;
};
template <>
struct NativeOf<NetSolver> {
  using type = NetWork::NetBaseSolver_c;
};
