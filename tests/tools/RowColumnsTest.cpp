// Which columns a table of rows has.
#include "tools/lumattr/RowColumns.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/decoding/ProfileTesting.h"

namespace lum::tool {
namespace {

using decoding::GoodProfile;
using ::testing::ElementsAre;

std::vector<std::string> Names(const CRowColumns& columns) {
  std::vector<std::string> names;
  for (const RowColumn& column : columns.Columns()) {
    names.push_back(column.name);
  }
  return names;
}

TEST(RowColumns, StandInTheOrderOfTheProfile) {
  const CRowColumns columns(
      GoodProfile("[Message M]\nB.Formula=1\nB.Unit=m\nA.Formula=2\n[Message N]\nC.Formula=3\n"));
  EXPECT_THAT(Names(columns), ElementsAre("B", "A", "C"));
  EXPECT_EQ(columns.Columns()[0].title, "B (m)");
  EXPECT_EQ(columns.Columns()[1].title, "A");
  EXPECT_THAT(columns.PlacesOf(0), ElementsAre(RowPlace{0, 0}, RowPlace{1, 1}));
  EXPECT_THAT(columns.PlacesOf(1), ElementsAre(RowPlace{2, 0}));
}

TEST(RowColumns, OfOneNameAndUnitAreOne) {
  const CRowColumns columns(
      GoodProfile("[Message M]\nA.Formula=1\nDepth.Formula=1\nDepth.Unit=m\n"
                  "[Message N]\nDepth.Formula=2\nDepth.Unit=m\nB.Formula=1\n"));
  EXPECT_THAT(Names(columns), ElementsAre("A", "Depth", "B"));
  EXPECT_THAT(columns.PlacesOf(1), ElementsAre(RowPlace{1, 0}, RowPlace{2, 1}));
}

TEST(RowColumns, OfAMessageInAnotherOrderStandFromLeftToRight) {
  const CRowColumns columns(
      GoodProfile("[Message M]\nA.Formula=1\nB.Formula=1\nC.Formula=1\n"
                  "[Message N]\nC.Formula=2\nD.Formula=2\nA.Formula=2\n"));
  EXPECT_THAT(Names(columns), ElementsAre("A", "B", "C", "D"));
  EXPECT_THAT(columns.PlacesOf(1), ElementsAre(RowPlace{0, 2}, RowPlace{2, 0}, RowPlace{3, 1}));
}

TEST(RowColumns, OfOneNameAndSeveralUnitsAreToldApartByTheFirstMessage) {
  const CRowColumns columns(
      GoodProfile("[Message M]\nDepth.Formula=1\nDepth.Unit=m\n"
                  "[Message N]\nDepth.Formula=2\nDepth.Unit=ft\n"
                  "[Message O]\nDepth.Formula=3\n"
                  "[Message P]\nDepth.Formula=4\nDepth.Unit=ft\n"));
  EXPECT_THAT(Names(columns), ElementsAre("Depth", "N.Depth", "O.Depth"));
  EXPECT_EQ(columns.Columns()[1].title, "N.Depth (ft)");
  EXPECT_THAT(columns.PlacesOf(3), ElementsAre(RowPlace{1, 0}));
}

TEST(RowColumns, ShowDisplayNamesAsTitlesAlone) {
  decoding::Profile profile = GoodProfile("[Message M]\nDepth.Formula=1\nDepth.Unit=m\n");
  profile.messages[0].columns[0].displayName = "Tiefe";
  const CRowColumns columns(profile);
  EXPECT_EQ(columns.Columns()[0].name, "Depth");
  EXPECT_EQ(columns.Columns()[0].title, "Tiefe (m)");
}

TEST(RowColumns, OfVeryManyMessagesAreFoundInTime) {
  decoding::Profile profile;
  decoding::MessageRule message;
  for (std::size_t i = 0; i < 200'000; ++i) {
    message.columns.emplace_back().name = "Column" + std::to_string(i);
  }
  profile.messages.push_back(std::move(message));
  EXPECT_EQ(CRowColumns(profile).Columns().size(), 200'000U);
}

}  // namespace
}  // namespace lum::tool
