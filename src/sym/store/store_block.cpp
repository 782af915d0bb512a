// SPDX-License-Identifier: Apache-2.0
#include "sym/store/store_block.h"

#include <vector>

#include "frame/data_stream.h"
#include "frame/numbers.h"

namespace Sym {

namespace {

/// The node and all below it, a parent before its arguments. A missing node is written as a number that is none.
void writeNode(DataStream& stream, const SymObject* root) {
  std::vector<const SymObject*> pending{root};
  while (!pending.empty()) {
    const SymObject* node = pending.back();
    pending.pop_back();
    stream.put(node ? node->kind : Code::Number);
    stream.put(node ? node->coef : kNaN);
    if (!node || node->kind == Code::Number) continue;
    if (node->kind == Code::Variable) {
      stream.put(node->var->id);
      continue;
    }
    stream.put(static_cast<uint32_t>(node->args.size()));
    for (std::size_t i = node->args.size(); i-- > 0;) pending.push_back(node->args[i].get());
  }
}

constexpr uint64_t kSmallestNode = 1 + 8;
constexpr uint32_t kEmptyRows = 65536;  ///< rows without columns cost no bytes: as many in a block as anyone needs

/// What a block holds, before it is added to the store.
struct Contents {
  std::vector<VarPtr> variables;
  std::vector<MatrixPtr> matrices;
  uint32_t emptyRows = 0;
};

// KEPT: a node read back has its kind and coefficient but neither arguments nor the behaviour of its kind: it is worth
// its coefficient; expected: the expression (kept.csv: Read_node)
NodePtr readNode(DataStream& stream, const Contents& contents) {
  NodePtr top = newNode(Code::Number);
  uint64_t pending = 1;
  for (bool first = true; pending > 0 && !stream.bad(); first = false) {
    --pending;
    const auto kind = stream.take<uint8_t>();
    const auto coef = stream.take<double>();
    VarPtr variable;
    if (kind == Code::Variable) {
      const auto index = static_cast<uint32_t>(stream.take<int32_t>());
      if (index < contents.variables.size())
        variable = contents.variables[index];
      else
        stream.makeBad();
    } else if (kind != Code::Number) {
      pending += stream.take<uint32_t>();
      if (pending > stream.left() / kSmallestNode) stream.makeBad();
    }
    if (!first) continue;
    top->kind = kind;
    top->coef = coef;
    top->var = std::move(variable);
  }
  return top;
}

MatrixPtr readMatrix(DataStream& stream, Contents& contents) {
  const auto rows = stream.take<uint32_t>();
  const auto columns = stream.take<uint32_t>();
  if (rows == 0) return std::make_shared<SymMatrix2d_t>();  // whatever it says of columns
  if (rows > (columns == 0 ? kEmptyRows - contents.emptyRows : stream.left() / kSmallestNode / columns))
    stream.makeBad();
  if (stream.bad()) return nullptr;
  if (columns == 0) contents.emptyRows += rows;
  auto matrix = std::make_shared<SymMatrix2d_t>(rows, columns);
  for (auto& row : matrix->data)
    for (NodePtr& element : row) element = readNode(stream, contents);
  return matrix;
}

Contents readContents(DataStream& stream) {
  Contents contents;
  const auto symbolCount = stream.take<uint32_t>();
  for (uint32_t i = 0; i < symbolCount && !stream.bad(); ++i) {
    auto variable = std::make_shared<BaseSym_s>();
    variable->value = stream.take<double>();
    variable->name = stream.takeText(stream.take<uint32_t>());
    contents.variables.push_back(std::move(variable));
  }
  const auto matrixCount = stream.take<uint32_t>();
  for (uint32_t i = 0; i < matrixCount && !stream.bad(); ++i) contents.matrices.push_back(readMatrix(stream, contents));
  return contents;
}

/// Enters a variable that was read, or gives its value to the record of that name. All nodes that were read hold the
/// record that is returned.
void addVariable(SymManger& store, VarPtr& variable) {
  const auto [entry, fresh] = store.symbols.emplace(variable->name, variable);
  if (fresh) return;
  entry->second->value = variable->value;
  variable = entry->second;
}

}  // namespace

void writeStore(SymManger& store) {
  store.stream = std::make_shared<DataStream>();
  store.tempNodes.clear();
  std::erase_if(store.symbols, [](const auto& entry) { return entry.second.use_count() == 1; });
  DataStream& stream = *store.stream;
  stream.put(static_cast<uint32_t>(store.symbols.size()));
  int32_t id = 0;
  for (const auto& [name, variable] : store.symbols) {
    variable->id = id++;
    stream.put(variable->value);
    stream.put(static_cast<uint32_t>(name.size()));
    stream.putText(name);
  }
  stream.put(static_cast<uint32_t>(store.matrices.size()));
  id = 0;
  for (const auto& [address, matrix] : store.matrices) {
    matrix->id = id++;
    stream.put(static_cast<uint32_t>(matrix->rows()));
    stream.put(static_cast<uint32_t>(matrix->cols()));
    for (const auto& row : matrix->data)
      for (const NodePtr& element : row) writeNode(stream, element.get());
  }
}

void readStore(SymManger& store, std::span<const uint8_t> block) {
  store.stream = std::make_shared<DataStream>();
  store.stream->bytes.assign(block.begin(), block.end());
  Contents contents = readContents(*store.stream);
  if (store.stream->bad() || store.stream->left() > 0) return;
  // Old matrices stand above the ids of the new ones.
  if (!contents.matrices.empty())
    for (const auto& [address, matrix] : store.matrices) matrix->id = static_cast<int32_t>(contents.matrices.size());
  int32_t id = 0;
  std::map<VarPtr, VarPtr> recordOf;
  for (VarPtr& variable : contents.variables) {
    const VarPtr read = variable;
    addVariable(store, variable);
    recordOf[read] = variable;
  }
  for (MatrixPtr& matrix : contents.matrices) {
    matrix->id = id++;
    for (auto& row : matrix->data)
      for (NodePtr& element : row)
        if (element->var) element->var = recordOf[element->var];
    SymMatrix2d_t* const address = matrix.get();
    store.matrices.emplace(address, std::move(matrix));
  }
}

}  // namespace Sym
