// The process-wide register of extension modules and of the objects that make their classes known.
#include "platform/ExtensionModule.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

namespace {

// Held for a few instructions; unlike a mutex it needs nothing of the runtime that would stay in
// the process after the platform has left it.
class CSpinLock {
 public:
  void lock() noexcept {
    while (m_isHeld.test_and_set(std::memory_order_acquire)) {
      std::this_thread::yield();
    }
  }
  void unlock() noexcept { m_isHeld.clear(std::memory_order_release); }

 private:
  std::atomic_flag m_isHeld;
};

struct Register {
  CSpinLock lock;
  std::vector<CDynLinkLibrary*> libraries;
};

// Built without code and before anything that depends on this library, so it is destroyed after
// all that.
constinit Register g_register;

// Takes the first of a module's objects out of the register; null when there is none. A library
// that is unloaded could do nothing about a lack of memory, so none is needed.
CDynLinkLibrary* TakeLibrary(const AFX_EXTENSION_MODULE& module) {
  const std::lock_guard lock(g_register.lock);
  std::vector<CDynLinkLibrary*>& libraries = g_register.libraries;
  const auto found =
      std::find_if(libraries.begin(), libraries.end(),
                   [&](const CDynLinkLibrary* library) { return &library->Module() == &module; });
  if (found == libraries.end()) {
    return nullptr;
  }
  CDynLinkLibrary* taken = *found;
  libraries.erase(found);
  return taken;
}

}  // namespace

bool AfxInitExtensionModule(AFX_EXTENSION_MODULE& module, HINSTANCE instance) {
  const std::lock_guard lock(g_register.lock);
  if (module.bInitialized) {
    return false;
  }
  module.bInitialized = true;
  module.hModule = instance;
  return true;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& module, bool /*all*/) {
  {
    const std::lock_guard lock(g_register.lock);
    module.bInitialized = false;
    module.hModule = nullptr;
  }
  // Outside the lock, which their destructors take.
  while (const CDynLinkLibrary* library = TakeLibrary(module)) {
    delete library;
  }
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& module) : m_module(module) {
  const std::lock_guard lock(g_register.lock);
  g_register.libraries.push_back(this);
}

CDynLinkLibrary::~CDynLinkLibrary() {
  const std::lock_guard lock(g_register.lock);
  std::erase(g_register.libraries, this);
}

int CDynLinkLibrary::Count() {
  const std::lock_guard lock(g_register.lock);
  return static_cast<int>(g_register.libraries.size());
}
