// The keys and values of a FileObject that is changed for a long time: what was replaced makes room
// for what comes, and nothing else.
#include <map>
#include <random>
#include <string>

#include "tests/platform/FileObjectTesting.h"

namespace {

class FileObjectTexts : public FileObjectTesting {
 protected:
  int Random(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }

  CString RandomKey() {
    CString key;
    key.Format(Random(4) == 0 ? L"Größe%d" : L"Sensor.Part%d", Random(30));
    return key;
  }
  CString RandomValue() {
    const CString value(L'v', Random(400));
    return Random(4) == 0 ? value + L"°" : value;
  }

  void Set(const CString& key, const CString& value) {
    EXPECT_TRUE(m_file.SetItem(L"S", key, value, true));
    m_expected[key] = value;
  }

  void Rename(const CString& key, const CString& newKey) {
    const auto found = m_expected.find(key);
    const bool isPossible = found != m_expected.end() && m_expected.count(newKey) == 0;
    EXPECT_EQ(m_file.RenameItem(L"S", key, newKey), isPossible);
    if (isPossible) {
      m_expected[newKey] = found->second;
      m_expected.erase(key);
    }
  }

  void DoSomething() {
    const int dice = Random(100);
    if (dice < 80) {
      Set(RandomKey(), RandomValue());
    } else if (dice < 90) {
      Rename(RandomKey(), RandomKey());
    } else if (dice < 99) {
      const CString key = RandomKey();
      EXPECT_EQ(m_file.RemoveItem(L"S", key), m_expected.erase(key) == 1);
    } else {
      m_file = FileObject(m_file);
    }
  }

  void Compare(const FileObject& file) const {
    ASSERT_EQ(file.ItemCount(L"S"), static_cast<int>(m_expected.size()));
    for (const auto& [key, value] : m_expected) {
      ASSERT_EQ(Value(file, L"S", key), value) << WideToUtf8(key).GetString();
    }
  }

  std::mt19937 m_random{5};
  FileObject m_file;
  std::map<CString, CString> m_expected;
};

TEST_F(FileObjectTexts, StayWhatTheyAreHoweverOftenOthersChange) {
  m_file = Loaded("[S]\nSensor.Part1=loaded\nGröße2=geladen\n[T]\nkept=ä1\n");
  m_expected = {{L"Sensor.Part1", L"loaded"}, {L"Größe2", L"geladen"}};
  for (int step = 0; step < 4000; ++step) {
    DoSomething();
    if (step % 50 == 0) {
      ASSERT_NO_FATAL_FAILURE(Compare(m_file)) << "step " << step;
    }
  }
  EXPECT_EQ(Value(m_file, L"T", L"kept"), L"ä1");
  ASSERT_NO_FATAL_FAILURE(Compare(m_file));
  Compare(Loaded(Saved(m_file)));
}

TEST_F(FileObjectTexts, OfAnAddedItemAreWrittenAsTheyLastWere) {
  for (int count = 0; count < 3; ++count) {
    FileObject file;
    EXPECT_TRUE(file.SetItem(L"S", L"a", L"1", true));
    for (int change = 0; change < 2000 * count; ++change) {
      EXPECT_TRUE(file.SetItem(L"S", L"b", CString(L'x', change % 100), true));
    }
    EXPECT_TRUE(file.SetItem(L"S", L"b", L"22", true));
    EXPECT_TRUE(file.SetItem(L"S", L"c", L"3", true));
    EXPECT_EQ(
        Saved(file),
        WithSystemLineEnds("\n[S]\na=1\nb=22\nc=3\n").substr(std::string(kSystemLineEnd).size()));
  }
}

// A line that begins the file may come to stand below one without a line end.
TEST_F(FileObjectTexts, OfMovedLinesKeepTheirLineEnds) {
  FileObject file = Loaded("a=1\nb=2");
  FileObject from;
  EXPECT_TRUE(from.SetItem(L"", L"b", L"5", true));
  EXPECT_TRUE(from.SetItem(L"", L"a", L"1", true));
  EXPECT_TRUE(file.CopySection(L"", from));
  EXPECT_EQ(Saved(file), "b=5\na=1\n");
}

// Lines of different places are not taken for neighbours.
TEST_F(FileObjectTexts, OfLinesThatCameLateStandBelowTheLoadedOnes) {
  for (const char* last : {"b=2", "b=2\n", "b=2\r\n", "b=2\r"}) {
    FileObject file = Loaded(std::string("[S]\r\na=1\r\n") + last);
    EXPECT_TRUE(file.SetItem(L"S", L"c", L"3", true));
    const FileObject again = Loaded(Saved(file));
    EXPECT_EQ(Value(again, L"S", L"c"), L"3") << last;
    EXPECT_EQ(Value(again, L"S", L"b"), Value(file, L"S", L"b")) << last;
    EXPECT_EQ(again.ItemCount(L"S"), 3) << last;
  }
}

}  // namespace
