// CStringArray: the framework's growing array of texts.
#pragma once

#include <vector>

#include "platform/FrameworkString.h"

/// An array of texts. Indexes are 0-based; an index outside [0, GetSize()) is a caller error unless
/// said otherwise. Threads: distinct arrays may be used in different threads; one may be read in
/// several while none changes it.
class CStringArray {
 public:
  int GetSize() const noexcept { return static_cast<int>(m_texts.size()); }
  int GetCount() const noexcept { return GetSize(); }
  bool IsEmpty() const noexcept { return m_texts.empty(); }
  int GetUpperBound() const noexcept { return GetSize() - 1; }

  const CString& GetAt(int index) const { return m_texts[Place(index)]; }
  void SetAt(int index, const CString& text) { m_texts[Place(index)] = text; }
  const CString& operator[](int index) const { return m_texts[Place(index)]; }
  CString& operator[](int index) { return m_texts[Place(index)]; }

  /// Appends a text and returns its index.
  int Add(const CString& text) {
    m_texts.push_back(text);
    return GetUpperBound();
  }
  void InsertAt(int index, const CString& text) { m_texts.insert(m_texts.begin() + index, text); }
  void RemoveAt(int index) { m_texts.erase(m_texts.begin() + index); }
  void RemoveAll() { m_texts.clear(); }
  /// Cuts the array or fills it up with empty texts.
  void SetSize(int size) { m_texts.resize(Place(size)); }

 private:
  static std::size_t Place(int index) noexcept { return static_cast<std::size_t>(index); }

  std::vector<CString> m_texts;
};
