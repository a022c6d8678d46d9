// nlohmann json, whose objects are sorted maps, and ordered_json, whose objects are lists in the
// order of insertion: these take a parent of 100,000 names in quadratic time and are left out
// there.
#include <exception>
#include <nlohmann/json.hpp>
#include <string_view>

#include "benchmarks/TreeContender.h"
#include "benchmarks/TreeFamilies.h"

namespace lum::bench {

namespace {

constexpr const char* NameOfJson(const nlohmann::json*) { return "nlohmann json"; }
constexpr const char* NameOfJson(const nlohmann::ordered_json*) { return "nlohmann ordered_json"; }

template <typename Json>
void ReadValue(const Json& node, std::string_view& value) {
  value = node.template get_ref<const std::string&>();
}
template <typename Json, typename Value>
void ReadValue(const Json& node, Value& value) {
  value = node.template get<Value>();
}

std::string Same(const std::string& text) { return text; }

template <typename Json>
class CJsonTree {
 public:
  using Tree = Json;
  static constexpr const char* kName = NameOfJson(static_cast<const Json*>(nullptr));

  explicit CJsonTree(const CTreeData& data) : m_data(data), m_names(data, Same) {}

  Tree Build() const {
    Tree tree = Tree::object();
    BuildBelow(
        tree, m_data, m_names,
        [](Tree& node, const std::string& name) -> Tree& { return node[name] = Tree::object(); },
        [this](Tree& node, int i) {
          Tree& child = node[m_names.leaves[m_data.LeafOf(i)]];
          WithValue(i, [&](const auto& value) {
            m_data.shape == Shape::OneName ? child.push_back(value) : void(child = value);
          });
        });
    return tree;
  }

  bool Save(const Tree& tree, const std::string& path) const {
    return WriteFile(path, tree.dump());
  }

  Tree Load(const std::string& path) const { return Tree::parse(ReadFile(path)); }

  CTreeSum Read(const Tree& tree) const {
    return SumOf<std::string_view>(m_data, [&](int i, auto& value) {
      const Tree& node =
          m_data.HasLevels()
              ? tree.at(m_names.groups[m_data.GroupOf(i)]).at(m_names.parts[m_data.PartOf(i)])
              : tree;
      const Tree& child = node.at(m_names.leaves[m_data.LeafOf(i)]);
      ReadValue(child.is_array() ? child[static_cast<std::size_t>(i)] : child, value);
    });
  }

  static Tree Copy(const Tree& tree) { return tree; }

 private:
  CTreeData m_data;
  CNames<std::string> m_names;
};

/// Appends past the search for a member of that name.
void Append(nlohmann::ordered_json::object_t& object, const std::string& name, double value) {
  object.push_back({name, value});
}
void Append(nlohmann::json::object_t& object, const std::string& name, double value) {
  object.emplace(name, value);
}

template <typename Json>
Json BuildSiblings(int siblings) {
  Json tree = Json::object();
  for (int i = 0; i < siblings; ++i) {
    Append(tree.template get_ref<typename Json::object_t&>(), "Sensor" + std::to_string(i),
           DoubleOf(i));
  }
  return tree;
}

template <typename Json>
void AddJson(int lookups) {
  const std::string name = CJsonTree<Json>::kName;
  AddTreeBuilder<CJsonTree<Json>>();
  AddFileText<CJsonTree<Json>>("", Shape::Levels, kAttributes);
  AddFileText<CJsonTree<Json>>(kOneName, Shape::OneName, kAttributes);
  AddDeepCopy<CJsonTree<Json>>();
  AddCompare<CJsonTree<Json>>(name, std::equal_to<Json>());
  AddCompare<CJsonTree<Json>>(name + " diff", [](const Json& first, const Json& second) {
    return Json::diff(first, second).empty();
  });
  AddOverload<CJsonTree<Json>>(
      name + " merge_patch", [](Json& target, const Json& source) { target.merge_patch(source); });
  AddOverload<CJsonTree<Json>>(
      name + " update", [](Json& target, const Json& source) { target.update(source, true); });
  AddLookup<std::string>(
      name, lookups, BuildSiblings<Json>, Same,
      [](const Json& tree, const std::string& key) { return tree.at(key).template get<double>(); });
}

}  // namespace

void AddNlohmannTrees() {
  AddJson<nlohmann::json>(kAttributes);
  AddFileText<CJsonTree<nlohmann::json>>(kDistinctNames, Shape::DistinctNames, kAttributes);
  AddJson<nlohmann::ordered_json>(kLinearLookups);
}

}  // namespace lum::bench
