// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "hunt.h"

/// The body of the page.
std::string report(const std::vector<Study>& studies, const std::vector<Hunt>& hunts);
