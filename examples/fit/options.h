// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "csv.h"
#include "handles.h"

enum class Header { automatic, present, absent };

/// What the command line asks for.
struct Options {
  bool help = false;
  std::string dataPath;
  std::string column;  ///< name or number from 1; empty takes the first column
  char delimiter = 0;  ///< 0: found from the first line
  Header header = Header::automatic;
  NumberForm numbers;
  std::vector<FunHandle> funs;  ///< distributions to fit
  std::vector<uint8_t> solvers;
  int32_t population = 40;
  int32_t iterations = 150;
  int32_t points = 20000;  ///< of more values so many order statistics are fitted
  int32_t repeats = 1;     ///< further searches of each distribution
  int32_t threads = 2;
  double precision = 1e-12;
  double seconds = 0;  ///< the fit ends early after so long; 0: never
  int32_t best = 5;    ///< fits in the plots, and sheets
  std::string reportPath = "orvane-fit.html";
};

/// Reads the command line; throws Complaint for what it cannot read.
Options readOptions(int argc, char** argv);

/// Short text of `--help`.
const char* usage();

/// Whether a distribution is one of counts: Binomial, Poisson and what is made of them.
bool countsOnly(std::string_view name);

/// Name of a solver kind as the command line takes it.
const char* solverName(uint8_t code);
