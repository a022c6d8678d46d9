// The framework's strings: CString (wide text of wchar_t) and CStringA (bytes, also binary records
// with embedded NULs). CStringArray stands in StringArray.h.
//
// A string is a pointer to characters that it either borrows from static storage (a literal in a
// constant) or shares, counted, with its copies until one of them is changed. Copies are cheap and
// distinct objects may be used in different threads; one object is not synchronised.
#pragma once

#include <atomic>
#include <compare>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>

#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#endif

#include "platform/PlatformExport.h"

namespace lum::detail {

/// A process that has never had a second thread needs no atomic instructions to count, which take
/// far longer than plain ones. The C library tells; where it does not, there may be threads.
inline bool IsSingleThreaded() noexcept {
#if __has_include(<sys/single_threaded.h>)
  return __libc_single_threaded != 0;
#else
  return false;
#endif
}

inline void AddOwner(std::atomic<int>& owners) noexcept {
  if (IsSingleThreaded()) {
    owners.store(owners.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
  } else {
    owners.fetch_add(1, std::memory_order_relaxed);
  }
}

/// Whether it was the last one.
inline bool RemoveOwner(std::atomic<int>& owners) noexcept {
  if (IsSingleThreaded()) {
    const int left = owners.load(std::memory_order_relaxed) - 1;
    owners.store(left, std::memory_order_relaxed);
    return left == 0;
  }
  return owners.fetch_sub(1, std::memory_order_acq_rel) == 1;
}

}  // namespace lum::detail

/// No text is longer: whatever would be leaves as std::length_error, with the text as it was.
inline constexpr int kMaxTextLength = 2'147'483'646;

/// Widths and precisions of Format that are larger count as this: what a slip can allocate is
/// bounded.
inline constexpr int kMaxFormatField = 1'000'000;

/// The string of one character type. Threads: distinct objects may be used in different threads,
/// also copies of each other; one object may be read in several while none changes it.
template <typename Ch>
class LUM_PLATFORM_API LumFrameworkString {
 public:
  using CharType = Ch;
  using OtherChar = std::conditional_t<std::is_same_v<Ch, char>, wchar_t, char>;

  /// The empty text.
  constexpr LumFrameworkString() noexcept : m_chars(kEmpty), m_length(0), m_shared(false) {}

  /// Copies a NUL-terminated text; null gives the empty text. A constant with static storage
  /// borrows its literal instead, so it is built by the compiler and no code runs to make it.
  constexpr LumFrameworkString(const Ch* text) : LumFrameworkString() {
    if (text == nullptr) {
      return;
    }
    if (std::is_constant_evaluated()) {
      m_chars = text;
      m_length = static_cast<int>(std::char_traits<Ch>::length(text));
    } else {
      Assign(text, LengthOf(text));
    }
  }

  /// Copies exactly `length` characters, NULs included.
  LumFrameworkString(const Ch* text, int length) : LumFrameworkString() { Assign(text, length); }

  /// `count` times the character; a count below one gives the empty text.
  explicit LumFrameworkString(Ch ch, int count = 1);

  /// Converts between wide text and the system's ANSI code page (see TextEncoding.h).
  explicit LumFrameworkString(const OtherChar* text);
  explicit LumFrameworkString(const LumFrameworkString<OtherChar>& text);

  LumFrameworkString(const LumFrameworkString& other) : LumFrameworkString() { ShareFrom(other); }
  /// Takes the text over; the source is left empty.
  LumFrameworkString(LumFrameworkString&& other) noexcept : LumFrameworkString() { Swap(other); }
  LumFrameworkString& operator=(const LumFrameworkString& other) {
    if (this != &other) {
      LumFrameworkString copy(other);
      Swap(copy);
    }
    return *this;
  }
  LumFrameworkString& operator=(LumFrameworkString&& other) noexcept {
    LumFrameworkString taken(static_cast<LumFrameworkString&&>(other));
    Swap(taken);
    return *this;
  }
  LumFrameworkString& operator=(const Ch* text) {
    LumFrameworkString copy(text);
    Swap(copy);
    return *this;
  }
  constexpr ~LumFrameworkString() { Release(); }

  int GetLength() const noexcept { return m_length; }
  bool IsEmpty() const noexcept { return m_length == 0; }
  /// Makes the text empty.
  void Empty() noexcept { Release(); }

  /// The characters, NUL-terminated, owned by the string and valid until it is changed or
  /// destroyed.
  const Ch* GetString() const noexcept { return m_chars; }
  operator const Ch*() const noexcept { return m_chars; }

  /// The character at a 0-based place. Precondition: 0 <= index <= GetLength(); the last is NUL.
  Ch GetAt(int index) const noexcept { return m_chars[index]; }
  Ch operator[](int index) const noexcept { return m_chars[index]; }
  /// Replaces one character. Precondition: 0 <= index < GetLength().
  void SetAt(int index, Ch ch);

  /// Parts of the text; counts and places beyond it are cut to it, negative ones count as 0.
  LumFrameworkString Left(int count) const;
  LumFrameworkString Right(int count) const;
  LumFrameworkString Mid(int first) const;
  LumFrameworkString Mid(int first, int count) const;

  /// The place of the first match at or after `start`, or -1.
  int Find(Ch ch, int start = 0) const noexcept;
  int Find(const Ch* text, int start = 0) const noexcept;
  /// The place of the last match, or -1.
  int ReverseFind(Ch ch) const noexcept;
  /// The place of the first character that stands in `set`, or -1.
  int FindOneOf(const Ch* set) const noexcept;

  /// Removes white space (blank, tab, line and page breaks), or the given characters, at the ends.
  LumFrameworkString& Trim();
  LumFrameworkString& TrimLeft();
  LumFrameworkString& TrimRight();
  LumFrameworkString& Trim(const Ch* set);
  LumFrameworkString& TrimLeft(const Ch* set);
  LumFrameworkString& TrimRight(const Ch* set);

  /// Ordinal comparison by character code over the whole text: below 0, 0 or above 0.
  int Compare(const Ch* text) const noexcept;
  int Compare(const LumFrameworkString& text) const noexcept;
  /// The same with letters folded by the Unicode simple mapping of Latin, Greek and Cyrillic, in
  /// bytes of the ASCII letters; never by the process locale.
  int CompareNoCase(const Ch* text) const noexcept;
  LumFrameworkString& MakeUpper();
  LumFrameworkString& MakeLower();

  /// Writes by a printf format. "%s" takes a text of this string's own width, "%S" one of the
  /// other, "%hs" and "%ls" say the width; "%I64d" and "%I64u" take 64-bit numbers. The decimal
  /// point is always ".".
  void Format(const Ch* format, ...);  // NOLINT(cert-dcl50-cpp): printf's way
  void FormatV(const Ch* format, va_list arguments);
  void AppendFormat(const Ch* format, ...);  // NOLINT(cert-dcl50-cpp): as Format

  void Append(const Ch* text);
  void Append(const Ch* text, int length);
  void Append(const LumFrameworkString& text);
  void AppendChar(Ch ch);

  /// Inserts before `index` (cut to the text's ends) and returns the new length.
  int Insert(int index, const Ch* text);
  /// Removes `count` characters from `index` on and returns the new length.
  int Delete(int index, int count = 1);
  /// Replaces every occurrence and returns how many there were; an empty `from` replaces none.
  int Replace(const Ch* from, const Ch* to);
  int Replace(Ch from, Ch to);
  /// Removes every such character and returns how many there were.
  int Remove(Ch ch);

  /// Writable storage for at least `length` characters, holding the text; valid until the next
  /// call of another member. ReleaseBuffer sets the length again (-1: up to the first NUL).
  Ch* GetBuffer(int length = 0);
  void ReleaseBuffer(int length = -1);
  /// Makes room for `length` characters so that appending up to there allocates nothing.
  void Preallocate(int length);

  LumFrameworkString& operator+=(const LumFrameworkString& text) {
    Append(text);
    return *this;
  }
  LumFrameworkString& operator+=(const Ch* text) {
    Append(text);
    return *this;
  }
  LumFrameworkString& operator+=(Ch ch) {
    AppendChar(ch);
    return *this;
  }

  friend LumFrameworkString operator+(LumFrameworkString a, const LumFrameworkString& b) {
    a.Append(b);
    return a;
  }
  friend LumFrameworkString operator+(LumFrameworkString a, const Ch* b) {
    a.Append(b);
    return a;
  }
  friend LumFrameworkString operator+(const Ch* a, const LumFrameworkString& b) {
    LumFrameworkString sum(a);
    sum.Append(b);
    return sum;
  }
  friend LumFrameworkString operator+(LumFrameworkString a, Ch b) {
    a.AppendChar(b);
    return a;
  }
  friend LumFrameworkString operator+(Ch a, const LumFrameworkString& b) {
    LumFrameworkString sum(a);
    sum.Append(b);
    return sum;
  }

  friend bool operator==(const LumFrameworkString& a, const LumFrameworkString& b) noexcept {
    return a.m_length == b.m_length &&
           (a.m_chars == b.m_chars ||
            std::char_traits<Ch>::compare(a.m_chars, b.m_chars, Size(a.m_length)) == 0);
  }
  friend bool operator==(const LumFrameworkString& a, const Ch* b) noexcept {
    return a.Compare(b) == 0;
  }
  /// Without these the standard library's pairs and lists would compare addresses, to which a
  /// string converts.
  friend std::strong_ordering operator<=>(const LumFrameworkString& a,
                                          const LumFrameworkString& b) noexcept {
    return a.Compare(b) <=> 0;
  }
  friend std::strong_ordering operator<=>(const LumFrameworkString& a, const Ch* b) noexcept {
    return a.Compare(b) <=> 0;
  }
  friend bool operator<(const LumFrameworkString& a, const LumFrameworkString& b) noexcept {
    return a.Compare(b) < 0;
  }
  friend bool operator<(const LumFrameworkString& a, const Ch* b) noexcept {
    return a.Compare(b) < 0;
  }
  friend bool operator<(const Ch* a, const LumFrameworkString& b) noexcept {
    return b.Compare(a) > 0;
  }
  friend bool operator>(const LumFrameworkString& a, const LumFrameworkString& b) noexcept {
    return b < a;
  }
  friend bool operator>(const LumFrameworkString& a, const Ch* b) noexcept { return b < a; }
  friend bool operator>(const Ch* a, const LumFrameworkString& b) noexcept { return b < a; }
  friend bool operator<=(const LumFrameworkString& a, const LumFrameworkString& b) noexcept {
    return !(b < a);
  }
  friend bool operator<=(const LumFrameworkString& a, const Ch* b) noexcept { return !(b < a); }
  friend bool operator<=(const Ch* a, const LumFrameworkString& b) noexcept { return !(b < a); }
  friend bool operator>=(const LumFrameworkString& a, const LumFrameworkString& b) noexcept {
    return !(a < b);
  }
  friend bool operator>=(const LumFrameworkString& a, const Ch* b) noexcept { return !(a < b); }
  friend bool operator>=(const Ch* a, const LumFrameworkString& b) noexcept { return !(a < b); }

  void Swap(LumFrameworkString& other) noexcept {
    std::swap(m_chars, other.m_chars);
    std::swap(m_length, other.m_length);
    std::swap(m_shared, other.m_shared);
  }

 private:
  /// Stands right before the characters of a counted text.
  struct Header {
    std::atomic<int> owners;
    int capacity;
  };

  static constexpr Ch kEmpty[1] = {};

  static constexpr std::size_t Size(int length) noexcept {
    return static_cast<std::size_t>(length);
  }
  static int LengthOf(const Ch* text) noexcept;
  static Ch* Allocate(int capacity);

  Header* HeaderOf() const noexcept {
    return reinterpret_cast<Header*>(const_cast<Ch*>(m_chars)) - 1;
  }
  void Assign(const Ch* text, int length);
  void ShareFrom(const LumFrameworkString& other) {
    if (other.m_shared) {
      lum::detail::AddOwner(other.HeaderOf()->owners);
      m_chars = other.m_chars;
      m_length = other.m_length;
      m_shared = true;
    } else if (other.m_length != 0) {
      // A borrowed text is copied: the module that holds the literal may be unloaded first.
      Assign(other.m_chars, other.m_length);
    }
  }
  constexpr void Release() noexcept {
    if (m_shared && lum::detail::RemoveOwner(HeaderOf()->owners)) {
      Free();
    }
    m_chars = kEmpty;
    m_length = 0;
    m_shared = false;
  }
  void Free() noexcept;
  /// Makes the characters this object's own with room for `capacity` and returns them.
  Ch* MakeWritable(int capacity);
  void SetLength(Ch* chars, int length) noexcept;

  const Ch* m_chars;
  int m_length;
  bool m_shared;
};

// A DLL exports no inline member of a template declared so: there its users build those themselves.
#if !defined(_WIN32)
extern template class LUM_PLATFORM_API LumFrameworkString<wchar_t>;
extern template class LUM_PLATFORM_API LumFrameworkString<char>;
#endif

using CString = LumFrameworkString<wchar_t>;
using CStringW = CString;
using CStringA = LumFrameworkString<char>;

/// Says that this platform's strings can be built by the compiler, so that a text constant is there
/// before any code of its module runs. A platform whose strings cannot does not define it.
#define LUM_CONSTINIT_TEXT constinit
/// The same of text constants that need no code to be taken down either: none is run, or noted for
/// later, when their module is loaded.
#define LUM_CONSTEXPR_TEXT constexpr
