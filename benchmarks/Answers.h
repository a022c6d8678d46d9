// The answers by which benchmarks are checked: what a run read, as a count and a sum, or wrote, as
// a length and a checksum. Taking them costs every contender the same few nanoseconds an item.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "benchmarks/Workload.h"

namespace lum::bench {

struct CountAndSum {
  std::int64_t count = 0;
  double sum = 0.0;

  void Add(const std::optional<double>& value) {
    if (value) {
      ++count;
      sum += *value;
    }
  }
  bool operator==(const CountAndSum&) const = default;
};

struct Checksum {
  std::size_t length = 0;
  std::uint64_t sum = 0;

  /// Every character counts by its place, whatever its width.
  template <typename Ch>
  void Add(const Ch* text, std::size_t size) {
    length += size;
    for (std::size_t i = 0; i < size; ++i) {
      sum += (i + 1) * static_cast<std::uint32_t>(text[i]);
    }
  }
  bool operator==(const Checksum&) const = default;
};

/// Adds "workload/contender" that reads a number, or none, out of each line. The lines stay where
/// they are; `value` of each is what it holds.
template <typename Lines, typename Read>
void AddReader(const char* workload, const char* contender, Lines& lines, Read read) {
  CountAndSum expected;
  for (const auto& line : lines) {
    expected.Add(line.value);
  }
  AddBenchmark(workload, contender, static_cast<std::int64_t>(lines.size()), expected,
               [&lines, read] {
                 CountAndSum answer;
                 for (auto& line : lines) {
                   answer.Add(read(line));
                 }
                 return answer;
               });
}

}  // namespace lum::bench
