// SPDX-License-Identifier: Apache-2.0
#include "highprecision/complex/plural_express.h"

#include "frame/code_table.h"
#include "orvane/complex_expression.h"

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
    {ORVANE_COMPLEX_ADD, binary<add>},
    {ORVANE_COMPLEX_SUBTRACT, binary<subtract>},
    {ORVANE_COMPLEX_MULTIPLY, binary<multiply>},
    {ORVANE_COMPLEX_DIVIDE, binary<divide>},
    {ORVANE_COMPLEX_POWER, binary<power>},
    {ORVANE_COMPLEX_SIN, unary<sine>},
    {ORVANE_COMPLEX_ASINH, unary<inverseHyperbolicSine>},
    {ORVANE_COMPLEX_ASIN, unary<arcSine>},
    {ORVANE_COMPLEX_ATAN, unary<arcTangent>},
    {ORVANE_COMPLEX_ATANH, unary<inverseHyperbolicTangent>},
    {ORVANE_COMPLEX_COS, unary<cosine>},
    {ORVANE_COMPLEX_COSH, unary<hyperbolicCosine>},
    {ORVANE_COMPLEX_COT, unary<cotangent>},
    {ORVANE_COMPLEX_COTH, unary<hyperbolicCotangent>},
    {ORVANE_COMPLEX_EXP, unary<exponential>},
    {ORVANE_COMPLEX_LN, unary<logarithm>},
    {ORVANE_COMPLEX_SINH, unary<hyperbolicSine>},
    {ORVANE_COMPLEX_SQRT, unary<squareRoot>},
    {ORVANE_COMPLEX_TAN, unary<tangent>},
    {ORVANE_COMPLEX_TANH, unary<hyperbolicTangent>},
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
