// Loaded tables beside plain ones: each line split by the platform's list of items, and the last
// definition of each key in an ordered map.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "definitions/AttribDefMap.h"
#include "platform/TextEncoding.h"
#include "tests/definitions/DefinitionFile.h"
#include "tests/definitions/PlainLoad.h"

namespace {

class CLineMaker {
 public:
  std::string Line() {
    std::string line = Mnemonic();
    const std::size_t numbers[] = {1, 3, 4};
    const std::size_t items = Below(8) == 0 ? Below(6) : 6 + Below(4);
    for (std::size_t item = 1; item < items; ++item) {
      const bool isNumber = std::find(std::begin(numbers), std::end(numbers), item) != numbers + 3;
      line += "," + Padded(item == 3 ? Type() : isNumber ? Number() : Text());
    }
    return line;
  }

 private:
  std::size_t Below(std::size_t end) { return m_random() % end; }

  template <std::size_t N>
  std::string OneOf(const char* const (&texts)[N]) {
    return texts[Below(N)];
  }

  // The first items of a line are never those of another kind of line.
  std::string Mnemonic() { return "M" + std::to_string(Below(40)) + (Below(9) == 0 ? " m" : ""); }
  std::string Type() {
    return Below(4) == 0 ? Number()
                         : OneOf({"0", "101", "102", "103", "104", "109", "112", "203", "301",
                                  "401", "402", "501", "603", "607", "613", "999"});
  }
  std::string Number() {
    return OneOf({"",           "0",          "1",          "17",          "007",
                  "65535",      "65536",      "123456789",  "999999999",   "000000001",
                  "0000000001", "1234567890", "2147483647", "2147483648",  "-1",
                  "+5",         "1.5",        "1e3",        "0x10",        "1 2",
                  "x",          "12x",        "\xD9\xA1",   "\xEF\xBC\x91"});
  }
  std::string Text() {
    return OneOf({"", "", "name.bmp", "a b", "a\tb", "0", "1", "-7", "12.5", "1e5", "true", "x//y",
                  "\xC3\xA4", "\xC2\xA0", "A@B", "#", "4294967296", "nan"});
  }
  std::string Padded(const std::string& item) {
    return OneOf({"", "", "", "", "", "", " ", "\t", "  ", " \t "}) + item +
           OneOf({"", "", "", "", "", "", " ", "\t", "  ", "\t "});
  }

  std::mt19937 m_random{20260611};
};

// The loader trims a line before it looks at it.
CString Trimmed(const std::string& line) { return Utf8ToWide(line.c_str()).Trim(); }

std::string Joined(const std::vector<std::string>& lines) {
  std::string bytes = "\xEF\xBB\xBF";
  for (const std::string& line : lines) {
    bytes += line + "\n";
  }
  return bytes;
}

TEST(DefinitionDifferential, EveryLineGivesWhatItsPlainSplitGives) {
  constexpr int kLines = 20000;
  CLineMaker maker;
  std::vector<std::string> lines;
  for (int i = 0; i < kLines; ++i) {
    lines.push_back(maker.Line());
  }
  CAttribDefMap table;
  const bool result = Load(table, Joined(lines));
  ASSERT_EQ(table.Count(), kLines);
  CPlainLoad plain;
  for (int i = 0; i < kLines && !testing::Test::HasFailure(); ++i) {
    const std::string& line = lines[static_cast<std::size_t>(i)];
    SCOPED_TRACE(testing::PrintToString(line));
    plain.Load(Trimmed(line));
    plain.ExpectSame(table[i]);
  }
  EXPECT_EQ(result, plain.Result());
}

TEST(DefinitionDifferential, KeysFindTheLastOfTheirDefinitionsInTablesOfAllSizes) {
  std::mt19937 random(7);
  for (const int count : {0, 1, 2, 7, 8, 9, 16, 17, 31, 32, 33, 612, 5000, 40000}) {
    std::vector<std::string> lines;
    std::map<std::string, int> mnemonics;
    std::map<unsigned int, int> ids;
    const auto keys = static_cast<unsigned int>(count) + 1;
    for (int i = 0; i < count; ++i) {
      const std::string mnemonic = "Name" + std::to_string(random() % keys);
      const unsigned int id = random() % 0x10000;
      lines.push_back(mnemonic + "," + std::to_string(id) + ",,101,0,");
      mnemonics[mnemonic] = i;
      ids[id] = i;
    }
    CAttribDefMap table;
    EXPECT_TRUE(Load(table, Joined(lines)));
    ASSERT_EQ(table.Count(), count);
    const CAttribDefMap copy(table);
    EXPECT_TRUE(Load(table, Joined(lines)));
    for (unsigned int key = 0; key < keys; ++key) {
      const std::string mnemonic = "Name" + std::to_string(key);
      const auto found = mnemonics.find(mnemonic);
      const CAttribDefRec* expected = found == mnemonics.end() ? nullptr : &table[found->second];
      ASSERT_EQ(table.GetAttribDefRec(CString(mnemonic.c_str())), expected) << mnemonic;
    }
    for (unsigned int id = 0; id < 0x10000; ++id) {
      const auto found = ids.find(id);
      const CAttribDefRec* expected = found == ids.end() ? nullptr : &table[found->second];
      ASSERT_EQ(table.GetAttribDefRec(static_cast<unsigned short>(id)), expected) << id;
    }
    EXPECT_EQ(copy.Count(), count);
  }
}

}  // namespace
