#include "tools/lumattr/Interruption.h"

#include <csignal>

namespace lum::tool {
namespace {

// A signal's handler can reach nothing else.
std::atomic<bool> g_isInterrupted = false;
static_assert(std::atomic<bool>::is_always_lock_free);

void Interrupt(int signal) {
  g_isInterrupted.store(true);
  std::signal(signal, SIG_DFL);
}

}  // namespace

const std::atomic<bool>& WatchInterruption() {
#if defined(_WIN32)
  std::signal(SIGINT, Interrupt);
#else
  // A wait for a pipe's next bytes ends at once, too.
  struct sigaction before = {};
  ::sigaction(SIGINT, nullptr, &before);
  if (before.sa_handler != SIG_IGN) {  // Whoever started the program wants it left alone.
    struct sigaction action = {};
    action.sa_handler = Interrupt;
    ::sigaction(SIGINT, &action, nullptr);
  }
#endif
  return g_isInterrupted;
}

}  // namespace lum::tool
