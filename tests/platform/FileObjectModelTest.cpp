// Random files under random sequences of calls, compared with a model of what has to come out.
#include <string>
#include <utility>

#include "tests/platform/FileObjectRounds.h"

namespace {

#if defined(_WIN32)
constexpr int kRounds = 300;  // Wine takes milliseconds to replace a file.
#else
constexpr int kRounds = 3000;
#endif

using FileObjectModel = CFileObjectRounds;

TEST_F(FileObjectModel, AgreesAfterEveryCall) {
  for (int round = 0; round < kRounds; ++round) {
    StartRound(round);
    ASSERT_NO_FATAL_FAILURE(CompareAll()) << "round " << round;
    for (int step = 0; step < 20; ++step) {
      DoSomething();
      ASSERT_NO_FATAL_FAILURE(CompareAll()) << "round " << round << ", step " << step;
    }
    if (round % 16 == 0) {
      ASSERT_NO_FATAL_FAILURE(CompareSaved()) << "round " << round;
    }
  }
}

// The promises of CopySection, without the model: comments and untouched sections stay, and the
// walk follows the calls.
TEST_F(FileObjectModel, KeepsTheOrderOfCallsAfterEmptyingASection) {
  for (int round = 0; round < kRounds; ++round) {
    StartRound(round);
    const std::string others = Items(m_file, L"S2") + Items(m_file, L"S3") + Items(m_file, L"");
    EXPECT_TRUE(m_file.CopySection(L"S1", FileObject()));
    const FileModel::Items items = RandomItems();
    for (const auto& [key, value] : items) {
      EXPECT_TRUE(m_file.SetItem(L"S1", Wide(key), Wide(value), true));
    }
    ASSERT_EQ(Items(m_file, L"S1"), Text(items)) << "round " << round;
    ASSERT_EQ(Items(m_file, L"S2") + Items(m_file, L"S3") + Items(m_file, L""), others);
  }
}

TEST_F(FileObjectModel, SettingTheSameItemsAgainGivesTheSameBytes) {
  for (int round = 0; round < kRounds; ++round) {
    StartRound(round);
    const FileModel::Items items = m_model.Walk(1);
    EXPECT_TRUE(m_file.CopySection(L"S1", FileObject()));
    for (const auto& [key, value] : items) {
      EXPECT_TRUE(m_file.SetItem(L"S1", Wide(key), Wide(value), true));
    }
    if (round % 16 == 0) {
      ASSERT_EQ(Saved(m_file), Encoded(m_model.Bytes())) << "round " << round;
    }
    ASSERT_EQ(Items(m_file, L"S1"), Text(items)) << "round " << round;
  }
}

}  // namespace
