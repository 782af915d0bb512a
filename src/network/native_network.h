// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "frame/handle.h"
#include "network/graph/net_work.h"
#include "orvane/network.h"

template <>
struct NativeOf<NetVar> {
  using type = NetWork::NetVar_s;
};
template <>
struct NativeOf<NetLayer> {
  using type = NetWork::NetLayer_s;
};
template <>
struct NativeOf<NetGraph> {
  using type = NetWork::NetWork_c;
};

namespace NetWork {

/// The object behind a handle that may be null.
template <class Handle>
NativeType<Handle>* nativeOrNull(Handle* handle) {
  return handle == nullptr ? nullptr : &native(handle);
}

}  // namespace NetWork
