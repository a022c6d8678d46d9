// The framework's strings when memory runs out: every one stays as it was.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/StringAppend.h"
#include "platform/TextEncoding.h"
#include "tests/attributes/TreeTesting.h"
#include "tests/memory/RefusalWalk.h"

namespace {

using lum::test::Guarantee;

/// A text of its own, one that shares its storage, and its bytes.
struct Texts {
  CString own = L"  Some Text, for ; changes  ";
  CString shared = L"  Another Text  ";
  CString sharing = shared;
  CStringA bytes = "  Bytes  ";
  CString empty;
};

struct Row {
  const char* name;
  void (*change)(Texts&);
};

std::string DescribeTexts(const Texts& texts) {
  return Narrow(texts.own) + "|" + Narrow(texts.shared) + "|" + Narrow(texts.sharing) + "|" +
         texts.bytes.GetString() + "|" + Narrow(texts.empty);
}

void Walk(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    const auto run = [&row](Texts& texts) {
      row.change(texts);
      return true;
    };
    lum::test::WalkRefusals(lum::test::Operation<Texts>{row.name, Guarantee::Unchanged, run},
                            DescribeTexts);
  }
}

constexpr const wchar_t* kLong = L"a text that is appended and does not fit in what there is";

TEST(StringMemory, EditingLeavesTheText) {
  Walk({
      {"assign a literal", [](Texts& t) { t.own = kLong; }},
      {"fill", [](Texts& t) { t.own = CString(L'x', 50); }},
      {"Append", [](Texts& t) { t.own.Append(kLong); }},
      {"Append, shared", [](Texts& t) { t.shared.Append(L"x"); }},
      {"Append itself", [](Texts& t) { t.own.Append(t.own); }},
      {"AppendChar", [](Texts& t) { t.shared.AppendChar(L'x'); }},
      {"+=", [](Texts& t) { t.own += kLong; }},
      {"+", [](Texts& t) { t.empty = t.own + kLong + t.shared; }},
      {"Insert", [](Texts& t) { t.own.Insert(3, kLong); }},
      {"Delete", [](Texts& t) { t.shared.Delete(1, 3); }},
      {"Replace", [](Texts& t) { t.own.Replace(L"e", kLong); }},
      {"Replace a character", [](Texts& t) { t.shared.Replace(L'e', L'i'); }},
      {"Remove", [](Texts& t) { t.shared.Remove(L'e'); }},
      {"SetAt", [](Texts& t) { t.shared.SetAt(2, L'x'); }},
      {"Trim", [](Texts& t) { t.shared.Trim(); }},
      {"Trim a set", [](Texts& t) { t.sharing.Trim(L" A"); }},
      {"MakeUpper", [](Texts& t) { t.shared.MakeUpper(); }},
      {"MakeLower", [](Texts& t) { t.shared.MakeLower(); }},
      {"GetBuffer",
       [](Texts& t) {
         t.own.GetBuffer(100)[0] = L'x';
         t.own.ReleaseBuffer();
       }},
      {"Preallocate", [](Texts& t) { t.own.Preallocate(100); }},
      {"Mid", [](Texts& t) { t.empty = t.own.Mid(2, 4); }},
      {"Left", [](Texts& t) { t.empty = t.own.Left(4); }},
      {"Right", [](Texts& t) { t.empty = t.own.Right(4); }},
  });
}

TEST(StringMemory, FormattingLeavesTheText) {
  Walk({
      {"Format", [](Texts& t) { t.own.Format(L"%s %d %f %S %c", kLong, 12, 2.5, "bytes", L'x'); }},
      {"Format of itself", [](Texts& t) { t.own.Format(L"%s%s", t.own.GetString(), kLong); }},
      {"AppendFormat", [](Texts& t) { t.own.AppendFormat(L"%s %08X", kLong, 255U); }},
      {"Format, bytes", [](Texts& t) { t.bytes.Format("%s %S", "a longer text of bytes", L"x"); }},
      {"<<", [](Texts& t) { t.shared << 2.5; }},
  });
}

TEST(StringMemory, ConvertingLeavesTheText) {
  Walk({
      {"WideToUtf8", [](Texts& t) { t.bytes = WideToUtf8(L"\u00F6 and more"); }},
      {"Utf8ToWide", [](Texts& t) { t.own = Utf8ToWide("\xC3\xB6 and more"); }},
      {"WideToAnsi", [](Texts& t) { t.bytes = WideToAnsi(t.own); }},
      {"AnsiToWide", [](Texts& t) { t.own = AnsiToWide(t.bytes); }},
      {"CString(bytes)", [](Texts& t) { t.own = CString("bytes that are widened"); }},
  });
}

}  // namespace
