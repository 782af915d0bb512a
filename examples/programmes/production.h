// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// What a workshop makes from what it has: the plan of greatest profit, a linear programme.
struct Production {
  struct Product {
    std::string name;
    double profit;              ///< euro a piece
    std::vector<double> needs;  ///< of each resource, a piece
    double most;                ///< that can be sold a week
    double made = 0;
  };
  struct Resource {
    std::string name, unit;
    double stock;  ///< a week
    double used = 0;
    double worth = 0;  ///< profit that one unit more would bring
  };
  std::vector<Product> products;
  std::vector<Resource> resources;
  double profit = 0;
};

/// The workshop of the example, planned. Throws Complaint when there is no plan.
Production plannedProduction(bool wholePieces);

std::string productionSection(const Production& real, const Production& whole);
