// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <orvane/frame.h>
#include <orvane/network.h>

TEST(Network, EndsMustDiffer) {
  NetLayer* layer = api_CreateNetLayer(1, ORVANE_LAYER_COPY);
  NetGraph* net = api_CreateNetWork();
  EXPECT_EQ(api_NetWorkInit(net, layer, layer), 2);
  EXPECT_EQ(api_NetWorkInit(net, layer, nullptr), 2);
  api_FreeHandle(net);
  api_FreeHandle(layer);
}
