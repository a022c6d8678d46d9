// Times the operations on whole trees with 100,000 and with 200,000 siblings below one parent, once
// all with different names and once all with one name. The time of each operation should about
// double. The program checks every answer and ends with 1 when one is wrong; with --short it
// measures only once. It writes a file to the system's folder for temporary files and removes it.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "attributes/AttributeMap.h"

namespace {

using CMilliseconds = std::vector<double>;

const char* const kOperations[] = {"build", "copy",       "compare",   "overload", "save",
                                   "load",  "write file", "read file", "destroy"};

bool allRight = true;

void Check(bool right, const char* what) {
  if (!right) {
    std::fprintf(stderr, "wrong answer: %s\n", what);
    allRight = false;
  }
}

double Measure(const std::function<void()>& run) {
  const auto start = std::chrono::steady_clock::now();
  run();
  const std::chrono::duration<double, std::milli> elapsed =
      std::chrono::steady_clock::now() - start;
  return elapsed.count();
}

CAttributeMap Build(int siblings, bool oneName) {
  CAttributeMap root;
  for (int number = 0; number < siblings; ++number) {
    CString name(L"Sensor");
    if (!oneName) {
      name.AppendFormat(L"%d", number);
    }
    root.Add(name, CLumInt(number), 1);
  }
  return root;
}

/// Whether the children hold 0, 1, 2, ... in their order.
bool HoldsItsPlaces(const CAttributeMap& map, int siblings) {
  for (int pos = 0; pos < map.Count(); ++pos) {
    CString text;
    CString expected;
    expected.Format(L"%d", pos);
    if (map[pos].Value().GetValueStr(text) == 0 || text != expected) {
      return false;
    }
  }
  return map.Count() == siblings;
}

const std::filesystem::path& TemporaryPath() {
  static const std::filesystem::path path =
      std::filesystem::temp_directory_path() /
      ("lum_tree_scaling_" + std::to_string(std::random_device()()) + ".cfg");
  return path;
}

CMilliseconds MeasureTree(int siblings, bool oneName) {
  CMilliseconds times;
  std::optional<CAttributeMap> tree;
  times.push_back(Measure([&] { tree.emplace(Build(siblings, oneName)); }));
  Check(HoldsItsPlaces(*tree, siblings), "build");

  std::optional<CAttributeMap> copy;
  times.push_back(Measure([&] { copy.emplace(*tree); }));
  Check(HoldsItsPlaces(*copy, siblings), "copy");

  CAttributeMap diff;
  bool differs = true;
  times.push_back(Measure([&] { differs = tree->Compare(*copy, diff, 7); }));
  Check(!differs && diff.Count() == 0, "compare");

  for (int pos = 0; pos < siblings; ++pos) {
    copy->FindCreateIndex(pos).Value().SetInt(-1);
  }
  times.push_back(Measure([&] { copy->Overload(*tree, true, true, false, false); }));
  Check(HoldsItsPlaces(*copy, siblings), "overload");

  FileObject file;
  bool saved = false;
  times.push_back(Measure([&] { saved = SaveAttributes(*tree, file, L"Section"); }));
  Check(saved && file.ItemCount(L"Section") == siblings, "save");

  CAttributeMap loaded;
  times.push_back(Measure([&] { LoadAttributes(loaded, file, L"Section", false); }));
  Check(HoldsItsPlaces(loaded, siblings), "load");

  const CString path(TemporaryPath().wstring().c_str());
  times.push_back(Measure([&] { saved = file.Save(path); }));
  FileObject read;
  bool wasRead = false;
  times.push_back(Measure([&] { wasRead = read.Load(path); }));
  Check(saved && wasRead && LoadAttributes(loaded, read, L"Section", false) &&
            HoldsItsPlaces(loaded, siblings),
        "write and read file");

  times.push_back(Measure([&] { tree.reset(); }));
  return times;
}

/// The shortest time of each operation in some runs: others may use the machine meanwhile.
CMilliseconds MeasureBest(int siblings, bool oneName, int runs) {
  CMilliseconds best = MeasureTree(siblings, oneName);
  for (int run = 1; run < runs; ++run) {
    const CMilliseconds times = MeasureTree(siblings, oneName);
    for (std::size_t i = 0; i < best.size(); ++i) {
      best[i] = std::min(best[i], times[i]);
    }
  }
  return best;
}

void Report(bool oneName, int runs) {
  constexpr int kSmall = 100'000;
  constexpr int kLarge = 200'000;
  const CMilliseconds small = MeasureBest(kSmall, oneName, runs);
  const CMilliseconds large = MeasureBest(kLarge, oneName, runs);
  constexpr double kNanosecondsEach = 1e6 / kLarge;
  std::printf("%s\n%-10s %12d %12d %8s %8s\n", oneName ? "one name" : "distinct names", "ms",
              kSmall, kLarge, "ratio", "ns each");
  for (std::size_t i = 0; i < small.size(); ++i) {
    std::printf("%-10s %12.1f %12.1f %8.2f %8.0f\n", kOperations[i], small[i], large[i],
                large[i] / small[i], large[i] * kNanosecondsEach);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const int runs = argc > 1 && std::strcmp(argv[1], "--short") == 0 ? 1 : 5;
  Report(false, runs);
  Report(true, runs);
  std::filesystem::remove(TemporaryPath());
  return allRight ? 0 : 1;
}
