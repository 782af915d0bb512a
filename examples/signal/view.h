// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "record.h"
#include "svg_plot.h"

struct Curve {
  std::string name;
  const Series* values;
};

/// A range of values with a margin; never empty.
Axis axisOver(const std::vector<const Series*>& all, const std::string& label);

/// Curves over common abscissae as a card with a legend.
std::string curves(const std::string& id, const std::string& title, const Series& x, const Axis& across, const Axis& up,
                   const std::vector<Curve>& all, const std::string& caption);

/// Curves over the time of a record, or over its last `units` of time.
class View {
 public:
  explicit View(const Record& record, double units = 0);
  std::string figure(const std::string& id, const std::string& title, const std::string& label,
                     const std::vector<Curve>& all, const std::string& caption) const;

 private:
  const Record& record;
  size_t first;
};

std::string numberCell(double value, int digits = 4);

/// Head of a table: the first column is text, the others are numbers.
std::string tableHead(const std::vector<std::string>& names);
inline const char* const kTableEnd = "</tbody></table></div>\n";
