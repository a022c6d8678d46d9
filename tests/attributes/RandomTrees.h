// Random names, values and trees for the random tests. Seeds are fixed, so every run is the same.
#pragma once

#include <cstdint>
#include <functional>
#include <random>
#include <utility>

#include "tests/attributes/NaiveTree.h"

class CRandomTrees {
 public:
  /// Where the choices come from: any numbers, one after another.
  using Source = std::function<std::uint_fast32_t()>;

  explicit CRandomTrees(unsigned int seed) : m_next(std::mt19937(seed)) {}
  explicit CRandomTrees(Source next) : m_next(std::move(next)) {}

  /// 0 to count - 1.
  int Below(int count) { return static_cast<int>(m_next() % static_cast<unsigned int>(count)); }
  bool OneIn(int count) { return Below(count) == 0; }

  CString Name() {
    static const wchar_t* const kNames[] = {
        L"A", L"B", L"C", L"A long name", L"OrderInfo", L"@N", L"DefInt", L"DefName", L"a"};
    return kNames[Below(9)];
  }

  unsigned int Flags() {
    static const unsigned int kFlags[] = {0,    0,    0,     1,      0x11,   0x10,
                                          0x40, 0x80, 0x400, 0x1000, 0x10000};
    return kFlags[Below(11)];
  }

  std::unique_ptr<CLumType> Value() {
    static const wchar_t* const kTexts[] = {L"1", L"1.0", L"2.5", L"1,2", L"a", L"A", L""};
    switch (Below(9)) {
      case 0:
        return std::make_unique<CLumInt>(Below(3));
      case 1:
        return std::make_unique<CLumDouble>(Below(5) / 2.0);
      case 2:
        return std::make_unique<CLumName>(kTexts[Below(7)]);
      case 3:
      case 4:
        return std::make_unique<CLumAnything>(kTexts[Below(7)]);
      case 5:
        return std::make_unique<CLumBool>(OneIn(2));
      case 6:
        return std::make_unique<CLumDouble2D>(Below(2), 0.5);
      case 7:
        return std::make_unique<CLumIoName>("x");
      default:
        return std::make_unique<CLumUndefined>();
    }
  }

  CNaiveNode Node() { return CNaiveNode(Name(), *Value(), Flags()); }

  /// A tree of about so many nodes, some parents of it with many children.
  CNaiveNode Tree(int nodes) {
    CNaiveNode root = Node();
    for (int i = 0; i < nodes; ++i) {
      Pick(root).children.push_back(Node());
    }
    return root;
  }

  /// Some node of the tree, often the root.
  CNaiveNode& Pick(CNaiveNode& root) {
    CNaiveNode* node = &root;
    while (!node->children.empty() && !OneIn(3)) {
      node =
          &node->children[static_cast<std::size_t>(Below(static_cast<int>(node->children.size())))];
    }
    return *node;
  }

 private:
  Source m_next;
};
