// SPDX-License-Identifier: Apache-2.0
#include "network/native_network.h"

using NetWork::nativeOrNull;

NetGraph* api_CreateNetWork(void) { return registered<NetGraph>(std::make_unique<NetWork::NetWork_c>()); }

int32_t api_NetWorkInit(NetGraph* net, NetLayer* input, NetLayer* output) {
  return native(net).init(nativeOrNull(input), nativeOrNull(output));
}

int32_t api_GetInputSize(const NetGraph* net) { return static_cast<int32_t>(native(net).inputSize()); }

int32_t api_GetOutputSize(const NetGraph* net) { return static_cast<int32_t>(native(net).outputSize()); }

bool api_RunWork(NetGraph* net, const double* input, double* output) { return native(net).runWork(input, output); }

int32_t api_NetWorkGetVarSize(const NetGraph* net) { return static_cast<int32_t>(native(net).varSize()); }

void api_NetWorkGetVar(const NetGraph* net, double* data) { native(net).getVar(data); }

void api_NetWorkSetVar(NetGraph* net, const double* data) { native(net).setVar(data); }

void api_NetRandValue(NetGraph* net, double scale) { native(net).randValue(scale); }

void api_NetWorkGetDiffValue(NetGraph* net, double* data) { native(net).inputJacobian(data); }

void api_NetExportInfo(const NetGraph* net, const char* path) { native(net).exportInfo(path); }
