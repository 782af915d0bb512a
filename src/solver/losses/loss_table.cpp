// SPDX-License-Identifier: Apache-2.0
#include "solver/losses/loss_table.h"

#include "frame/code_table.h"
#include "solver/losses/class_losses.h"
#include "solver/losses/robust_losses.h"

namespace Solver {
namespace {

struct LossRow {
  int32_t code;
  std::unique_ptr<BaseLossFun> (*make)();
};

template <class T>
std::unique_ptr<BaseLossFun> make() {
  return std::make_unique<T>();
}

constexpr LossRow kLosses[] = {
    {0, make<LossFunByL1>},        {1, make<LossFunByL2>},
    {2, make<LossFunByLa>},        {10, make<LossFunByGemanMcClure>},
    {11, make<LossFunByHuber>},    {12, make<LossFunByPseudoHuber>},
    {13, make<LossFunByAndrews>},  {14, make<LossFunByBisquare>},
    {15, make<LossFunByCauchy>},   {16, make<LossFunByFair>},
    {17, make<LossFunByLogistic>}, {18, make<LossFunByTalwar>},
    {19, make<LossFunByWelsch>},   {60, make<LossFunByCross1>},
    {61, make<LossFunByCross2>},   {62, make<LossFunByCos1>},
    {63, make<LossFunByCos2>},     {64, make<LossFunByHinge>},
    {100, make<LossFunByClass>},
};

using Losses = CodeTable<kLosses>;

}  // namespace

std::unique_ptr<BaseLossFun> makeLossFun(int32_t kind) {
  const LossRow* row = Losses::find(kind);
  if (row == nullptr) return nullptr;
  auto loss = row->make();
  loss->kind = kind;
  return loss;
}

}  // namespace Solver
