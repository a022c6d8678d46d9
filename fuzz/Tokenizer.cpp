// CLumString against a plain splitter and the C runtime's numbers: items, number items of every
// type, removal.
#include <gtest/gtest.h>

#include <cmath>
#include <cwchar>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/FuzzInput.h"
#include "platform/Tokenizer.h"
#include "tests/RuntimeComparison.h"
#include "tests/TextPrinting.h"

namespace {

std::wstring Plain(const CString& text) {
  return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

std::wstring Trimmed(const std::wstring& item) {
  const std::size_t first = item.find_first_not_of(L" \t");
  return first == item.npos ? L"" : item.substr(first, item.find_last_not_of(L" \t") + 1 - first);
}

std::vector<std::wstring> Split(const std::wstring& text, wchar_t separator, bool trim,
                                bool merge) {
  std::vector<std::wstring> items;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != separator) {
      items.resize(std::max<std::size_t>(items.size(), 1));
      items.back() += text[i];
    } else if (items.empty()) {
      items.resize(2);
    } else if (!merge || text[i - 1] != separator) {
      items.emplace_back();
    }
  }
  for (std::wstring& item : items) {
    item = trim ? Trimmed(item) : item;
  }
  return items;
}

// ---- Numbers

bool AreDigits(std::wstring_view text) {
  return !text.empty() && text.find_first_not_of(L"0123456789") == text.npos;
}

std::wstring_view WithoutSign(std::wstring_view text) {
  const bool hasSign = text.starts_with(L'-') || text.starts_with(L'+');
  return text.substr(hasSign ? 1 : 0);
}

/// Whether the text is a decimal number with an optional point and exponent.
bool IsDecimal(std::wstring_view text) {
  text = WithoutSign(text);
  const std::size_t exponent = text.find_first_of(L"eE");
  if (exponent != text.npos && !AreDigits(WithoutSign(text.substr(exponent + 1)))) {
    return false;
  }
  std::wstring digits(text.substr(0, exponent));
  if (const std::size_t point = digits.find(L'.'); point != digits.npos) {
    digits.erase(point, 1);
  }
  return AreDigits(digits);
}

template <typename T>
T ReadByRuntime(const wchar_t* text) {
  if constexpr (std::is_same_v<T, float>) {
    return std::wcstof(text, nullptr);
  } else {
    return std::wcstod(text, nullptr);
  }
}

template <typename T>
std::optional<T> ReadFloating(const std::wstring& text) {
  if (!IsDecimal(text)) {
    return std::nullopt;
  }
  const T number = ReadByRuntime<T>(text.c_str());
  // A number that the type cannot hold, and one that it can hold in part only, reads otherwise.
  return std::isinf(number) ? std::nullopt : std::optional<T>(number);
}

template <typename T>
std::optional<T> ReadInteger(const std::wstring& text) {
  const bool isNegative = text.starts_with(L'-');
  if (!AreDigits(WithoutSign(text))) {
    return std::nullopt;
  }
  unsigned __int128 number = 0;
  for (const wchar_t digit : WithoutSign(text)) {
    number = number * 10 + static_cast<unsigned int>(digit - L'0');
    if (number >> 64 != 0) {
      return std::nullopt;
    }
  }
  const auto value = isNegative ? -static_cast<__int128>(number) : static_cast<__int128>(number);
  const bool isHeld =
      value >= std::numeric_limits<T>::min() && value <= std::numeric_limits<T>::max();
  return isHeld ? std::optional<T>(static_cast<T>(value)) : std::nullopt;
}

template <typename T>
void ExpectNumber(const CLumString& list, int index, const std::optional<T>& expected) {
  constexpr T kUntouched{77};
  T number = kUntouched;
  EXPECT_EQ(list.GetItem(index, number), expected.has_value()) << index;
  EXPECT_PRED2(lum::test::IsSame<T>, number, expected.value_or(kUntouched));
}

template <typename T>
void ExpectFloating(const CLumString& list, int index, const std::wstring& item) {
  T number = T(77);
  const bool isRead = list.GetItem(index, number);
  const std::optional<T> expected = ReadFloating<T>(item);
  if (isRead && !std::isfinite(number)) {
    EXPECT_FALSE(expected) << index;
    EXPECT_NE(item.find_first_of(L"nN"), item.npos);
  } else if (expected && std::fabs(*expected) < std::numeric_limits<T>::min()) {
    // What is too small for the type is zero; the runtime knows subnormal numbers.
    EXPECT_TRUE(isRead && std::fabs(number) <= std::numeric_limits<T>::min());
  } else {
    ExpectNumber(list, index, expected);
  }
}

void CheckNumbers(const CLumString& list, int index, const std::wstring& item) {
  const std::wstring text = Trimmed(item);
  ExpectNumber(list, index, ReadInteger<int>(text));
  ExpectNumber(list, index, ReadInteger<unsigned int>(text));
  ExpectNumber(list, index, ReadInteger<unsigned short>(text));
  ExpectNumber(list, index, ReadInteger<std::uint64_t>(text));
  ExpectFloating<double>(list, index, text);
  ExpectFloating<float>(list, index, text);
  bool truth = false;
  if (list.GetItem(index, truth)) {
    EXPECT_TRUE(text == (truth ? L"1" : L"0") || text.size() == (truth ? 4 : 5));
  }
}

// ---- Lists

void CheckList(const CLumString& list, const std::vector<std::wstring>& items, wchar_t separator) {
  ASSERT_EQ(list.Count(), static_cast<int>(items.size()));
  CString joined;
  const std::vector<CString> all = list.Items();
  for (std::size_t i = 0; i < items.size(); ++i) {
    const int index = static_cast<int>(i);
    CString item;
    ASSERT_TRUE(list.GetItem(index, item));
    ASSERT_EQ(Plain(item), items[i]);
    ASSERT_EQ(all[i], item);
    CheckNumbers(list, index, items[i]);
    if (i != 0) {
      joined += separator;
    }
    joined += item;
  }
  EXPECT_EQ(list.String(), joined);
  CString none = L"untouched";
  EXPECT_FALSE(list.GetItem(list.Count(), none));
  EXPECT_FALSE(list.GetItem(-1, none));
  EXPECT_EQ(none, L"untouched");
}

void Erase(std::vector<std::wstring>& items, int first, int count) {
  for (int i = 0; i < count; ++i) {
    const int place = first + count - 1 - i;
    if (place >= 0 && place < static_cast<int>(items.size())) {
      items.erase(items.begin() + place);
    }
  }
}

}  // namespace

// Separator, trim and merge, what is erased, then the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static constexpr wchar_t kSeparators[] = {L',', L';', L' ', L'\t', L'.', L'\0', L'\x4E2D'};
  lum::fuzz::CFuzzInput in(data, size);
  const wchar_t separator = kSeparators[in.Below(std::size(kSeparators))];
  const bool trim = in.Bool();
  const bool merge = in.Bool();
  const int first = static_cast<int>(in.Below(16)) - 4;
  const int count = static_cast<int>(in.Below(16)) - 4;
  const CString text = lum::fuzz::ToWide(in.Rest());
  CLumString list(text, separator, trim, merge);
  std::vector<std::wstring> items = Split(Plain(text), separator, trim, merge);
  CheckList(list, items, separator);
  list.Erase(first, count);
  Erase(items, first, count);
  CheckList(list, items, separator);
  list.Erase(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
  list.Erase(1, std::numeric_limits<int>::max());
  EXPECT_LE(list.Count(), 1);
  return 0;
}
