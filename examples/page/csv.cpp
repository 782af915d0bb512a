// SPDX-License-Identifier: Apache-2.0
#include "csv.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "complaint.h"

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

// "1.234.567,5" as "1234567.5"; nothing where a separator stands elsewhere than before three digits.
std::optional<std::string> plain(std::string_view text, NumberForm form) {
  std::string result;
  bool whole = true;
  size_t group = 0, groups = 0;
  for (size_t i = 0; i <= text.size(); ++i) {
    const char c = i < text.size() ? text[i] : '\0';
    if (whole && isDigit(c)) {
      ++group;
    } else if (whole && form.thousands != 0 && c == form.thousands) {
      if (group == 0 || group > 3 || (groups > 0 && group != 3)) return std::nullopt;
      ++groups;
      group = 0;
      continue;
    } else if (whole && c != '+' && c != '-') {
      if (groups > 0 && group != 3) return std::nullopt;
      whole = false;
    }
    if (i == text.size()) break;
    if (c == '.' && form.decimal != '.') return std::nullopt;
    result += c == form.decimal ? '.' : c;
  }
  return result;
}

const char* compression(std::string_view bytes) {
  struct Magic {
    std::string_view bytes;
    const char* name;
  };
  static constexpr Magic kMagics[] = {{"\x1f\x8b", "gzip"},
                                      {"PK\x03\x04", "zip"},
                                      {"BZh", "bzip2"},
                                      {"\xfd"
                                       "7zXZ",
                                       "xz"},
                                      {"\x28\xb5\x2f\xfd", "zstd"}};
  for (const Magic& magic : kMagics)
    if (bytes.starts_with(magic.bytes)) return magic.name;
  return nullptr;
}

void appendUtf8(std::string& text, uint32_t c) {
  if (c < 0x80) {
    text += static_cast<char>(c);
    return;
  }
  const int more = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
  static constexpr unsigned kLead[] = {0, 0xC0, 0xE0, 0xF0};
  text += static_cast<char>(kLead[more] | (c >> (6 * more)));
  for (int i = more - 1; i >= 0; --i) text += static_cast<char>(0x80 | ((c >> (6 * i)) & 0x3F));
}

// UTF-16 as UTF-8; half a pair becomes the replacement character.
std::string fromUtf16(std::string_view bytes, bool bigEndian) {
  std::string result;
  const auto unit = [&](size_t i) {
    const auto low = static_cast<uint8_t>(bytes[2 * i + (bigEndian ? 1 : 0)]);
    const auto high = static_cast<uint8_t>(bytes[2 * i + (bigEndian ? 0 : 1)]);
    return static_cast<uint32_t>(high << 8 | low);
  };
  const size_t count = bytes.size() / 2;
  for (size_t i = 0; i < count; ++i) {
    uint32_t c = unit(i);
    if (c >= 0xD800 && c < 0xDC00 && i + 1 < count && (unit(i + 1) & 0xFC00) == 0xDC00)
      c = 0x10000 + ((c - 0xD800) << 10) + (unit(++i) - 0xDC00);
    else if (c >= 0xD800 && c < 0xE000)
      c = 0xFFFD;
    appendUtf8(result, c);
  }
  return result;
}

std::string load(const std::string& path) {
  if (std::error_code error; std::filesystem::is_directory(path, error)) throw Complaint(path + ": is a directory");
  std::ifstream file(path, std::ios::binary);
  if (!file) throw Complaint(path + ": " + std::strerror(errno));
  std::string bytes{std::istreambuf_iterator<char>(file), {}};
  if (file.bad()) throw Complaint(path + ": " + std::strerror(errno));
  if (const char* name = compression(bytes)) throw Complaint(path + ": is compressed (" + name + "), unpack it first");
  const bool bigEndian = bytes.starts_with("\xFE\xFF");
  if (bigEndian || bytes.starts_with("\xFF\xFE")) bytes = fromUtf16(bytes, bigEndian);
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.erase(0, 3);
  if (const size_t zero = bytes.find('\0'); zero != std::string::npos)
    throw Complaint(path + ":" + std::to_string(1 + std::count(bytes.begin(), bytes.begin() + zero, '\n')) +
                    ": holds a zero byte, this is no text file");
  return bytes;
}

// A tab or a semicolon is rare inside a cell; a comma is not ("Paris, Texas").
char likelyDelimiter(std::string_view line) {
  if (line.find('\t') != std::string_view::npos) return '\t';
  if (line.find(';') != std::string_view::npos) return ';';
  return ',';
}

}  // namespace

std::optional<double> numberIn(std::string_view text, NumberForm form) {
  const std::optional<std::string> digits = plain(trimmed(text), form);
  if (!digits) return std::nullopt;
  std::string_view left = *digits;
  if (left.starts_with('+') && !left.starts_with("+-")) left.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(left.data(), left.data() + left.size(), value);
  if (error != std::errc() || end != left.data() + left.size() || !std::isfinite(value)) return std::nullopt;
  return value;
}

std::string inQuotes(std::string_view text) {
  constexpr size_t kMost = 40;
  std::string shown(text.substr(0, kMost));
  for (char& c : shown)
    if (static_cast<unsigned char>(c) < 32 || c == 127) c = '?';
  return "\"" + shown + (text.size() > kMost ? "...\"" : "\"");
}

CsvReader::CsvReader(const std::string& path, char delimiter) : path(path), delimiter(delimiter), text(load(path)) {}

bool CsvReader::next(std::vector<std::string>& cells) {
  while (at < text.size()) {
    const size_t end = std::min(text.find('\n', at), text.size());
    std::string_view line(text.data() + at, end - at);
    at = end + 1;
    ++lineNumber;
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (trimmed(line).empty()) continue;
    if (delimiter == 0) delimiter = likelyDelimiter(line);
    split(line, cells);
    return true;
  }
  return false;
}

void CsvReader::complain(const std::string& what) const {
  throw Complaint(path + ":" + std::to_string(lineNumber) + ": " + what);
}

void CsvReader::split(std::string_view line, std::vector<std::string>& cells) const {
  cells.clear();
  size_t from = 0;
  while (true) {
    std::string cell;
    if (from < line.size() && line[from] == '"') {
      for (++from;; ++from) {
        if (from >= line.size()) complain("a quote is opened and not closed");
        if (line[from] == '"' && (from + 1 >= line.size() || line[from + 1] != '"')) break;
        if (line[from] == '"') ++from;
        cell += line[from];
      }
      ++from;
    }
    const size_t end = std::min(line.find(delimiter, from), line.size());
    cell += line.substr(from, end - from);
    cells.emplace_back(trimmed(cell));
    if (end == line.size()) return;
    from = end + 1;
  }
}

double CsvReader::number(const std::string& cell, double least, double most, const std::string& what) const {
  const std::optional<double> value = numberIn(cell);
  if (!value || *value < least || *value > most) complain(inQuotes(cell) + " is no " + what);
  return *value;
}

void readRows(const std::string& path, char delimiter, const std::vector<std::string>& columns,
              const std::function<void(const CsvReader&, const std::vector<std::string>&)>& take) {
  CsvReader reader(path, delimiter);
  std::vector<std::string> cells;
  reader.next(cells);  // the header
  size_t rows = 0;
  for (; reader.next(cells); ++rows) {
    if (cells.size() < columns.size()) reader.complain("has no column " + columns[cells.size()]);
    take(reader, cells);
  }
  if (rows == 0) throw Complaint(path + ": holds no line behind its header");
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
      const std::optional<double> value = numberIn(cells[k]);
      if (!value)
        reader.complain(inQuotes(cells[k]) + " is no finite number (column " + inQuotes(table.names[k]) + ")");
      table.columns[k].push_back(*value);
    }
    if (lastIsText) table.texts.push_back(cells.back());
  }
  if (table.rows() == 0) throw Complaint(path + ": has a header and no row");
  return table;
}
