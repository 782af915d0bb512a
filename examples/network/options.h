// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

/// What the command line asks for.
struct Options {
  bool help = false;
  std::string data;
  std::string report = "out/network.html";
  int32_t epochs = 30, batch = 32, hidden = 48, kernels = 6;
  double rate = 0.01;
  double testShare = 0.2;
  uint32_t seed = 1;
};

/// Reads the command line; throws Complaint for what it cannot read.
Options readOptions(int argc, char** argv);

/// Short text of `--help`.
const char* usage();
