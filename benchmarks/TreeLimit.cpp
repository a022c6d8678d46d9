// The least that each workload takes: a flat list of paths with the texts of their values, and
// files of the same lines that the library writes. No tree, no look-up, no check of names.
#include <charconv>
#include <cstring>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "benchmarks/TreeContender.h"
#include "benchmarks/TreeFamilies.h"

namespace lum::bench {

namespace {

void AppendValue(std::string& text, bool value) { text += value ? '1' : '0'; }
void AppendValue(std::string& text, const std::string& value) { text += value; }
void AppendValue(std::string& text, int value) {
  char digits[16];
  text.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}
void AppendValue(std::string& text, double value) {
  char digits[32];
  const auto end =
      std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, 6);
  text.append(digits, end.ptr);
}

void ReadValue(std::string_view text, bool& value) { value = text == "1"; }
void ReadValue(std::string_view text, std::string_view& value) { value = text; }
template <typename Number>
void ReadValue(std::string_view text, Number& value) {
  std::from_chars(text.data(), text.data() + text.size(), value);
}

class CLimitTree {
 public:
  struct CItem {
    std::string path;
    std::string text;

    bool operator==(const CItem&) const = default;
  };
  using Tree = std::vector<CItem>;
  static constexpr const char* kName = kLimit;

  explicit CLimitTree(const CTreeData& data) : m_data(data) {
    for (int i = 0; i < data.count; ++i) {
      m_paths.push_back(PathOf(i));
    }
  }

  Tree Build() const {
    Tree tree;
    for (int i = 0; i < m_data.count; ++i) {
      tree.push_back({m_paths[static_cast<std::size_t>(i)], {}});
      WithValue(i, [&](const auto& value) { AppendValue(tree.back().text, value); });
    }
    return tree;
  }

  bool Save(const Tree& tree, const std::string& path) const {
    std::string text = "[Survey]\nAttrVersion=0,2\n";
    for (const CItem& item : tree) {
      text += item.path;
      text += "=0,";
      text += item.text;
      text += '\n';
    }
    return WriteFile(path, text);
  }

  Tree Load(const std::string& path) const {
    const std::string text = ReadFile(path);
    Tree tree;
    const char* at = text.data();
    const char* const end = at + text.size();
    for (int line = 0; at < end; ++line) {
      const auto* const lineEnd =
          static_cast<const char*>(std::memchr(at, '\n', Distance(at, end)));
      if (line >= 2) {
        const auto* const equals =
            static_cast<const char*>(std::memchr(at, '=', Distance(at, lineEnd)));
        const char* const value = equals + sizeof "0,";
        tree.push_back({std::string(at, equals), std::string(value, lineEnd)});
      }
      at = lineEnd + 1;
    }
    return tree;
  }

  /// Values in another order than the data's would give nothing.
  CTreeSum Read(const Tree& tree) const {
    return SumOf<std::string_view>(m_data, [&](int i, auto& value) {
      const auto place = static_cast<std::size_t>(i);
      if (place < tree.size() && tree[place].path == m_paths[place]) {
        ReadValue(tree[place].text, value);
      }
    });
  }

  static Tree Copy(const Tree& tree) { return tree; }

 private:
  static std::size_t Distance(const char* from, const char* to) {
    return static_cast<std::size_t>(to - from);
  }

  std::string PathOf(int i) const {
    const std::string& leaf = m_data.leaves[m_data.LeafOf(i)];
    if (m_data.HasLevels()) {
      return m_data.groups[m_data.GroupOf(i)] + "." + m_data.parts[m_data.PartOf(i)] + "." + leaf;
    }
    return m_data.shape == Shape::OneName && i > 0 ? leaf + "(" + std::to_string(i) + ")" : leaf;
  }

  CTreeData m_data;
  std::vector<std::string> m_paths;
};

void Overload(CLimitTree::Tree& target, const CLimitTree::Tree& source) {
  for (std::size_t place = 0; place < source.size(); ++place) {
    if (place == target.size()) {
      target.push_back(source[place]);
    } else if (target[place].path == source[place].path) {
      target[place].text = source[place].text;
    }
  }
}

std::unordered_map<std::string, double> BuildSiblings(int siblings) {
  std::unordered_map<std::string, double> values;
  for (int i = 0; i < siblings; ++i) {
    values.emplace("Sensor" + std::to_string(i), DoubleOf(i));
  }
  return values;
}

}  // namespace

void AddLimitTree() {
  AddTreeBuilder<CLimitTree>();
  AddFileText<CLimitTree>("", Shape::Levels, kAttributes);
  AddFileText<CLimitTree>(kOneName, Shape::OneName, kAttributes);
  AddFileText<CLimitTree>(kDistinctNames, Shape::DistinctNames, kAttributes);
  AddDeepCopy<CLimitTree>();
  AddCompare<CLimitTree>(kLimit, std::equal_to<CLimitTree::Tree>());
  AddOverload<CLimitTree>(kLimit, Overload);
  AddLookup<std::string>(
      kLimit, kAttributes, BuildSiblings, [](const std::string& name) { return name; },
      [](const auto& values, const std::string& name) { return values.find(name)->second; });
}

}  // namespace lum::bench
