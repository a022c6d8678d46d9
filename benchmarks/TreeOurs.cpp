// The library's own trees and files, without a definition table: what is loaded is free-form text
// that every typed read converts.
#include <utility>

#include "attributes/AttributeMap.h"
#include "benchmarks/TreeContender.h"
#include "benchmarks/TreeFamilies.h"
#include "catalogue/AttributeNames.h"

namespace lum::bench {

namespace {

CString ToText(const std::string& text) { return CString(text.c_str()); }

CLumBool ToValue(bool value) { return {value}; }
CLumInt ToValue(int value) { return {value}; }
CLumDouble ToValue(double value) { return {value}; }
CLumName ToValue(const std::string& value) { return {ToText(value)}; }

/// What SumOf adds up as a text.
class CSummedText : public CString {
 public:
  int size() const { return GetLength(); }
  int back() const { return GetAt(GetLength() - 1); }
};

class COurTree {
 public:
  using Tree = CAttributeMap;
  static constexpr const char* kName = kOurs;

  explicit COurTree(const CTreeData& data) : m_data(data), m_names(data, ToText) {}

  Tree Build() const {
    Tree tree;
    tree.Add(ATTRIB_VERSION_KEY, CLumInt(2), 0);
    BuildBelow(
        tree, m_data, m_names,
        [](Tree& node, const CString& name) -> Tree& { return node.Add(name); },
        [this](Tree& node, int i) {
          WithValue(i, [&](const auto& value) {
            node.Add(m_names.leaves[m_data.LeafOf(i)], ToValue(value), 0);
          });
        });
    return tree;
  }

  bool Save(const Tree& tree, const std::string& path) const {
    FileObject file;
    return SaveAttributes(tree, file, L"Survey") && file.Save(ToText(path));
  }

  Tree Load(const std::string& path) const {
    FileObject file;
    Tree tree;
    if (file.Load(ToText(path))) {
      LoadAttributes(tree, file, L"Survey", false);
    }
    return tree;
  }

  CTreeSum Read(const Tree& tree) const {
    return SumOf<CSummedText>(m_data, [&](int i, auto& value) {
      const Tree& node =
          m_data.HasLevels()
              ? tree.Find(m_names.groups[m_data.GroupOf(i)]).Find(m_names.parts[m_data.PartOf(i)])
              : tree;
      const int occurrence = m_data.shape == Shape::OneName ? i : 0;
      node.Find(m_names.leaves[m_data.LeafOf(i)], occurrence).Value().Get(value);
    });
  }

  static Tree Copy(const Tree& tree) { return tree; }

 private:
  CTreeData m_data;
  CNames<CString> m_names;
};

CAttributeMap BuildSiblings(int siblings) {
  CAttributeMap tree;
  for (int i = 0; i < siblings; ++i) {
    tree.Add(ToText("Sensor" + std::to_string(i)), CLumDouble(DoubleOf(i)), 0);
  }
  return tree;
}

double FindDouble(const CAttributeMap& tree, const CString& name) {
  double value = 0;
  tree.Find(name).Value().GetDouble(value);
  return value;
}

bool AreEqual(const CAttributeMap& first, const CAttributeMap& second) {
  constexpr unsigned int kEverything =
      CAttributeMap::COMPARE_VALUES | CAttributeMap::COMPARE_ADDED | CAttributeMap::COMPARE_REMOVED;
  CAttributeMap difference;
  return !first.Compare(second, difference, kEverything);
}

/// The report puts these into a table of their own.
void AddGrowth(const std::string& what, Shape shape) {
  for (const auto& [text, count] :
       {std::pair(", 1k", 1'000), {", 10k", 10'000}, {", 100k", 100'000}, {", 1M", 1'000'000}}) {
    AddFileText<COurTree>(what + text, shape, count);
  }
}

}  // namespace

void AddOurTree() {
  AddTreeBuilder<COurTree>();
  AddFileText<COurTree>("", Shape::Levels, kAttributes);
  AddFileText<COurTree>(kOneName, Shape::OneName, kAttributes);
  AddFileText<COurTree>(kDistinctNames, Shape::DistinctNames, kAttributes);
  AddGrowth("", Shape::Levels);
  AddGrowth(kOneName, Shape::OneName);
  AddGrowth(kDistinctNames, Shape::DistinctNames);
  AddDeepCopy<COurTree>();
  AddCompare<COurTree>(kOurs, AreEqual);
  AddOverload<COurTree>(kOurs, [](CAttributeMap& target, const CAttributeMap& source) {
    target.Overload(source, true, true, false, false);
  });
  AddLookup<CString>(kOurs, kAttributes, BuildSiblings, ToText, FindDouble);
}

}  // namespace lum::bench
