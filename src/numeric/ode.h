// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstdint>
#include <span>
#include <vector>

#include "frame/function_ref.h"

/// Initial value problems dy/dt = f(t, y), reported at given positions.
namespace ODE {

/// Writes dy/dt at (t, y) into dy; y and dy have the dimension of the start state.
using Derivative = FunctionRef<void(double t, const double* y, double* dy)>;

/// One output point. After a stop the state is that of the last step towards it, empty when there was none.
struct ODEData_t {
  int32_t index;  ///< place among the host's positions
  double t;
  std::vector<double> state;
};

/// What the solvers share: the problem, the limits, and the output points on either side of the start.
class BaseODESolver {
 public:
  BaseODESolver(Derivative derivative, double startT, std::vector<double> startState)
      : derivative(derivative), startT(startT), startState(std::move(startState)) {}
  virtual ~BaseODESolver() = default;
  BaseODESolver(const BaseODESolver&) = delete;
  BaseODESolver& operator=(const BaseODESolver&) = delete;

  virtual void solveForward() = 0;   ///< fills `ahead`
  virtual void solveBackward() = 0;  ///< fills `behind`, again from the start state

  /// Sorts finite positions into the two lists; a position equal to the start is ahead. Others are left out.
  void setPositions(std::span<const double> ts);

  /// Clears `stopFlag`, then forward when any points are ahead, backward when any are behind and no stop was asked.
  void solve();

  Derivative derivative;
  std::atomic<uint8_t> running{0}, stopFlag{0};
  double errorLimit = 1e-12;
  double maxError = 0.0;  ///< largest error estimate of an accepted step
  double minStep = 1e-6;
  double startT;
  std::vector<double> startState;
  std::vector<ODEData_t> ahead;   ///< ascending t
  std::vector<ODEData_t> behind;  ///< descending t
};

/// Fehlberg's embedded formulas of orders 4 and 5 (NASA TR R-315, 1969), with local extrapolation: the step goes on
/// from the order-5 state. Steps are doubled and halved, without a safety factor.
class ODESolverByRKF45 final : public BaseODESolver {
 public:
  ODESolverByRKF45(Derivative derivative, double startT, std::vector<double> startState);

  void solveForward() override { march(ahead, 1.0); }
  void solveBackward() override { march(behind, -1.0); }

 private:
  void march(std::vector<ODEData_t>& points, double direction);
  double tryStep(double t, const std::vector<double>& y, double h);  ///< error estimate; the result is in order5

  std::vector<double> k1, k2, k3, k4, k5, k6, work, order4, order5;
};

/// y at each of the positions, in their order: [positions*dimension]. NaN at a position that is not finite.
void solveByRKF45(Derivative derivative, double t0, std::span<const double> y0, std::span<const double> ts,
                  std::span<double> out, double tolerance);

}  // namespace ODE
