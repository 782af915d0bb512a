// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "frame/data2d.h"
#include "frame/handle.h"
#include "orvane/frame.h"

template <>
struct NativeOf<Data2D> {
  using type = Data2D_c;
};
