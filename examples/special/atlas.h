// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "plate.h"

/// Marks whose curve misses them by more than 1e-12, as one line each.
std::vector<std::string> missedMarks(const std::vector<Plate>& plates);

/// The page.
std::string atlasPage(const std::vector<Plate>& plates);
