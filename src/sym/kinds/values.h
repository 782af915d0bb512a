// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "special/table.h"
#include "sym/kinds/kind.h"

/// Value columns of the table of kinds: coef times a routine of the table of functions at the arguments' values. The
/// last argument is evaluated first. No handler looks at the number of arguments but those of kinds with two routines.
namespace Sym {

inline double valueOf(const SymObject& node) { return node.bound().value(node); }
inline double argument(const SymObject& node, std::size_t i) { return valueOf(*node.args[i]); }

template <double (*f)(double)>
double called(const SymObject& node) {
  return f(argument(node, 0));
}

template <double (*f)(double, double)>
double called(const SymObject& node) {
  const double b = argument(node, 1);
  return f(argument(node, 0), b);
}

template <double (*f)(double, double, double)>
double called(const SymObject& node) {
  const double c = argument(node, 2);
  const double b = argument(node, 1);
  return f(argument(node, 0), b, c);
}

template <double (*f)(double, double, double, double)>
double called(const SymObject& node) {
  const double d = argument(node, 3);
  const double c = argument(node, 2);
  const double b = argument(node, 1);
  return f(argument(node, 0), b, c, d);
}

/// Places in the table of functions of the routines of one kind: that with the fewest and that with the most arguments.
struct Routines {
  std::size_t fewest, most;
};

template <uint8_t kCode>
consteval Routines routinesOf() {
  using SpecialFunction::kFunctions;
  constexpr std::size_t none = std::size(kFunctions);
  Routines found{none, none};
  for (std::size_t i = 0; i < none; ++i) {
    if (kFunctions[i].kindCode != kCode) continue;
    if (found.fewest == none)
      found = {i, i};
    else if (found.fewest != found.most || kFunctions[i].routine.shape <= kFunctions[found.most].routine.shape)
      throw "the routines of a kind are two at most, that of fewer arguments first";
    else
      found.most = i;
  }
  if (found.fewest == none) throw "no routine of this kind";
  return found;
}

/// Numbers of arguments that the routines of a kind take.
struct Counts {
  uint8_t fewest, most;
};

template <uint8_t kCode>
consteval Counts countsOf() {
  const Routines places = routinesOf<kCode>();
  const auto count = [](std::size_t place) {
    return static_cast<uint8_t>(SpecialFunction::kFunctions[place].routine.shape);
  };
  return {count(places.fewest), count(places.most)};
}

/// The routine of the kind without coef, for the kinds that ignore it.
template <uint8_t kCode>
double routineBare(const SymObject& node) {
  constexpr Routines places = routinesOf<kCode>();
  if constexpr (places.fewest != places.most) {
    constexpr auto most = static_cast<std::size_t>(SpecialFunction::kFunctions[places.most].routine.shape);
    if (node.args.size() >= most) return called<SpecialFunction::kRoutine<places.most>>(node);
  }
  return called<SpecialFunction::kRoutine<places.fewest>>(node);
}

template <uint8_t kCode>
double routine(const SymObject& node) {
  return node.coef * routineBare<kCode>(node);
}

double numberValue(const SymObject& node);
double variableValue(const SymObject& node);
double addValue(const SymObject& node);
double mulValue(const SymObject& node);

}  // namespace Sym
