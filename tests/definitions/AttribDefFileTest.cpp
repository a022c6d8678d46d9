// Loading definition files: kinds of line, items that are missing, what one load leaves to the
// next.
#include <gtest/gtest.h>

#include <climits>

#include "definitions/AttribDefMap.h"
#include "tests/TemporaryFolder.h"
#include "tests/definitions/DefinitionFile.h"

namespace {

TEST(LoadDefFile, ReadsEveryItemOfADefinitionLine) {
  CAttribDefMap table;
  EXPECT_TRUE(Load(table,
                   "DepthLimit,17,Depth limit,103,2,,12.5\n"
                   "Origin,18,Origin,301,3,origin.bmp,0,1,2\n"));
  ASSERT_EQ(table.Count(), 2);
  EXPECT_EQ(table[0].Mnemonic(), CString(L"DepthLimit"));
  EXPECT_EQ(table[0].Id(), 17);
  EXPECT_EQ(table[0].Name(), CString(L"Depth limit"));
  EXPECT_EQ(table[0].Type(), 103u);
  EXPECT_EQ(table[0].ControlType(), 2u);
  EXPECT_TRUE(table[0].BitmapFile().IsEmpty());
  EXPECT_EQ(ValueText(table[0]), CString(L"12.500000"));
  EXPECT_EQ(table[1].BitmapFile(), CString(L"origin.bmp"));
  EXPECT_EQ(ValueText(table[1]), CString(L"0.000000,1.000000,2.000000"));
  EXPECT_TRUE(table.FileInitialised());
}

TEST(LoadDefFile, MakesADefaultValueOfEveryType) {
  const struct {
    const char* type;
    const char* text;
    const wchar_t* expected;
  } rows[] = {
      {"101", "-7", L"-7"},
      {"102", "7", L"7"},
      {"103", "0.25", L"0.250000"},
      {"104", "1", L"1"},
      {"109", "1.5", L"1.500000"},
      {"112", "18446744073709551615", L"18446744073709551615"},
      {"203", "1,2", L"1.000000,2.000000"},
      {"301", "1,2,3", L"1.000000,2.000000,3.000000"},
      {"401", "1,2,3,4,5,65535", L"1,2,3,4,5,65535"},
      {"402", "1,2,Bow,3,4,5,6,0.5,1.5,2.5", L"1,2,Bow,3,4,5,6,0.500000,1.500000,2.500000"},
      {"501", "Hello, world", L"Hello,world"},
      {"603", "1,2,3", L"1,2,3"},
      {"613", "a,b,c", L"a,b,c"},
      {"0", "ignored", L"untouched"},
      {"101", "not a number", L"0"},
      {"101", "", L"0"},
      {"603", "", L""},
      {"999", "x", L"no value"},
      {"105", "x", L"no value"},
      {"-1", "x", L"no value"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.type) + ": " + row.text);
    CAttribDefMap table;
    const bool made = CString(row.expected) != L"no value";
    EXPECT_EQ(Load(table, std::string("A,1,,") + row.type + ",0,," + row.text + "\n"), made);
    ASSERT_EQ(table.Count(), 1);
    EXPECT_EQ(ValueText(table[0]), CString(row.expected));
    EXPECT_EQ(table.FileInitialised(), made);
  }
}

TEST(LoadDefFile, ReadsAListOfDoubles) {
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, "A,1,,607,0,,0.5, 1.5 ,2.5\n"));
  std::vector<double> values{-1.0};
  EXPECT_EQ(table[0].DefaultValue()->GetDoubleArray(values), 1);
  EXPECT_EQ(values, (std::vector<double>{0.5, 1.5, 2.5}));
}

struct ItemCase {
  const char* line;
  const wchar_t* mnemonic;
  unsigned short id;
  const wchar_t* name;
  unsigned int type;
  unsigned int controlType;
  const wchar_t* bitmap;
};

// The line before each of these gives identifier 7, type 101 and control type 3.
const ItemCase kItemCases[] = {
    {"A,,Name,102,4,b", L"A", 7, L"Name", 102, 4, L"b"},
    {"A, ,Name,102,4,b", L"A", 7, L"Name", 102, 4, L"b"},
    {"A,x,Name,102,4,b", L"A", 7, L"Name", 102, 4, L"b"},
    {"A,12x,Name,102,4,b", L"A", 7, L"Name", 102, 4, L"b"},
    {"A,1.5,Name,102,4,b", L"A", 7, L"Name", 102, 4, L"b"},
    {"A,99999999999,Name,102,4,b", L"A", 7, L"Name", 102, 4, L"b"},
    {"A,-1,Name,102,4,b", L"A", 65535, L"Name", 102, 4, L"b"},
    {"A,65536,Name,102,4,b", L"A", 0, L"Name", 102, 4, L"b"},
    {"A,65553,Name,102,4,b", L"A", 17, L"Name", 102, 4, L"b"},
    {"A,-2147483648,Name,102,4,b", L"A", 0, L"Name", 102, 4, L"b"},
    {"A,2147483647,Name,102,4,b", L"A", 65535, L"Name", 102, 4, L"b"},
    {"A,1,,102,4,b", L"A", 1, L"", 102, 4, L"b"},
    {"A,1,Name,,4,b", L"A", 1, L"Name", 101, 4, L"b"},
    {"A,1,Name,double,4,b", L"A", 1, L"Name", 101, 4, L"b"},
    {"A,1,Name,102,,b", L"A", 1, L"Name", 102, 3, L"b"},
    {"A,1,Name,102,edit,b", L"A", 1, L"Name", 102, 3, L"b"},
    {"A,1,Name,102,-4,b", L"A", 1, L"Name", 102, UINT_MAX - 3, L"b"},
    {"A,1,Name,102,4,", L"A", 1, L"Name", 102, 4, L""},
    {"A,1,Name,102,4", L"A", 1, L"Name", 102, 4, L""},
    {"A,1,Name,102", L"A", 1, L"Name", 102, 3, L""},
    {"A,1,Name", L"A", 1, L"Name", 101, 3, L""},
    {"A,1", L"A", 1, L"", 101, 3, L""},
    {"A", L"A", 7, L"", 101, 3, L""},
    {",", L"", 7, L"", 101, 3, L""},
    {",,,,,,,,", L"", 7, L"", 101, 3, L""},
    {"/A,1,Name,102,4,b", L"/A", 1, L"Name", 102, 4, L"b"},
    {"/", L"/", 7, L"", 101, 3, L""},
    {"a b , 1 , The name\t, 102 , 4 , b c ", L"a b", 1, L"The name", 102, 4, L"b c"},
    {"  A,1,Name,102,4,b\t ", L"A", 1, L"Name", 102, 4, L"b"},
    {"A@B,1,Name,102,4,b//c", L"A@B", 1, L"Name", 102, 4, L"b//c"},
    {"A;1;Name", L"A;1;Name", 7, L"", 101, 3, L""},
};

void ExpectCase(const ItemCase& expected) {
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, std::string("Before,7,N,101,3,before.bmp,5\n") + expected.line + "\n"));
  ASSERT_EQ(table.Count(), 2);
  const CAttribDefRec& record = table[1];
  EXPECT_EQ(record.Mnemonic(), CString(expected.mnemonic));
  EXPECT_EQ(record.Id(), expected.id);
  EXPECT_EQ(record.Name(), CString(expected.name));
  EXPECT_EQ(record.Type(), expected.type);
  EXPECT_EQ(record.ControlType(), expected.controlType);
  EXPECT_EQ(record.BitmapFile(), CString(expected.bitmap));
  EXPECT_EQ(ValueText(record), CString(L"0"));
  EXPECT_EQ(table.GetAttribDefRec(expected.id), &record);
  EXPECT_EQ(table.GetAttribDefRec(expected.mnemonic), &record);
}

TEST(LoadDefFile, TakesWhatALineLacksFromTheLineBefore) {
  for (const ItemCase& expected : kItemCases) {
    SCOPED_TRACE(expected.line);
    ExpectCase(expected);
  }
}

TEST(LoadDefFile, FirstLineWithoutNumbersHasZeros) {
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, "A\n"));
  EXPECT_EQ(table[0].Id(), 0);
  EXPECT_EQ(table[0].Type(), 0u);
  EXPECT_EQ(table[0].ControlType(), 0u);
  unsigned short id = 99;
  EXPECT_TRUE(table.GetAttribID(L"A", id));
  EXPECT_EQ(id, 0);
}

TEST(LoadDefFile, NothingCarriesOverFromOneLoadToTheNext) {
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, "A,7,N,101,3,\n"));
  EXPECT_TRUE(Load(table, "B\n"));
  EXPECT_EQ(table[0].Id(), 0);
  EXPECT_EQ(table[0].Type(), 0u);
  EXPECT_EQ(table[0].ControlType(), 0u);
}

TEST(LoadDefFile, AReusedIdentifierTakesTheEntryOver) {
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, "First,7,First,101,0,\nA,,Name,101,0,\n"));
  EXPECT_EQ(table[1].Id(), 7);
  CString mnemonic;
  EXPECT_TRUE(table.GetAttribMnemo(7, mnemonic));
  EXPECT_EQ(mnemonic, CString(L"A"));
  EXPECT_NE(table.GetAttribDefRec(L"First"), nullptr);
}

TEST(LoadDefFile, ARepeatedMnemonicTakesTheEntryOverAndBothStayInTheList) {
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, "A,1,One,101,0,\nA,2,Two,101,0,\n"));
  EXPECT_EQ(table.Count(), 2);
  EXPECT_EQ(table.GetAttribDefRec(L"A"), &table[1]);
  EXPECT_EQ(table.GetAttribDefRec(1), &table[0]);
  EXPECT_EQ(table[0].Name(), CString(L"One"));
}

TEST(LoadDefFile, MnemonicsDifferByCase) {
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, "Height,1,,101,0,\nHEIGHT,2,,101,0,\n"));
  EXPECT_EQ(table.GetAttribDefRec(L"Height"), &table[0]);
  EXPECT_EQ(table.GetAttribDefRec(L"HEIGHT"), &table[1]);
  EXPECT_EQ(table.GetAttribDefRec(L"height"), nullptr);
}

TEST(LoadDefFile, LinesWithoutContentAreSkipped) {
  const char* lines[] = {"",           "   \t ",          "// comment",     "  // comment, 1, x",
                         "//A,1,,101", "A,1,@@CHECKSUM=", "@@CHECKSUM=1,2", "##CRC32=00000000",
                         "x ##CRC32="};
  for (const char* line : lines) {
    SCOPED_TRACE(line);
    CAttribDefMap table;
    EXPECT_TRUE(Load(table, std::string("A,7,,999,0,\n") + line + "\nB,8,,101,0,\n" + line));
    EXPECT_EQ(table.Count(), 2);
  }
}

TEST(LoadDefFile, AChecksumLineIsNoControlAttributeLine) {
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, "M,1,,101,0,\n@M,@@CHECKSUM=1\n"));
  CString text(L"untouched");
  EXPECT_FALSE(table.GetCtlAttribs(L"M", text));
  EXPECT_TRUE(text.IsEmpty());
}

TEST(LoadDefFile, AFileWithoutDefinitionsLoads) {
  for (const char* bytes : {"", "\n\n", "// only a comment", "@M,a,b\n"}) {
    CAttribDefMap table;
    EXPECT_TRUE(Load(table, bytes));
    EXPECT_EQ(table.Count(), 0);
    EXPECT_TRUE(table.FileInitialised());
  }
}

TEST(LoadDefFile, TheLastDefinitionLineDecidesTheResult) {
  CAttribDefMap table;
  EXPECT_FALSE(Load(table, "A,1,,101,0,,5\nB,2,,999,0,,x\n"));
  EXPECT_EQ(table.Count(), 2);
  EXPECT_FALSE(table.FileInitialised());
  EXPECT_EQ(table.GetAttribDefRec(L"B")->DefaultValue(), nullptr);
  EXPECT_TRUE(Load(table, "B,2,,999,0,,x\nA,1,,101,0,,5\n// end\n@B,x\n"));
  EXPECT_TRUE(table.FileInitialised());
  EXPECT_FALSE(Load(table, "A,1,,123456,0,,5\n@A,text\n"));
  EXPECT_TRUE(table.FileInitialised());
}

TEST(LoadDefFile, ControlAttributesReachTheRecordAndTheMap) {
  CAttribDefMap table;
  EXPECT_TRUE(Load(table,
                   "M,1,,101,2,\n@M,a,b\n  @M , c , d \n@None\n@,empty key\n@M2,before\n"
                   "M2,2,,101,2,\n"));
  EXPECT_EQ(CtlText(*table.GetAttribDefRec(L"M")), CString(L"a,b"));
  EXPECT_EQ(CtlText(*table.GetAttribDefRec(L"M2")), CString());
  CString text(L"untouched");
  EXPECT_TRUE(table.GetCtlAttribs(L"M", text));
  EXPECT_EQ(text, CString(L"a,b"));
  EXPECT_TRUE(table.GetCtlAttribs(L"M ", text));
  EXPECT_EQ(text, CString(L"c,d"));
  EXPECT_TRUE(table.GetCtlAttribs(L"M2", text));
  EXPECT_EQ(text, CString(L"before"));
  EXPECT_TRUE(table.GetCtlAttribs(L"", text));
  EXPECT_EQ(text, CString(L"empty key"));
  EXPECT_FALSE(table.GetCtlAttribs(L"None", text));
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_EQ(table.Count(), 2);
}

TEST(LoadDefFile, TheLastControlAttributeLineCounts) {
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, "M,1,,101,2,\n@M,a\n@M,\n@M, b , c\n"));
  EXPECT_EQ(CtlText(table[0]), CString(L" b , c"));
  EXPECT_TRUE(Load(table, "M,1,,101,2,\n@M,a\n@M,\n"));
  EXPECT_EQ(CtlText(table[0]), CString());
  CString text(L"untouched");
  EXPECT_TRUE(table.GetCtlAttribs(L"M", text));
  EXPECT_TRUE(text.IsEmpty());
}

TEST(LoadDefFile, ControlAttributesOfARepeatedMnemonicGoToTheLastRecordSoFar) {
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, "M,1,,101,2,\n@M,first\nM,2,,101,2,\n"));
  EXPECT_EQ(CtlText(table[0]), CString(L"first"));
  EXPECT_EQ(CtlText(table[1]), CString());
}

TEST(LoadDefFile, ControlAttributesOfAnEarlierLoadStay) {
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, "M,1,,101,2,\n@M,old\n@N,kept\n"));
  EXPECT_TRUE(Load(table, "N,2,,101,2,\n@M,new\n"));
  CString text;
  EXPECT_TRUE(table.GetCtlAttribs(L"M", text));
  EXPECT_EQ(text, CString(L"new"));
  EXPECT_TRUE(table.GetCtlAttribs(L"N", text));
  EXPECT_EQ(text, CString(L"kept"));
  EXPECT_EQ(CtlText(*table.GetAttribDefRec(L"N")), CString());
  EXPECT_EQ(table.GetAttribDefRec(L"M"), nullptr);
}

TEST(LoadDefFile, AnotherLoadReplacesTheRecordsAndKeepsTheOldOnesForTheirHolders) {
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, "A,1,Old,501,0,,text\n"));
  CAttribDefRec* held = table.GetAttribDefRec(L"A");
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(Load(table, "B,2,New,101,0,,1\n"));
  }
  EXPECT_EQ(table.Count(), 1);
  EXPECT_EQ(table.GetAttribDefRec(L"A"), nullptr);
  EXPECT_EQ(table.GetAttribDefRec(1), nullptr);
  EXPECT_EQ(held->Name(), CString(L"Old"));
  EXPECT_EQ(ValueText(*held), CString(L"text"));
}

TEST(LoadDefFile, AFileThatCannotBeOpenedIsReportedAndChangesNothing) {
  const CReports reports;
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, "A,1,,101,0,\n@A,x\n"));
  const CString missing(L"/no such folder/attributes.def");
  EXPECT_FALSE(table.LoadDefFile(missing, true));
  ASSERT_EQ(CReports::All().size(), 1u);
  EXPECT_EQ(CReports::All()[0].first, CString(L"General"));
  EXPECT_EQ(CReports::All()[0].second, FileError(missing, 0).Message());
  EXPECT_EQ(table.Count(), 1);
  EXPECT_NE(table.GetAttribDefRec(L"A"), nullptr);
  EXPECT_TRUE(table.FileInitialised());
  EXPECT_FALSE(table.LoadDefFile(L"", false));
  EXPECT_FALSE(table.LoadDefFile(PathText(std::filesystem::temp_directory_path()), false));
  EXPECT_EQ(CReports::All().size(), 3u);
}

TEST(LoadDefFile, AFailedOpenDoesNotInitialise) {
  const CReports reports;
  CAttribDefMap table;
  EXPECT_FALSE(table.LoadDefFile(L"/no such folder/attributes.def", false));
  EXPECT_FALSE(table.FileInitialised());
}

TEST(LoadDefFile, ReadsTheEncodingsAndLineEndsOfTextFiles) {
  const std::string utf16("\xFF\xFEH\0\xF6\0h\0e\0,\0001\0,\0\xD6\0,\0001\0000\0001\0\n\0", 28);
  const std::string files[] = {
      "H\xC3\xB6he,1,\xC3\x96,101\n", "\xEF\xBB\xBFH\xC3\xB6he,1,\xC3\x96,101\n",
      "H\xF6he,1,\xD6,101\n",         "H\xC3\xB6he,1,\xC3\x96,101\r\n\r\n",
      "H\xC3\xB6he,1,\xC3\x96,101",   utf16,
  };
  for (const std::string& bytes : files) {
    SCOPED_TRACE(testing::PrintToString(bytes));
    CAttribDefMap table;
    EXPECT_TRUE(Load(table, bytes));
    ASSERT_EQ(table.Count(), 1);
    EXPECT_EQ(table[0].Mnemonic(), CString(L"H\u00F6he"));
    EXPECT_EQ(table[0].Name(), CString(L"\u00D6"));
    EXPECT_EQ(table[0].Type(), 101u);
  }
}

}  // namespace
