// SPDX-License-Identifier: Apache-2.0
#include "pdf/factory.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <string>

#include "pdf/table.h"

namespace PDF {
namespace {

std::shared_ptr<BasePDFFun> makePlain(int32_t code) {
  const PlainRow* row = plainLaws().find(code);
  return row != nullptr ? row->make(*row) : nullptr;
}

/// A name without blanks, tabs and line feeds, in lower case.
std::string nameKey(std::string_view name) {
  std::string key;
  for (const char c : name)
    if (c != ' ' && c != '\t' && c != '\n') key += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return key;
}

std::map<std::string, int32_t, std::less<>> makeNameMap() {
  std::map<std::string, int32_t, std::less<>> codes;
  for (const int32_t code : allPDFCodes()) codes.try_emplace(nameKey(makePDFFun(code)->getName()), code);
  return codes;
}

}  // namespace

std::shared_ptr<BasePDFFun> makePDFFun(int32_t code) {
  if (auto plain = makePlain(code)) return plain;
  const auto rows = genRows();
  const auto row = std::ranges::find(rows, code / kWrapperStep, &GenRow::k);
  if (row == rows.end()) return nullptr;
  auto inner = makePlain(code % kWrapperStep);
  if (inner == nullptr) return nullptr;
  auto fun = row->make(*row, std::move(inner));
  fun->pdfType = static_cast<uint32_t>(code);
  return fun;
}

std::shared_ptr<BasePDFFun> makePDFFunByName(std::string_view name) {
  static const auto codes = makeNameMap();
  const auto found = codes.find(nameKey(name));
  return found == codes.end() ? nullptr : makePDFFun(found->second);
}

std::shared_ptr<BasePDFFun> clonePDFFun(const BasePDFFun& source) {
  auto copy = makePDFFun(static_cast<int32_t>(source.pdfType));
  if (copy == nullptr) return nullptr;
  std::vector<double> params(source.paramSize());
  source.getParamsRaw(params.data());
  copy->setParams(params);
  copy->useQuantileStart = source.useQuantileStart;
  copy->bestParams = source.bestParams;
  return copy;
}

const std::vector<int32_t>& allPDFCodes() {
  static const std::vector<int32_t> codes = [] {
    std::vector<int32_t> all;
    for (const PlainRow* row : plainLaws().rows()) all.push_back(row->code);
    for (const GenRow& wrapper : genRows())
      for (const PlainRow* row : plainLaws().rows()) all.push_back(wrapper.k * kWrapperStep + row->code);
    return all;
  }();
  return codes;
}

}  // namespace PDF
