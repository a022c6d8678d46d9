// Definition files: each line gives an attribute its names, type and default. The peer reads lines
// and splits them into texts; neither it nor the limit makes default values or look-up tables.
#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <string_view>

#include "benchmarks/TreeContender.h"
#include "benchmarks/TreeFamilies.h"
#include "definitions/AttribDefMap.h"

namespace lum::bench {

namespace {

constexpr int kLines = 100'000;
constexpr std::size_t kItems = 7;
constexpr std::size_t kId = 1;
constexpr std::size_t kType = 3;

/// The number of lines, the sum of the identifiers and that of the types.
struct CDefinitionSum {
  std::int64_t lines = 0;
  std::int64_t ids = 0;
  std::int64_t types = 0;

  bool operator==(const CDefinitionSum&) const = default;
};

std::string DefinitionLine(int i) {
  static constexpr const char* kTypes[] = {"103,2,,42.5", "101,1,,1000", "104,4,,1",
                                           "501,3,name.bmp,Outer harbour"};
  const std::string number = std::to_string(i);
  return "Sensor" + number + "," + std::to_string(i % 65'536) + ",Sensor number " + number + "," +
         kTypes[i % 4] + "\n";
}

const std::string& DefinitionFile() {
  static const std::string path = [] {
    std::string text = "// mnemonic,id,display name,value type,control type,bitmap,default value\n";
    for (int i = 0; i < kLines; ++i) {
      text += DefinitionLine(i);
    }
    std::string file = TemporaryFile("definitions");
    WriteFile(file, text);
    return file;
  }();
  return path;
}

CDefinitionSum ExpectedDefinitions() {
  CDefinitionSum sum;
  for (int i = 0; i < kLines; ++i) {
    static constexpr int kTypes[] = {103, 101, 104, 501};
    sum.lines += 1;
    sum.ids += i % 65'536;
    sum.types += kTypes[i % 4];
  }
  return sum;
}

CDefinitionSum LoadOurs() {
  CAttribDefMap table;
  CDefinitionSum sum;
  if (!table.LoadDefFile(CString(DefinitionFile().c_str()), false)) {
    return sum;
  }
  for (int i = 0; i < table.Count(); ++i) {
    sum.lines += 1;
    sum.ids += table[i].Id();
    sum.types += table[i].Type();
  }
  return sum;
}

int ToInt(std::string_view text) {
  int value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

CDefinitionSum LoadBySplitting() {
  std::vector<std::vector<std::string>> records;
  std::ifstream file(DefinitionFile());
  std::string line;
  while (std::getline(file, line)) {
    if (line.starts_with("//")) {
      continue;
    }
    std::vector<std::string>& items = records.emplace_back();
    std::size_t from = 0;
    for (std::size_t comma = 0; (comma = line.find(',', from)) != std::string::npos;
         from = comma + 1) {
      items.push_back(line.substr(from, comma - from));
    }
    items.push_back(line.substr(from));
  }
  CDefinitionSum sum;
  for (const std::vector<std::string>& items : records) {
    sum.lines += 1;
    sum.ids += ToInt(items[kId]);
    sum.types += ToInt(items[kType]);
  }
  return sum;
}

/// Views into the text of the file.
CDefinitionSum LoadAtLimit() {
  const std::string text = ReadFile(DefinitionFile());
  std::vector<std::array<std::string_view, kItems>> records;
  std::string_view left = text;
  while (!left.empty()) {
    const std::size_t end = left.find('\n');
    std::string_view line = left.substr(0, end);
    left.remove_prefix(end + 1);
    if (line.starts_with("//")) {
      continue;
    }
    auto& items = records.emplace_back();
    for (std::string_view& item : items) {
      const std::size_t comma = std::min(line.find(','), line.size());
      item = line.substr(0, comma);
      line.remove_prefix(std::min(comma + 1, line.size()));
    }
  }
  CDefinitionSum sum;
  for (const auto& items : records) {
    sum.lines += 1;
    sum.ids += ToInt(items[kId]);
    sum.types += ToInt(items[kType]);
  }
  return sum;
}

}  // namespace

void AddDefinitions() {
  const CDefinitionSum expected = ExpectedDefinitions();
  AddBenchmark("definition file", kLimit, kLines, expected, LoadAtLimit);
  AddBenchmark("definition file", kOurs, kLines, expected, LoadOurs);
  AddBenchmark("definition file", "std::getline", kLines, expected, LoadBySplitting);
}

}  // namespace lum::bench
