// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "frame/handle.h"
#include "orvane/pdf.h"
#include "pdf/base_pdf_fun.h"

template <>
struct NativeOf<PDFFun> {
  using type = PDF::BasePDFFun;
};
