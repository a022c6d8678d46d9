// The least that each workload takes: a flat list of paths with typed values, and files of the same
// lines that the library writes. No tree, no look-up, no check of names.
#include <charconv>
#include <cstring>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <variant>

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
void ReadValue(std::string_view text, std::string& value) { value = text; }
template <typename Number>
void ReadValue(std::string_view text, Number& value) {
  std::from_chars(text.data(), text.data() + text.size(), value);
}

using CValue = std::variant<bool, int, double, std::string>;

CValue ValueOf(Kind kind, std::string_view text) {
  CValue value;
  const auto read = [&]<typename Plain>(Plain plain) {
    ReadValue(text, plain);
    value = std::move(plain);
  };
  switch (kind) {
    case Kind::Bool:
      read(false);
      break;
    case Kind::Int:
      read(0);
      break;
    case Kind::Double:
      read(0.0);
      break;
    case Kind::Name:
      read(std::string());
      break;
  }
  return value;
}

class CLimitTree {
 public:
  struct CItem {
    std::string path;
    CValue value;

    bool operator==(const CItem&) const = default;
  };
  using Tree = std::vector<CItem>;
  static constexpr const char* kName = kLimit;

  explicit CLimitTree(const CTreeData& data) : m_data(data), m_paths(PathsOf(data, '.')) {}

  Tree Build() const {
    Tree tree;
    tree.reserve(m_paths.size());
    for (int i = 0; i < m_data.count; ++i) {
      WithValue(i, [&](const auto& value) {
        tree.push_back({m_paths[static_cast<std::size_t>(i)], value});
      });
    }
    return tree;
  }

  bool Save(const Tree& tree, const std::string& path) const {
    std::string text = "[Survey]\nAttrVersion=0,2\n";
    for (const CItem& item : tree) {
      text += item.path;
      text += "=0,";
      std::visit([&](const auto& value) { AppendValue(text, value); }, item.value);
      text += '\n';
    }
    return WriteFile(path, text);
  }

  Tree Load(const std::string& path) const {
    const std::string text = ReadFile(path);
    Tree tree;
    const char* at = text.data();
    const char* const end = at + text.size();
    for (int line = -kHeaderLines; at < end; ++line) {
      const auto* const lineEnd =
          static_cast<const char*>(std::memchr(at, '\n', Distance(at, end)));
      if (line >= 0) {
        const auto* const equals =
            static_cast<const char*>(std::memchr(at, '=', Distance(at, lineEnd)));
        const char* const value = equals + sizeof "0,";
        tree.push_back(
            {std::string(at, equals), ValueOf(KindOf(line), {value, Distance(value, lineEnd)})});
      }
      at = lineEnd + 1;
    }
    return tree;
  }

  /// Values in another order than the data's would give nothing.
  CTreeSum Read(const Tree& tree) const {
    return SumOf<std::string>(m_data, [&](int i, auto& value) {
      const auto place = static_cast<std::size_t>(i);
      if (place < tree.size() && tree[place].path == m_paths[place]) {
        value = std::get<std::decay_t<decltype(value)>>(tree[place].value);
      }
    });
  }

  static Tree Copy(const Tree& tree) { return tree; }

 private:
  static constexpr int kHeaderLines = 2;

  static std::size_t Distance(const char* from, const char* to) {
    return static_cast<std::size_t>(to - from);
  }

  CTreeData m_data;
  std::vector<std::string> m_paths;
};

void Overload(CLimitTree::Tree& target, const CLimitTree::Tree& source) {
  for (std::size_t place = 0; place < source.size(); ++place) {
    if (place == target.size()) {
      target.push_back(source[place]);
    } else if (target[place].path == source[place].path) {
      target[place].value = source[place].value;
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
