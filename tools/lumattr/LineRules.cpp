// Invalid bytes and control characters.
#include "tools/lumattr/LineRules.h"

#include <algorithm>
#include <string_view>

#include "tools/lumattr/Text.h"

namespace lum::tool {
namespace {

bool IsControl(wchar_t ch) { return (ch < L' ' && ch != L'\t') || ch == 0x7F; }

// Where wide text is UTF-16 this meets pairs as well; it is only asked in lines that are invalid.
bool IsSurrogate(wchar_t ch) { return ch >= 0xD800 && ch <= 0xDFFF; }

// A byte that no valid character holds reads as the Latin-1 character of its number.
bool IsStrayByte(wchar_t ch) { return ch >= 0x80 && ch <= 0xFF; }

template <typename Test>
int ColumnOfFirst(std::wstring_view text, Test test) {
  return 1 + static_cast<int>(std::find_if(text.begin(), text.end(), test) - text.begin());
}

std::string CharacterName(wchar_t ch) {
  CString name;
  name.Format(L"U+%04X", static_cast<unsigned int>(ch));
  return ToUtf8(name);
}

void CheckBytes(const FileObjectLine& line, CFindingList& findings) {
  if (line.validText) {
    return;
  }
  const std::wstring_view text = View(line.text);
  const int column =
      ColumnOfFirst(text, [](wchar_t ch) { return IsSurrogate(ch) || IsStrayByte(ch); });
  const int place = std::min(column, line.text.GetLength() + 1);
  findings.Add({line.number, place, CheckRule::InvalidBytes,
                QuotedShort(line.text.Mid(place - 1, 10)), "text in the file's encoding", ""});
}

void CheckControls(const FileObjectLine& line, CFindingList& findings) {
  const std::wstring_view text = View(line.text);
  const auto control = std::find_if(text.begin(), text.end(), IsControl);
  if (control != text.end()) {
    findings.Add({line.number, 1 + static_cast<int>(control - text.begin()),
                  CheckRule::ControlCharacter, CharacterName(*control), "printable text", ""});
  }
}

}  // namespace

void CheckLineText(const FileObjectLine& line, CFindingList& findings) {
  CheckBytes(line, findings);
  CheckControls(line, findings);
}

}  // namespace lum::tool
