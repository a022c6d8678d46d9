// A library to be preloaded: it sets the process locale to one with a decimal comma, and, as long
// as the program runs, a thread of it sets it back and forth. With LUM_LOCALE_STAYS in the
// environment the comma stays. What depends on the locale then goes wrong, now and then or always.
#include <pthread.h>

#include <atomic>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

constexpr const char* kLocale = "de_DE.UTF-8";

std::atomic<long> g_flips = 0;

void Wait() {
  constexpr std::timespec kPause = {0, 20'000};
  ::nanosleep(&kPause, nullptr);
}

void* FlipForEver(void* /*unused*/) {
  for (;;) {
    Wait();
    std::setlocale(LC_ALL, "C");
    Wait();
    std::setlocale(LC_ALL, kLocale);
    g_flips.fetch_add(1, std::memory_order_relaxed);
  }
}

/// Adds a line to the file that LUM_FLIP_COUNTS names.
void NoteFlips() {
  const char* path = std::getenv("LUM_FLIP_COUNTS");
  if (std::FILE* file = path != nullptr ? std::fopen(path, "a") : nullptr) {
    std::fprintf(file, "%ld\n", g_flips.load());
    std::fclose(file);
  }
}

[[gnu::constructor]] void StartFlipping() {
  // The C library frees the tables of a locale that nobody uses any more, which a thread may be
  // reading: this use never ends.
  if (::newlocale(LC_ALL_MASK, kLocale, nullptr) == nullptr ||
      std::setlocale(LC_ALL, kLocale) == nullptr) {
    std::fprintf(stderr, "the locale %s is not installed\n", kLocale);
    std::_Exit(2);
  }
  if (std::getenv("LUM_LOCALE_STAYS") != nullptr) {
    return;
  }
  pthread_t thread;
  if (::pthread_create(&thread, nullptr, &FlipForEver, nullptr) != 0) {
    std::fprintf(stderr, "the locale cannot be flipped: no thread\n");
    std::_Exit(2);
  }
  ::pthread_detach(thread);
  std::atexit(&NoteFlips);
}

}  // namespace
