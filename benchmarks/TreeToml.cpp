// toml++: sorted tables.
#include <toml++/toml.h>

#include <fstream>
#include <string_view>

#include "benchmarks/TreeContender.h"
#include "benchmarks/TreeFamilies.h"

namespace lum::bench {

namespace {

std::string Same(const std::string& text) { return text; }

void ReadValue(const toml::node& node, bool& value) { value = node.as_boolean()->get(); }
void ReadValue(const toml::node& node, int& value) {
  value = static_cast<int>(node.as_integer()->get());
}
void ReadValue(const toml::node& node, double& value) { value = node.as_floating_point()->get(); }
void ReadValue(const toml::node& node, std::string_view& value) { value = node.as_string()->get(); }

class CTomlTree {
 public:
  using Tree = toml::table;
  static constexpr const char* kName = "toml++";

  explicit CTomlTree(const CTreeData& data) : m_data(data), m_names(data, Same) {}

  Tree Build() const {
    Tree tree;
    toml::array list;
    BuildBelow(
        tree, m_data, m_names,
        [](Tree& node, const std::string& name) -> Tree& {
          return *node.insert(name, toml::table()).first->second.as_table();
        },
        [&](Tree& node, int i) {
          WithValue(i, [&](const auto& value) {
            if (m_data.shape == Shape::OneName) {
              list.push_back(value);
            } else {
              node.insert(m_names.leaves[m_data.LeafOf(i)], value);
            }
          });
        });
    if (m_data.shape == Shape::OneName) {
      tree.insert(m_names.leaves[0], std::move(list));
    }
    return tree;
  }

  bool Save(const Tree& tree, const std::string& path) const {
    std::ofstream file(path, std::ios::binary);
    file << tree;
    return file.good();
  }

  Tree Load(const std::string& path) const { return toml::parse_file(path); }

  CTreeSum Read(const Tree& tree) const {
    return SumOf<std::string_view>(m_data, [&](int i, auto& value) {
      const Tree* node = &tree;
      if (m_data.HasLevels()) {
        node = node->get_as<toml::table>(m_names.groups[m_data.GroupOf(i)]);
        node = node->get_as<toml::table>(m_names.parts[m_data.PartOf(i)]);
      }
      const toml::node* child = node->get(m_names.leaves[m_data.LeafOf(i)]);
      ReadValue(child->is_array() ? (*child->as_array())[static_cast<std::size_t>(i)] : *child,
                value);
    });
  }

  static Tree Copy(const Tree& tree) { return tree; }

 private:
  CTreeData m_data;
  CNames<std::string> m_names;
};

toml::table BuildSiblings(int siblings) {
  toml::table tree;
  for (int i = 0; i < siblings; ++i) {
    tree.insert("Sensor" + std::to_string(i), DoubleOf(i));
  }
  return tree;
}

}  // namespace

void AddTomlTree() {
  AddTreeBuilder<CTomlTree>();
  AddFileText<CTomlTree>("", Shape::Levels, kAttributes);
  AddFileText<CTomlTree>(kOneName, Shape::OneName, kAttributes);
  AddFileText<CTomlTree>(kDistinctNames, Shape::DistinctNames, kAttributes);
  AddDeepCopy<CTomlTree>();
  AddCompare<CTomlTree>(CTomlTree::kName, std::equal_to<toml::table>());
  AddLookup<std::string>(CTomlTree::kName, kAttributes, BuildSiblings, Same,
                         [](const toml::table& tree, const std::string& name) {
                           return tree.get(name)->as_floating_point()->get();
                         });
}

}  // namespace lum::bench
