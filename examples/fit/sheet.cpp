// SPDX-License-Identifier: Apache-2.0
#include "sheet.h"

#include <iconv.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace {

constexpr std::string_view kBegin = "\\begin{";
constexpr std::string_view kEnd = "\\end{";
constexpr std::string_view kCases = "\\begin{cases}";
constexpr std::string_view kRowEnd = "\\\\\\\\";  // four backslashes: two row ends of LaTeX

constexpr std::string_view kInner = "Inner distribution";
constexpr std::string_view kOuter = "Generalisation";

constexpr std::pair<std::string_view, std::string_view> kLabels[] = {
    {"概率密度函数", "Density"},
    {"累积分布函数", "Distribution function"},
    {"分布均值", "Mean"},
    {"分布方差", "Variance"},
    {"参数范围", "Parameter range"},
    {"参数取值", "Fitted parameters"},
    {"子模型", kInner},
    {"主模型", kOuter},
};

std::string fromGBK(const std::string& bytes) {
  const iconv_t converter = iconv_open("UTF-8", "GBK");
  if (converter == reinterpret_cast<iconv_t>(-1)) return bytes;
  std::string result(bytes.size() * 3 + 1, '\0');
  std::string source = bytes;
  char* in = source.data();
  char* out = result.data();
  size_t inLeft = source.size();
  size_t outLeft = result.size();
  iconv(converter, &in, &inLeft, &out, &outLeft);
  iconv_close(converter);
  result.resize(result.size() - outLeft);
  return result;
}

std::string_view trimmed(std::string_view text) {
  const auto blank = [](char c) { return c == ' ' || c == '\n' || c == '\t'; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

std::string english(std::string_view label) {
  label = trimmed(label);
  if (label.ends_with(':')) label.remove_suffix(1);
  for (const auto& [chinese, text] : kLabels)
    if (label == chinese) return std::string(text);
  return std::string(label);
}

void replaceAll(std::string& text, std::string_view from, std::string_view to) {
  for (size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
    text.replace(at, from.size(), to);
}

/// Parentheses around a fraction grow with it: \left( ... \right), where both stand in the same group and cell.
std::string grownParentheses(const std::string& text) {
  struct Open {
    size_t at;
    int depth;
    bool breaks;  // a cell or row ends inside: such a pair must stay as it is
  };
  std::vector<Open> stack;
  std::vector<std::pair<size_t, std::string_view>> grown;
  int depth = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '{') ++depth;
    if (c == '}') --depth;
    if (c == '&' || text.compare(i, 2, "\\\\") == 0)
      for (Open& open : stack) open.breaks = true;
    if (c == '(') stack.push_back({i, depth, false});
    if (c != ')' || stack.empty()) continue;
    const Open open = stack.back();
    stack.pop_back();
    const std::string_view inside = std::string_view(text).substr(open.at, i - open.at);
    const bool sized = text.compare(open.at < 5 ? 0 : open.at - 5, 5, "\\left") == 0;
    if (open.depth != depth || open.breaks || sized || inside.find("\\dfrac") == std::string_view::npos) continue;
    grown.emplace_back(open.at, "\\left");
    grown.emplace_back(i, "\\right");
  }
  std::sort(grown.begin(), grown.end());
  std::string result;
  size_t done = 0;
  for (const auto& [at, word] : grown) {
    result.append(text, done, at - done).append(word);
    done = at;
  }
  return result.append(text, done);
}

/// Small changes for the typesetter: names of functions upright, one row end where the sheet writes two, and
/// parentheses as high as what they hold.
std::string adapted(std::string_view formula) {
  std::string text(trimmed(formula));
  replaceAll(text, kRowEnd, "\\\\");
  for (const char* name : {"PDF", "PMF", "CDF"})
    replaceAll(text, std::string(name) + "(x)", "\\mathrm{" + std::string(name) + "}(x)");
  replaceAll(text, "\\mathbf{", "\\operatorname{");
  return grownParentheses(text);
}

/// Cuts text at a mark, but not inside \begin ... \end.
std::vector<std::string_view> cut(std::string_view text, std::string_view mark) {
  std::vector<std::string_view> parts;
  int depth = 0;
  size_t start = 0;
  for (size_t i = 0; i < text.size();) {
    const std::string_view rest = text.substr(i);
    if (depth == 0 && rest.starts_with(mark)) {
      parts.push_back(text.substr(start, i - start));
      i += mark.size();
      start = i;
      continue;
    }
    if (rest.starts_with(kBegin)) ++depth;
    if (rest.starts_with(kEnd)) --depth;
    ++i;
  }
  parts.push_back(text.substr(start));
  return parts;
}

std::vector<SheetRow> readCases(std::string_view text) {
  std::vector<SheetRow> rows;
  const size_t begin = text.find(kCases);
  const size_t end = text.rfind("\\end{cases}");
  if (begin == std::string_view::npos || end == std::string_view::npos) return rows;
  const std::string_view body = text.substr(begin + kCases.size(), end - begin - kCases.size());
  for (const std::string_view part : cut(body, kRowEnd)) {
    const std::string_view line = trimmed(part);
    const size_t ampersand = line.find('&');
    if (ampersand == std::string_view::npos) continue;
    SheetRow row{english(line.substr(0, ampersand)), {}, {}};
    const std::string_view rest = trimmed(line.substr(ampersand + 1));
    // A mean may be a case distinction as well: only these two labels have a sheet inside the sheet.
    if (row.label == kInner || row.label == kOuter)
      row.rows = readCases(rest);
    else
      row.formula = adapted(rest);
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace

std::vector<SheetRow> readSheet(const std::string& gbkLatex) { return readCases(fromGBK(gbkLatex)); }
