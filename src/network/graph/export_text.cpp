// SPDX-License-Identifier: Apache-2.0
#include <array>
#include <charconv>
#include <fstream>
#include <map>
#include <string>

#include "network/graph/net_work.h"
#include "network/layers/kind_table.h"

namespace NetWork {
namespace {

constexpr const char* kRule = "\n-------------------\n\n";

/// Shortest text that reads back as the same double.
std::string numberText(double v) {
  std::array<char, 32> text;
  return {text.data(), std::to_chars(text.data(), text.data() + text.size(), v).ptr};
}

/// Names of objects by their place in a list.
template <class Object>
class Names {
 public:
  void add(const Object* object) {
    // KEPT: variables without a name are called layer too; expected: var (kept.csv: Var_names)
    names.emplace(object, object->name.empty() ? "layer" + std::to_string(names.size() + 1) : object->name);
  }
  /// Empty for what was joined after the last api_NetWorkInit.
  std::string operator[](const Object* object) const {
    const auto found = names.find(object);
    return found == names.end() ? std::string() : found->second;
  }

 private:
  std::map<const Object*, std::string> names;
};

/// One line an object; two get numbers. The text differs from that of one by a blank.
template <class Object>
void writePair(std::ostream& out, const char* what, const Names<Object>& names, const Object* first,
               const Object* second) {
  if (first != nullptr && second != nullptr)
    out << what << "1 : " << names[first] << "\n" << what << "2 : " << names[second] << "\n";
  else if (first != nullptr || second != nullptr)
    out << what << " :" << names[first != nullptr ? first : second] << "\n";
}

template <class Object>
void writeList(std::ostream& out, const char* what, const Names<Object>& names, const std::vector<Object*>& list) {
  for (std::size_t k = 0; k < list.size(); ++k) out << "\n" << what << k << "  :" << names[list[k]];
}

void writeWindow(std::ostream& out, const NetPoolLayer_s& pool) {
  out << "StartIndex : " << pool.startIndex << "\n"
      << "MoveCol    : " << pool.moveCol << "\n"
      << "MoveRow    : " << pool.moveRow << "\n"
      << "WindowCol  : " << pool.windowCol << "\n"
      << "WindowRow  : " << pool.windowRow << "\n";
}

void writeVar(std::ostream& out, const NetVar_s& var, const std::string& name) {
  out << "Var   :" << name << "\nSize  :" << var.value.rowCount() << "x" << var.value.colCount() << "\nValue = [";
  for (std::size_t i = 0; i < var.value.rowCount(); ++i)
    for (std::size_t j = 0; j < var.value.colCount(); ++j)
      out << (j > 0 ? ", " : i > 0 ? "\n" : "") << numberText(var.value.row(i)[j]);
  out << "\n]\n\n";
}

std::string_view kindName(uint8_t kind) {
  const LayerKind* row = findKind(kind);
  return row == nullptr ? "Nothing" : row->name;
}

}  // namespace

void NetWork_c::exportInfo(const char* path) const {
  if (input == nullptr || path == nullptr) return;
  std::ofstream out(path, std::ios::binary);
  Names<NetLayer_s> layerNames;
  layerNames.add(input);
  for (const NetLayer_s* layer : layers) layerNames.add(layer);
  Names<NetVar_s> varNames;
  for (const NetVar_s* var : vars) varNames.add(var);

  out << "Layer : " << layerNames[input] << "\nType  : Input\nSize  : " << input->size() << kRule;
  for (const NetLayer_s* layer : layers) {
    out << "Layer : " << layerNames[layer] << "\nType  : " << kindName(layer->kind) << "\nSize  : " << layer->size()
        << "\n";
    writePair<NetLayer_s>(out, "InputLayer", layerNames, layer->input1, layer->input2);
    writePair<NetVar_s>(out, "InputVar", varNames, layer->var1, layer->var2);
    if (layer->typeCode == 20) writeList(out, "InputVar", varNames, static_cast<const NetMulVarLayer_s*>(layer)->vars);
    if (const auto* list = dynamic_cast<const NetAssemblyLayer_s*>(layer))
      writeList(out, "InputLayer", layerNames, list->layers);
    if (const auto* pool = dynamic_cast<const NetPoolLayer_s*>(layer)) writeWindow(out, *pool);
    out << kRule;
  }
  for (const NetVar_s* var : vars) writeVar(out, *var, varNames[var]);
}

}  // namespace NetWork
