// Storage, editing, searching and comparing of the framework's strings. A counted text is one
// allocation: the Header, the characters and a terminating NUL. Formatting stands in
// FrameworkStringFormat.cpp.
#include "platform/FrameworkString.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <new>
#include <stdexcept>
#include <string_view>

#include "platform/TextEncoding.h"
#include "platform/portable/CaseMapping.h"

namespace {

// The length with its NUL is an int too.
static_assert(kMaxTextLength == std::numeric_limits<int>::max() - 1);

// The first growth of a text makes room for a few more characters at once.
constexpr int kSmallestGrowth = 15;

template <typename Ch>
constexpr Ch kWhiteSpace[] = {' ', '\t', '\n', '\v', '\f', '\r', 0};

int SumOfLengths(int a, int b) {
  if (a > kMaxTextLength - b) {
    throw std::length_error("text too long");
  }
  return a + b;
}

// Growth by half of what is there keeps repeated appending linear.
int GrownCapacity(int length, int wanted) {
  if (wanted <= length) {
    return length;
  }
  const int half = length / 2;
  const int grown = length > kMaxTextLength - half ? kMaxTextLength : length + half;
  return std::max({wanted, grown, kSmallestGrowth});
}

template <typename Ch>
std::basic_string_view<Ch> ViewOf(const LumFrameworkString<Ch>& text) {
  return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

template <typename Ch>
std::basic_string_view<Ch> ViewOf(const Ch* text) {
  return text == nullptr ? std::basic_string_view<Ch>() : std::basic_string_view<Ch>(text);
}

template <typename Ch>
int PlaceOf(std::size_t found) {
  return found == std::basic_string_view<Ch>::npos ? -1 : static_cast<int>(found);
}

int Sign(std::size_t a, std::size_t b) { return a < b ? -1 : (a > b ? 1 : 0); }

template <typename Ch>
int CompareViews(std::basic_string_view<Ch> a, std::basic_string_view<Ch> b) {
  const int order = std::char_traits<Ch>::compare(a.data(), b.data(), std::min(a.size(), b.size()));
  return order != 0 ? order : Sign(a.size(), b.size());
}

template <typename Ch>
int CompareFolded(std::basic_string_view<Ch> a, std::basic_string_view<Ch> b) {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    const Ch left = lum::detail::FoldCase(a[i]);
    const Ch right = lum::detail::FoldCase(b[i]);
    if (left != right) {
      return std::char_traits<Ch>::lt(left, right) ? -1 : 1;
    }
  }
  return Sign(a.size(), b.size());
}

template <typename Ch>
bool IsWithin(const Ch* place, const Ch* chars, int length) {
  // The standard's order of pointers is total, also between unrelated texts.
  return !std::less<>()(place, chars) && !std::less<>()(chars + length, place);
}

}  // namespace

// ---- Storage

template <typename Ch>
int LumFrameworkString<Ch>::LengthOf(const Ch* text) noexcept {
  // A length beyond int is refused by Allocate, which may throw.
  constexpr auto kLimit = static_cast<std::size_t>(std::numeric_limits<int>::max());
  return static_cast<int>(std::min(ViewOf(text).size(), kLimit));
}

template <typename Ch>
Ch* LumFrameworkString<Ch>::Allocate(int capacity) {
  static_assert(sizeof(Header) % alignof(Ch) == 0);
  static_assert(alignof(Header) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);
  constexpr std::size_t kMostChars =
      (std::numeric_limits<std::size_t>::max() - sizeof(Header)) / sizeof(Ch) - 1;
  if (capacity < 0 || capacity > kMaxTextLength || Size(capacity) > kMostChars) {
    throw std::length_error("text too long");
  }
  void* memory = ::operator new(sizeof(Header) + (Size(capacity) + 1) * sizeof(Ch));
  Header* header = ::new (memory) Header{1, capacity};
  return reinterpret_cast<Ch*>(header + 1);
}

template <typename Ch>
void LumFrameworkString<Ch>::Free() noexcept {
  Header* header = HeaderOf();
  header->~Header();
  ::operator delete(header);
}

template <typename Ch>
void LumFrameworkString<Ch>::SetLength(Ch* chars, int length) noexcept {
  chars[length] = Ch();
  m_length = length;
}

template <typename Ch>
void LumFrameworkString<Ch>::Assign(const Ch* text, int length) {
  if (text == nullptr || length <= 0) {
    Release();
    return;
  }
  Ch* chars = Allocate(length);
  std::char_traits<Ch>::copy(chars, text, Size(length));
  Release();  // Only now: the text may be part of this one.
  m_chars = chars;
  m_shared = true;
  SetLength(chars, length);
}

template <typename Ch>
Ch* LumFrameworkString<Ch>::MakeWritable(int capacity) {
  if (m_shared && HeaderOf()->capacity >= capacity &&
      HeaderOf()->owners.load(std::memory_order_acquire) == 1) {
    return const_cast<Ch*>(m_chars);
  }
  const int length = m_length;
  Ch* chars = Allocate(GrownCapacity(length, capacity));
  std::char_traits<Ch>::copy(chars, m_chars, Size(length));
  Release();
  m_chars = chars;
  m_shared = true;
  SetLength(chars, length);
  return chars;
}

template <typename Ch>
Ch* LumFrameworkString<Ch>::GetBuffer(int length) {
  return MakeWritable(std::max(length, m_length));
}

template <typename Ch>
void LumFrameworkString<Ch>::ReleaseBuffer(int length) {
  Ch* chars = MakeWritable(m_length);
  const int capacity = HeaderOf()->capacity;
  if (length < 0) {
    const Ch* end = std::char_traits<Ch>::find(chars, Size(capacity), Ch());
    length = end == nullptr ? capacity : static_cast<int>(end - chars);
  }
  SetLength(chars, std::min(length, capacity));
}

template <typename Ch>
void LumFrameworkString<Ch>::Preallocate(int length) {
  MakeWritable(std::max(length, m_length));
}

// ---- Building

template <typename Ch>
LumFrameworkString<Ch>::LumFrameworkString(Ch ch, int count) : LumFrameworkString() {
  if (count > 0) {
    Ch* chars = MakeWritable(count);
    std::char_traits<Ch>::assign(chars, Size(count), ch);
    SetLength(chars, count);
  }
}

template <typename Ch>
LumFrameworkString<Ch>::LumFrameworkString(const OtherChar* text)
    : LumFrameworkString(LumFrameworkString<OtherChar>(text)) {}

template <typename Ch>
LumFrameworkString<Ch>::LumFrameworkString(const LumFrameworkString<OtherChar>& text)
    : LumFrameworkString() {
  if constexpr (std::is_same_v<Ch, wchar_t>) {
    *this = AnsiToWide(text);
  } else {
    *this = WideToAnsi(text);
  }
}

template <typename Ch>
void LumFrameworkString<Ch>::Append(const Ch* text) {
  Append(text, LengthOf(text));
}

template <typename Ch>
void LumFrameworkString<Ch>::Append(const Ch* text, int length) {
  if (text == nullptr || length <= 0) {
    return;
  }
  const int sum = SumOfLengths(m_length, length);
  // A part of this very text moves with it when the storage grows.
  const bool isOwnPart = IsWithin(text, m_chars, m_length);
  const std::ptrdiff_t ownPlace = isOwnPart ? text - m_chars : 0;
  Ch* chars = MakeWritable(sum);
  std::char_traits<Ch>::move(chars + m_length, isOwnPart ? chars + ownPlace : text, Size(length));
  SetLength(chars, sum);
}

template <typename Ch>
void LumFrameworkString<Ch>::Append(const LumFrameworkString& text) {
  if (!m_shared && IsEmpty() && text.m_shared) {
    *this = text;
    return;
  }
  Append(text.m_chars, text.m_length);
}

template <typename Ch>
void LumFrameworkString<Ch>::AppendChar(Ch ch) {
  const int sum = SumOfLengths(m_length, 1);
  Ch* chars = MakeWritable(sum);
  chars[sum - 1] = ch;
  SetLength(chars, sum);
}

// ---- Editing

template <typename Ch>
void LumFrameworkString<Ch>::SetAt(int index, Ch ch) {
  MakeWritable(m_length)[index] = ch;
}

template <typename Ch>
int LumFrameworkString<Ch>::Insert(int index, const Ch* text) {
  const int length = LengthOf(text);
  if (length == 0) {
    return m_length;
  }
  const int place = std::clamp(index, 0, m_length);
  LumFrameworkString sum;
  sum.Preallocate(SumOfLengths(m_length, length));
  sum.Append(m_chars, place);
  sum.Append(text, length);
  sum.Append(m_chars + place, m_length - place);
  Swap(sum);
  return m_length;
}

template <typename Ch>
int LumFrameworkString<Ch>::Delete(int index, int count) {
  const int first = std::max(index, 0);
  if (first >= m_length || count <= 0) {
    return m_length;
  }
  const int removed = std::min(count, m_length - first);
  Ch* chars = MakeWritable(m_length);
  std::char_traits<Ch>::move(chars + first, chars + first + removed,
                             Size(m_length - first - removed));
  SetLength(chars, m_length - removed);
  return m_length;
}

template <typename Ch>
int LumFrameworkString<Ch>::Replace(const Ch* from, const Ch* to) {
  const int fromLength = LengthOf(from);
  const int toLength = LengthOf(to);
  int found = fromLength == 0 ? -1 : Find(from);
  if (found < 0) {
    return 0;
  }
  LumFrameworkString result;
  int count = 0;
  int copied = 0;
  for (; found >= 0; found = Find(from, copied)) {
    result.Append(m_chars + copied, found - copied);
    result.Append(to, toLength);
    copied = found + fromLength;
    ++count;
  }
  result.Append(m_chars + copied, m_length - copied);
  Swap(result);
  return count;
}

template <typename Ch>
int LumFrameworkString<Ch>::Replace(Ch from, Ch to) {
  const auto count = static_cast<int>(std::count(m_chars, m_chars + m_length, from));
  if (count != 0 && from != to) {
    Ch* chars = MakeWritable(m_length);
    std::replace(chars, chars + m_length, from, to);
  }
  return from == to ? 0 : count;
}

template <typename Ch>
int LumFrameworkString<Ch>::Remove(Ch ch) {
  if (Find(ch) < 0) {
    return 0;
  }
  Ch* chars = MakeWritable(m_length);
  const Ch* end = std::remove(chars, chars + m_length, ch);
  const int removed = m_length - static_cast<int>(end - chars);
  SetLength(chars, m_length - removed);
  return removed;
}

template <typename Ch>
LumFrameworkString<Ch>& LumFrameworkString<Ch>::MakeUpper() {
  Ch* chars = MakeWritable(m_length);
  std::transform(chars, chars + m_length, chars,
                 [](Ch ch) { return lum::detail::ToUpperCase(ch); });
  return *this;
}

template <typename Ch>
LumFrameworkString<Ch>& LumFrameworkString<Ch>::MakeLower() {
  Ch* chars = MakeWritable(m_length);
  std::transform(chars, chars + m_length, chars,
                 [](Ch ch) { return lum::detail::ToLowerCase(ch); });
  return *this;
}

template <typename Ch>
LumFrameworkString<Ch>& LumFrameworkString<Ch>::Trim() {
  return TrimRight().TrimLeft();
}

template <typename Ch>
LumFrameworkString<Ch>& LumFrameworkString<Ch>::TrimLeft() {
  return TrimLeft(kWhiteSpace<Ch>);
}

template <typename Ch>
LumFrameworkString<Ch>& LumFrameworkString<Ch>::TrimRight() {
  return TrimRight(kWhiteSpace<Ch>);
}

template <typename Ch>
LumFrameworkString<Ch>& LumFrameworkString<Ch>::Trim(const Ch* set) {
  return TrimRight(set).TrimLeft(set);
}

template <typename Ch>
LumFrameworkString<Ch>& LumFrameworkString<Ch>::TrimLeft(const Ch* set) {
  const int first = PlaceOf<Ch>(ViewOf(*this).find_first_not_of(ViewOf(set)));
  Delete(0, first < 0 ? m_length : first);
  return *this;
}

template <typename Ch>
LumFrameworkString<Ch>& LumFrameworkString<Ch>::TrimRight(const Ch* set) {
  const int last = PlaceOf<Ch>(ViewOf(*this).find_last_not_of(ViewOf(set)));
  Delete(last + 1, m_length);
  return *this;
}

// ---- Parts

template <typename Ch>
LumFrameworkString<Ch> LumFrameworkString<Ch>::Left(int count) const {
  // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): the result owns its characters.
  return Mid(0, count);
}

template <typename Ch>
LumFrameworkString<Ch> LumFrameworkString<Ch>::Right(int count) const {
  return Mid(m_length - std::clamp(count, 0, m_length));
}

template <typename Ch>
LumFrameworkString<Ch> LumFrameworkString<Ch>::Mid(int first) const {
  // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): the result owns its characters.
  return Mid(first, m_length);
}

template <typename Ch>
LumFrameworkString<Ch> LumFrameworkString<Ch>::Mid(int first, int count) const {
  const int place = std::clamp(first, 0, m_length);
  const int length = std::clamp(count, 0, m_length - place);
  return length == m_length ? *this : LumFrameworkString(m_chars + place, length);
}

// ---- Searching and comparing

template <typename Ch>
int LumFrameworkString<Ch>::Find(Ch ch, int start) const noexcept {
  return start < 0 ? -1 : PlaceOf<Ch>(ViewOf(*this).find(ch, Size(start)));
}

template <typename Ch>
int LumFrameworkString<Ch>::Find(const Ch* text, int start) const noexcept {
  return text == nullptr || start < 0 ? -1 : PlaceOf<Ch>(ViewOf(*this).find(text, Size(start)));
}

template <typename Ch>
int LumFrameworkString<Ch>::ReverseFind(Ch ch) const noexcept {
  return PlaceOf<Ch>(ViewOf(*this).rfind(ch));
}

template <typename Ch>
int LumFrameworkString<Ch>::FindOneOf(const Ch* set) const noexcept {
  return PlaceOf<Ch>(ViewOf(*this).find_first_of(ViewOf(set)));
}

template <typename Ch>
int LumFrameworkString<Ch>::Compare(const Ch* text) const noexcept {
  return CompareViews(ViewOf(*this), ViewOf(text));
}

template <typename Ch>
int LumFrameworkString<Ch>::Compare(const LumFrameworkString& text) const noexcept {
  return CompareViews(ViewOf(*this), ViewOf(text));
}

template <typename Ch>
int LumFrameworkString<Ch>::CompareNoCase(const Ch* text) const noexcept {
  return CompareFolded(ViewOf(*this), ViewOf(text));
}

template class LumFrameworkString<wchar_t>;
template class LumFrameworkString<char>;
