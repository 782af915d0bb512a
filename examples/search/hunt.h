// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <memory>
#include <vector>

#include "handle.h"
#include "studies.h"

/// A formula that was found, with the search that owns it.
struct Found {
  std::shared_ptr<ExpressSearch> owner;
  const SearchResult* handle = nullptr;
  int kind = 0, parameters = 0;
  double error = 0, correlation = 0;
  Vector top{}, bottom{};  ///< coefficients of numerator and denominator; exponents and shapes among them
  std::vector<int32_t> topTerms{}, bottomTerms{};
  double c0 = 0, d0 = 1;
};

struct Hunt {
  std::vector<Term> terms;
  std::vector<Found> front;    ///< the best of each number of parameters
  std::size_t chosen = 0;      ///< of the front
  std::vector<Found> ranking;  ///< the best of that number of parameters
  int64_t candidates = 0;
  double seconds = 0;
  bool stopped = false;
};

/// Searches a study on a thread of its own while this one shows the progress; `interrupted` ends it early.
Hunt hunt(const Study& study, double seconds, const volatile std::atomic<bool>& interrupted);

/// Values of a formula at new inputs.
Vector valuesAt(const Study& study, const Hunt& hunt, const Found& found, const Columns& inputs);
