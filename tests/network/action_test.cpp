// SPDX-License-Identifier: Apache-2.0
#include <array>
#include <optional>

#include "network/host.h"

namespace {

NetAction* create(Host& host, int32_t code) { return static_cast<NetAction*>(host.own(action_Create(code))); }

NetAction* alone(Host& host, NetGraph* network) {
  NetAction* action = create(host, ORVANE_ACTION_NET);
  action_NetAction_SetNetWork(action, network);
  return action;
}

Numbers predict(NetAction* action, const Numbers& in) {
  Numbers out(static_cast<std::size_t>(action_NetAction_GetOutputSize(action)), -7.0);
  action_NetAction_Predict(action, in.data(), out.data());
  return out;
}

/// y = w x with all entries of w the same.
NetGraph* product(Host& host, int32_t in, int32_t out, double w) {
  NetVar* all = host.var(out, in);
  api_SetNetVarV(all, w);
  NetLayer* input = host.layer(in, ORVANE_LAYER_COPY);
  return host.network(input, host.layer(out, ORVANE_LAYER_W_DOT_X, all, input));
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

/// A driver with the members under a root of kind `code`, on rows of x = 1 and target 1 in the first `slots` slots.
struct Driven {
  Driven(Host& host, int32_t code, const std::vector<NetAction*>& members, int32_t slots = 2)
      : root(create(host, code)), set(static_cast<OptNetSet*>(host.own(action_Create(ORVANE_ACTION_DRIVER)))) {
    for (NetAction* member : members) action_OptNetSetAction_AddOptNet(root, member);
    for (int32_t slot = 0; slot < slots; ++slot) action_OptNetSet_SetDataByArray(set, Numbers{1, 1}.data(), 2, 1, slot);
    action_OptNetSet_SetRoot(set, root);
  }
  NetAction* root;
  OptNetSet* set;
};

TEST(Actions, Combine) {
  Host host;
  std::array<NetAction*, 3> members;
  const Numbers shifts[] = {{1, 2, 3}, {0, 4, 0}, {5, 0, 0}}, x{0.5, 0.25, 0.0};
  for (std::size_t i = 0; i < 3; ++i) members[i] = alone(host, host.shift(shifts[i]));
  const auto set = [&](int32_t mode, std::size_t count) {
    NetAction* action = create(host, mode);
    for (std::size_t i = 0; i < count; ++i) action_NetSetAction_AddAction(action, members[i]);
    return action;
  };
  EXPECT_EQ(predict(set(1, 3), x), (Numbers{7.5, 6.75, 3}));
  EXPECT_EQ(predict(set(2, 3), x), (Numbers{2.5, 2.25, 1}));
  EXPECT_EQ(predict(set(3, 3), x), (Numbers{1, 1, 1}));
  EXPECT_EQ(predict(set(3, 2), x), (Numbers{0, 1, 1}));
  for (int32_t mode = 1; mode <= 4; ++mode) EXPECT_EQ(predict(set(mode, 1), x), (Numbers{1.5, 2.25, 3})) << mode;

  NetAction* stack = set(4, 2);
  action_NetSetAction_AddAction(stack, alone(host, product(host, 6, 3, 2.0)));
  EXPECT_EQ(action_NetAction_Check(stack), 1);
  EXPECT_EQ(predict(stack, x), Numbers(3, 2 * (1.5 + 2.25 + 3 + 0.5 + 4.25)));
  for (const double y : predict(set(4, 3), x)) EXPECT_TRUE(std::isnan(y)) << "6 numbers for 3 inputs";

  NetAction* shorter = set(4, 2);
  action_NetSetAction_AddAction(shorter, alone(host, product(host, 6, 1, 2.0)));
  const Numbers row = predict(shorter, x);
  EXPECT_EQ(row[0], 2 * (1.5 + 2.25 + 3 + 0.5 + 4.25));
  EXPECT_TRUE(std::isnan(row[1]) && std::isnan(row[2])) << "a row is as long as that of the first member";

  NetAction* trained = create(host, 4);
  for (const int32_t in : {3, 2}) {
    NetAction* member = create(host, 300);
    action_NetAction_SetNetWork(member, product(host, in, 2, 1.0));
    action_OptNetAction_SetNetOptimizer(member, host.own(api_CreateOptimizer()));
    action_NetSetAction_AddAction(trained, member);
  }
  EXPECT_EQ(action_NetAction_Check(trained), 1) << "the last member has inputs of its own";

  NetAction* nested = create(host, 1);
  for (NetAction* member : {set(2, 3), stack, nested}) action_NetSetAction_AddAction(nested, member);
  action_NetSetAction_AddAction(stack, nested);  // like the last one, it would run without end
  EXPECT_EQ(predict(nested, x), (Numbers{25.5, 25.25, 24}));

  NetAction* vote = create(host, 3);  // kept.csv: Action_vote
  for (int i = 0; i < 2; ++i) action_NetSetAction_AddAction(vote, alone(host, product(host, 1, 1, -5.0)));
  EXPECT_EQ(predict(vote, {3}), (Numbers{1}));
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
    EXPECT_EQ(action_NetAction_GetInputSize(handle) + action_NetAction_GetOutputSize(handle), 0);
    action_NetAction_Predict(handle, nullptr, nullptr);
    action_NetSetAction_AddAction(handle, nullptr);
    action_OptNetSetAction_AddOptNet(handle, nullptr);
    action_OptNetAction_SetNetOptimizer(handle, nullptr);
  }
  NetGraph* unready = host.own(api_CreateNetWork());
  NetAction* action = alone(host, unready);
  EXPECT_EQ(action_NetAction_Check(action), 91);
  NetLayer* input = host.layer(2, ORVANE_LAYER_COPY);
  EXPECT_EQ(api_NetWorkInit(unready, input, host.layer(3, ORVANE_LAYER_SIN, input)), 34);
  EXPECT_EQ(action_NetAction_Check(action), 91);
  for (const double y : predict(action, {1, 2})) EXPECT_TRUE(std::isnan(y));
  NetAction* set = create(host, 2);
  action_NetSetAction_AddAction(set, alone(host, product(host, 1, 1, 1.0)));
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
    OptNetSet* set = Driven(host, 302, {}, 0).set;
    for (int32_t slot = 0; slot < 4; ++slot)
      if (const Slot& s = c.slots[static_cast<std::size_t>(slot)])
        action_OptNetSet_SetDataDim(set, s->first, s->second, slot);
    for (NetAction* untrainable : {static_cast<NetAction*>(nullptr), alone(host, member.network)}) {
      action_OptNetSet_SetRoot(set, untrainable);
      EXPECT_EQ(action_OptNetSet_Init(set), 100);
    }
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

TEST(Actions, Training) {
  // Three members on x = 1, target 1, tested on rows of their own: their weights, what their last test was, and what
  // the set predicts. A step goes half the way; a stacked last member gets the two 0.5 of the others.
  struct Case {
    int32_t code, lastIn;
    Numbers weights, best;
    double prediction;
  };
  const Case cases[] = {{301, 1, {0.5, 0.25, 0.125}, {0.25, 0.0625, 0.015625}, 0.875},
                        {302, 1, {0.5, 0.5, 0.5}, {0.25, 0.25, 0.25}, 0.5},
                        {303, 1, {0.5, 0.5, 0.5}, {0.25, 0.25, 0.25}, 1.0},
                        {304, 2, {0.5, 0.5, 0.25, 0.25}, {0.25, 0.25, 0.5625}, 0.25}};
  for (const Case& c : cases) {
    Host host;
    const Member members[] = {Member(host, 1), Member(host, 1), Member(host, c.lastIn)};
    const Driven driven(host, c.code, {members[0].action, members[1].action, members[2].action}, 4);
    EXPECT_TRUE(action_OptNetSet_Optimize(driven.set)) << c.code;
    EXPECT_EQ(action_OptNetSet_CurrentOptimizer(driven.set), members[2].opt);
    Numbers weights, best;
    for (const Member& member : members) {
      for (const double w : flat(member.network)) weights.push_back(w);
      best.push_back(Progress(member.opt).best);
      EXPECT_EQ(api_SolveInit(member.opt), 11) << "an optimiser's own rows stay as they are";
    }
    EXPECT_EQ(weights, c.weights) << c.code;
    EXPECT_EQ(best, c.best) << c.code;
    EXPECT_EQ(predict(driven.root, {1}), Numbers{c.prediction}) << c.code;
  }
}

TEST(Actions, StackThatDoesNotFit) {
  Host host;
  const Member first(host, 1), last(host, 3);
  const Driven wrong(host, 304, {first.action, last.action}), single(host, 304, {first.action});
  EXPECT_EQ(action_OptNetSet_Init(wrong.set), 14) << "one joined number for three inputs";
  EXPECT_FALSE(action_OptNetSet_Optimize(wrong.set));
  EXPECT_TRUE(action_OptNetSet_Optimize(single.set));
  EXPECT_EQ(predict(single.root, {1}), (Numbers{0.5}));
}

TEST(Actions, Nested) {
  // A mean of a boosted pair and a single one; inputs from a table, targets row by row.
  Host host;
  const Member a(host, 1), b(host, 1), c(host, 1, 2);
  NetAction* pair = Driven(host, 301, {a.action, b.action}).root;
  const Driven mean(host, 302, {pair, c.action}, 0);
  action_OptNetSetAction_AddOptNet(mean.root, mean.root);
  action_OptNetSetAction_AddOptNet(pair, mean.root);
  Data2D* table = host.own(api_Data2D_Create(2, 1));
  api_Data2D_SetValue(table, Numbers{1, 1}.data());
  action_OptNetSet_SetDataByData2D(mean.set, table, 0);
  action_OptNetSet_SetDataDim(mean.set, 2, 1, 1);
  for (const int32_t row : {0, 1, 2, -1}) action_OptNetSet_SetDataByRow(mean.set, Numbers{1}.data(), row, 1);
  for (const int32_t slot : {-1, 4}) action_OptNetSet_SetDataByRow(mean.set, Numbers{5}.data(), 0, slot);
  EXPECT_EQ(action_OptNetSet_Init(mean.set), 1);
  EXPECT_TRUE(action_OptNetSet_Optimize(mean.set));
  EXPECT_EQ(predict(mean.root, {1}), (Numbers{0.75}));
  EXPECT_EQ(api_Data2D_GetValueByIndex(table, 0, 0), 1.0);
}

TEST(Actions, PreDotKeepsInputs) {
  Host host;
  const Member member(host, 1, 0);
  const Driven driven(host, 302, {member.action});
  api_SetPreprocessType(member.opt, 0);
  api_NetWorkSetVar(member.network, Numbers{1}.data());
  for (const uint8_t byte : {1, 0}) {
    action_OptNetSet_SetPreDotValue(driven.set, byte);
    trainOn(member.opt, {2, 4}, {2, 4}, 2);
    EXPECT_EQ(run(member.opt).last, byte == 1 ? 0.0 : (4 + 9) / 2.0);
  }
  action_OptNetSet_SetPreDotValue(Driven(host, 302, {}, 0).set, 1);
}

}  // namespace
