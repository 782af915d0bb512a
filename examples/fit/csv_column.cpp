// SPDX-License-Identifier: Apache-2.0
#include "csv_column.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "complaint.h"
#include "csv.h"

namespace {

/// Index of the column that the user names: a header's name, else a number from 1.
size_t columnIndex(const CsvReader& reader, const std::string& wanted, const std::vector<std::string>& cells,
                   bool named) {
  if (wanted.empty()) return 0;
  if (named)
    if (const auto found = std::find(cells.begin(), cells.end(), wanted); found != cells.end())
      return static_cast<size_t>(found - cells.begin());
  size_t ordinal = 0;
  const auto [end, error] = std::from_chars(wanted.data(), wanted.data() + wanted.size(), ordinal);
  if (error != std::errc() || end != wanted.data() + wanted.size())
    reader.complain("no column is called " + inQuotes(wanted));
  if (ordinal < 1 || ordinal > cells.size())
    reader.complain("column " + wanted + " is asked for, the line has " + std::to_string(cells.size()));
  return ordinal - 1;
}

// What may make a number of a cell that is none as it stands.
std::string advice(const std::string& cell, const NumberForm& form) {
  if (cell.empty() || cell.find_first_not_of("0123456789+-., '") != std::string::npos) return "";
  if (form.decimal == '.' && numberIn(cell, {',', 0})) return "; --decimal comma reads a decimal comma";
  return "; --decimal and --thousands tell how numbers are written";
}

}  // namespace

CsvColumn readColumn(const Options& options) {
  CsvReader reader(options.dataPath, options.delimiter);
  std::vector<std::string> cells;
  if (!reader.next(cells)) throw Complaint(options.dataPath + ": is empty");

  const size_t index = columnIndex(reader, options.column, cells, options.header != Header::absent);
  const bool hasHeader = options.header == Header::present ||
                         (options.header == Header::automatic && !numberIn(cells[index], options.numbers));
  CsvColumn column;
  column.name = hasHeader && !cells[index].empty() ? cells[index] : "column " + std::to_string(index + 1);
  bool more = hasHeader ? reader.next(cells) : true;
  for (; more; more = reader.next(cells)) {
    if (index >= cells.size())
      reader.complain("column " + std::to_string(index + 1) + " is missing, the line has " +
                      std::to_string(cells.size()));
    const std::optional<double> value = numberIn(cells[index], options.numbers);
    if (!value)
      reader.complain(inQuotes(cells[index]) + " is no finite number (column " + inQuotes(column.name) + ")" +
                      advice(cells[index], options.numbers));
    column.values.push_back(*value);
  }

  const std::string where = options.dataPath + ": column " + inQuotes(column.name) + " has ";
  if (column.values.empty()) throw Complaint(where + "no value, a fit needs at least two");
  if (column.values.size() < 2)
    reader.complain("column " + inQuotes(column.name) + " has one value only, " + cells[index] +
                    ", a fit needs at least two");
  const auto [least, most] = std::minmax_element(column.values.begin(), column.values.end());
  if (!(*least < *most)) throw Complaint(where + "one value throughout, a fit needs at least two different ones");
  return column;
}
