// CSideBySide: a tree and the naive tree, which take the same random steps and must stay the same.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "tests/attributes/RandomTrees.h"
#include "tests/attributes/TreeTesting.h"

/// The same tree twice, and one step after the other on both.
class CSideBySide {
 public:
  explicit CSideBySide(CRandomTrees random) : m_random(std::move(random)) {}

  void Step() {
    PickPlace();
    const CString name = m_random.Name();
    const int occurrence = m_random.Below(4) - 1;
    if (m_random.OneIn(4)) {
      Ask(name, occurrence);
    } else if (m_random.OneIn(5)) {
      Remove(name, occurrence);
    } else if (m_random.OneIn(3)) {
      Change(name);
    } else {
      Add(name, occurrence);
    }
    if (m_naive.NodeCount() > 250) {
      m_map.RemoveAll();
      m_naive.children.clear();
    }
  }

  void Merge() {
    const CNaiveNode source = m_random.Tree(40);
    const unsigned int word = static_cast<unsigned int>(m_random.Below(32));
    m_map.Overload(ToMap(source), word);
    m_naive.Overload(source, word);
  }

  void MergeFromWithin() {
    PickPlace();
    const CNaiveNode source = *m_node;
    const unsigned int word = static_cast<unsigned int>(m_random.Below(32));
    m_map.Overload(*m_place, word);
    m_naive.Overload(source, word);
  }

  void Compare() {
    CNaiveNode other = m_random.OneIn(2) ? m_random.Tree(60) : m_naive;
    for (int i = m_random.Below(12); i > 0; --i) {
      CNaiveNode& node = m_random.Pick(other);
      if (m_random.OneIn(3) && !node.children.empty()) {
        node.children.erase(node.children.begin());
      } else {
        node.value = m_random.Value();
      }
    }
    const unsigned int word = static_cast<unsigned int>(m_random.Below(8));
    CAttributeMap diff;
    CNaiveNode naiveDiff;
    EXPECT_EQ(m_map.Compare(ToMap(other), diff, word), m_naive.Compare(other, naiveDiff, word));
    EXPECT_EQ(Describe(diff), Describe(naiveDiff));
  }

  void ExpectEqual() const { ASSERT_EQ(DescribeNode(m_map), DescribeNode(m_naive)); }

  void CopyBack() {
    CAttributeMap copy(m_map);
    m_map = m_random.OneIn(2) ? copy : CAttributeMap(L"other");
    m_map = std::move(copy);
  }

 private:
  /// Goes down to the same node in both trees.
  void PickPlace() {
    m_place = &m_map;
    m_node = &m_naive;
    while (m_place->Count() != 0 && !m_random.OneIn(3)) {
      const int pos = m_random.Below(m_place->Count());
      m_place = &m_place->FindCreateIndex(pos);
      m_node = &m_node->children[static_cast<std::size_t>(pos)];
    }
  }

  void Add(const CString& name, int occurrence) {
    const std::unique_ptr<CLumType> value = m_random.Value();
    const unsigned int flags = m_random.Flags();
    std::vector<CNaiveNode>& children = m_node->children;
    switch (m_random.Below(6)) {
      case 0:
        m_place->Add(name);
        children.emplace_back(name);
        break;
      case 1: {
        const CNaiveNode subtree = m_random.Tree(5);
        m_place->Add(ToMap(subtree));
        children.push_back(subtree);
        break;
      }
      case 2:
        if (const int pos = m_node->Position(name, occurrence); pos >= 0) {
          const CAttributeMap& answer = m_place->Insert(occurrence, name, *value, flags);
          EXPECT_EQ(&answer, &(*m_place)[occurrence]);
          children.insert(children.begin() + pos, CNaiveNode(name, *value, flags));
        }
        break;
      case 3:
        if (occurrence >= 0) {
          CAttributeMap& found = m_place->FindCreate(name, occurrence);
          m_node->FindCreate(name, occurrence);
          EXPECT_EQ(&found, &(*m_place)[m_node->Position(name, occurrence)]);
        }
        break;
      case 4: {
        const bool isNew = m_node->Child(name, 0) == nullptr;
        EXPECT_EQ(m_place->AppendNew(name, *value) != nullptr, isNew);
        if (isNew) {
          children.emplace_back(name, *value, 0);
        }
        break;
      }
      default:
        m_place->Add(name, *value, flags);
        children.emplace_back(name, *value, flags);
    }
  }

  void Remove(const CString& name, int occurrence) {
    std::vector<CNaiveNode>& children = m_node->children;
    const int pos = m_node->Position(name, occurrence);
    switch (m_random.Below(3)) {
      case 0:
        EXPECT_EQ(m_place->Remove(name, occurrence), pos >= 0);
        break;
      case 1:
        if (pos >= 0) {
          m_place->Remove(pos);
        }
        break;
      default:
        m_place->RemoveAll(name);
        std::erase_if(children, [&name](const CNaiveNode& child) { return child.name == name; });
        return;
    }
    if (pos >= 0) {
      children.erase(children.begin() + pos);
    }
  }

  void Change(const CString& name) {
    switch (m_random.Below(5)) {
      case 0: {
        const std::unique_ptr<CLumType> value = m_random.Value();
        m_place->SetValue(*value);
        m_node->value.reset(value->MakeCopy());
        break;
      }
      case 1: {
        const unsigned int flags = m_random.Flags();
        m_place->SetFlags(flags);
        m_node->flags = flags;
        break;
      }
      case 2:
        m_place->SetGroup(name);
        m_node->name = name;
        break;
      case 3: {
        const bool marked = m_random.OneIn(2);
        m_place->SetLastSelected(marked);
        m_node->lastSelected = marked;
        break;
      }
      default: {
        const bool on = m_random.OneIn(2);
        CNaiveNode* child = m_node->Child(name, 0);
        EXPECT_EQ(m_place->DisableAttribute(name, on), child != nullptr);
        if (child != nullptr) {
          child->flags = on ? child->flags | 0x40 : child->flags & ~0x40u;
        }
      }
    }
  }

  void Ask(const CString& name, int occurrence) {
    const int pos = m_node->Position(name, occurrence);
    ASSERT_EQ(m_place->Count(), static_cast<int>(m_node->children.size()));
    EXPECT_EQ(m_place->FindAttribute(name, occurrence), pos);
    EXPECT_EQ(m_place->Has(name, occurrence), pos >= 0);
    EXPECT_EQ(m_place->Count(name),
              std::count_if(m_node->children.begin(), m_node->children.end(),
                            [&name](const CNaiveNode& child) { return child.name == name; }));
    EXPECT_EQ(m_place->HasEditableAttributes(), m_node->HasEditable());
    if (pos >= 0) {
      EXPECT_EQ(m_place->RetrieveIndex(pos), m_node->Occurrence(pos));
      EXPECT_EQ(&m_place->Find(name, occurrence), &(*m_place)[pos]);
    }
  }

  CRandomTrees m_random;
  CAttributeMap m_map;
  CNaiveNode m_naive;
  CAttributeMap* m_place = nullptr;
  CNaiveNode* m_node = nullptr;
};
