// The texts of users that reach the tool: paths, patterns, flags, the arguments of eval, and whole
// files under `lumattr check`. A refusal is a ToolError, and what was read reads back.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "decoding/Glob.h"
#include "definitions/AttribDefMap.h"
#include "fuzz/FuzzFiles.h"
#include "fuzz/FuzzInput.h"
#include "platform/FileObject.h"
#include "tests/TextPrinting.h"
#include "tools/lumattr/AttributePath.h"
#include "tools/lumattr/ConfigRules.h"
#include "tools/lumattr/DefinitionRules.h"
#include "tools/lumattr/EvalArguments.h"
#include "tools/lumattr/FlagNames.h"
#include "tools/lumattr/KindText.h"
#include "tools/lumattr/SectionItems.h"
#include "tools/lumattr/Text.h"
#include "tools/lumattr/ToolContext.h"
#include "values/LumTypeCreator.h"

namespace {

using namespace lum::tool;

void CheckPath(const std::string& text) {
  const AttributePath path = ParsePathArgument(text);
  ASSERT_FALSE(path.empty());
  EXPECT_TRUE(BeginsWith(path, path));
  if (CanBeWritten(path)) {
    EXPECT_EQ(ReadPath(FormatPath(path)), path);
    for (const int version : {1, 2}) {
      EXPECT_EQ(DottedPathOfKey(KeyOfPath(path, version), version), FormatPath(path));
    }
  }
}

/// Every "*" tries every length. Both texts are folded.
bool MatchesPlainly(const wchar_t* pattern, const wchar_t* text) {
  if (*pattern == L'\0') {
    return *text == L'\0';
  }
  if (*pattern == L'*') {
    return MatchesPlainly(pattern + 1, text) ||
           (*text != L'\0' && MatchesPlainly(pattern, text + 1));
  }
  return *text != L'\0' && (*pattern == L'?' || *pattern == *text) &&
         MatchesPlainly(pattern + 1, text + 1);
}

void CheckGlob(const std::string& line) {
  const std::size_t end = std::min(line.find('\t'), line.size());
  CString pattern = FromUtf8(line.substr(0, std::min<std::size_t>(end, 12)));
  CString text =
      FromUtf8(std::string_view(line).substr(std::min(end + 1, line.size())).substr(0, 16));
  if (pattern.Find(L'\0') >= 0 || text.Find(L'\0') >= 0) {
    return;
  }
  const bool matches = lum::decoding::CGlob(pattern).Matches(text);
  pattern.MakeLower();
  text.MakeLower();
  EXPECT_EQ(matches, MatchesPlainly(pattern.GetString(), text.GetString()));
}

void CheckFlags(const std::string& text) {
  const unsigned int flags = ParseFlagsArgument(text, 0x41);
  EXPECT_EQ(ParseFlagsArgument(flags == 0 ? "none" : FlagNamesText(flags), 0), flags);
  const CString written = FormatFlagsLike(flags, FromUtf8(text));
  EXPECT_EQ(ParseFlagsArgument(ToUtf8(written), 0), flags) << text;
}

void CheckNumber(const std::string& text) {
  const double number = NumberArgument(text, "number");
  EXPECT_EQ(text.find_first_not_of("0123456789abcdefABCDEFxXn+-.i"), text.npos) << text;
  const std::vector<double> vector = VectorArgument(text + ",1", "vector");
  ASSERT_EQ(vector.size(), 2u);
  EXPECT_TRUE(vector[0] == number || std::isnan(number));
}

void CheckVector(const std::string& text) {
  const std::size_t components = VectorArgument(text, "vector").size();
  EXPECT_TRUE(components >= 1 && components <= 3);
}

void CheckBytes(const std::string& text) {
  const CStringA bytes = BytesArgument(text, "bytes");
  std::string hex = "hex:";
  for (int i = 0; i < bytes.GetLength(); ++i) {
    CStringA digits;
    digits.Format("%02X ", static_cast<unsigned char>(bytes[i]));
    hex += digits.GetString();
  }
  EXPECT_EQ(BytesArgument(hex, "bytes"), bytes);
}

void CheckEvalLine(const std::string& text) {
  std::vector<std::string> words = {"lumattr", "eval"};
  for (const char ch : text) {
    if (ch == ' ') {
      words.emplace_back();
    } else if (ch != '\0') {
      words.back() += ch;
    }
  }
  std::vector<char*> arguments;
  for (std::string& word : words) {
    arguments.push_back(word.data());
  }
  const EvalLine line = SplitEvalLine(static_cast<int>(arguments.size()), arguments.data());
  EXPECT_LE(line.rest.size() + line.words.size(), arguments.size());
  EXPECT_GE(line.rest.size() + line.words.size() + 1, arguments.size());
}

void CheckTexts(const std::string& text) {
  const CString wide = ArgumentText(text, "TEXT");
  EXPECT_EQ(ToUtf8(wide), text);
  for (const char ch : Printable(wide)) {
    EXPECT_TRUE(static_cast<unsigned char>(ch) >= 0x20 && ch != 0x7F);
  }
  EXPECT_EQ(WholeCharacters(text), text.size());
  EXPECT_GE(DisplayWidth(Printable(wide)), 0);
}

void CheckOperation(const std::string& text) { EXPECT_EQ(NamedOperation(text).name, text); }

/// A kind that the tool says reads a text wholly takes it.
void CheckKinds(const std::string& text) {
  const CString wide = ArgumentText(text, "TEXT");
  for (const LumTypeKind& kind : LumTypeCreator::Kinds()) {
    if (kind.make != nullptr && !WhyKindRefuses(kind.type, wide)) {
      const std::unique_ptr<CLumType> value(kind.make());
      EXPECT_TRUE(value->SetValueStr(wide)) << kind.type;
    }
  }
  if (!WhyFileRefuses(wide)) {
    FileObject file;
    EXPECT_TRUE(file.SetItem(L"S", L"Key", wide, true));
  }
}

void CheckFile(const std::string& bytes) {
  const lum::fuzz::CFuzzFiles& files = lum::fuzz::CFuzzFiles::Instance();
  files.WriteInput(bytes);
  FileObject file;
  ASSERT_TRUE(file.Load(files.Input()));
  constexpr std::size_t kMost = 20;
  CFindingList config(kMost);
  CheckConfigLines(file.LoadedLines(), nullptr, config);
  EXPECT_EQ(std::min(config.Total(), kMost), config.TakeSorted().size());
  CFindingList definitions(kMost);
  CheckDefinitionLines(file.LoadedLines(), definitions);
  EXPECT_EQ(std::min(definitions.Total(), kMost), definitions.TakeSorted().size());
}

void CheckSections(const std::string& bytes) {
  const lum::fuzz::CFuzzFiles& files = lum::fuzz::CFuzzFiles::Instance();
  files.WriteInput(bytes);
  FileObject file;
  ASSERT_TRUE(file.Load(files.Input()));
  for (const CString& section : file.SectionNames()) {
    const SectionItems items = ReadSectionItems(file, section);
    EXPECT_EQ(static_cast<int>(items.items.size()), file.ItemCount(section));
    for (const SectionItem& item : items.items) {
      if (item.role == ItemRole::Attribute && item.hasFlags) {
        const SectionItem again =
            ReadSectionItem(item.key, ItemText(item.flagsText, item.value), items.version);
        EXPECT_EQ(again.flags, item.flags);
        EXPECT_EQ(again.value, item.value);
      }
    }
  }
}

constexpr void (*kChecks[])(const std::string&) = {
    CheckPath, CheckGlob,     CheckFlags, CheckNumber,    CheckVector, CheckBytes,
    CheckFile, CheckEvalLine, CheckTexts, CheckOperation, CheckKinds,  CheckSections};

}  // namespace

// Which reader, then its text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  lum::fuzz::CFuzzInput in(data, size);
  const auto check = kChecks[in.Below(std::size(kChecks))];
  try {
    check(std::string(in.Rest()));
  } catch (const ToolError& error) {
    EXPECT_STRNE(error.what(), "");
  }
  return 0;
}
