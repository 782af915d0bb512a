// SPDX-License-Identifier: Apache-2.0
#include "network/train/stepper_table.h"

#include "frame/code_table.h"
#include "network/train/adam_steppers.h"
#include "network/train/net_solver_by_dog_leg.h"
#include "network/train/other_steppers.h"

namespace NetWork {
namespace {

struct StepperRow {
  int32_t code;
  std::unique_ptr<NetBaseSolver_c> (*make)();
};

template <class T>
std::unique_ptr<NetBaseSolver_c> make() {
  return std::make_unique<T>();
}

constexpr StepperRow kSteppers[] = {
    {0, make<NetSolverByDogLeg>},     {1, make<NetSolverByDogLeg>},      {2, make<NetSolveByRAdma_c>},
    {3, make<NetSolveByAdma_c>},      {4, make<NetSolveByAdaMax_c>},     {5, make<NetSolveByAMSGrad_c>},
    {6, make<NetSolveByAdadelta_c>},  {7, make<NetSolveByNadam_c>},      {8, make<NetSolveBySGD_c>},
    {9, make<NetSolveByAdaMod_c>},    {10, make<NetSolveByNosAdma_c>},   {11, make<NetSolveByAdaBound_c>},
    {12, make<NetSolveByAMSBound_c>}, {13, make<NetSolveByAdaBelief_c>}, {14, make<NetSolveByNAdma_c>},
    {15, make<NetSolveByAdamW_c>},    {16, make<NetSolveByLion_c>},      {17, make<NetSolveByAdEMAMix_c>},
};

using Steppers = CodeTable<kSteppers>;

}  // namespace

std::unique_ptr<NetBaseSolver_c> makeStepper(int32_t kind) {
  const StepperRow* row = Steppers::find(kind);
  return row == nullptr ? nullptr : row->make();
}

}  // namespace NetWork
