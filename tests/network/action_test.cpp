// SPDX-License-Identifier: Apache-2.0
#include <array>
#include <optional>

#include "network/training_host.h"

namespace {

NetAction* create(Host& host, int32_t code) { return static_cast<NetAction*>(host.own(action_Create(code))); }
OptNetSet* driver(Host& host) { return static_cast<OptNetSet*>(host.own(action_Create(ORVANE_ACTION_DRIVER))); }

NetAction* net(Host& host, NetGraph* network) {
  NetAction* action = create(host, ORVANE_ACTION_NET);
  action_NetAction_SetNetWork(action, network);
  return action;
}

Values predict(NetAction* action, const Values& in) {
  Values out(static_cast<std::size_t>(action_NetAction_GetOutputSize(action)), -7.0);
  action_NetAction_Predict(action, in.data(), out.data());
  return out;
}

/// y = w x with all entries of w the same.
NetGraph* product(Host& host, int32_t in, int32_t out, double w) {
  NetLayer* input = host.layer(in, ORVANE_LAYER_COPY);
  return host.network(input, host.layer(out, ORVANE_LAYER_W_DOT_X, input, host.var(out, in, w)));
}

/// A trainable y = w x: `steps` steps of rate 0.5 from w = 0.
struct Member {
  Member(Host& host, int32_t in, double steps = 1) : network(product(host, in, 1, 0.0)) {
    NetSolver* rule;
    opt = host.optimizer(network, ORVANE_STEPPER_SGD, &rule);
    api_SetSolverVar(rule, 0, 0, 0, 0.5, 0.5, 0);
    api_SetIterCount(opt, steps, 1, 1);
    action = create(host, ORVANE_ACTION_OPT_NET);
    action_NetAction_SetNetWork(action, network);
    action_OptNetAction_SetNetOptimizer(action, opt);
  }
  NetGraph* network;
  NetOptimizer* opt;
  NetAction* action;
};

void setData(OptNetSet* set, int32_t slot, const Values& values, int32_t rows) {
  action_OptNetSet_SetDataByArray(set, values.data(), rows, static_cast<int32_t>(values.size()) / rows, slot);
}

TEST(Actions, Combine) {
  Host host;
  std::array<NetAction*, 3> members;
  for (std::size_t i = 0; i < 3; ++i) {
    NetVar* a;
    members[i] = net(host, host.shift(3, 0.0, &a));
    api_SetNetVarValue(a, (std::array<Values, 3>{Values{1, 2, 3}, {0, 4, 0}, {5, 0, 0}})[i].data());
  }
  const Values x{0.5, 0.25, 0.0};
  const auto set = [&](int32_t mode, std::size_t count) {
    NetAction* action = create(host, mode);
    for (std::size_t i = 0; i < count; ++i) action_NetSetAction_AddAction(action, members[i]);
    return action;
  };
  EXPECT_EQ(predict(set(1, 3), x), (Values{7.5, 6.75, 3}));
  EXPECT_EQ(predict(set(2, 3), x), (Values{2.5, 2.25, 1}));
  EXPECT_EQ(predict(set(3, 3), x), (Values{1, 1, 1}));
  EXPECT_EQ(predict(set(3, 2), x), (Values{0, 1, 1}));
  for (int32_t mode = 1; mode <= 4; ++mode) EXPECT_EQ(predict(set(mode, 1), x), (Values{1.5, 2.25, 3})) << mode;

  NetAction* stack = set(4, 2);
  action_NetSetAction_AddAction(stack, net(host, product(host, 6, 3, 2.0)));
  EXPECT_EQ(action_NetAction_Check(stack), 1);
  EXPECT_EQ(predict(stack, x), Values(3, 2 * (1.5 + 2.25 + 3 + 0.5 + 4.25)));
  NetAction* misfit = set(4, 3);  // the last member takes 3 numbers and is given 6
  for (const double y : predict(misfit, x)) EXPECT_TRUE(std::isnan(y));

  NetAction* nested = create(host, 1);
  action_NetSetAction_AddAction(nested, set(2, 3));
  action_NetSetAction_AddAction(nested, stack);
  EXPECT_EQ(predict(nested, x), (Values{25.5, 25.25, 24}));
  action_NetSetAction_AddAction(nested, nested);
  action_NetSetAction_AddAction(stack, nested);  // would run without end
  EXPECT_EQ(predict(nested, x), (Values{25.5, 25.25, 24}));

  NetAction* vote = create(host, 3);  // kept.csv: Action_vote
  for (int i = 0; i < 2; ++i) action_NetSetAction_AddAction(vote, net(host, product(host, 1, 1, -5.0)));
  EXPECT_EQ(predict(vote, {3}), (Values{1}));
}

TEST(Actions, CodesOfCheck) {
  Host host;
  for (int32_t code = -3; code < 700; ++code) {
    const bool known = (code >= 0 && code <= 4) || (code >= 300 && code <= 304) || code == 600;
    void* action = host.own(action_Create(code));
    EXPECT_EQ(action != nullptr, known) << code;
    if (!known || code == 600) continue;
    auto* handle = static_cast<NetAction*>(action);
    EXPECT_EQ(action_NetAction_Check(handle), code == 0 ? 90 : code == 300 ? 62 : 81) << code;
    EXPECT_EQ(action_NetAction_GetInputSize(handle), 0);
    EXPECT_EQ(action_NetAction_GetOutputSize(handle), 0);
    action_NetAction_Predict(handle, nullptr, nullptr);
    action_NetSetAction_AddAction(handle, nullptr);
    action_OptNetSetAction_AddOptNet(handle, nullptr);
    action_OptNetAction_SetNetOptimizer(handle, nullptr);
  }
  NetGraph* unready = host.own(api_CreateNetWork());
  NetAction* action = net(host, unready);
  EXPECT_EQ(action_NetAction_Check(action), 91);
  NetLayer* input = host.layer(2, ORVANE_LAYER_COPY);
  NetLayer* output = host.layer(3, ORVANE_LAYER_SIN, input);
  EXPECT_EQ(api_NetWorkInit(unready, input, output), 34);
  EXPECT_EQ(action_NetAction_Check(action), 91);
  for (const double y : predict(action, {1, 2})) EXPECT_TRUE(std::isnan(y));
  NetAction* set = create(host, 2);
  action_NetSetAction_AddAction(set, net(host, product(host, 1, 1, 1.0)));
  EXPECT_EQ(action_NetAction_Check(set), 1);
  action_NetSetAction_AddAction(set, action);
  EXPECT_EQ(action_NetAction_Check(set), 91);
}

TEST(Actions, CodesOfInit) {
  // Slots as (rows, columns), left out where nothing was set.
  using Slot = std::optional<std::pair<int32_t, int32_t>>;
  struct Case {
    int32_t code;
    std::array<Slot, 4> slots;
  };
  const Slot none, good{{2, 1}}, empty{{0, 1}}, more{{3, 1}}, narrow{{2, 0}}, wide{{2, 2}};
  const std::vector<Case> cases{
      {1, {good, good, none, none}},     {1, {good, good, good, good}},     {1, {none, none, good, good}},
      {101, {good, none, none, none}},   {102, {empty, good, none, none}},  {103, {good, more, none, none}},
      {104, {good, good, good, none}},   {105, {good, good, empty, good}},  {106, {good, good, good, more}},
      {107, {narrow, good, none, none}}, {108, {good, narrow, none, none}}, {109, {good, good, wide, good}},
      {110, {good, good, good, wide}},   {116, {none, none, none, none}},   {111, {none, none, good, none}},
      {112, {none, none, empty, good}},  {113, {none, none, good, more}},   {114, {none, none, narrow, good}},
      {115, {none, none, good, narrow}}, {14, {wide, good, none, none}},    {15, {good, wide, none, none}},
      {101, {good, none, good, good}},   {1, {none, good, good, good}}};
  for (const Case& c : cases) {
    Host host;
    const Member member(host, 1);
    OptNetSet* set = driver(host);
    for (int32_t slot = 0; slot < 4; ++slot)
      if (const Slot& s = c.slots[static_cast<std::size_t>(slot)])
        action_OptNetSet_SetDataDim(set, s->first, s->second, slot);
    EXPECT_EQ(action_OptNetSet_Init(set), 100);
    action_OptNetSet_SetRoot(set, net(host, member.network));
    EXPECT_EQ(action_OptNetSet_Init(set), 100) << "not one that trains";
    action_OptNetSet_SetRoot(set, member.action);
    EXPECT_EQ(action_OptNetSet_Init(set), c.code);
    EXPECT_EQ(action_OptNetSet_Optimize(set), c.code == 1) << c.code;
    EXPECT_EQ(action_OptNetSet_CurrentOptimizer(set), c.code == 1 ? member.opt : nullptr);
    action_OptNetAction_SetNetOptimizer(member.action, nullptr);
    if (c.code == 1) {
      EXPECT_EQ(action_OptNetSet_Init(set), 62);
    }
  }
}

/// Three members under `code` on x = 1, target 1, tested on rows of their own; the last gets `lastIn` inputs.
struct Trained {
  Trained(int32_t code, int32_t lastIn) : members{Member(host, 1), Member(host, 1), Member(host, lastIn)} {
    root = create(host, code);
    for (const Member& member : members) action_OptNetSetAction_AddOptNet(root, member.action);
    OptNetSet* set = driver(host);
    for (const int32_t slot : {0, 1, 2, 3}) setData(set, slot, {1, 1}, 2);
    action_OptNetSet_SetRoot(set, root);
    EXPECT_TRUE(action_OptNetSet_Optimize(set)) << code;
    EXPECT_EQ(action_OptNetSet_CurrentOptimizer(set), members[2].opt);
  }
  double weight(std::size_t i) const { return variables(members[i].network)[0]; }
  double best(std::size_t i) const { return Progress(members[i].opt).best; }
  Host host;
  std::array<Member, 3> members;
  NetAction* root;
};

TEST(Actions, Boosting) {
  const Trained t(301, 1);
  EXPECT_EQ(t.weight(0), 0.5);
  EXPECT_EQ(t.weight(1), 0.25);
  EXPECT_EQ(t.weight(2), 0.125);
  EXPECT_EQ(t.best(1), 0.0625) << "test targets are what is left too";
  EXPECT_EQ(t.best(2), 0.015625);
  EXPECT_EQ(predict(t.root, {1}), (Values{0.875}));
  EXPECT_EQ(api_SolveInit(t.members[0].opt), 11) << "an optimiser's own rows stay as they are";
}

TEST(Actions, SideBySide) {
  for (const int32_t code : {302, 303}) {
    const Trained t(code, 1);
    for (const std::size_t i : {0, 1, 2}) EXPECT_EQ(t.weight(i), 0.5);
    EXPECT_EQ(predict(t.root, {1}), (Values{code == 302 ? 0.5 : 1.0}));
  }
}

TEST(Actions, Stacking) {
  const Trained t(304, 2);
  EXPECT_EQ(t.weight(0), 0.5);
  EXPECT_EQ(t.weight(1), 0.5);
  EXPECT_EQ(variables(t.members[2].network), (Values{0.25, 0.25})) << "a step of rate 0.5 on inputs 0.5, target 1";
  EXPECT_EQ(t.best(2), 0.5625) << "test rows are joined too";
  EXPECT_EQ(predict(t.root, {1}), (Values{0.25}));
}

TEST(Actions, StackThatDoesNotFit) {
  Host host;
  const Member first(host, 1), last(host, 3);
  NetAction* root = create(host, 304);
  action_OptNetSetAction_AddOptNet(root, first.action);
  action_OptNetSetAction_AddOptNet(root, last.action);
  OptNetSet* set = driver(host);
  setData(set, 0, {1, 1}, 2);
  setData(set, 1, {1, 1}, 2);
  action_OptNetSet_SetRoot(set, root);
  EXPECT_EQ(action_OptNetSet_Init(set), 14) << "one joined number for three inputs";
  EXPECT_FALSE(action_OptNetSet_Optimize(set));
  NetAction* single = create(host, 304);
  action_OptNetSetAction_AddOptNet(single, first.action);
  action_OptNetSet_SetRoot(set, single);
  EXPECT_TRUE(action_OptNetSet_Optimize(set));
  EXPECT_EQ(predict(single, {1}), (Values{0.5}));
}

TEST(Actions, Nested) {
  // A mean of a boosted pair and a single one.
  Host host;
  const Member a(host, 1), b(host, 1), c(host, 1, 2);
  NetAction *pair = create(host, 301), *root = create(host, 302);
  for (const Member* member : {&a, &b}) action_OptNetSetAction_AddOptNet(pair, member->action);
  action_OptNetSetAction_AddOptNet(root, pair);
  action_OptNetSetAction_AddOptNet(root, c.action);
  action_OptNetSetAction_AddOptNet(root, root);
  action_OptNetSetAction_AddOptNet(pair, root);
  OptNetSet* set = driver(host);
  Data2D* table = host.own(api_Data2D_Create(2, 1));
  api_Data2D_SetValue(table, Values{1, 1}.data());
  action_OptNetSet_SetDataByData2D(set, table, 0);
  action_OptNetSet_SetDataDim(set, 2, 1, 1);
  for (const int32_t row : {0, 1, 2, -1}) action_OptNetSet_SetDataByRow(set, Values{1}.data(), row, 1);
  action_OptNetSet_SetDataByRow(set, Values{5}.data(), 0, 4);
  action_OptNetSet_SetRoot(set, root);
  EXPECT_EQ(action_OptNetSet_Init(set), 1);
  EXPECT_TRUE(action_OptNetSet_Optimize(set));
  EXPECT_EQ(predict(root, {1}), (Values{0.75}));
  double value;
  api_Data2D_GetRowValue(table, 0, &value);
  EXPECT_EQ(value, 1.0);
}

TEST(Actions, PreDotKeepsInputs) {
  Host host;
  const Member member(host, 1, 0);
  NetAction* root = create(host, 302);
  action_OptNetSetAction_AddOptNet(root, member.action);
  OptNetSet* set = driver(host);
  action_OptNetSet_SetPreDotValue(set, 1);
  action_OptNetSet_SetRoot(set, root);
  api_SetPreprocessType(member.opt, 0);
  api_NetWorkSetVar(member.network, Values{1}.data());
  for (const int byte : {1, 0}) {
    action_OptNetSet_SetPreDotValue(set, static_cast<uint8_t>(byte));
    trainOn(member.opt, {2, 4}, {2, 4}, 2);
    EXPECT_EQ(run(member.opt).last, byte == 1 ? 0.0 : (4 + 9) / 2.0);
  }
}

}  // namespace
