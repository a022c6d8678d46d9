// Changes and searches of a node's children.
#include "attributes/ChildList.h"

#include <new>

namespace lum::detail {
namespace {

/// Names that differ mostly do so in their length or their last character.
bool HasName(const CAttributeMap& node, std::wstring_view name) noexcept {
  const std::wstring_view own = View(node.Mnemonic());
  return own.size() == name.size() &&
         (own.data() == name.data() || own.empty() || (own.back() == name.back() && own == name));
}

}  // namespace

void CChildList::Insert(std::size_t pos, CAttributeMap& node) {
  DropIndex();
  m_nodes.insert(m_nodes.begin() + static_cast<std::ptrdiff_t>(pos), &node);
}

void CChildList::Remove(std::size_t pos) noexcept {
  DropIndex();
  m_nodes.erase(m_nodes.begin() + static_cast<std::ptrdiff_t>(pos));
}

void CChildList::NoteRename(const CAttributeMap& node, std::wstring_view newName) noexcept {
  CChildIndex* index = m_index.load(std::memory_order_relaxed);
  if (index != nullptr && View(node.Mnemonic()) != newName &&
      !index->Rename(m_nodes, node, newName)) {
    DropIndex();
  }
}

int CChildList::Find(std::wstring_view name, int occurrence) const noexcept {
  if (occurrence < 0) {
    return -1;
  }
  if (const CChildIndex* index = Index()) {
    return index->Find(m_nodes, name, occurrence);
  }
  for (std::size_t pos = 0; pos < m_nodes.size(); ++pos) {
    if (HasName(*m_nodes[pos], name) && occurrence-- == 0) {
      NoteScanned(pos + 1);
      return static_cast<int>(pos);
    }
  }
  NoteScanned(m_nodes.size());
  return -1;
}

int CChildList::Count(std::wstring_view name) const noexcept {
  const CChildIndex* index = Index();
  return index != nullptr ? index->Count(m_nodes, name) : CountBefore(m_nodes.size(), name);
}

int CChildList::OccurrenceAt(std::size_t pos) const noexcept {
  const CChildIndex* index = Index();
  return index != nullptr ? index->OccurrenceAt(pos)
                          : CountBefore(pos, View(m_nodes[pos]->Mnemonic()));
}

int CChildList::CountBefore(std::size_t end, std::wstring_view name) const noexcept {
  int count = 0;
  for (std::size_t pos = 0; pos < end; ++pos) {
    count += HasName(*m_nodes[pos], name) ? 1 : 0;
  }
  NoteScanned(end);
  return count;
}

/// The index, or null when the children are to be searched one by one.
const CChildIndex* CChildList::Index() const noexcept {
  if (m_nodes.size() <= kScannedChildren) {
    return nullptr;
  }
  const CChildIndex* index = m_index.load(std::memory_order_acquire);
  if (index != nullptr ||
      m_scanned.load(std::memory_order_relaxed) < kScansBeforeIndex * m_nodes.size()) {
    return index;
  }
  return BuildIndex();
}

/// Of several threads the first one's index stays. Without memory for it the search goes on as
/// before.
const CChildIndex* CChildList::BuildIndex() const noexcept {
  m_scanned.store(0, std::memory_order_relaxed);
  try {
    auto made = std::make_unique<CChildIndex>();
    made->IndexNewChildren(m_nodes);
    CChildIndex* present = nullptr;
    return m_index.compare_exchange_strong(present, made.get(), std::memory_order_acq_rel,
                                           std::memory_order_acquire)
               ? made.release()
               : present;
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void CChildList::IndexNewChildren() noexcept {
  try {
    m_index.load(std::memory_order_relaxed)->IndexNewChildren(m_nodes);
  } catch (const std::bad_alloc&) {
    DropIndex();
  }
}

void CChildList::DropIndex() noexcept {
  delete m_index.load(std::memory_order_relaxed);
  m_index.store(nullptr, std::memory_order_relaxed);
  m_scanned.store(0, std::memory_order_relaxed);
}

/// Two threads that note at once may lose a count, which only delays the index.
void CChildList::NoteScanned(std::size_t children) const noexcept {
  if (m_nodes.size() > kScannedChildren) {
    m_scanned.store(m_scanned.load(std::memory_order_relaxed) + children,
                    std::memory_order_relaxed);
  }
}

}  // namespace lum::detail
