// The rest of the platform when memory runs out: translations, split texts, lines of files, errors,
// modules.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/Error.h"
#include "platform/ExtensionModule.h"
#include "platform/StdioFile.h"
#include "platform/StringArray.h"
#include "platform/Tokenizer.h"
#include "platform/Translator.h"
#include "tests/Allocations.h"
#include "tests/TemporaryFolder.h"
#include "tests/attributes/TreeTesting.h"
#include "tests/memory/RefusalWalk.h"

namespace {

using lum::test::Guarantee;
using lum::test::Operation;
using lum::test::WalkRefusals;

class PlatformMemory : public testing::Test {
 protected:
  /// Writes a file and gives its path.
  CString FileOf(const char* content) const {
    WriteBytes(m_folder.File("file.txt"), content);
    return PathText(m_folder.File("file.txt"));
  }

  CTemporaryFolder m_folder;
};

/// The one translator, empty before and after.
struct Translations {
  Translations() { Translator::Instance().SetString(L"Old", L"the translation there was"); }
  ~Translations() { Translator::Instance().Clear(); }
  Translations(const Translations&) = delete;
  Translations& operator=(const Translations&) = delete;
};

std::string DescribeTranslations(const Translations&) {
  const Translator& translator = Translator::Instance();
  std::string text;
  for (const wchar_t* name : {L"Old", L"First", L"Second", L"Third"}) {
    text += Narrow(translator.GetAttribDefV2String(name)) + "," +
            Narrow(translator.GetAttribDefV2CtrlString(name)) + "|";
  }
  return text;
}

TEST_F(PlatformMemory, TranslationsAreAddedAllOrNone) {
  const CString path = FileOf(
      "[AttribDefV2]\nFirst=the first translation\nOld=another translation\nSecond=2\n"
      "[AttribDefV2Ctrl]\nFirst=the first control\nThird=3\n");
  for (const Operation<Translations>& operation : std::vector<Operation<Translations>>{
           {"Load", Guarantee::Unchanged,
            [&](Translations&) { return Translator::Instance().Load(path); }},
           {"SetString", Guarantee::Unchanged,
            [](Translations&) {
              Translator::Instance().SetString(L"First", L"a translation");
              return true;
            }},
           {"SetCtrlString", Guarantee::Unchanged, [](Translations&) {
              Translator::Instance().SetCtrlString(L"Old", L"a translation");
              return true;
            }}}) {
    WalkRefusals(operation, DescribeTranslations);
  }
}

struct Items {
  CLumString list = CLumString(L"one;two", L';', true, false);
  CString text = L"text";
  CStringArray array;
};

TEST_F(PlatformMemory, SplitTextsStayAsTheyWere) {
  for (const Operation<Items>& operation : std::vector<Operation<Items>>{
           {"LoadStringW", Guarantee::Unchanged,
            [](Items& items) {
              items.list.LoadStringW(L"three; four ;five;", true, false);
              return true;
            }},
           {"LoadStringW, merging", Guarantee::Unchanged,
            [](Items& items) {
              items.list.LoadStringW(L"three;; four ;five;", false, true);
              return true;
            }},
           {"GetItem", Guarantee::Unchanged,
            [](Items& items) { return items.list.GetItem(1, items.text); }},
           {"String", Guarantee::Unchanged,
            [](Items& items) {
              items.text = items.list.String();
              return true;
            }},
           {"Items", Guarantee::Unchanged,
            [](Items& items) { return items.list.Items().size() == 2; }},
           {"CStringArray::Add", Guarantee::Unchanged,
            [](Items& items) { return items.array.Add(L"an item") == 0; }}}) {
    WalkRefusals(operation, [](const Items& items) {
      std::string text = Narrow(items.list.String()) + "|" + Narrow(items.text);
      for (int i = 0; i < items.array.GetSize(); ++i) {
        text += "|" + Narrow(items.array[i]);
      }
      return text;
    });
  }
}

struct Reader {
  CStdioFile file;
  CString line;
};

TEST_F(PlatformMemory, ALineThatCannotBeReadIsReadAgain) {
  const CString path = FileOf(
      "first\nse\xC3\xB6"
      "cond, longer than the first\nthird\n");
  const auto describe = [](const Reader& reader) { return Narrow(reader.line); };
  WalkRefusals(Operation<Reader>{"Open", Guarantee::Unchanged,
                                 [&](Reader& reader) {
                                   return reader.file.Open(path, CStdioFile::modeRead);
                                 }},
               describe);
  WalkRefusals(Operation<Reader>{"ReadString", Guarantee::Usable,
                                 [](Reader& reader) { return reader.file.ReadString(reader.line); },
                                 [&](Reader& reader) {
                                   reader.file.Open(path, CStdioFile::modeRead);
                                   reader.file.ReadString(reader.line);
                                 }},
               describe);
}

struct Nothing {};

TEST_F(PlatformMemory, MessagesAreMadeWholeOrNotAtAll) {
  WalkRefusals(Operation<Nothing>{"FileError", Guarantee::Unchanged,
                                  [](Nothing&) {
                                    const FileError error(L"a path", FileError::CANNOT_OPEN);
                                    return error.Message().Find(L"a path") > 0;
                                  }},
               [](const Nothing&) { return std::string(); });
}

// A module leaves when its library is unloaded, where nothing could be done about a failure.
TEST_F(PlatformMemory, AModuleLeavesWithoutAny) {
  const int before = CDynLinkLibrary::Count();
  AFX_EXTENSION_MODULE module;
  ASSERT_TRUE(AfxInitExtensionModule(module, nullptr));
  for (int i = 0; i < 3; ++i) {
    new CDynLinkLibrary(module);
  }
  LimitAllocations(0);
  AfxTermExtensionModule(module);
  LimitAllocations(-1);
  EXPECT_EQ(CDynLinkLibrary::Count(), before);
}

}  // namespace
