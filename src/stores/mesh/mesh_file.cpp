// SPDX-License-Identifier: Apache-2.0
#include "stores/mesh/mesh_file.h"

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <string_view>

#include "stores/target_file.h"

namespace Simulation {
namespace {

constexpr int kDigits = 18;
constexpr int kLinesPerFlush = 200;

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n\v\f";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// What atof and atoi give, the quick way first: that of a plain decimal number. The decimal point is that of the C
// locale, whatever the host has set.
double decimal(std::string_view text) {
  double value;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc{} && end == text.data() + text.size()) return value;
  static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
  return strtod_l(std::string(text).c_str(), nullptr, plain);
}

int32_t integer(std::string_view text) {
  int32_t value;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc{}) return value;
  const long long wide = std::strtoll(std::string(text).c_str(), nullptr, 10);
  return static_cast<int32_t>(
      std::clamp<long long>(wide, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()));
}

void split(std::string_view line, std::vector<std::string_view>& fields) {
  fields.clear();
  for (std::size_t comma; (comma = line.find(',')) != std::string_view::npos; line.remove_prefix(comma + 1))
    fields.push_back(trimmed(line.substr(0, comma)));
  fields.push_back(trimmed(line));
}

/// Gives the fields of up to `count` lines behind `skipLines` to `use`, until it says no.
template <class Use>
bool forLines(const std::string& path, int32_t skipLines, int32_t count, Use&& use) {
  std::ifstream file(path);
  if (!file) return false;
  std::string line;
  for (int32_t i = 0; i < skipLines; ++i)
    if (!std::getline(file, line)) return true;
  std::vector<std::string_view> fields;
  for (int32_t i = 0; i < count && std::getline(file, line); ++i) {
    split(line, fields);
    if (!use(fields)) return false;
  }
  return !file.bad();
}

void put(std::ostream& file, int32_t value) {
  char text[16];
  file.write(text, std::to_chars(text, text + sizeof text, value).ptr - text);
}

void put(std::ostream& file, double value) {
  char text[64];
  file.write(text, std::to_chars(text, text + sizeof text, value, std::chars_format::general, kDigits).ptr - text);
}

/// A title with the number of items, then a line an item, written by `putRest` behind its id.
template <class Items, class PutRest>
bool save(const std::string& path, const char* title, const Items& items, PutRest&& putRest) {
  if (items.empty()) return false;
  TargetFile target(path);
  std::ostream& file = target.stream();
  file << title << items.size() << '\n';
  int lines = 0;
  for (const auto& [id, item] : items) {
    put(file, id);
    putRest(file, item);
    file.put('\n');
    if (++lines % kLinesPerFlush == 0) file.flush();
  }
  return target.commit();
}

}  // namespace

bool loadNodes(Mesh2D& mesh, const std::string& path, int32_t skipLines, int32_t count) {
  return forLines(path, skipLines, count, [&mesh](const std::vector<std::string_view>& fields) {
    return fields.size() < 3 || mesh.addNode(integer(fields[0]), decimal(fields[1]), decimal(fields[2]));
  });
}

bool loadElements(Mesh2D& mesh, const std::string& path, int32_t skipLines, int32_t count, int32_t nodesPerElement) {
  std::vector<int32_t> nodes;
  const auto needed = static_cast<std::size_t>(std::max(nodesPerElement, 0));
  return forLines(path, skipLines, count, [&](const std::vector<std::string_view>& fields) {
    if (fields.size() < needed + 1) return false;
    nodes.resize(needed);
    std::transform(fields.begin() + 1, fields.begin() + 1 + static_cast<std::ptrdiff_t>(needed), nodes.begin(),
                   integer);
    return mesh.addElement(integer(fields[0]), nodes);
  });
}

bool saveNodes(const Mesh2D& mesh, const std::string& path) {
  return save(path, "NodeSize: ", mesh.nodes(), [](std::ostream& file, const Node_t& node) {
    file.write(", ", 2);
    put(file, node.x);
    file.write(", ", 2);
    put(file, node.y);
  });
}

bool saveElements(const Mesh2D& mesh, const std::string& path) {
  return save(path, "ElementSize: ", mesh.elements(), [](std::ostream& file, const Element_t& element) {
    for (const int32_t node : element.nodes) {
      file.write(", ", 2);
      put(file, node);
    }
  });
}

}  // namespace Simulation
