// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "solver/moving_solver.h"
#include "solver/opt_function.h"
#include "solver/solver_factory.h"

/// A solver in the box [lo, hi]^n around an objective, as its owner sets it up.
template <class S>
std::shared_ptr<S> stand(std::shared_ptr<S> solver, int32_t n, int32_t candidates, double lo, double hi,
                         std::function<double(const double*)> cost) {
  auto function = std::make_shared<Solver::OptFunction>(n);
  function->valueFun = std::move(cost);
  solver->setObjective(function);
  solver->printFlag = 0;
  solver->minVar.assign(static_cast<std::size_t>(n), lo);
  solver->maxVar.assign(static_cast<std::size_t>(n), hi);
  solver->setPopulation(candidates, n);
  solver->randomise();
  return solver;
}

/// A solver with nothing but the frame: each iteration does what the test says.
class PlainSolver final : public Solver::BaseNormSolver {
 public:
  PlainSolver() : BaseNormSolver("Plain", 1) {
    iterFun = [] { return false; };
  }
};

/// 1 + x^2 of the first variable.
inline double parabola(const double* x) { return 1.0 + x[0] * x[0]; }

/// A solver that has made its start: evaluated, best picked.
inline std::shared_ptr<PlainSolver> ready(int32_t n, int32_t candidates, std::function<double(const double*)> cost) {
  auto solver = stand(std::make_shared<PlainSolver>(), n, candidates, -5.0, 5.0, std::move(cost));
  solver->evaluateAll();
  solver->pickBest();
  return solver;
}
