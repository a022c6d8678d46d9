// Runs over whole logs: what is counted, where another run goes on.
#include "decoding/LogRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "decoding/DecodingError.h"
#include "tests/decoding/ProfileTesting.h"

namespace lum::decoding {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr const char* kFirstField = "[Message M]\nMatch.FieldCount=1\nA.Formula=field(0)\n";
constexpr const char* kLongMessage =
    "[Message M]\nMatch.Pgn=65226\nCode.Formula=J1939Val(message, 7, 2)\n";
constexpr const char* kTwoPackets =
    "(1.0) can0 18ECFF00#200A0002FFCAFE00\n"
    "(1.1) can0 18EBFF00#0104FF6400010100\n"
    "(1.2) can0 18EBFF00#026E001001FFFFFF\n";

/// A log, a profile and the run over them.
class LogRun : public ::testing::Test {
 protected:
  CLogRun& Start(std::string_view log, const char* profile, const LogRunOptions& options = {}) {
    WriteBytes(m_folder.File("a.log"), log);
    m_profile = GoodProfile(profile);
    m_input.emplace(PathOf(m_folder.File("a.log")));
    return m_run.emplace(*m_input, m_profile, options);
  }

  /// "line:value" of each row.
  std::vector<std::string> Rows() {
    std::vector<std::string> rows;
    while (m_run->Next()) {
      for (const std::size_t message : m_run->Matches()) {
        const Row row = m_run->Decode(message);
        rows.push_back(std::to_string(row.record->number) + ":" +
                       std::to_string(static_cast<int>(row.cells[0].value)));
      }
    }
    return rows;
  }

  static std::string PathOf(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
  }

  CTemporaryFolder m_folder;
  Profile m_profile;
  std::optional<CLogInput> m_input;
  std::optional<CLogRun> m_run;
};

std::uint64_t CountedLines(const LogCounts& counts) {
  return counts.matched + counts.unmatched + counts.bad + counts.remarks + counts.remote +
         counts.busErrors + counts.unusable + counts.parts;
}

TEST_F(LogRun, CountsEachLineOnce) {
  const std::string log = std::string(kTwoPackets) +
                          "(2.0) can0 18F00400#F0FFFF0000FFFFFF\n"
                          "(2.1) can0 181#R\n"
                          "(2.2) can0 20000004#0000080000000000\n"
                          "(2.3) can0 181##100112233\n"
                          "# remark\n\n"
                          "(2.4) can0 18ECFF00#200A0002FFCAFE00\n"
                          "nonsense\n" +
                          std::string(kMaxLogLine + 1, 'x') + "\n";
  CLogRun& run = Start(log, kLongMessage);
  EXPECT_THAT(Rows(), ElementsAre("3:100"));
  const LogCounts& counts = run.Counts();
  EXPECT_EQ(counts.lines, 12U);
  EXPECT_EQ(CountedLines(counts), counts.lines);
  EXPECT_EQ(counts.matched, 1U);
  EXPECT_EQ(counts.unmatched, 1U);
  EXPECT_EQ(counts.bad, 2U);
  EXPECT_EQ(counts.remarks, 2U);
  EXPECT_EQ(counts.remote, 1U);
  EXPECT_EQ(counts.busErrors, 1U);
  EXPECT_EQ(counts.unusable, 1U);
  EXPECT_EQ(counts.parts, 3U);
  EXPECT_EQ(counts.problems, 3U);  // The bad lines, and the message that the log ends within.
  EXPECT_EQ(counts.rows, 1U);
}

TEST_F(LogRun, TellsALineThatIsTooLongFromTheLongestOne) {
  CLogRun& run = Start(std::string(kMaxLogLine, '1') + "\n" + std::string(kMaxLogLine + 1, '1'),
                       kFirstField, {.format = LogFormat::Plain});
  ASSERT_TRUE(run.Next());
  EXPECT_EQ(run.Problem(), nullptr);
  ASSERT_TRUE(run.Next());
  ASSERT_NE(run.Problem(), nullptr);
  EXPECT_EQ(run.Problem()->line, 2U);
  EXPECT_EQ(run.Problem()->reason, "line is longer than 65536 bytes");
  EXPECT_EQ(run.Record(), nullptr);
  EXPECT_FALSE(run.Next());
}

TEST_F(LogRun, TakesTheFormatThatIsAskedForBeforeTheProfilesBeforeItsLooks) {
  const char* profile = "[Profile]\nFormat=csv\n[Message M]\nA.Formula=number\n";
  EXPECT_EQ(Start("1,2\n", profile, {.format = LogFormat::Plain}).Format(), LogFormat::Plain);
  EXPECT_FALSE(m_run->IsFormatDetected());
  EXPECT_EQ(Start("$x\n", profile).Format(), LogFormat::Csv);
  EXPECT_FALSE(m_run->IsFormatDetected());
  EXPECT_EQ(Start("(1.0) can0 181#00\n", "[Message M]\nA.Formula=id\n").Format(),
            LogFormat::Candump);
  EXPECT_TRUE(m_run->IsFormatDetected());
}

TEST_F(LogRun, PutsMessagesTogetherWhenAFormulaAsksForThem) {
  for (const char* formula :
       {"J1939Val(message, 6, 0)", "pgn", "source", "destination", "priority"}) {
    const std::string profile = std::string("[Message M]\nA.Formula=") + formula + "\n";
    EXPECT_EQ(Start("(1.0) can0 18F00400#00\n", profile.c_str()).Format(), LogFormat::J1939)
        << formula;
  }
  EXPECT_EQ(Start("(1.0) can0 18F00400#00\n", "[Message M]\nA.Raw=pgn\nA.Formula=raw\n").Format(),
            LogFormat::J1939);
}

TEST_F(LogRun, PutsMessagesTogetherWhenAConditionAsksForThem) {
  const struct {
    const char* condition;
    LogFormat format;
  } rows[] = {
      {"Match.Pgn=61444", LogFormat::J1939},     {"Match.Source=1", LogFormat::J1939},
      {"Match.Destination=1", LogFormat::J1939}, {"Match.Priority=1", LogFormat::J1939},
      {"Match.Id=18F00400", LogFormat::Candump}, {"Match.Channel=can0", LogFormat::Candump},
  };
  for (const auto& row : rows) {
    const Profile profile =
        GoodProfile(std::string("[Message M]\nA.Formula=id\n") + row.condition + "\n");
    EXPECT_EQ(FitFormat(LogFormat::Candump, profile), row.format) << row.condition;
    EXPECT_EQ(FitFormat(LogFormat::Plain, profile), LogFormat::Plain) << row.condition;
  }
}

TEST_F(LogRun, TellsTheFormatFromTheFirstLineWithText) {
  EXPECT_EQ(Start("", kFirstField).Format(), LogFormat::Plain);
  EXPECT_TRUE(Rows().empty());
  EXPECT_EQ(Start("\n \t\n(1.0) can0 181#00\n", "[Message M]\nA.Formula=id\n").Format(),
            LogFormat::Candump);
  EXPECT_THAT(Rows(), ElementsAre("3:385"));
}

TEST_F(LogRun, GivesTheLinesThatTheFormatWasToldFrom) {
  std::string log;
  for (std::size_t i = 1; i <= CLogRun::kMostSampleLines + 2; ++i) {
    log += std::to_string(i) + "\n";
  }
  Start(log, kFirstField);
  const std::vector<std::string> rows = Rows();
  ASSERT_EQ(rows.size(), CLogRun::kMostSampleLines + 2);
  EXPECT_EQ(rows.front(), "1:1");
  EXPECT_EQ(rows.back(), "66:66");
}

TEST_F(LogRun, ResumesWithTheNumbersOfTheLines) {
  const struct {
    std::uint64_t from;
    std::vector<std::string> rows;
  } rows[] = {
      {0, {"1:10", "2:20", "3:30"}},
      {1, {"2:20", "3:30"}},
      {3, {"2:20", "3:30"}},
      {4, {"3:30"}},
      {6, {"3:30"}},
      {9, {}},
  };
  for (const auto& row : rows) {
    Start("10\n20\n30\n", kFirstField, {{}, row.from});
    EXPECT_EQ(Rows(), row.rows) << row.from;
    EXPECT_EQ(m_run->Offset(), 9U);
  }
}

TEST_F(LogRun, ResumesWithTheNumbersOfTheLinesBehindTheWarmUp) {
  std::string log;
  constexpr std::size_t kLine = 64;
  const std::size_t count = CLogRun::kWarmUpBytes / kLine + 1000;
  for (std::size_t i = 1; i <= count; ++i) {
    std::string line = std::to_string(i);
    line.resize(kLine - 1, ' ');
    log += line + "\n";
  }
  Start(log, kFirstField, {{}, (count - 1) * kLine});
  const std::string last = std::to_string(count);
  EXPECT_THAT(Rows(), ElementsAre(last + ":" + last));
}

TEST_F(LogRun, ResumesWithinAMessageOfSeveralFrames) {
  const std::string log = kTwoPackets;
  for (std::size_t end = log.find('\n'); end != log.rfind('\n'); end = log.find('\n', end + 1)) {
    Start(log, kLongMessage, {{}, end + 1});
    EXPECT_THAT(Rows(), ElementsAre("3:100")) << end;
  }
}

TEST_F(LogRun, RefusesToResumeBehindTheEnd) {
  for (const std::uint64_t from :
       {std::uint64_t{4}, CLogRun::kWarmUpBytes + 4, ~std::uint64_t{0}}) {
    try {
      Start("10\n", kFirstField, {{}, from});
      FAIL() << from;
    } catch (const DecodingError& error) {
      EXPECT_THAT(error.what(), HasSubstr("ends before byte " + std::to_string(from)));
    }
  }
}

TEST_F(LogRun, EndsBeforeTheNextLineOnceItIsInterrupted) {
  std::atomic<bool> isInterrupted = false;
  CLogRun& run = Start("10\n20\n30\n", kFirstField, {{}, 0, &isInterrupted});
  ASSERT_TRUE(run.Next());
  isInterrupted = true;
  EXPECT_FALSE(run.Next());
  EXPECT_FALSE(run.Next());
  EXPECT_EQ(run.Offset(), 3U);
  EXPECT_EQ(run.Counts().lines, 1U);
}

TEST_F(LogRun, SaysNothingOfAMessageThatTheInterruptionCameWithin) {
  std::atomic<bool> isInterrupted = false;
  CLogRun& run = Start(kTwoPackets, kLongMessage, {{}, 0, &isInterrupted});
  ASSERT_TRUE(run.Next());
  isInterrupted = true;
  EXPECT_FALSE(run.Next());
  EXPECT_EQ(run.Problem(), nullptr);
  EXPECT_EQ(run.Counts().problems, 0U);
}

TEST_F(LogRun, InterruptedBeforeItsPlaceStaysThere) {
  std::atomic<bool> isInterrupted = true;
  for (const std::uint64_t from : {std::uint64_t{6}, CLogRun::kWarmUpBytes + 6}) {
    CLogRun& run = Start("10\n20\n30\n", kFirstField, {{}, from, &isInterrupted});
    EXPECT_FALSE(run.Next());
    EXPECT_EQ(run.Offset(), from);
  }
}

}  // namespace
}  // namespace lum::decoding
