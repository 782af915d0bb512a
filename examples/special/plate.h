// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// A function of one variable, computed by one call for a whole array: codes are those of orvane/array.h.
struct Curve {
  enum Call { One, Two, TwoSwapped, Poly };

  std::string name;
  uint8_t code;
  Call call = One;  ///< Two: f(parameter, x); TwoSwapped: f(x, parameter); Poly: of integer order `parameter`
  double parameter = 0;

  std::vector<double> values(const std::vector<double>& xs) const;
};

/// A value that mathematics knows, drawn as a dot on curve `curve`.
struct Mark {
  size_t curve;
  double x, y;
};

/// One plot of the atlas.
struct Plate {
  std::string family, id, title;
  double left, right, low, high;
  std::vector<Curve> curves;
  std::vector<double> poles;   ///< vertical asymptotes
  std::vector<double> limits;  ///< horizontal asymptotes
  std::vector<Mark> marks;
  std::string caption;  ///< HTML
};

/// All plates, family by family.
std::vector<Plate> plates();
