// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sym/kinds/kind.h"

/// Value columns of the table of kinds: coef times a function of the arguments' values. The last argument is evaluated
/// first. No handler looks at the number of arguments but those of kinds with two forms.
namespace Sym {

inline double valueOf(const SymObject& node) { return node.bound().value(node); }
inline double argument(const SymObject& node, std::size_t i) { return valueOf(*node.args[i]); }

template <double (*f)(double)>
double value1(const SymObject& node) {
  return node.coef * f(argument(node, 0));
}

template <double (*f)(double)>
double valueBare(const SymObject& node) {
  return f(argument(node, 0));
}

template <double (*f)(double, double)>
double value2(const SymObject& node) {
  const double b = argument(node, 1);
  return node.coef * f(argument(node, 0), b);
}

template <double (*f)(double, double, double)>
double value3(const SymObject& node) {
  const double c = argument(node, 2);
  const double b = argument(node, 1);
  return node.coef * f(argument(node, 0), b, c);
}

template <double (*f)(double, double, double, double)>
double value4(const SymObject& node) {
  const double d = argument(node, 3);
  const double c = argument(node, 2);
  const double b = argument(node, 1);
  return node.coef * f(argument(node, 0), b, c, d);
}

/// Two forms of one kind, told apart by the number of arguments.
template <double (*f)(double), double (*g)(double, double)>
double value1or2(const SymObject& node) {
  return node.args.size() < 2 ? value1<f>(node) : value2<g>(node);
}

template <double (*f)(double, double), double (*g)(double, double, double)>
double value2or3(const SymObject& node) {
  return node.args.size() < 3 ? value2<f>(node) : value3<g>(node);
}

double numberValue(const SymObject& node);
double variableValue(const SymObject& node);
double addValue(const SymObject& node);
double mulValue(const SymObject& node);

/// The plain functions behind the kinds that no routine of the special functions serves.
namespace Plain {
double power(double x, double e);
double squareRoot(double x);
double ln(double x);
double exponential(double x);
double absolute(double x);
double sine(double x);
double cosine(double x);
double tangent(double x);
double cotangent(double x);
double asine(double x);
double acosine(double x);
double atangent(double x);
double acotangent(double x);
double sinh(double x);
double cosh(double x);
double tanh(double x);
double coth(double x);
double asinh(double x);
double acosh(double x);
double atanh(double x);
double acoth(double x);
double erf(double x);
double erfc(double x);
double gamma(double x);
double lnGamma(double x);
double beta(double a, double b);
double inverseLambertW(double x);
double round(double x);
double floor(double x);
double ceil(double x);
double rounding(double x);
double roundZero(double x);
double truncate(double x);
double fraction(double x);
double select(double c, double a, double b);
}  // namespace Plain

}  // namespace Sym
