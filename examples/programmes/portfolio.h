// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// Shares of a sum in assets of least variance for a wanted return: a quadratic programme, in lots an integer one.
struct Portfolio {
  double expected = 0;   ///< return, per cent a year
  double deviation = 0;  ///< its standard deviation
  std::vector<double> shares;
  bool found = false;
};

struct Frontier {
  std::vector<Portfolio> fractional, lots;
  Portfolio wanted, wantedLots;
  int lotCount = 0;
};

Frontier frontier(double wantedReturn, int lotCount);

/// The least and the greatest return that an asset has.
std::pair<double, double> returnRange();

std::string portfolioSection(const Frontier& frontier);
