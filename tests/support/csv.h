// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// Tables of tests/reference. Needs no test framework: the benchmarks read them too.
using Cells = std::vector<std::string>;

/// The cells of one line; in quotes a comma stands for itself and "" for a quote.
Cells cellsOf(const std::string& line);

/// The lines of tests/reference/<path> but for empty ones and those that begin with '#'.
std::vector<std::string> readLines(const std::string& path);

std::vector<Cells> readCsv(const std::string& path);
