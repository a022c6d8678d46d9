// The naive tree: look-up, merging and comparing. Its saving and loading stand in NaiveItems.cpp.
#include "tests/attributes/NaiveTree.h"

#include <algorithm>
#include <cmath>

#include "tests/attributes/TreeTesting.h"

int CNaiveNode::Occurrence(int pos) const {
  int count = 0;
  for (int i = 0; i < pos; ++i) {
    if (children[static_cast<std::size_t>(i)].name ==
        children[static_cast<std::size_t>(pos)].name) {
      ++count;
    }
  }
  return count;
}

int CNaiveNode::Position(const CString& childName, int occurrence) const {
  for (std::size_t pos = 0; pos < children.size(); ++pos) {
    if (children[pos].name == childName && Occurrence(static_cast<int>(pos)) == occurrence) {
      return static_cast<int>(pos);
    }
  }
  return -1;
}

CNaiveNode* CNaiveNode::Child(const CString& childName, int occurrence) {
  const int pos = Position(childName, occurrence);
  return pos >= 0 ? &children[static_cast<std::size_t>(pos)] : nullptr;
}

const CNaiveNode* CNaiveNode::Child(const CString& childName, int occurrence) const {
  return const_cast<CNaiveNode*>(this)->Child(childName, occurrence);
}

CNaiveNode& CNaiveNode::FindCreate(const CString& childName, int occurrence) {
  while (Child(childName, occurrence) == nullptr) {
    children.emplace_back(childName);
  }
  return *Child(childName, occurrence);
}

int CNaiveNode::NodeCount() const {
  int count = 1;
  for (const CNaiveNode& child : children) {
    count += child.NodeCount();
  }
  return count;
}

void CNaiveNode::Overload(const CNaiveNode& source, unsigned int word) {
  if (word == 15) {
    *this = source;
  } else {
    Overload(source, (word & 0x04) != 0, (word & 0x01) != 0, (word & 0x02) != 0,
             (word & 0x10) != 0);
  }
}

void CNaiveNode::Overload(const CNaiveNode& source, bool addNew, bool copyFlags, bool orderInfo,
                          bool strict) {
  for (std::size_t pos = 0; pos < source.children.size(); ++pos) {
    const CNaiveNode& s = source.children[pos];
    if (s.name == L"OrderInfo" && !orderInfo) {
      continue;
    }
    CNaiveNode* d = Child(s.name, source.Occurrence(static_cast<int>(pos)));
    if (d != nullptr) {
      const unsigned int protecting = strict ? 0x1400 : 0x0400;
      if (s.value->Type() != CLumType::TYPE_UNDEFINED && (d->flags & protecting) == 0) {
        *d->value = *s.value;
      }
      if (copyFlags) {
        d->flags = s.flags;
      }
      d->lastSelected = s.lastSelected;
      d->Overload(s, addNew, copyFlags, false, false);
    } else if (addNew) {
      children.push_back(s);
    }
  }
}

namespace {

bool AreEqual(const CNaiveNode& o, const CNaiveNode& t) {
  CString textO;
  CString textT;
  o.value->GetValueStr(textO);
  t.value->GetValueStr(textT);
  double a = 0.0;
  double b = 0.0;
  if (textO.Find(L",") < 0 && textT.Find(L",") < 0 && o.value->GetDouble(a) == 1 &&
      t.value->GetDouble(b) == 1) {
    return std::fabs(a - b) <= Epsilon(std::max(std::fabs(a), std::fabs(b)) * 10.0);
  }
  return (t.flags & 0x0400) != 0 || textO == textT;
}

}  // namespace

bool CNaiveNode::Compare(const CNaiveNode& other, CNaiveNode& diff, unsigned int word) const {
  diff.children.clear();
  for (std::size_t pos = 0; (word & 3) != 0 && pos < other.children.size(); ++pos) {
    const CNaiveNode& o = other.children[pos];
    const int k = other.Occurrence(static_cast<int>(pos));
    const CNaiveNode* t = Child(o.name, k);
    if (t == nullptr) {
      if ((word & 2) != 0) {
        diff.FindCreate(o.name, k) = o;
      }
      continue;
    }
    if (!o.children.empty()) {
      CNaiveNode sub;
      if (t->Compare(o, sub, word & 3)) {
        sub.name = o.name;
        diff.FindCreate(o.name, k) = sub;
      }
    }
    if ((word & 1) != 0 && !AreEqual(o, *t)) {
      CNaiveNode& d = diff.FindCreate(o.name, k);
      d.value.reset(o.value->MakeCopy());
      d.flags = o.flags;
    }
  }
  for (std::size_t pos = 0; (word & 4) != 0 && pos < children.size(); ++pos) {
    const CNaiveNode& t = children[pos];
    const int k = Occurrence(static_cast<int>(pos));
    const CNaiveNode* o = other.Child(t.name, k);
    if (o == nullptr) {
      diff.FindCreate(t.name, k) = t;
    } else if (!t.children.empty()) {
      CNaiveNode sub;
      if (t.Compare(*o, sub, 4)) {
        diff.FindCreate(t.name, k).Overload(sub, true, false, false, false);
      }
    }
  }
  return !diff.children.empty();
}

bool CNaiveNode::HasEditable() const {
  for (const CNaiveNode& child : children) {
    if ((child.flags & 0x0001) != 0 && ((child.flags & 0x0010) == 0 || child.HasEditable())) {
      return true;
    }
  }
  return false;
}

std::string DescribeNode(const CNaiveNode& node) {
  std::string text = Narrow(node.name) + ":" + std::to_string(node.value->Type()) + ":" +
                     TextOf(*node.value) + ":" + std::to_string(node.flags);
  text += node.lastSelected ? "*" : "";
  return node.children.empty() ? text : text + "{" + Describe(node) + "}";
}

std::string Describe(const CNaiveNode& node) {
  std::string text;
  for (const CNaiveNode& child : node.children) {
    text += (text.empty() ? "" : " ") + DescribeNode(child);
  }
  return text;
}

CAttributeMap ToMap(const CNaiveNode& node) {
  CAttributeMap map(node.name, *node.value, node.flags);
  map.SetLastSelected(node.lastSelected);
  for (const CNaiveNode& child : node.children) {
    map.Add(ToMap(child));
  }
  return map;
}
