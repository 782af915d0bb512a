// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "pdf/base_pdf_fun.h"

namespace PDF {

/// New distribution with its default parameters: a plain code, or 10000 k + plain code for wrapper k. Null when
/// unknown.
std::shared_ptr<BasePDFFun> makePDFFun(int32_t code);

/// The same by name, whatever its blanks, tabs, line feeds and case. Null when unknown.
std::shared_ptr<BasePDFFun> makePDFFunByName(std::string_view name);

/// New distribution of the same `pdfType` with the source's parameters, `useQuantileStart` and `bestParams`.
std::shared_ptr<BasePDFFun> clonePDFFun(const BasePDFFun& source);

/// All codes: the plain ones in ascending order, then wrapper after wrapper, each over all plain ones.
const std::vector<int32_t>& allPDFCodes();

}  // namespace PDF
