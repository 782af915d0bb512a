// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "sym/node/address_table.h"
#include "sym/node/node.h"

class DataStream;

namespace Sym {

/// A two-dimensional array of expressions, the unit that most exports pass. A single expression is 1 by 1.
struct SymMatrix2d_t {
  SymMatrix2d_t() = default;
  SymMatrix2d_t(std::size_t rows, std::size_t cols) : data(rows, std::vector<NodePtr>(cols)) {}

  int32_t id = 0;  ///< 0 until the store is written out or read in
  std::vector<std::vector<NodePtr>> data;
  std::vector<VarPtr> baseSyms;  ///< ordered list of variables, filled on demand
  std::vector<double> saved;     ///< snapshot of the values of baseSyms

  std::size_t rows() const { return data.size(); }
  std::size_t cols() const { return data.empty() ? 0 : data[0].size(); }
  NodePtr& at(std::size_t row, std::size_t col) { return data.at(row).at(col); }
  const NodePtr& at(std::size_t row, std::size_t col) const { return data.at(row).at(col); }
};

using MatrixPtr = std::shared_ptr<SymMatrix2d_t>;

/// The process-wide store: what the host holds by bare addresses lives here. It has no lock.
class SymManger {
 public:
  static SymManger& instance();

  std::shared_ptr<DataStream> stream;
  AddressTable tempNodes;  ///< nodes handed to the host
  std::map<std::string, VarPtr> symbols;
  std::map<SymMatrix2d_t*, MatrixPtr> matrices;

  SymObject* keep(NodePtr node);             ///< enters it in tempNodes
  SymMatrix2d_t* keep(MatrixPtr matrix);     ///< enters it in matrices; null stays null
  NodePtr find(SymObject* address) const;    ///< of tempNodes, built; null when unknown
  VarPtr variable(const std::string& name);  ///< the record of that name, made when there is none
};

/// A node that names the variable, or the number behind the one named constant, "pi".
NodePtr makeNamed(const std::string& name);

/// New nodes on clones of the arguments; a null argument stays null and leaves the node as it is.
NodePtr applyOne(const NodePtr& argument, uint8_t code);  ///< with the reciprocal kinds 38 to 45
NodePtr combine(SymObject* a, SymObject* b,
                uint8_t code);  ///< of two addresses in the store; a sum or product may grow
NodePtr applyTwo(const NodePtr& a, const NodePtr& b, uint8_t code);
NodePtr applyMany(Args clones, uint8_t code);  ///< takes the arguments as they are

}  // namespace Sym
