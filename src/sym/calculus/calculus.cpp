// SPDX-License-Identifier: Apache-2.0
#include "sym/calculus/calculus.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "frame/numbers.h"
#include "numeric/integral.h"
#include "numeric/integral_equation.h"
#include "numeric/ode.h"
#include "sym/matrix/matrix.h"
#include "sym/node/operators.h"

namespace Sym {

namespace {

/// The variable of that name, or one of its own that the store never sees.
VarPtr recordOf(std::string_view name) {
  const auto& symbols = SymManger::instance().symbols;
  if (const auto found = symbols.find(std::string(name)); found != symbols.end()) return found->second;
  auto record = std::make_shared<BaseSym_s>();
  record->name = name;
  return record;
}

/// The first variables of a list of names, as many as are wanted or there. A comma may stand behind the last name.
std::vector<VarPtr> recordsOf(std::string_view names, size_t wanted) {
  std::vector<VarPtr> result;
  while (result.size() < wanted && !names.empty()) {
    const size_t comma = names.find(',');
    result.push_back(recordOf(names.substr(0, comma)));
    names.remove_prefix(comma == std::string_view::npos ? names.size() : comma + 1);
  }
  return result;
}

/// Kernel and free term of an integral equation, in the variables "x" and "t".
struct EquationTerms {
  EquationTerms(const SymObject& kernel, const SymObject& freeTerm) : kernel(kernel), freeTerm(freeTerm) {}

  double kernelAt(double at, double s) const {
    x->value = at;
    t->value = s;
    return kernel.value();
  }
  double freeTermAt(double at) const {
    x->value = at;
    return freeTerm.value();
  }

  Program kernel, freeTerm;
  VarPtr x = recordOf("x"), t = recordOf("t");
};

NodePtr taylor(const SymObject& node, const VarPtr& variable, double centre, int32_t order) {
  NodePtr result = makeNumber(0);
  NodePtr derivative = cloneNode(node);
  double factorial = 1;
  std::string message;
  variable->value = centre;
  for (int32_t k = 0; k <= order; ++k) {
    if (k > 0) {
      derivative = derivative->fnDiff(variable, message);
      if (!derivative) return nullptr;
      factorial *= k;
    }
    if (derivative->kind == Code::Number && derivative->coef == 0) break;
    NodePtr power = k == 0 ? makeNumber(1) : pow(sub(makeVariable(variable), makeNumber(centre)), k);
    result = add(std::move(result), mul(makeNumber(derivative->fnValue() / factorial), std::move(power)));
  }
  return result;
}

}  // namespace

MatrixPtr taylorMatrix(const SymMatrix2d_t& matrix, const std::string& name, double centre, int32_t order) {
  const auto& symbols = SymManger::instance().symbols;
  const auto variable = symbols.find(name);
  if (variable == symbols.end()) return cloneMatrix(matrix);
  auto result = std::make_shared<SymMatrix2d_t>(matrix.rows(), matrix.cols());
  for (size_t r = 0; r < matrix.rows(); ++r)
    for (size_t c = 0; c < matrix.cols(); ++c) {
      NodePtr& element = result->at(r, c);
      element = taylor(*matrix.at(r, c), variable->second, centre, order);
      if (!element) return nullptr;
    }
  return result;
}

void integrals(const SymMatrix2d_t& matrix, const std::string& name, double a, double b, double* out) {
  const VarPtr variable = recordOf(name);
  for (const auto& row : matrix.data)
    for (const NodePtr& element : row) {
      SymFun f(*element, variable);
      *out++ = Integral::integralByRange(f, a, b, 0);
    }
}

void solveODE(const SymMatrix2d_t& rightSide, std::string_view names, double start, std::span<const double> initial,
              std::span<const double> positions, double* out, double tolerance) {
  const size_t n = initial.size();
  const std::vector<VarPtr> variables = recordsOf(names, n + 1);
  std::vector<Program> elements;
  bool fits = variables.size() == n + 1;
  for (const auto& row : rightSide.data)
    for (const NodePtr& element : row) {
      fits = fits && element;
      if (fits) elements.emplace_back(*element);
    }
  fits = fits && elements.size() == n;
  std::fill(out, out + n * positions.size(), kNaN);
  if (!fits) return;

  auto derivative = [&](double t, const double* y, double* dy) {
    variables[0]->value = t;
    for (size_t i = 0; i < n; ++i) variables[i + 1]->value = y[i];
    for (size_t i = 0; i < n; ++i) dy[i] = elements[i].value();
  };
  ODE::ODESolverByRKF45 solver(derivative, start, {initial.begin(), initial.end()});
  if (std::abs(tolerance) > 1e-15) solver.errorLimit = std::abs(tolerance);
  std::vector<double> away;
  std::vector<size_t> places;
  for (size_t i = 0; i < positions.size(); ++i) {
    if (std::abs(positions[i] - start) < 1e-12) {
      std::copy(initial.begin(), initial.end(), out + i * n);
    } else {
      away.push_back(positions[i]);
      places.push_back(i);
    }
  }
  solver.setPositions(away);
  solver.solve();
  for (const auto* points : {&solver.ahead, &solver.behind})
    for (const ODE::ODEData_t& point : *points)
      if (point.state.size() == n)
        std::copy(point.state.begin(), point.state.end(), out + places[static_cast<size_t>(point.index)] * n);
}

void solveVolterra(const SymObject& kernel, const SymObject& freeTerm, double a, std::span<const double> xs,
                   double* ys) {
  const EquationTerms terms(kernel, freeTerm);
  const auto k = [&](double x, double t) { return terms.kernelAt(x, t); };
  const auto f = [&](double x) { return terms.freeTermAt(x); };
  Integral::IntegralEquByVolterra equation(k, f, a);
  for (size_t i = 0; i < xs.size(); ++i) ys[i] = equation.value(xs[i]);
}

void solveFredholm(const SymObject& kernel, const SymObject& freeTerm, double a, double b, std::span<const double> xs,
                   double* ys) {
  const EquationTerms terms(kernel, freeTerm);
  const auto k = [&](double x, double t) { return terms.kernelAt(x, t); };
  const auto f = [&](double x) { return terms.freeTermAt(x); };
  Integral::IntegralEquByFredholm equation(k, f, a, b);
  equation.prepare();
  for (size_t i = 0; i < xs.size(); ++i) ys[i] = equation.solve(xs[i]);
}

}  // namespace Sym
