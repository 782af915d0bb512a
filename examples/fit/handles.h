// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <orvane/frame.h>
#include <orvane/pdf.h>
#include <orvane/pdf_manager.h>

#include <memory>

/// Gives a handle back to the library.
struct FreeHandle {
  void operator()(void* handle) const { api_FreeHandle(handle); }
};

using FunHandle = std::unique_ptr<PDFFun, FreeHandle>;
using MangerHandle = std::unique_ptr<PDFManger, FreeHandle>;
