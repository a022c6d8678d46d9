// The numbers by which devices on a bus of SAE J1939 say "not available" and "error".
#include "decoding/ProfileSentinels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/decoding/ProfileTesting.h"

namespace lum::decoding {
namespace {

using testing::ElementsAre;

TEST(ProfileSentinels, AreThoseOfTheFieldsWidth) {
  const struct {
    const char* formula;
    NumberRange notAvailable;
    NumberRange error;
  } rows[] = {
      {"J1939Val(message, 6, 3)", {255, 255}, {254, 254}},
      {"J1939Val(message,-6,3)", {255, 255}, {254, 254}},
      {"J1939Val(message, 7, 3)", {0xFF00, 0xFFFF}, {0xFE00, 0xFEFF}},
      {"J1939Val(message, -7, 3)", {0xFF00, 0xFFFF}, {0xFE00, 0xFEFF}},
      {"J1939Val(message, 8, 3)", {0xFF000000, 0xFFFFFFFF}, {0xFE000000, 0xFEFFFFFF}},
      {" CanVal ( frame , 7 , 1 + 2 ) ", {0xFF00, 0xFFFF}, {0xFE00, 0xFEFF}},
      {"CanVal(frame, 0x6, number)", {255, 255}, {254, 254}},
      {"CanVal(field(1), 6, 0)", {255, 255}, {254, 254}},
      {"CanVal(\"a)\\\"(,\", 6, 0)", {255, 255}, {254, 254}},
      {"CanVal('\\'),', 6, 0)", {255, 255}, {254, 254}},
      {"J1939BitsVal(message, 6, 0, 2)", {3, 3}, {2, 2}},
      {"J1939BitsVal(message, 6, 0, 3)", {7, 7}, {6, 6}},
      {"J1939BitsVal(message, 6, 8, 8)", {255, 255}, {254, 254}},
      {"J1939BitsVal(message, 7, 8, 12)", {4095, 4095}, {4094, 4094}},
      {"J1939BitsVal(message, 7, 8, 16)", {0xFF00, 0xFFFF}, {0xFE00, 0xFEFF}},
      {"J1939BitsVal(message, 8, 8, 24)", {0xFF0000, 0xFFFFFF}, {0xFE0000, 0xFEFFFF}},
      {"J1939BitsVal(message, 8, 8, 31)", {2147483647, 2147483647}, {2147483646, 2147483646}},
  };
  for (const auto& row : rows) {
    const std::variant<Sentinels, std::string> found = SentinelsOfFormula(row.formula);
    const Sentinels* sentinels = std::get_if<Sentinels>(&found);
    ASSERT_NE(sentinels, nullptr) << row.formula << ": " << std::get<std::string>(found);
    EXPECT_EQ(sentinels->notAvailable.first, row.notAvailable.first) << row.formula;
    EXPECT_EQ(sentinels->notAvailable.last, row.notAvailable.last) << row.formula;
    EXPECT_EQ(sentinels->error.first, row.error.first) << row.formula;
    EXPECT_EQ(sentinels->error.last, row.error.last) << row.formula;
  }
}

TEST(ProfileSentinels, AreNotKnownOfOtherFields) {
  const char* const kNoCall =
      "a formula that is not just one call of J1939Val, J1939BitsVal or "
      "CanVal";
  const char* const kComputed = "a field whose width is computed";
  const char* const kSigned = "a signed field";
  const char* const kFraction = "a field of floating-point numbers";
  const char* const kUnknown = "a field whose type is none of 6, 7 and 8";
  const struct {
    const char* formula;
    std::string reason;
  } rows[] = {
      {"", kNoCall},
      {"1", kNoCall},
      {"BinVal(line, 6)", kNoCall},
      {"J1939Val(message, 6, 0) + 1", kNoCall},
      {"(J1939Val(message, 6, 0))", kNoCall},
      {"1 + J1939Val(message, 6, 0)", kNoCall},
      {"J1939Val(message, 6, 0", kNoCall},
      {"CanVal(\"abc, 6, 0)", kNoCall},
      {"J1939Val(1, 2, 3, 4, 5, 6, 7, 8, 9)", kNoCall},
      {"J1939Val(message, number, 0)", kComputed},
      {"J1939Val(message, 3 + 3, 0)", kComputed},
      {"J1939Val(message, 6.5, 0)", kComputed},
      {"J1939Val(message, inf, 0)", kComputed},
      {"J1939Val(message)", kComputed},
      {"J1939BitsVal(message, 6, 0, length)", kComputed},
      {"J1939BitsVal(message, 6, 0)", kComputed},
      {"J1939Val(message, 1, 0)", kSigned},
      {"J1939Val(message, -2, 0)", kSigned},
      {"J1939Val(message, 3, 0)", kSigned},
      {"J1939Val(message, 12, 0)", kSigned},
      {"CanVal(frame, 4, 0)", kFraction},
      {"CanVal(frame, -5, 0)", kFraction},
      {"CanVal(frame, 9, 0)", kUnknown},
      {"CanVal(frame, 0, 0)", kUnknown},
      {"J1939BitsVal(message, 1, 0, 4)", kSigned},
      {"J1939BitsVal(message, 8, 0, 32)", kSigned},
      {"J1939BitsVal(message, 4, 0, 4)", kFraction},
      {"J1939BitsVal(message, -6, 0, 4)", kUnknown},
      {"J1939BitsVal(message, 12, 0, 4)", kUnknown},
      {"J1939BitsVal(message, 6, 0, 1)", "a field of 1 bits in type 6"},
      {"J1939BitsVal(message, 6, 0, 9)", "a field of 9 bits in type 6"},
      {"J1939BitsVal(message, 7, 0, 17)", "a field of 17 bits in type 7"},
      {"J1939BitsVal(message, 8, 0, 33)", "a field of 33 bits in type 8"},
  };
  for (const auto& row : rows) {
    const std::variant<Sentinels, std::string> found = SentinelsOfFormula(row.formula);
    const std::string* reason = std::get_if<std::string>(&found);
    ASSERT_NE(reason, nullptr) << row.formula;
    EXPECT_EQ(*reason, row.reason) << row.formula;
  }
}

TEST(ProfileSentinels, JoinTheNumbersOfTheColumn) {
  for (const char* key : {"Raw", "Formula"}) {
    const Profile profile =
        GoodProfile(std::string("[Message A]\nX.NotAvailable=7\nX.Sentinels=J1939\nX.Error=8\nX.") +
                    key + "=J1939Val(message, 6, 0)\n");
    const ColumnRule& column = profile.messages[0].columns[0];
    ASSERT_EQ(column.notAvailable.size(), 2u);
    ASSERT_EQ(column.error.size(), 2u);
    EXPECT_TRUE(column.notAvailable[0].Contains(7) && column.notAvailable[1].Contains(255));
    EXPECT_TRUE(column.error[0].Contains(8) && column.error[1].Contains(254));
  }
}

TEST(ProfileSentinels, OfAnUnknownWidthAreAFault) {
  const struct {
    const char* items;
    const char* fault;
  } rows[] = {
      {"X.Sentinels=J1939\nX.Raw=J1939Val(message, 2, 0)\n",
       "2:13: J1939's numbers for a signed field | an unsigned field of known width, read by "
       "'X.Raw' | "},
      {"X.Raw=J1939Val(message, 6, 0)\nX.Formula=1\nY.Formula=1 + number\nY.Sentinels=J1939\n",
       "5:13: J1939's numbers for a formula that is not just one call of J1939Val, J1939BitsVal or "
       "CanVal | an unsigned field of known width, read by 'Y.Raw' | "},
      {"X.Sentinels=J1939\n", "2:1: the column 'X' without a formula | 'X.Formula' or 'X.Raw' | "},
  };
  for (const auto& row : rows) {
    std::vector<ProfileFault> faults;
    LoadText(std::string("[Message A]\n") + row.items, faults);
    EXPECT_THAT(FaultLines(faults), ElementsAre(row.fault));
  }
}

}  // namespace
}  // namespace lum::decoding
