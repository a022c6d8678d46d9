// Any bytes as a definition file: each definition line beside the plain split of it, the last
// definition of each key, and what a copy of the table answers.
#include <gtest/gtest.h>

#include <map>
#include <vector>

#include "fuzz/FuzzFiles.h"
#include "fuzz/FuzzInput.h"
#include "tests/definitions/PlainLoad.h"

namespace {

const lum::fuzz::CFuzzFiles& Files() { return lum::fuzz::CFuzzFiles::Instance(); }

/// Makes the tests of lines reachable.
struct CLineTests : CAttribDefMap {
  using CAttribDefMap::IsCommentOrBlank;
  using CAttribDefMap::IsCtlTypeAttrib;
};

std::vector<CString> DefinitionLines() {
  const CLineTests tests;
  CStdioFile file;
  EXPECT_TRUE(file.Open(Files().Input().GetString(), CStdioFile::modeRead | CStdioFile::typeText));
  std::vector<CString> lines;
  for (CString line; file.ReadString(line);) {
    line.Trim();
    if (!tests.IsCommentOrBlank(line) && !tests.IsCtlTypeAttrib(line)) {
      lines.push_back(line);
    }
  }
  return lines;
}

void CheckRecords(const CAttribDefMap& table, bool result) {
  const std::vector<CString> lines = DefinitionLines();
  ASSERT_EQ(table.Count(), static_cast<int>(lines.size()));
  CPlainLoad plain;
  for (int i = 0; i < table.Count(); ++i) {
    plain.Load(lines[static_cast<std::size_t>(i)]);
    plain.ExpectSame(table[i]);
  }
  EXPECT_EQ(result, plain.Result());
}

/// The answers about one record, by both of its keys.
void CheckAnswers(CAttribDefMap& table, const CAttribDefRec& record) {
  const CString& mnemonic = record.Mnemonic();
  CString name;
  int control = 0;
  unsigned short id = 0;
  CLumType::LUM_TYPE type = CLumType::TYPE_UNDEFINED;
  EXPECT_TRUE(table.GetAttribName(mnemonic, name));
  EXPECT_EQ(name, table.GetAttribDefRec(mnemonic)->Name());
  EXPECT_TRUE(table.GetAttribType(mnemonic, type));
  EXPECT_TRUE(table.GetAttribControlType(mnemonic, control));
  EXPECT_TRUE(table.GetAttribID(mnemonic, id));
  EXPECT_EQ(id, table.GetAttribDefRec(mnemonic)->Id());
  CString found;
  EXPECT_TRUE(table.GetAttribMnemo(record.Id(), found));
  EXPECT_EQ(found, table.GetAttribDefRec(record.Id())->Mnemonic());
  CString text = L"untouched";
  EXPECT_TRUE(table.GetCtlAttribs(mnemonic, text) || text.IsEmpty());
}

void CheckKeys(CAttribDefMap& table) {
  std::map<CString, const CAttribDefRec*> mnemonics;
  std::map<unsigned short, const CAttribDefRec*> ids;
  for (int i = 0; i < table.Count(); ++i) {
    mnemonics[table[i].Mnemonic()] = &table[i];
    ids[table[i].Id()] = &table[i];
  }
  for (const auto& [mnemonic, record] : mnemonics) {
    EXPECT_EQ(table.GetAttribDefRec(mnemonic), record);
    CheckAnswers(table, *record);
  }
  for (const auto& [id, record] : ids) {
    EXPECT_EQ(table.GetAttribDefRec(id), record);
  }
  EXPECT_EQ(table.GetAttribDefRec(L"no, such\tname"), nullptr);
}

}  // namespace

// Whether it is translated, then the file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  lum::fuzz::CFuzzInput in(data, size);
  const bool translate = in.Bool();
  Files().WriteInput(in.Rest());
  CAttribDefMap table;
  const bool result = table.LoadDefFile(Files().Input(), translate);
  CheckRecords(table, result);
  CheckKeys(table);
  CAttribDefMap copy(table);
  EXPECT_EQ(table.LoadDefFile(Files().Input(), translate), result);
  CheckRecords(copy, result);
  CheckKeys(copy);
  return 0;
}
