// The attributes that every contender of the tree benchmarks holds, and the answer that reading
// them all gives. Attribute `i` has a kind and a value that depend on `i` alone; where it stands
// depends on the shape of the tree.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lum::bench {

enum class Shape {
  Levels,         ///< Groups of 100 parts of 10 attributes.
  OneName,        ///< All in one parent, all of one name.
  DistinctNames,  ///< All in one parent, each with a name of its own.
};

enum class Kind { Bool, Int, Double, Name };

inline constexpr int kAttributes = 100'000;

/// How many attributes, in which shape, and the names that occur.
struct CTreeData {
  static constexpr int kLeaves = 10;
  static constexpr int kParts = 100;

  CTreeData(Shape shapeOfTree, int attributes);

  bool HasLevels() const { return shape == Shape::Levels; }
  /// The places of the attribute's names in `groups`, `parts` and `leaves`.
  static std::size_t GroupOf(int i) { return static_cast<std::size_t>(i / (kLeaves * kParts)); }
  static std::size_t PartOf(int i) { return static_cast<std::size_t>(i / kLeaves % kParts); }
  std::size_t LeafOf(int i) const {
    return static_cast<std::size_t>(shape == Shape::DistinctNames ? i
                                    : HasLevels()                 ? i % kLeaves
                                                                  : 0);
  }

  Shape shape;
  int count;
  std::vector<std::string> groups;
  std::vector<std::string> parts;
  std::vector<std::string> leaves;
};

Kind KindOf(int i);
inline bool BoolOf(int i) { return i % 3 == 0; }
inline int IntOf(int i) { return i * 7 - 1000; }
/// Three digits after the point: six, as files have, give the same number back.
inline double DoubleOf(int i) { return (i * 37 % 100'000) / 1000.0; }
std::string NameOf(int i);

/// What reading all attributes gives: each kind has its own sum.
struct CTreeSum {
  std::int64_t bools = 0;
  std::int64_t ints = 0;
  double doubles = 0;
  std::int64_t characters = 0;

  bool operator==(const CTreeSum&) const = default;
};

/// A text counts by its length and its last character.
template <typename Text>
std::int64_t TextSum(const Text& text) {
  return static_cast<std::int64_t>(text.size()) * 1000 + text.back();
}

/// `read(i, value)` reads attribute `i` into a bool, an int, a double or a `Text`.
template <typename Text, typename Read>
CTreeSum SumOf(const CTreeData& data, const Read& read) {
  CTreeSum sum;
  for (int i = 0; i < data.count; ++i) {
    switch (KindOf(i)) {
      case Kind::Bool: {
        bool value = false;
        read(i, value);
        sum.bools += value ? 1 : 0;
        break;
      }
      case Kind::Int: {
        int value = 0;
        read(i, value);
        sum.ints += value;
        break;
      }
      case Kind::Double: {
        double value = 0;
        read(i, value);
        sum.doubles += value;
        break;
      }
      case Kind::Name: {
        Text value;
        read(i, value);
        sum.characters += TextSum(value);
        break;
      }
    }
  }
  return sum;
}

/// Calls `use` with the value of attribute `i` in the type of its kind.
template <typename Use>
decltype(auto) WithValue(int i, const Use& use) {
  switch (KindOf(i)) {
    case Kind::Bool:
      return use(BoolOf(i));
    case Kind::Int:
      return use(IntOf(i));
    case Kind::Double:
      return use(DoubleOf(i));
    case Kind::Name:
      break;
  }
  return use(NameOf(i));
}

CTreeSum ExpectedSum(const CTreeData& data);

/// The attributes' paths, with `separator` between the names and "(n)" behind the n-th further one
/// of a name.
std::vector<std::string> PathsOf(const CTreeData& data, char separator);

/// The paths of what holds the attributes, for each ten of them.
std::vector<std::string> PartsOf(const CTreeData& data);

/// The names in a contender's own string type.
template <typename Text>
struct CNames {
  template <typename Convert>
  CNames(const CTreeData& data, const Convert& convert) {
    for (const auto& [from, to] : {std::pair(&data.groups, &groups), std::pair(&data.parts, &parts),
                                   std::pair(&data.leaves, &leaves)}) {
      for (const std::string& name : *from) {
        to->push_back(convert(name));
      }
    }
  }

  std::vector<Text> groups;
  std::vector<Text> parts;
  std::vector<Text> leaves;
};

/// Builds the tree below `root`: `child(node, name)` gives a new child to hold others,
/// `value(node, i)` appends attribute `i`.
template <typename Text, typename Node, typename Child, typename Value>
void BuildBelow(Node& root, const CTreeData& data, const CNames<Text>& names, const Child& child,
                const Value& value) {
  Node* group = &root;
  Node* part = &root;
  for (int i = 0; i < data.count; ++i) {
    if (data.HasLevels() && i % (CTreeData::kLeaves * CTreeData::kParts) == 0) {
      group = &child(root, names.groups[data.GroupOf(i)]);
    }
    if (data.HasLevels() && i % CTreeData::kLeaves == 0) {
      part = &child(*group, names.parts[data.PartOf(i)]);
    }
    value(*part, i);
  }
}

/// The numbers below `siblings`, or as many of them again and again as make at least 1,000, in an
/// order without a pattern that is always the same.
std::vector<int> LookupOrder(int siblings);

/// A path in a folder of this run, in memory where the system has such a folder. What is in the
/// folder goes when the program ends.
std::string TemporaryFile(const std::string& name);

/// The whole file; empty when it cannot be read.
std::string ReadFile(const std::string& path);
bool WriteFile(const std::string& path, std::string_view text);

}  // namespace lum::bench
