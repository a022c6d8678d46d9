// Boost.PropertyTree, stored in its own INFO format: every value is a text that reads convert.
#include <boost/property_tree/info_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <iterator>

#include "benchmarks/TreeContender.h"
#include "benchmarks/TreeFamilies.h"

namespace lum::bench {

namespace {

using boost::property_tree::ptree;

std::string Same(const std::string& text) { return text; }

class CBoostTree {
 public:
  using Tree = ptree;
  static constexpr const char* kName = "Boost.PropertyTree";

  explicit CBoostTree(const CTreeData& data) : m_data(data), m_names(data, Same) {}

  Tree Build() const {
    Tree tree;
    BuildBelow(
        tree, m_data, m_names,
        [](Tree& node, const std::string& name) -> Tree& {
          return node.push_back({name, ptree()})->second;
        },
        [this](Tree& node, int i) {
          Tree& child = node.push_back({m_names.leaves[m_data.LeafOf(i)], ptree()})->second;
          WithValue(i, [&](const auto& value) { child.put_value(value); });
        });
    return tree;
  }

  /// Putting a value makes its text, so it is part of it.
  bool Save(const Tree&, const std::string& path) const {
    boost::property_tree::write_info(path, Build());
    return true;
  }

  Tree Load(const std::string& path) const {
    Tree tree;
    boost::property_tree::read_info(path, tree);
    return tree;
  }

  CTreeSum Read(const Tree& tree) const {
    auto sibling = tree.begin();
    return SumOf<std::string>(m_data, [&](int i, auto& value) {
      const Tree* node = &tree;
      if (m_data.HasLevels()) {
        node = &tree.find(m_names.groups[m_data.GroupOf(i)])->second;
        node = &node->find(m_names.parts[m_data.PartOf(i)])->second;
      }
      // There is no look-up of the n-th child of a name: children of one name are walked.
      node = m_data.shape == Shape::OneName ? &(sibling++)->second
                                            : &node->find(m_names.leaves[m_data.LeafOf(i)])->second;
      value = node->get_value<std::decay_t<decltype(value)>>();
    });
  }

  static Tree Copy(const Tree& tree) { return tree; }

 private:
  CTreeData m_data;
  CNames<std::string> m_names;
};

ptree BuildSiblings(int siblings) {
  ptree tree;
  for (int i = 0; i < siblings; ++i) {
    tree.push_back({"Sensor" + std::to_string(i), ptree()})->second.put_value(DoubleOf(i));
  }
  return tree;
}

}  // namespace

void AddBoostTree() {
  AddTreeBuilder<CBoostTree>();
  AddFileText<CBoostTree>("", Shape::Levels, kAttributes);
  AddFileText<CBoostTree>(kOneName, Shape::OneName, kAttributes);
  AddFileText<CBoostTree>(kDistinctNames, Shape::DistinctNames, kAttributes);
  AddDeepCopy<CBoostTree>();
  AddCompare<CBoostTree>(CBoostTree::kName,
                         [](const ptree& first, const ptree& second) { return first == second; });
  AddLookup<std::string>(CBoostTree::kName, kAttributes, BuildSiblings, Same,
                         [](const ptree& tree, const std::string& name) {
                           return tree.find(ptree::key_type(name))->second.get_value<double>();
                         });
}

}  // namespace lum::bench
