// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// How the numbers of a file are written.
struct NumberForm {
  char decimal = '.';
  char thousands = 0;  ///< between groups of three digits; 0: none
};

/// The finite number that a cell holds, nothing else but blanks around it.
std::optional<double> numberIn(std::string_view text, NumberForm form = {});

/// A cell for a message: in quotes, at most 40 bytes, without control characters.
std::string inQuotes(std::string_view text);

/// Reads a text file line by line and knows where it is, for the messages. Takes UTF-8 and UTF-16 with a byte order
/// mark, lines that end by LF or CR LF, cells in double quotes. Throws Complaint for a file that cannot be read, is
/// compressed or holds a zero byte, and for a quote that is not closed.
class CsvReader {
 public:
  /// delimiter: 0 finds it from the first line, a tab before a semicolon before a comma.
  CsvReader(const std::string& path, char delimiter);

  /// The cells of the next line that is not empty; false at the end.
  bool next(std::vector<std::string>& cells);

  /// Throws a Complaint that names the file and the line last read.
  [[noreturn]] void complain(const std::string& what) const;

  /// The number in a cell, held to [least, most]; complains of what is no `what`.
  double number(const std::string& cell, double least, double most, const std::string& what) const;

 private:
  void split(std::string_view line, std::vector<std::string>& cells) const;

  std::string path;
  char delimiter;
  std::string text;
  size_t at = 0;
  size_t lineNumber = 0;
};

/// Hands out the lines behind the header, which is not read; each must have as many cells as `columns` names. Throws
/// Complaint, also for a file without such a line.
void readRows(const std::string& path, char delimiter, const std::vector<std::string>& columns,
              const std::function<void(const CsvReader& reader, const std::vector<std::string>& cells)>& take);

/// A file with a header: columns of numbers, and behind them one of texts if that was asked for.
struct CsvTable {
  std::vector<std::string> names;
  std::vector<std::vector<double>> columns;
  std::vector<std::string> texts;

  size_t rows() const { return columns.front().size(); }
};

/// Reads a table of at least two columns. Throws Complaint, with file, line and value, for what is no finite number.
CsvTable readTable(const std::string& path, bool lastIsText);
