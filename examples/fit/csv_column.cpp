// SPDX-License-Identifier: Apache-2.0
#include "csv_column.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>

#include "complaint.h"

namespace {

std::string_view trimmed(std::string_view text) {
  const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

std::optional<double> number(std::string_view text) {
  text = trimmed(text);
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) return std::nullopt;
  return value;
}

/// Reads a file line by line and knows where it is, for the messages.
class CsvReader {
 public:
  CsvReader(const std::string& path, char delimiter) : path(path), delimiter(delimiter) {
    if (std::error_code error; std::filesystem::is_directory(path, error)) throw Complaint(path + ": is a directory");
    file.open(path, std::ios::binary);
    if (!file) throw Complaint(path + ": " + std::strerror(errno));
  }

  /// The cells of the next line that is not empty; false at the end.
  bool next(std::vector<std::string>& cells) {
    std::string line;
    while (std::getline(file, line)) {
      ++lineNumber;
      if (lineNumber == 1 && line.starts_with("\xEF\xBB\xBF")) line.erase(0, 3);
      if (line.ends_with('\r')) line.pop_back();
      if (trimmed(line).empty()) continue;
      if (delimiter == 0) delimiter = likelyDelimiter(line);
      split(line, cells);
      return true;
    }
    if (file.bad()) throw Complaint(path + ": " + std::strerror(errno));
    return false;
  }

  [[noreturn]] void complain(const std::string& what) const {
    throw Complaint(path + ":" + std::to_string(lineNumber) + ": " + what);
  }

 private:
  // A tab or a semicolon is rare inside a cell; a comma is not ("Paris, Texas").
  static char likelyDelimiter(std::string_view line) {
    if (line.find('\t') != std::string_view::npos) return '\t';
    if (line.find(';') != std::string_view::npos) return ';';
    return ',';
  }

  void split(std::string_view line, std::vector<std::string>& cells) const {
    cells.clear();
    size_t at = 0;
    while (true) {
      std::string cell;
      if (at < line.size() && line[at] == '"') {
        for (++at;; ++at) {
          if (at >= line.size()) complain("a quote is opened and not closed");
          if (line[at] == '"' && (at + 1 >= line.size() || line[at + 1] != '"')) break;
          if (line[at] == '"') ++at;
          cell += line[at];
        }
        ++at;
      }
      const size_t end = std::min(line.find(delimiter, at), line.size());
      cell += line.substr(at, end - at);
      cells.emplace_back(trimmed(cell));
      if (end == line.size()) return;
      at = end + 1;
    }
  }

  std::string path;
  char delimiter;
  std::ifstream file;
  size_t lineNumber = 0;
};

std::string inQuotes(std::string_view text) { return "\"" + std::string(text) + "\""; }

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

}  // namespace

CsvColumn readColumn(const Options& options) {
  CsvReader reader(options.dataPath, options.delimiter);
  std::vector<std::string> cells;
  if (!reader.next(cells)) throw Complaint(options.dataPath + ": is empty");

  const size_t index = columnIndex(reader, options.column, cells, options.header != Header::absent);
  const bool hasHeader =
      options.header == Header::present || (options.header == Header::automatic && !number(cells[index]));
  CsvColumn column;
  column.name = hasHeader && !cells[index].empty() ? cells[index] : "column " + std::to_string(index + 1);
  bool more = hasHeader ? reader.next(cells) : true;
  for (; more; more = reader.next(cells)) {
    if (index >= cells.size())
      reader.complain("column " + std::to_string(index + 1) + " is missing, the line has " +
                      std::to_string(cells.size()));
    const std::optional<double> value = number(cells[index]);
    if (!value) reader.complain(inQuotes(cells[index]) + " is no finite number (column " + inQuotes(column.name) + ")");
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
