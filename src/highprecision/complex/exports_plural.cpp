// SPDX-License-Identifier: Apache-2.0
#include "frame/handle.h"
#include "highprecision/complex/plural_express.h"
#include "orvane/complex_expression.h"

// The handles of this family are addresses of objects that stand in tables of their own.
template <>
struct NativeOf<PluralCmd> {
  using type = HP::PluralCmd;
};
template <>
struct NativeOf<PluralExpress> {
  using type = HP::PluralExpress;
};
template <>
struct NativeOf<HPPlural> {
  using type = HP::HPPlural;
};

namespace {

HPPlural* entered(HP::PluralValue value) { return handleOf<HPPlural>(HP::dataTable().enter(std::move(value))); }

}  // namespace

PluralCmd* math_PluralNewCmd(void) {
  return handleOf<PluralCmd>(HP::commandTable().enter(std::make_shared<HP::PluralCmd>()));
}

PluralExpress* math_PluralNewExpress(PluralCmd* cmd) {
  const auto command = HP::commandTable().find(pointerOf(cmd));
  return command ? handleOf<PluralExpress>(command->newExpress()) : nullptr;
}

void math_PluralAddSortExpress(PluralCmd* cmd, PluralExpress* express) {
  const auto command = HP::commandTable().find(pointerOf(cmd));
  if (command && express != nullptr) command->sorted.push_back(pointerOf(express));
}

void math_PluralAddExpressParam(PluralExpress* express, PluralExpress* parameter) {
  if (express != nullptr) native(express).parameters.push_back(pointerOf(parameter));
}

void math_PluralSetExpressFun(PluralExpress* express, uint8_t code) {
  if (express != nullptr) native(express).setFun(code);
}

void math_PluralSetExpressValue(PluralExpress* express, const char* real, const char* imaginary) {
  if (express != nullptr) native(express).setValue(real, imaginary);
}

void math_PluralSetExpressValue2(PluralExpress* express, const HPPlural* data) {
  if (express != nullptr) native(express).value = HP::dataTable().find(pointerOf(data));
}

HPPlural* math_PluralAddData(const char* real, const char* imaginary) {
  auto value = std::make_shared<HP::HPPlural>();
  HP::parsePart(real, *value->real);
  HP::parsePart(imaginary, *value->imaginary);
  return entered(std::move(value));
}

HPPlural* math_PluralRun(PluralCmd* cmd, bool freeCommand) {
  const auto command = HP::commandTable().find(pointerOf(cmd));
  HPPlural* result = command ? entered(command->run()) : nullptr;
  if (freeCommand) HP::commandTable().erase(pointerOf(cmd));
  return result;
}

int32_t math_PluralGetStrValue(const HPPlural* data, char* buffer, int32_t size) {
  const auto value = HP::dataTable().find(pointerOf(data));
  return value ? HP::writeText(*value, buffer, size) : 0;
}

bool math_PluralFreeCmd(PluralCmd* cmd) { return HP::commandTable().erase(pointerOf(cmd)); }

bool math_PluralFreeData(HPPlural* data) { return HP::dataTable().erase(pointerOf(data)); }
