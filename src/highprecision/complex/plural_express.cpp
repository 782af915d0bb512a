// SPDX-License-Identifier: Apache-2.0
#include "highprecision/complex/plural_express.h"

#include "frame/code_table.h"

namespace HP {
namespace {

using Parameters = std::vector<PluralExpress*>;

// A parameter that is missing, or has no value, is undefined.
const HPPlural* valueOf(const Parameters& parameters, std::size_t i) {
  return i < parameters.size() && parameters[i] != nullptr ? parameters[i]->value.get() : nullptr;
}

template <PluralValue (*function)(const HPPlural&)>
PluralValue unary(Parameters& parameters) {
  const HPPlural* z = valueOf(parameters, 0);
  return z == nullptr ? nullptr : function(*z);
}

template <PluralValue (*function)(const HPPlural&, const HPPlural&)>
PluralValue binary(Parameters& parameters) {
  const HPPlural *a = valueOf(parameters, 0), *b = valueOf(parameters, 1);
  return a == nullptr || b == nullptr ? nullptr : function(*a, *b);
}

struct FunctionRow {
  uint8_t code;
  PluralValue (*function)(Parameters&);
};

constexpr FunctionRow kFunctions[] = {
    {0, binary<add>},
    {1, binary<subtract>},
    {2, binary<multiply>},
    {3, binary<divide>},
    {4, binary<power>},
    {10, unary<sine>},
    {15, unary<inverseHyperbolicSine>},
    {21, unary<arcSine>},
    {22, unary<arcTangent>},
    {23, unary<inverseHyperbolicTangent>},
    {38, unary<cosine>},
    {39, unary<hyperbolicCosine>},
    {42, unary<cotangent>},
    {43, unary<hyperbolicCotangent>},
    {103, unary<exponential>},
    {119, unary<logarithm>},
    {141, unary<hyperbolicSine>},
    {147, unary<squareRoot>},
    {151, unary<tangent>},
    {152, unary<hyperbolicTangent>},
};

}  // namespace

void PluralExpress::setFun(uint8_t code) {
  if (const FunctionRow* row = CodeTable<kFunctions>::find(code)) callable = row->function;
}

void PluralExpress::setValue(const char* realText, const char* imaginaryText) {
  if (value == nullptr) value = std::make_shared<HPPlural>();
  parsePart(realText, *value->real);
  parsePart(imaginaryText, *value->imaginary);
}

PluralExpress* PluralCmd::newExpress() {
  owned.push_back(std::make_shared<PluralExpress>());
  return owned.back().get();
}

PluralValue PluralCmd::run() {
  for (PluralExpress* express : sorted) express->value = express->callable(express->parameters);
  return sorted.empty() ? nullptr : sorted.back()->value;
}

HostTable<PluralCmd>& commandTable() {
  static HostTable<PluralCmd> table;
  return table;
}

HostTable<HPPlural>& dataTable() {
  static HostTable<HPPlural> table;
  return table;
}

}  // namespace HP
