// CFileStore: the bytes in which a document's lines and texts lie: those of the loaded file, which
// copies of the document share, and those that were added since. A copy is deep all the same, as
// loaded bytes never change.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "platform/FileObject.h"
#include "platform/portable/FileText.h"

namespace lum::detail {

/// A range of the store's bytes.
struct CByteSpan {
  std::uint32_t begin = 0;
  std::uint32_t end = 0;

  bool IsEmpty() const { return begin == end; }
  std::uint32_t Size() const { return end - begin; }
};

/// The place of a text.
struct CStoredText {
  std::uint32_t begin = 0;
  std::uint32_t size : 31 = 0;
  std::uint32_t isWide : 1 = 0;
};

class CFileStore {
 public:
  CFileStore() : m_loaded(std::make_shared<const std::string>()) {}
  explicit CFileStore(std::shared_ptr<const std::string> loaded) : m_loaded(std::move(loaded)) {}

  const std::string& Loaded() const { return *m_loaded; }
  std::size_t AddedSize() const { return m_added.size(); }

  static bool IsAdded(std::uint32_t place) { return place >= kFirstAdded; }

  /// A text whose form is the bytes that lie there.
  static CStoredText TextAt(std::uint32_t begin, std::size_t size) {
    return {begin, static_cast<std::uint32_t>(size) & kMostText, 0};
  }

  /// Valid until bytes are added.
  std::string_view Bytes(CByteSpan span) const { return {At(span.begin), span.Size()}; }
  CFileText Text(CStoredText text) const { return {{At(text.begin), text.size}, text.isWide != 0}; }

  /// Where the next byte that is added will lie.
  std::uint32_t End() const { return kFirstAdded + static_cast<std::uint32_t>(m_added.size()); }
  // What adds bytes throws std::length_error when there are too many.
  void Add(std::string_view bytes) {
    CheckRoom(bytes.size());
    m_added += bytes;
  }
  /// An item's line of ASCII texts.
  CByteSpan AddLine(std::string_view key, std::string_view value, std::string_view lineEnd) {
    CheckRoom(key.size() + 1 + value.size() + lineEnd.size());
    const std::uint32_t begin = End();
    m_added += key;
    m_added += '=';
    m_added += value;
    m_added += lineEnd;
    return {begin, End()};
  }
  CStoredText AddText(const CFileText& text) {
    const std::uint32_t begin = End();
    Add(text.bytes);
    return {begin, static_cast<std::uint32_t>(text.bytes.size()) & kMostText, text.isWide};
  }

  /// Tells that so many added bytes are of no use any more.
  void Drop(std::size_t bytes) { m_dropped += bytes; }
  std::size_t Dropped() const { return m_dropped; }
  /// The same loaded file, with room for as many added bytes.
  CFileStore WithoutAdded() const {
    CFileStore store(m_loaded);
    store.m_added.reserve(m_added.size());
    return store;
  }

 private:
  /// Places of added bytes begin behind those of the largest file that can be loaded, with a gap:
  /// no added line follows a loaded one.
  static constexpr std::uint32_t kFirstAdded = std::uint32_t{FileObject::kMaxFileBytes} + 1;
  static constexpr std::uint32_t kMostText = (std::uint32_t{1} << 31) - 1;
  static constexpr std::size_t kMostAdded = std::numeric_limits<std::uint32_t>::max() - kFirstAdded;

  void CheckRoom(std::size_t bytes) const {
    if (bytes > kMostText || bytes > kMostAdded - m_added.size()) {
      throw std::length_error("document too large");
    }
  }

  const char* At(std::uint32_t place) const {
    return IsAdded(place) ? m_added.data() + (place - kFirstAdded) : m_loaded->data() + place;
  }

  std::shared_ptr<const std::string> m_loaded;
  std::string m_added;
  std::size_t m_dropped = 0;
};

}  // namespace lum::detail
