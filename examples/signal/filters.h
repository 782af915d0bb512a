// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "record.h"

/// Designs the low-passes with the edge in cycles a unit of time, runs them over the record's level and tells of them.
/// Fills designed and recursed. Throws Complaint for an edge that the record's rate does not allow.
std::string filterSection(Record& record, double edge);
