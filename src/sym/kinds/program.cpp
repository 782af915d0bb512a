// SPDX-License-Identifier: Apache-2.0
#include "sym/kinds/program.h"

#include <algorithm>
#include <utility>

#include "frame/numbers.h"
#include "sym/kinds/kind.h"

namespace Sym {
namespace {

// What the value of a function comes from.
const SpecialFunction::Routine& routineOf(const SymObject& node) {
  const Kind& row = node.bound();
  const bool many = row.most != row.fewest && node.args.size() >= static_cast<std::size_t>(row.most->shape);
  return many ? *row.most : *row.fewest;
}

std::size_t argumentsOf(const SymObject* node) {
  if (node == nullptr || node->bound().code <= Code::Variable) return 0;
  return node->bound().fewest == nullptr ? node->args.size() : static_cast<std::size_t>(routineOf(*node).shape);
}

}  // namespace

Program::Program(const SymObject& root) {
  // A node follows its arguments; `next` counts those that are done.
  struct Open {
    const SymObject* node;
    std::size_t next;
  };
  std::vector<Open> open{{&root, 0}};
  std::size_t held = 0, most = 0;
  while (!open.empty()) {
    Open& at = open.back();
    const std::size_t arguments = argumentsOf(at.node);
    if (at.next < arguments) {
      open.push_back({at.node->args[at.next++].get(), 0});
      continue;
    }
    append(at.node);
    held += 1 - arguments;
    most = std::max(most, held + arguments);
    open.pop_back();
  }
  stack_.resize(most + 1);
}

void Program::append(const SymObject* node) {
  Step step{Op::number, false, 0, kNaN, {nullptr}};
  if (node == nullptr) {
    steps_.push_back(step);
    return;
  }
  const Kind& row = node->bound();
  step.coef = node->coef;
  step.count = static_cast<uint32_t>(node->args.size());
  if (row.code == Code::Variable) {
    step.op = Op::variable;
    step.variable = &node->var->value;
    variables_.push_back(node->var);
  } else if (row.code == Code::Add || row.code == Code::Mul) {
    step.op = row.code == Code::Add ? Op::sum : Op::product;
  } else if (row.code != Code::Number) {
    using SpecialFunction::Shape;
    const SpecialFunction::Routine& routine = routineOf(*node);
    step.bare = row.is(Property::bare);
    switch (routine.shape) {
      case Shape::one:
        step.op = Op::one;
        step.f1 = routine.one;
        break;
      case Shape::two:
        step.op = Op::two;
        step.f2 = routine.two;
        break;
      case Shape::three:
        step.op = Op::three;
        step.f3 = routine.three;
        break;
      default:
        step.op = Op::four;
        step.f4 = routine.four;
        break;
    }
  }
  steps_.push_back(step);
}

double Program::value() const {
  double* top = stack_.data();  // behind the last number
  const auto finish = [&top](const Step& step, double value) { top[-1] = step.bare ? value : step.coef * value; };
  for (const Step& step : steps_) {
    switch (step.op) {
      case Op::number:
        *top++ = step.coef;
        break;
      case Op::variable:
        *top++ = step.coef * *step.variable;
        break;
      case Op::sum: {
        top -= step.count;
        double sum = 0;
        for (uint32_t i = 0; i < step.count; ++i) sum += top[i];
        *top++ = step.coef * sum;
        break;
      }
      case Op::product: {
        top -= step.count;
        double product = step.coef;
        for (uint32_t i = 0; i < step.count; ++i) product *= top[i];
        *top++ = product;
        break;
      }
      case Op::one:
        finish(step, step.f1(top[-1]));
        break;
      case Op::two:
        --top;
        finish(step, step.f2(top[-1], top[0]));
        break;
      case Op::three:
        top -= 2;
        finish(step, step.f3(top[-1], top[0], top[1]));
        break;
      case Op::four:
        top -= 3;
        finish(step, step.f4(top[-1], top[0], top[1], top[2]));
        break;
    }
  }
  return top[-1];
}

}  // namespace Sym
