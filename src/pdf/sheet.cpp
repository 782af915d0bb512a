// SPDX-License-Identifier: Apache-2.0
#include "pdf/sheet.h"

#include "sym/text/number_text.h"

namespace PDF {
namespace {

constexpr std::string_view kValuesLabel = "参数取值:";

void replaceAll(std::string& text, std::string_view from, std::string_view to) {
  std::string result;
  std::size_t copied = 0;
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, copied)) {
    result.append(text, copied, at - copied).append(to);
    copied = at + from.size();
  }
  text = result.append(text, copied, std::string::npos);
}

/// The part of a sheet behind its title.
std::string body(const std::string& sheet) { return sheet.substr(sheet.find('}') + 1); }

}  // namespace

std::string& writeSheet(std::string& out, std::string_view name, const SheetTexts& texts,
                        std::span<const double> params) {
  const auto line = [&out](std::string_view label, std::string_view text) {
    if (!text.empty()) out.append(label).append(text).append(kLineEnd);
  };
  out = "\\text{";
  out.append(name).append("}\\begin{cases}\n");
  out.append("概率密度函数:&").append(texts.densityLabel).append("(x)=").append(texts.density).append(kLineEnd);
  line("累积分布函数:&CDF(x)=", texts.distribution);
  line("分布均值:&", texts.mean);
  line("分布方差:&", texts.variance);
  line("参数范围:&", texts.range);
  if (!params.empty()) {
    out.append(kValuesLabel).append("&");
    char letter = 'a';
    for (const double value : params) {
      if (letter != 'a') out += ',';
      out += letter++;
      out.append("=").append(Sym::latexNumberFull(value));
    }
    out += '\n';
  }
  return out.append("\\end{cases}\n");
}

std::string joinSheets(std::string_view name, std::string inner, std::size_t innerCount, std::string own,
                       std::size_t ownCount) {
  for (const std::string_view label : {"PDF(", "PMF("}) replaceAll(inner, label, "\\psi(");
  replaceAll(inner, "CDF(", "\\Psi(");
  inner = body(inner);
  own = body(own);

  char newLetter = static_cast<char>('a' + innerCount);
  std::size_t from = own.find(kValuesLabel);
  for (char oldLetter = 'a'; oldLetter < static_cast<char>('a' + ownCount); ++oldLetter, ++newLetter) {
    if (newLetter == 'e') newLetter = 'f';  // e would read as Euler's number
    const std::size_t at = own.find(std::string{oldLetter, '='}, from);
    own[at] = newLetter;
    from = at + 1;  // not the letter just written
    const std::size_t size = own.size();
    replaceAll(own, std::string{'#', oldLetter}, std::string{newLetter});
    from -= size - own.size();  // the formulas stand in front of the values
  }

  std::string out = "\\text{";
  out.append(name).append("}\\begin{cases}子模型:&").append(inner).append(kLineEnd);
  return out.append("主模型:&").append(own).append("\\end{cases}");
}

}  // namespace PDF
