// SPDX-License-Identifier: Apache-2.0
// Circular and hyperbolic functions: of their inverse functions, and shifted by quarters of a turn.
#include <algorithm>
#include <cmath>
#include <utility>

#include "sym/kinds/kind.h"
#include "sym/node/edit.h"
#include "sym/normal/update.h"

namespace Sym {
namespace {

constexpr double kTurn = 6.283185307179586;

NodePtr number(double x) { return makeNumber(x); }

NodePtr power(const SymObject& x, double e) { return makeBinary(Code::Pow, cloneNode(x), number(e)); }

// Sqrt(a + b x^2)
NodePtr root(double a, double b, const SymObject& x) {
  return makeUnary(Code::Sqrt, makeBinary(Code::Add, number(a), makeBinary(Code::Mul, number(b), power(x, 2))));
}

// The sine (or its hyperbolic kin) of an angle is s/h, the cosine c/h, the tangent s/c.
struct Triangle {
  NodePtr s, c, h;
};

Triangle triangleOf(const SymObject& inverse) {
  NodePtr x = cloneNode(*inverse.args[0]);
  switch (inverse.kind) {
    case Code::Asin: {
      NodePtr r = root(1, -1, *x);
      return {std::move(x), std::move(r), number(1)};
    }
    case Code::Acos: {
      NodePtr r = root(1, -1, *x);
      return {std::move(r), std::move(x), number(1)};
    }
    case Code::Asinh: {
      NodePtr r = root(1, 1, *x);
      return {std::move(x), std::move(r), number(1)};
    }
    case Code::Acosh: {
      NodePtr r = root(-1, 1, *x);
      return {std::move(r), std::move(x), number(1)};
    }
    case Code::Acot:  // atan(1/x), also for a negative x
    case Code::Acoth:
      x = power(*x, -1);
      break;
    default:
      break;
  }
  const bool hyperbolic = inverse.kind == Code::Atanh || inverse.kind == Code::Acoth;
  NodePtr h = root(1, hyperbolic ? -1 : 1, *x);
  return {std::move(x), number(1), std::move(h)};
}

// f(g(x)) for g an inverse function of the same family. True when it applied.
bool applyToInverse(SymObject& node) {
  const NodePtr inner = node.args[0];
  const bool hyperbolic = node.kind >= Code::Sinh;
  const uint8_t first = hyperbolic ? Code::Asinh : Code::Asin;
  if (inner->kind < first || inner->kind > first + 3 || !within(inner->coef, 1, kTol)) return false;
  Triangle t = triangleOf(*inner);
  NodePtr above, below;
  switch (hyperbolic ? node.kind - Code::Sinh + Code::Sin : node.kind) {
    case Code::Sin:
      above = std::move(t.s), below = std::move(t.h);
      break;
    case Code::Cos:
      above = std::move(t.c), below = std::move(t.h);
      break;
    case Code::Tan:
      above = std::move(t.s), below = std::move(t.c);
      break;
    default:
      above = std::move(t.c), below = std::move(t.s);
      break;
  }
  const NodePtr quotient = makeNode2(*above, *below, Code::Divide);
  copyFrom(node, *quotient, node.coef);
  return true;
}

// Number of quarter turns (1, 2, 3) that an argument x + number is shifted by; 0 for none of them. Drops the number.
int takeQuarters(SymObject& argument) {
  if (argument.kind != Code::Add) return 0;
  const Args& terms = argument.args;
  const auto term = std::find_if(terms.begin(), terms.end(), [](const auto& t) { return t->kind == Code::Number; });
  if (term == terms.end()) return 0;
  const double shift = std::fmod(term->get()->coef * argument.coef, kTurn);
  const auto is = [shift](double angle) { return within(shift, angle, kTol); };
  int quarters = 0;
  if (is(1.5707963267948966) || is(-4.71238898038469)) quarters = 1;
  if (is(3.141592653589793) || is(-3.141592653589793)) quarters = 2;
  if (is(4.71238898038469) || is(-1.5707963267948966)) quarters = 3;
  if (quarters == 0) return 0;
  const std::ptrdiff_t place = term - terms.begin();
  argument.args.erase(argument.args.begin() + place);
  argument.fnUpdate();
  return quarters;
}

// The common rule, then the inverse functions. True when the node is still of its kind and not folded.
bool updateFunction(SymObject& node) {
  const uint8_t kind = node.kind;
  updateCommon(node);
  return node.kind == kind && !applyToInverse(node);
}

// The rules of the four circular functions: a quarter turn on is sign times the other function.
void updateShifted(SymObject& node, uint8_t other, double sign) {
  if (!updateFunction(node)) return;
  const NodePtr argument = node.args[0];
  const int quarters = takeQuarters(*argument);
  if (quarters == 0) return;
  const bool half = quarters == 2;
  const bool ofPeriodPi = node.kind == Code::Tan || node.kind == Code::Cot;
  if (half) {
    if (!ofPeriodPi) node.coef = -node.coef;
    return setUnary(node, argument, node.kind);
  }
  node.coef *= quarters == 1 || ofPeriodPi ? sign : -sign;
  setUnary(node, argument, other);
}

}  // namespace

void updateSin(SymObject& node) { updateShifted(node, Code::Cos, 1); }
void updateCos(SymObject& node) { updateShifted(node, Code::Sin, -1); }
void updateTan(SymObject& node) { updateShifted(node, Code::Cot, -1); }
void updateCot(SymObject& node) { updateShifted(node, Code::Tan, -1); }

void updateHyperbolic(SymObject& node) { updateFunction(node); }

}  // namespace Sym
