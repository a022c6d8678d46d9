// Asks whether the surroundings of the process are as hostile as they are meant to be:
//
//   hostile_probe locale | descriptors COUNT | memory BYTES | stack BYTES | zone SECONDS
//
// Ends with 0 when they are, and with 1 and a line that says what is missing when they are not.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string_view>
#include <thread>

namespace {

int Miss(const char* what) {
  std::printf("missing: %s\n", what);
  return 1;
}

/// The decimal point must be a comma and a full stop by turns.
int ProbeLocale() {
  using namespace std::chrono;
  bool sawComma = false;
  bool sawPoint = false;
  const auto end = steady_clock::now() + seconds(5);
  while (!(sawComma && sawPoint) && steady_clock::now() < end) {
    const char point = *std::localeconv()->decimal_point;
    sawComma = sawComma || point == ',';
    sawPoint = sawPoint || point == '.';
    std::this_thread::sleep_for(microseconds(7));
  }
  return sawComma && sawPoint ? 0 : Miss("a decimal point that changes");
}

/// With so many descriptors, the standard ones included, the next open fails.
int ProbeDescriptors(long count) {
  long last = 2;
  while (last < count) {
    const int descriptor = ::open("/dev/null", O_RDONLY);
    if (descriptor < 0) {
      break;
    }
    last = descriptor;
  }
  return last == count - 1 ? 0 : Miss("the limit of descriptors");
}

/// So much memory is refused, and a quarter of it is given.
int ProbeMemory(long bytes) {
  const auto size = static_cast<std::size_t>(bytes);
  const auto isGiven = [](std::size_t asked) {
    void* memory =
        ::mmap(nullptr, asked, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return memory != MAP_FAILED && ::munmap(memory, asked) == 0;
  };
  return !isGiven(size) && isGiven(size / 4) ? 0 : Miss("the limit of memory");
}

/// Uses so much of the stack, page by page.
[[gnu::noinline]] void UseStack(long bytes) {
  volatile char page[4096];
  std::memset(const_cast<char*>(page), 1, sizeof page);
  if (bytes > 4096) {
    UseStack(bytes - 4096);
  }
  page[0] = 2;  // Keeps the call from being the last thing done.
}

bool SurvivesStackOf(long bytes) {
  const pid_t child = ::fork();
  if (child == 0) {
    UseStack(bytes);
    std::_Exit(0);
  }
  int status = 0;
  return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status);
}

/// A process that uses so much stack is ended, one that uses half of it is not.
int ProbeStack(long bytes) {
  return !SurvivesStackOf(bytes) && SurvivesStackOf(bytes / 2) ? 0 : Miss("the limit of the stack");
}

/// Local time in January is so many seconds ahead of UTC, and the process locale has a comma.
int ProbeZone(long seconds) {
  const std::time_t january = 1'700'000'000 + 60 * 86'400;
  std::tm local = {};
  ::localtime_r(&january, &local);
  const bool hasComma = *std::localeconv()->decimal_point == ',';
  return local.tm_gmtoff == seconds && hasComma ? 0 : Miss("the time zone or the comma locale");
}

}  // namespace

int main(int count, char* arguments[]) {
  const std::string_view what = count > 1 ? arguments[1] : "";
  const long number = count > 2 ? std::atol(arguments[2]) : 0;
  if (what == "locale") {
    return ProbeLocale();
  }
  if (what == "descriptors") {
    return ProbeDescriptors(number);
  }
  if (what == "memory") {
    return ProbeMemory(number);
  }
  if (what == "stack") {
    return ProbeStack(number);
  }
  if (what == "zone") {
    return ProbeZone(number);
  }
  return Miss("a surrounding that can be asked for");
}
