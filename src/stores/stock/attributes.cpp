// SPDX-License-Identifier: Apache-2.0
#include "stores/stock/attributes.h"

#include <array>

namespace Stock {
namespace {

// The number of an attribute is its place: owner, province, trade.
constexpr std::array<std::string_view, kAttributeCount> kNames = {
    "国家控股", "私人控股",                                                                      //
    "北京",     "天津",     "上海",   "河北",   "山西",     "吉林", "黑龙江", "江苏", "浙江",    //
    "安徽",     "福建",     "江西",   "山东",   "河南",     "湖北", "湖南",   "广东", "海南",    //
    "四川",     "贵州",     "陕西",   "甘肃",   "青海",     "宁夏", "新疆",   "香港", "台湾",    //
    "半导体",   "证券",     "互联网", "银行",   "科技",     "软件", "AI",     "消费", "教育",    //
    "白酒",     "房地产",   "光伏",   "新能源", "电力",     "能源", "石油",   "医疗", "减肥药",  //
    "家电",     "汽车",     "通信",   "军工",   "有色金属", "钢铁", "煤炭",   "农业", "旅游"};
static_assert(!kNames.back().empty());

}  // namespace

std::string_view attributeName(uint16_t type) { return type < kNames.size() ? kNames[type] : std::string_view{}; }

}  // namespace Stock
