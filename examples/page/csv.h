// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The text as a number; nothing for what is no finite number.
std::optional<double> csvNumber(std::string_view text);

/// The text in double quotes, for messages.
std::string inQuotes(std::string_view text);

/// Reads a file line by line and knows where it is, for the messages. A line may end by LF or CR LF, cells may stand in
/// double quotes, empty lines are passed over. Throws Complaint.
class CsvReader {
 public:
  /// A delimiter of 0 is found from the first line.
  CsvReader(const std::string& path, char delimiter);

  /// The cells of the next line that is not empty; false at the end.
  bool next(std::vector<std::string>& cells);

  /// Throws a Complaint with file and line.
  [[noreturn]] void complain(const std::string& what) const;

 private:
  void split(std::string_view line, std::vector<std::string>& cells) const;

  std::string path;
  char delimiter;
  std::ifstream file;
  size_t lineNumber = 0;
};

/// A file with a header: columns of numbers, and behind them one of texts if that was asked for.
struct CsvTable {
  std::vector<std::string> names;
  std::vector<std::vector<double>> columns;
  std::vector<std::string> texts;

  size_t rows() const { return columns.front().size(); }
};

/// Reads a table of at least two columns. Throws Complaint, with file, line and value, for what is no finite number.
CsvTable readTable(const std::string& path, bool lastIsText);
