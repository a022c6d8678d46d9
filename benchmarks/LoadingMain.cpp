// Prints, as JSON, how many microseconds it takes to load and unload LumAttributes while the
// platform's library is there, and the same for a shared object with nothing in it, the limit.
#include <dlfcn.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

void* Open(const char* path) {
  void* library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    std::fprintf(stderr, "%s\n", dlerror());
    std::exit(1);
  }
  return library;
}

/// One that stays would be timed as loading nothing.
void CheckUnloaded(const char* path) {
  if (dlopen(path, RTLD_NOW | RTLD_NOLOAD) != nullptr) {
    std::fprintf(stderr, "%s is not unloaded\n", path);
    std::exit(1);
  }
}

double MedianMicroseconds(const char* path) {
  constexpr int kRuns = 2001;
  std::vector<double> times;
  for (int run = 0; run < kRuns; ++run) {
    const auto start = std::chrono::steady_clock::now();
    dlclose(Open(path));
    const std::chrono::duration<double, std::micro> elapsed =
        std::chrono::steady_clock::now() - start;
    times.push_back(elapsed.count());
    CheckUnloaded(path);
  }
  std::nth_element(times.begin(), times.begin() + kRuns / 2, times.end());
  return times[kRuns / 2];
}

}  // namespace

int main() {
  Open(LUM_PLATFORM_FILE);
  constexpr const char* kForm =
      "  {\"workload\": \"loading the library\", \"unit\": \"µs\", \"contender\": \"%s\", "
      "\"value\": %.1f}";
  std::printf("[\n");
  std::printf(kForm, "limit", MedianMicroseconds(LUM_EMPTY_FILE));
  std::printf(",\n");
  std::printf(kForm, "LumAttributes", MedianMicroseconds(LUM_ATTRIBUTES_FILE));
  std::printf("\n]\n");
  return 0;
}
