// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <orvane/frame.h>

#include <memory>

struct Release {
  void operator()(void* handle) const { api_FreeHandle(handle); }
};

/// A handle of the library that is released when it goes.
template <class Handle>
using Owned = std::unique_ptr<Handle, Release>;
