// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "record.h"

/// Smoothers of about one unit of time, side by side.
std::string smootherSection(const Record& record);
