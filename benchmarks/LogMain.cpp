// Times the decoding of whole logs, from the file to the rows, beside a scan of the same file for
// its line ends and beside what a programmer writes by hand for one log.
#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "benchmarks/Context.h"
#include "benchmarks/Workload.h"
#include "decoding/LogRun.h"
#include "tools/lumattr/RowWriter.h"

namespace lum::bench {
namespace {

using decoding::CLogInput;
using decoding::CLogRun;
using decoding::LogFormat;
using decoding::Profile;

constexpr int kLines = 100'000;

/// A log in a file of its own, which goes with it.
class CLogFile {
 public:
  CLogFile(const char* name, const std::string& text)
      : m_path(std::filesystem::temp_directory_path() /
               ("lum-" + std::to_string(std::random_device()()) + "-" + name)) {
    std::ofstream(m_path, std::ios::binary) << text;
  }
  CLogFile(const CLogFile&) = delete;
  CLogFile& operator=(const CLogFile&) = delete;
  ~CLogFile() { std::filesystem::remove(m_path); }

  std::string Path() const { return m_path.string(); }

 private:
  std::filesystem::path m_path;
};

/// "(1436509052.000100) can0 18F00400#F17D8DE02EFFFFFF", 50 bytes with its end.
std::string CandumpText() {
  std::mt19937_64 random(1);
  std::string text;
  for (int i = 0; i < kLines; ++i) {
    char line[80];
    std::snprintf(line, sizeof line, "(%d.%06d) can0 18F00400#%016" PRIX64 "\n",
                  1436509052 + i / 10'000, i % 10'000 * 100, random());
    text += line;
  }
  return text;
}

/// "$GPGGA,073001.00,4807.0380,N,01131.0000,E,1,08,0.9,45.4,M,46.9,M,,*5C"
std::string NmeaText() {
  std::string text;
  for (int i = 0; i < kLines; ++i) {
    char line[100];
    std::snprintf(line, sizeof line,
                  "GPGGA,%02d%02d%02d.00,48%02d.%04d,N,011%02d.%04d,E,1,08,0.9,%d.%d,M,46.9,M,,",
                  i / 3600 % 24, i / 60 % 60, i % 60, i % 60, i * 7 % 10'000, i % 59,
                  i * 3 % 10'000, i % 90, i % 10);
    unsigned int sum = 0;
    for (const char* ch = line; *ch != '\0'; ++ch) {
      sum ^= static_cast<unsigned char>(*ch);
    }
    char end[8];
    std::snprintf(end, sizeof end, "*%02X\r\n", sum);
    text += "$" + std::string(line) + end;
  }
  return text;
}

/// Reads the file in blocks, as ours does, and looks at every byte once.
std::int64_t CountLines(const std::string& path) {
  std::vector<char> block(1 << 18);
  std::FILE* file = std::fopen(path.c_str(), "rb");
  std::int64_t count = 0;
  while (const std::size_t size = std::fread(block.data(), 1, block.size(), file)) {
    const char* end = block.data() + size;
    for (const char* at = block.data();
         (at = static_cast<const char*>(
              std::memchr(at, '\n', static_cast<std::size_t>(end - at)))) != nullptr;
         ++at) {
      ++count;
    }
  }
  std::fclose(file);
  return count;
}

/// All rows as CSV; how many.
std::int64_t DecodeToCsv(const std::string& path, const Profile& profile) {
  CLogInput input(path);
  CLogRun run(input, profile, {});
  const auto writer = tool::MakeRowWriter(profile, {tool::RowFormat::Csv, true, false});
  std::string rows;
  while (run.Next()) {
    for (const std::size_t message : run.Matches()) {
      writer->AppendRow(rows, run.Decode(message));
    }
    if (rows.size() > 1 << 16) {
      benchmark::DoNotOptimize(rows.data());
      rows.clear();
    }
  }
  return static_cast<std::int64_t>(run.Counts().rows);
}

/// The lines as records alone.
std::int64_t ReadRecords(const std::string& path, LogFormat format) {
  CLogInput input(path);
  decoding::CLineReader lines(input);
  const auto reader = decoding::MakeLogReader(format, {});
  decoding::LogLine line;
  decoding::LogRecord record;
  decoding::LineProblem problem;
  std::int64_t count = 0;
  while (lines.Next(line)) {
    count += reader->Take(line, record, problem).hasRecord ? 1 : 0;
  }
  return count;
}

/// What one writes for this log and no other.
std::int64_t DecodeByHand(const std::string& path) {
  std::FILE* file = std::fopen(path.c_str(), "rb");
  char line[256];
  char row[256];
  std::int64_t count = 0;
  while (std::fgets(line, sizeof line, file) != nullptr) {
    double time = 0.0;
    std::uint32_t id = 0;
    std::array<unsigned int, 8> data{};
    const int found =
        std::sscanf(line, "(%lf) %*s %8x#%2x%2x%2x%2x%2x%2x%2x%2x", &time, &id, &data[0], &data[1],
                    &data[2], &data[3], &data[4], &data[5], &data[6], &data[7]);
    if (found == 10 && id == 0x18F00400U) {
      const int size =
          std::snprintf(row, sizeof row, "%" PRId64 ",%.6f,%.3f,%d,%.2f,%u\r\n", count, time,
                        (data[3] + 256 * data[4]) * 0.125, static_cast<int>(data[2]) - 125,
                        static_cast<std::int16_t>(data[0] + 256 * data[1]) * 0.01, data[7]);
      benchmark::DoNotOptimize(size);
      ++count;
    }
  }
  std::fclose(file);
  return count;
}

Profile MakeProfile(const std::vector<std::string>& formulas, std::optional<int> digits) {
  std::vector<decoding::ProfileFault> faults;
  Profile profile = decoding::ProfileOfFormulas(formulas, faults);
  for (decoding::ColumnRule& column : profile.messages.front().columns) {
    column.digits = digits;
  }
  return profile;
}

void AddCandump() {
  constexpr const char* kRows = "candump line to four columns of CSV";
  constexpr const char* kShortest = "the same with as few digits as tell the numbers";
  constexpr const char* kRead = "candump line to a record";
  const std::vector<std::string> formulas = {"CanVal(frame, 7, 3) * 0.125",
                                             "CanVal(frame, 6, 2) - 125",
                                             "CanVal(frame, 2, 0) * 0.01", "CanVal(frame, 6, 7)"};
  const auto log = std::make_shared<CLogFile>("candump.log", CandumpText());
  const auto profile = std::make_shared<Profile>(MakeProfile(formulas, 3));
  const auto shortest = std::make_shared<Profile>(MakeProfile(formulas, std::nullopt));
  const auto add = [&](const char* workload, const char* contender, auto run) {
    AddBenchmark(workload, contender, kLines, std::int64_t{kLines}, run);
  };
  add(kRows, kOurs, [=] { return DecodeToCsv(log->Path(), *profile); });
  add(kRows, "sscanf and snprintf", [=] { return DecodeByHand(log->Path()); });
  add(kRows, kLimit, [=] { return CountLines(log->Path()); });
  add(kShortest, kOurs, [=] { return DecodeToCsv(log->Path(), *shortest); });
  add(kShortest, kLimit, [=] { return CountLines(log->Path()); });
  add(kRead, kOurs, [=] { return ReadRecords(log->Path(), LogFormat::Candump); });
  add(kRead, kLimit, [=] { return CountLines(log->Path()); });
}

void AddNmea() {
  constexpr const char* kRows = "GGA sentence to four columns of CSV";
  const auto log = std::make_shared<CLogFile>("nmea.log", NmeaText());
  const auto profile =
      std::make_shared<Profile>(MakeProfile({"TimeConv(field(1))", "NMEAPos(field(2), field(3))",
                                             "NMEAPos(field(4), field(5))", "Val(field(9))"},
                                            6));
  AddBenchmark(kRows, kOurs, kLines, std::int64_t{kLines},
               [=] { return DecodeToCsv(log->Path(), *profile); });
  AddBenchmark(kRows, kLimit, kLines, std::int64_t{kLines},
               [=] { return CountLines(log->Path()); });
}

}  // namespace
}  // namespace lum::bench

int main(int argc, char** argv) {
  lum::bench::AddCandump();
  lum::bench::AddNmea();
  const int result = lum::bench::RunBenchmarks(argc, argv);
  lum::bench::Runs().clear();
  return result;
}
