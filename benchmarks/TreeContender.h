// The workloads on whole trees. A contender is a class made from a CTreeData, with
//
//     using Tree = ...;                                    // what holds the attributes
//     static constexpr const char* kName = "...";
//     Tree Build() const;
//     bool Save(const Tree& tree, const std::string& path) const;  // from typed values
//     Tree Load(const std::string& path) const;
//     CTreeSum Read(const Tree& tree) const;               // every value by its path, typed
//
// A tree that holds texts alone does not spare its contender the conversion: Save then builds the
// tree from the typed values before it writes. What a contender cannot do it is not registered for.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "benchmarks/TreeData.h"
#include "benchmarks/Workload.h"

namespace lum::bench {

/// What a benchmark works on. It is made when a run asks for it and goes when another benchmark
/// asks for its own, so that all find the memory of the process alike.
template <typename Held>
class CHeld {
 public:
  template <typename Make>
  Held& Get(const Make& make) {
    if (m_held.expired()) {
      Slot().reset();
      const std::shared_ptr<Held> made = make();
      Slot() = made;
      m_held = made;
    }
    return *m_held.lock();
  }

 private:
  static std::shared_ptr<void>& Slot();

  std::weak_ptr<Held> m_held;
};

/// The one slot that all kinds of CHeld share.
std::shared_ptr<void>& HeldSlot();

template <typename Held>
std::shared_ptr<void>& CHeld<Held>::Slot() {
  return HeldSlot();
}

/// Registers a benchmark whose runs get what `make` made.
template <typename Answer, typename Make, typename Run>
void AddHeldBenchmark(const std::string& workload, const std::string& contender, int items,
                      Answer expected, Make make, Run run) {
  using Held = typename std::invoke_result_t<Make>::element_type;
  const auto held = std::make_shared<CHeld<Held>>();
  AddBenchmark(workload, contender, items, expected,
               [held, make, run] { return run(held->Get(make)); });
}

/// A contender with its tree and its file.
template <typename Contender>
class CTreeWork {
 public:
  using Tree = typename Contender::Tree;

  CTreeWork(Shape shape, int count)
      : m_data(shape, count), m_contender(m_data), m_tree(m_contender.Build()) {}

  /// The first time, what was written must read back as it was.
  bool Save() {
    const bool saved = m_contender.Save(m_tree, m_path);
    if (!m_saveIsRight) {
      m_saveIsRight = m_contender.Read(m_contender.Load(m_path)) == ExpectedSum(m_data);
      m_isWritten = saved;
    }
    return saved && m_saveIsRight;
  }

  CTreeSum Load() {
    if (!m_isWritten) {
      Save();
    }
    return m_contender.Read(m_contender.Load(m_path));
  }

  /// The first time, the copy must hold what the tree does.
  bool Copy() {
    const Tree copy = Contender::Copy(m_tree);
    if (!m_copyIsRight) {
      m_copyIsRight = m_contender.Read(copy) == ExpectedSum(m_data);
    }
    return m_copyIsRight;
  }

 private:
  CTreeData m_data;
  Contender m_contender;
  Tree m_tree;
  std::string m_path = TemporaryFile("tree");
  bool m_saveIsRight = false;
  bool m_isWritten = false;
  bool m_copyIsRight = false;
};

template <typename Contender>
auto MakeTreeWork(Shape shape, int count) {
  return [shape, count] { return std::make_shared<CTreeWork<Contender>>(shape, count); };
}

/// Both ways between tree and file; `what` follows the workload's name.
template <typename Contender>
void AddFileText(const std::string& what, Shape shape, int count) {
  const auto make = MakeTreeWork<Contender>(shape, count);
  AddHeldBenchmark("tree to file text" + what, Contender::kName, count, true, make,
                   [](CTreeWork<Contender>& work) { return work.Save(); });
  AddHeldBenchmark("file text to tree" + what, Contender::kName, count,
                   ExpectedSum(CTreeData(shape, count)), make,
                   [](CTreeWork<Contender>& work) { return work.Load(); });
}

inline constexpr const char* kOneName = ", siblings of one name";
inline constexpr const char* kDistinctNames = ", distinct names in one parent";

/// The copies' end is part of the time.
template <typename Contender>
void AddDeepCopy() {
  AddHeldBenchmark("deep copy", Contender::kName, kAttributes, true,
                   MakeTreeWork<Contender>(Shape::Levels, kAttributes),
                   [](CTreeWork<Contender>& work) { return work.Copy(); });
}

/// Two trees: an equal one and one that lacks the last group. `compare` says whether two are equal.
template <typename Contender, typename Compare>
void AddCompare(const std::string& contender, Compare compare) {
  struct CPair {
    typename Contender::Tree first, second, other;
  };
  const auto make = [] {
    const Contender whole(CTreeData(Shape::Levels, kAttributes));
    const Contender part(CTreeData(Shape::Levels, kAttributes - 1000));
    return std::make_shared<CPair>(CPair{whole.Build(), whole.Build(), part.Build()});
  };
  const auto isChecked = std::make_shared<bool>(false);
  AddHeldBenchmark("compare equal trees", contender, kAttributes, true, make,
                   [compare, isChecked](const CPair& trees) {
                     *isChecked = *isChecked || !compare(trees.first, trees.other);
                     return *isChecked && compare(trees.first, trees.second);
                   });
}

/// `overload` lays a tree over a tree of half as many attributes, and then over the result again
/// and again: paths exist, values are the same.
template <typename Contender, typename Overload>
void AddOverload(const std::string& contender, Overload overload) {
  struct CPair {
    Contender reader;
    typename Contender::Tree target, source;
    bool isRight = false;
  };
  const auto make = [] {
    const CTreeData data(Shape::Levels, kAttributes);
    const Contender half(CTreeData(Shape::Levels, kAttributes / 2));
    Contender whole(data);
    auto target = half.Build();
    auto source = whole.Build();
    return std::make_shared<CPair>(CPair{std::move(whole), std::move(target), std::move(source)});
  };
  AddHeldBenchmark("overload", contender, kAttributes, true, make, [overload](CPair& trees) {
    overload(trees.target, trees.source);
    if (!trees.isRight) {
      trees.isRight =
          trees.reader.Read(trees.target) == ExpectedSum(CTreeData(Shape::Levels, kAttributes));
    }
    return trees.isRight;
  });
}

inline constexpr int kLookupSizes[] = {10, 100, 1'000, 100'000};
inline constexpr int kLinearLookups = 1'000;

/// The answer of looking up `names[place]` for all places of an order: the sum of the values. Most
/// search all siblings in turn; where a search takes as long as the siblings are many, `most` cuts
/// the number.
template <typename Text>
struct CLookups {
  template <typename Convert>
  CLookups(int siblings, int most, const Convert& convert) {
    for (const int place : LookupOrder(siblings)) {
      if (static_cast<int>(names.size()) < most) {
        names.push_back(convert("Sensor" + std::to_string(place)));
      }
    }
  }

  std::vector<Text> names;
};

/// `build` makes a Tree of `siblings` doubles DoubleOf(i) named "Sensor<i>"; `find` reads one.
template <typename Text, typename Build, typename Convert, typename Find>
void AddLookup(const std::string& contender, int most, Build build, Convert convert, Find find) {
  struct CWork {
    decltype(build(0)) tree;
    CLookups<Text> lookups;
  };
  for (const int siblings : kLookupSizes) {
    const CLookups<int> places(siblings, most, [](const std::string& name) {
      return std::stoi(name.substr(std::string("Sensor").size()));
    });
    double expected = 0;
    for (const int place : places.names) {
      expected += DoubleOf(place);
    }
    const std::string size =
        siblings < 1000 ? std::to_string(siblings) : std::to_string(siblings / 1000) + ",000";
    AddHeldBenchmark(
        "look-up among " + size + " siblings", contender, static_cast<int>(places.names.size()),
        expected,
        [=] {
          return std::make_shared<CWork>(
              CWork{build(siblings), CLookups<Text>(siblings, most, convert)});
        },
        [find](const CWork& work) {
          double sum = 0;
          for (const Text& name : work.lookups.names) {
            sum += find(work.tree, name);
          }
          return sum;
        });
  }
}

/// Makes a contender's tree for the measurement of its memory, and keeps it while the result lives.
struct CTreeBuilder {
  std::string contender;
  std::function<std::shared_ptr<void>()> build;
};

std::vector<CTreeBuilder>& TreeBuilders();

template <typename Contender>
void AddTreeBuilder() {
  const auto contender = std::make_shared<Contender>(CTreeData(Shape::Levels, kAttributes));
  TreeBuilders().push_back({Contender::kName, [contender]() -> std::shared_ptr<void> {
                              return std::make_shared<typename Contender::Tree>(contender->Build());
                            }});
}

}  // namespace lum::bench
