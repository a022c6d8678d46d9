// Queries by mnemonic and identifier, the registry of list-filling functions, the process-wide
// table.
#include "definitions/AttribDefMap.h"

#include <gtest/gtest.h>

#include <set>
#include <thread>

#include "catalogue/AttributeNames.h"
#include "tests/definitions/DefinitionFile.h"

namespace {

class DefinitionQueries : public testing::Test {
 protected:
  DefinitionQueries() {
    EXPECT_TRUE(Load(m_table,
                     "Depth,17,Depth limit,103,2,depth.bmp,12.5\n"
                     "Count,18,Counter,102,-3,,7\n@Depth, 0 ,\t100 , 0.5 \n"));
  }

  CTranslations m_translations;
  CAttribDefMap m_table;
};

TEST_F(DefinitionQueries, AnswerByMnemonic) {
  CString text;
  EXPECT_TRUE(m_table.GetAttribName(L"Depth", text));
  EXPECT_EQ(text, CString(L"Depth limit"));
  CLumType::LUM_TYPE type = CLumType::TYPE_NAME;
  EXPECT_TRUE(m_table.GetAttribType(L"Depth", type));
  EXPECT_EQ(type, CLumType::TYPE_DOUBLE);
  int controlType = 99;
  EXPECT_TRUE(m_table.GetAttribControlType(L"Count", controlType));
  EXPECT_EQ(controlType, -3);
  unsigned short id = 99;
  EXPECT_TRUE(m_table.GetAttribID(L"Count", id));
  EXPECT_EQ(id, 18);
  EXPECT_TRUE(m_table.GetBitmapFilename(L"Depth", text));
  EXPECT_EQ(text, CString(L"depth.bmp"));
  EXPECT_TRUE(m_table.GetBitmapFilename(L"Count", text));
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_EQ(m_table.GetAttribDefRec(L"Depth"), &m_table[0]);
}

TEST_F(DefinitionQueries, AnswerByIdentifier) {
  CString text;
  EXPECT_TRUE(m_table.GetAttribName(18, text));
  EXPECT_EQ(text, CString(L"Counter"));
  CLumType::LUM_TYPE type = CLumType::TYPE_NAME;
  EXPECT_TRUE(m_table.GetAttribType(18, type));
  EXPECT_EQ(type, CLumType::TYPE_UINT);
  int controlType = 99;
  EXPECT_TRUE(m_table.GetAttribControlType(17, controlType));
  EXPECT_EQ(controlType, 2);
  EXPECT_TRUE(m_table.GetAttribMnemo(17, text));
  EXPECT_EQ(text, CString(L"Depth"));
  EXPECT_EQ(m_table.GetAttribDefRec(18), &m_table[1]);
}

TEST_F(DefinitionQueries, LeaveTheirOutputWhenThereIsNoDefinition) {
  CString text(L"untouched");
  CLumType::LUM_TYPE type = CLumType::TYPE_NAME;
  int controlType = 99;
  unsigned short id = 99;
  for (const wchar_t* unknown : {L"UNKNOWN", L"depth", L"DEPTH", L"Depth ", L""}) {
    EXPECT_FALSE(m_table.GetAttribName(unknown, text));
    EXPECT_FALSE(m_table.GetAttribControlType(unknown, controlType));
    EXPECT_FALSE(m_table.GetAttribID(unknown, id));
    EXPECT_FALSE(m_table.GetBitmapFilename(unknown, text));
    EXPECT_EQ(m_table.GetAttribDefRec(unknown), nullptr);
  }
  EXPECT_FALSE(m_table.GetAttribName(9999, text));
  EXPECT_FALSE(m_table.GetAttribType(9999, type));
  EXPECT_FALSE(m_table.GetAttribControlType(9999, controlType));
  EXPECT_FALSE(m_table.GetAttribMnemo(9999, text));
  EXPECT_EQ(m_table.GetAttribDefRec(9999), nullptr);
  EXPECT_EQ(text, CString(L"untouched"));
  EXPECT_EQ(type, CLumType::TYPE_NAME);
  EXPECT_EQ(controlType, 99);
  EXPECT_EQ(id, 99);
}

TEST_F(DefinitionQueries, TypeOfAnUnknownMnemonicBecomesUndefined) {
  CLumType::LUM_TYPE type = CLumType::TYPE_NAME;
  EXPECT_FALSE(m_table.GetAttribType(L"UNKNOWN", type));
  EXPECT_EQ(type, CLumType::TYPE_UNDEFINED);
}

TEST(DefinitionTable, OrderInfoIsAlwaysKnownByMnemonic) {
  CAttribDefMap table;
  CLumType::LUM_TYPE type = CLumType::TYPE_NAME;
  EXPECT_TRUE(table.GetAttribType(L"OrderInfo", type));
  EXPECT_EQ(type, CLumType::TYPE_UNDEFINED);
  type = CLumType::TYPE_NAME;
  EXPECT_FALSE(table.GetAttribType(L"orderinfo", type));
  EXPECT_TRUE(Load(table, "OrderInfo,5,,101,0,\n"));
  type = CLumType::TYPE_NAME;
  EXPECT_TRUE(table.GetAttribType(L"OrderInfo", type));
  EXPECT_EQ(type, CLumType::TYPE_UNDEFINED);
  EXPECT_TRUE(table.GetAttribType(5, type));
  EXPECT_EQ(type, CLumType::TYPE_INT);
}

TEST_F(DefinitionQueries, ControlAttributesComeBackWithoutBlanksAroundTheirItems) {
  CString text(L"untouched");
  EXPECT_TRUE(m_table.GetCtlAttribs(L"Depth", text));
  EXPECT_EQ(text, CString(L"0,100,0.5"));
  EXPECT_EQ(CtlText(m_table[0]), CString(L" 0 ,\t100 , 0.5"));
  EXPECT_FALSE(m_table.GetCtlAttribs(L"Count", text));
  EXPECT_TRUE(text.IsEmpty());
}

TEST_F(DefinitionQueries, AcceptTheSameStringAsKeyAndOutput) {
  CString text(L"Depth");
  EXPECT_TRUE(m_table.GetCtlAttribs(text, text));
  EXPECT_EQ(text, CString(L"0,100,0.5"));
  text = L"Depth";
  EXPECT_TRUE(m_table.GetBitmapFilename(text, text));
  EXPECT_EQ(text, CString(L"depth.bmp"));
}

TEST(DefinitionTable, ControlAttributesWithEmptyItemsKeepTheirCommas) {
  CAttribDefMap table;
  EXPECT_TRUE(Load(table, "@A,,\n@B, , x,,\n@C,one\n"));
  CString text;
  EXPECT_TRUE(table.GetCtlAttribs(L"A", text));
  EXPECT_EQ(text, CString(L","));
  EXPECT_TRUE(table.GetCtlAttribs(L"B", text));
  EXPECT_EQ(text, CString(L",x,,"));
  EXPECT_TRUE(table.GetCtlAttribs(L"C", text));
  EXPECT_EQ(text, CString(L"one"));
}

// Mnemonics whose hashes are equal, where characters have 32 bits.
TEST(DefinitionTable, MnemonicsOfTheSameHashAreToldApart) {
  CAttribDefMap table;
  ASSERT_TRUE(Load(table, "Name37098,1,First,101,1,,0\nName48867,2,Second,101,1,,0\n"));
  CString name;
  EXPECT_TRUE(table.GetAttribName(L"Name37098", name));
  EXPECT_EQ(name, CString(L"First"));
  EXPECT_TRUE(table.GetAttribName(L"Name48867", name));
  EXPECT_EQ(name, CString(L"Second"));
}

TEST(DefinitionTable, StartsEmpty) {
  const CAttribDefMap table;
  EXPECT_EQ(table.Count(), 0);
  EXPECT_FALSE(table.FileInitialised());
}

int g_calls = 0;

void FillWithPorts(CStringArray& list) {
  ++g_calls;
  list.Add(L"COM1");
  list.Add(L"COM2");
}

void FillWithNames(CStringArray& list) {
  ++g_calls;
  list.Add(L"Name");
}

TEST(FunctionLists, CallsTheFunctionOfThatName) {
  g_calls = 0;
  CAttribDefMap table;
  EXPECT_TRUE(table.RegisterFunctionListItem(L"Ports", &FillWithPorts));
  EXPECT_TRUE(table.RegisterFunctionListItem(L"ports", &FillWithNames));
  CStringArray list;
  list.Add(L"before");
  EXPECT_TRUE(table.FillList(L"Ports", list));
  ASSERT_EQ(list.GetSize(), 3);
  EXPECT_EQ(list[0], CString(L"before"));
  EXPECT_EQ(list[2], CString(L"COM2"));
  EXPECT_EQ(g_calls, 1);
}

TEST(FunctionLists, ASecondRegistrationReplacesTheFirst) {
  g_calls = 0;
  CAttribDefMap table;
  EXPECT_TRUE(table.RegisterFunctionListItem(L"Ports", &FillWithPorts));
  EXPECT_TRUE(table.RegisterFunctionListItem(L"Ports", &FillWithNames));
  CStringArray list;
  EXPECT_TRUE(table.FillList(L"Ports", list));
  ASSERT_EQ(list.GetSize(), 1);
  EXPECT_EQ(list[0], CString(L"Name"));
  EXPECT_EQ(g_calls, 1);
}

TEST(FunctionLists, UnknownNamesAnswerFalse) {
  CAttribDefMap table;
  CStringArray list;
  list.Add(L"before");
  EXPECT_FALSE(table.FillList(L"Ports", list));
  EXPECT_FALSE(table.RemoveFunctionListItem(L"Ports"));
  EXPECT_TRUE(table.RegisterFunctionListItem(L"Ports", &FillWithPorts));
  EXPECT_FALSE(table.RemoveFunctionListItem(L"Port"));
  EXPECT_TRUE(table.RemoveFunctionListItem(L"Ports"));
  EXPECT_FALSE(table.RemoveFunctionListItem(L"Ports"));
  EXPECT_FALSE(table.FillList(L"Ports", list));
  EXPECT_EQ(list.GetSize(), 1);
}

TEST(FunctionLists, ANullFunctionFillsNothing) {
  CAttribDefMap table;
  EXPECT_TRUE(table.RegisterFunctionListItem(L"Ports", nullptr));
  CStringArray list;
  EXPECT_FALSE(table.FillList(L"Ports", list));
  EXPECT_TRUE(table.RemoveFunctionListItem(L"Ports"));
}

TEST(FunctionLists, StayWhenAFileIsLoaded) {
  CAttribDefMap table;
  EXPECT_TRUE(table.RegisterFunctionListItem(L"Ports", &FillWithPorts));
  EXPECT_TRUE(Load(table, "A,1,,101,0,\n"));
  CStringArray list;
  EXPECT_TRUE(table.FillList(L"Ports", list));
}

void RegisterMore(CStringArray& list) {
  CAttribDefMap& table = CAttribDefMap::GetAttribDefMap();
  table.RemoveFunctionListItem(L"Self");
  list.Add(L"done");
}

TEST(FunctionLists, AFunctionMayRemoveItself) {
  CAttribDefMap& table = CAttribDefMap::GetAttribDefMap();
  EXPECT_TRUE(table.RegisterFunctionListItem(L"Self", &RegisterMore));
  CStringArray list;
  EXPECT_TRUE(table.FillList(L"Self", list));
  EXPECT_EQ(list.GetSize(), 1);
  EXPECT_FALSE(table.FillList(L"Self", list));
}

// Each test runs in a process of its own when the tests are run one by one, so this is the first
// call there.
TEST(ProcessWideTable, ConcurrentFirstCallsSeeOneEmptyTable) {
  constexpr int kThreads = 8;
  std::vector<CAttribDefMap*> seen(kThreads, nullptr);
  std::vector<std::thread> threads;
  for (CAttribDefMap*& slot : seen) {
    threads.emplace_back([&slot] { slot = &CAttribDefMap::GetAttribDefMap(); });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(std::set<CAttribDefMap*>(seen.begin(), seen.end()).size(), 1u);
  EXPECT_EQ(seen[0]->Count(), 0);
  EXPECT_FALSE(seen[0]->FileInitialised());
}

TEST(ProcessWideTable, MayBeReadFromSeveralThreads) {
  CAttribDefMap& table = CAttribDefMap::GetAttribDefMap();
  EXPECT_TRUE(Load(table, "Height,1,The height,103,2,,1.5\n@Height,0,10\n"));
  std::vector<int> good(4, 0);
  std::vector<std::thread> threads;
  for (int& count : good) {
    threads.emplace_back([&count] {
      const CAttribDefMap& shared = CAttribDefMap::GetAttribDefMap();
      for (int i = 0; i < 1000; ++i) {
        CString name;
        CString control;
        CLumType::LUM_TYPE type = CLumType::TYPE_UNDEFINED;
        count += shared.GetAttribName(ATTR_HEIGHT, name) && shared.GetAttribType(1, type) &&
                 shared.GetCtlAttribs(ATTR_HEIGHT, control) && control == L"0,10";
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(good, std::vector<int>(4, 1000));
}

}  // namespace
