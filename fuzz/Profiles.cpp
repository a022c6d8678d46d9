// Any bytes as a decode profile. Faults lie within the file and in the order of their places; a
// profile without faults decodes records, and what is remembered of them changes nothing.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <tuple>
#include <vector>

#include "decoding/Decoder.h"
#include "fuzz/FuzzFiles.h"
#include "fuzz/FuzzInput.h"
#include "platform/FileObject.h"
#include "tests/decoding/Records.h"

namespace {

using namespace lum::decoding;

constexpr int kRecords = 40;

/// One line more than there are: what the file lacks as a whole is told in the first, and half a
/// character at the end of a file has a line of its own.
void CheckFaults(const std::vector<ProfileFault>& faults) {
  FileObject file;
  ASSERT_TRUE(file.Load(lum::fuzz::CFuzzFiles::Instance().Input()));
  const std::vector<FileObjectLine> lines = file.LoadedLines();
  const auto place = [](const ProfileFault& fault) { return std::tie(fault.line, fault.column); };
  for (std::size_t i = 0; i < faults.size(); ++i) {
    const ProfileFault& fault = faults[i];
    EXPECT_FALSE(fault.found.empty());
    ASSERT_GE(fault.line, 1);
    ASSERT_LE(fault.line, static_cast<int>(lines.size()) + 1);
    EXPECT_GE(fault.column, 1);
    if (fault.line <= static_cast<int>(lines.size())) {
      const FileObjectLine& line = lines[static_cast<std::size_t>(fault.line) - 1];
      EXPECT_LE(fault.column, line.text.GetLength() + 1) << fault.found;
    }
    EXPECT_TRUE(i == 0 || place(faults[i - 1]) <= place(fault));
  }
}

std::vector<std::size_t> PlainMatches(const Profile& profile, const LogRecord& record) {
  std::vector<std::size_t> matches;
  for (std::size_t i = 0; i < profile.messages.size(); ++i) {
    const std::vector<MatchTerm>& terms = profile.messages[i].match;
    if (record.kind == RecordKind::Data &&
        std::all_of(terms.begin(), terms.end(),
                    [&](const MatchTerm& term) { return Holds(term, record); })) {
      matches.push_back(i);
    }
  }
  return matches;
}

void CheckCell(const Cell& cell, const ColumnRule& column) {
  EXPECT_EQ(cell.state == CellState::Value, cell.reason == CellReason::None);
  if (cell.state == CellState::Value) {
    EXPECT_TRUE(std::isfinite(cell.value));
    EXPECT_TRUE(!column.range || column.range->Contains(cell.value));
  }
  if (cell.reason == CellReason::OutOfRange) {
    EXPECT_FALSE(column.range->Contains(cell.value));
  }
}

bool IsSame(const Cell& a, const Cell& b) {
  return a.state == b.state && a.reason == b.reason && a.value == b.value && a.step == b.step &&
         a.isOfRaw == b.isOfRaw;
}

/// The clock is none of a record's parts.
bool AsksForTheTime(const ColumnRule& column) {
  const auto asks = [](const std::optional<CExpression>& formula) {
    return formula && formula->Text().find("Expand") != std::string::npos;
  };
  return asks(column.raw) || asks(column.formula);
}

/// A decoder that has seen other records and one that has seen none agree.
void CheckRow(CDecoder& decoder, const Profile& profile, const LogRecord& record,
              std::size_t message) {
  const std::span<const Cell> seen = decoder.Decode(record, message).cells;
  const std::vector<Cell> cells(seen.begin(), seen.end());
  CDecoder fresh(profile);
  const Row row = fresh.Decode(record, message);
  ASSERT_EQ(row.cells.size(), cells.size());
  ASSERT_EQ(cells.size(), profile.messages[message].columns.size());
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const ColumnRule& column = profile.messages[message].columns[i];
    CheckCell(cells[i], column);
    EXPECT_TRUE(IsSame(cells[i], row.cells[i]) || AsksForTheTime(column)) << column.name;
  }
}

void CheckDecoding(const Profile& profile, lum::fuzz::CChoices& choices) {
  CDecoder decoder(profile);
  CRecordMaker maker;
  for (int i = 0; i < kRecords; ++i) {
    const LogRecord record =
        maker.Make([&choices](std::size_t count) -> std::size_t { return choices() % count; });
    const std::span<const std::size_t> found = decoder.Match(record);
    const std::vector<std::size_t> matches(found.begin(), found.end());
    ASSERT_EQ(matches, PlainMatches(profile, record));
    if (!matches.empty()) {
      CheckRow(decoder, profile, record, matches[choices() % matches.size()]);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const lum::fuzz::CFuzzFiles& files = lum::fuzz::CFuzzFiles::Instance();
  files.WriteInput({reinterpret_cast<const char*>(data), size});
  const CStringA path = WideToUtf8(files.Input());
  std::vector<ProfileFault> faults;
  const Profile profile = LoadProfile(path.GetString(), faults);
  CheckFaults(faults);
  if (faults.empty()) {
    lum::fuzz::CChoices choices(data, std::min<std::size_t>(size, 64));
    CheckDecoding(profile, choices);
  }
  return 0;
}
