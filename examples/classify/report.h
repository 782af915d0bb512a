// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "trial.h"

/// The part of the page on one set.
std::string section(const Samples& samples, const Trial& trial, int folds, bool stopped);
