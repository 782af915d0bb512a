// SPDX-License-Identifier: Apache-2.0
#include "csv.h"

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <filesystem>

#include "complaint.h"

namespace {

std::string_view trimmed(std::string_view text) {
  const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

// A tab or a semicolon is rare inside a cell; a comma is not ("Paris, Texas").
char likelyDelimiter(std::string_view line) {
  if (line.find('\t') != std::string_view::npos) return '\t';
  if (line.find(';') != std::string_view::npos) return ';';
  return ',';
}

}  // namespace

std::optional<double> csvNumber(std::string_view text) {
  text = trimmed(text);
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) return std::nullopt;
  return value;
}

std::string inQuotes(std::string_view text) { return "\"" + std::string(text) + "\""; }

CsvReader::CsvReader(const std::string& path, char delimiter) : path(path), delimiter(delimiter) {
  if (std::error_code error; std::filesystem::is_directory(path, error)) throw Complaint(path + ": is a directory");
  file.open(path, std::ios::binary);
  if (!file) throw Complaint(path + ": " + std::strerror(errno));
}

bool CsvReader::next(std::vector<std::string>& cells) {
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

void CsvReader::complain(const std::string& what) const {
  throw Complaint(path + ":" + std::to_string(lineNumber) + ": " + what);
}

void CsvReader::split(std::string_view line, std::vector<std::string>& cells) const {
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

CsvTable readTable(const std::string& path, bool lastIsText) {
  CsvReader reader(path, 0);
  CsvTable table;
  if (!reader.next(table.names)) throw Complaint(path + ": is empty");
  const size_t width = table.names.size();
  if (width < 2) reader.complain("the header needs two columns at least");
  table.columns.resize(width - (lastIsText ? 1 : 0));
  for (std::vector<std::string> cells; reader.next(cells);) {
    if (cells.size() != width)
      reader.complain("has " + std::to_string(cells.size()) + " cells, the header " + std::to_string(width));
    for (size_t k = 0; k < table.columns.size(); ++k) {
      const std::optional<double> value = csvNumber(cells[k]);
      if (!value)
        reader.complain(inQuotes(cells[k]) + " is no finite number (column " + inQuotes(table.names[k]) + ")");
      table.columns[k].push_back(*value);
    }
    if (lastIsText) table.texts.push_back(cells.back());
  }
  if (table.rows() == 0) throw Complaint(path + ": has a header and no row");
  return table;
}
