// SPDX-License-Identifier: Apache-2.0
#include "highprecision/complex/plural_express.h"
#include "orvane/complex_expression.h"

namespace {

// The handles of this family are addresses of objects that stand in tables of their own, not under the object root.
HP::PluralCmd* nativeOf(PluralCmd* cmd) { return reinterpret_cast<HP::PluralCmd*>(cmd); }
HP::PluralExpress* nativeOf(PluralExpress* express) { return reinterpret_cast<HP::PluralExpress*>(express); }
const HP::HPPlural* nativeOf(const HPPlural* data) { return reinterpret_cast<const HP::HPPlural*>(data); }

HPPlural* entered(HP::PluralValue value) {
  return reinterpret_cast<HPPlural*>(HP::dataTable().enter(std::move(value)));
}

}  // namespace

PluralCmd* math_PluralNewCmd(void) {
  return reinterpret_cast<PluralCmd*>(HP::commandTable().enter(std::make_shared<HP::PluralCmd>()));
}

PluralExpress* math_PluralNewExpress(PluralCmd* cmd) {
  const auto command = HP::commandTable().find(nativeOf(cmd));
  return command ? reinterpret_cast<PluralExpress*>(command->newExpress()) : nullptr;
}

void math_PluralAddSortExpress(PluralCmd* cmd, PluralExpress* express) {
  const auto command = HP::commandTable().find(nativeOf(cmd));
  if (command && express != nullptr) command->sorted.push_back(nativeOf(express));
}

void math_PluralAddExpressParam(PluralExpress* express, PluralExpress* parameter) {
  if (express != nullptr) nativeOf(express)->parameters.push_back(nativeOf(parameter));
}

void math_PluralSetExpressFun(PluralExpress* express, uint8_t code) {
  if (express != nullptr) nativeOf(express)->setFun(code);
}

void math_PluralSetExpressValue(PluralExpress* express, const char* real, const char* imaginary) {
  if (express != nullptr) nativeOf(express)->setValue(real, imaginary);
}

void math_PluralSetExpressValue2(PluralExpress* express, const HPPlural* data) {
  if (express != nullptr) nativeOf(express)->value = HP::dataTable().find(nativeOf(data));
}

HPPlural* math_PluralAddData(const char* real, const char* imaginary) {
  auto value = std::make_shared<HP::HPPlural>();
  HP::parsePart(real, *value->real);
  HP::parsePart(imaginary, *value->imaginary);
  return entered(std::move(value));
}

HPPlural* math_PluralRun(PluralCmd* cmd, bool freeCommand) {
  const auto command = HP::commandTable().find(nativeOf(cmd));
  HPPlural* result = command ? entered(command->run()) : nullptr;
  if (freeCommand) HP::commandTable().erase(nativeOf(cmd));
  return result;
}

int32_t math_PluralGetStrValue(const HPPlural* data, char* buffer, int32_t size) {
  const auto value = HP::dataTable().find(nativeOf(data));
  return value ? HP::writeText(*value, buffer, size) : 0;
}

bool math_PluralFreeCmd(PluralCmd* cmd) { return HP::commandTable().erase(nativeOf(cmd)); }

bool math_PluralFreeData(HPPlural* data) { return HP::dataTable().erase(nativeOf(data)); }
