// The process-wide register of extension modules and of the objects that make their classes known.
#include "platform/ExtensionModule.h"

#include <algorithm>
#include <mutex>
#include <vector>

namespace {

struct Register {
  std::mutex mutex;
  std::vector<CDynLinkLibrary*> libraries;
};

// Never destroyed: modules are taken down after the objects of the process were.
Register& TheRegister() {
  static Register& instance = *new Register;
  return instance;
}

// Takes a module's objects out of the register.
std::vector<CDynLinkLibrary*> TakeLibraries(Register& all, const AFX_EXTENSION_MODULE& module) {
  const auto firstTaken = std::stable_partition(
      all.libraries.begin(), all.libraries.end(),
      [&](const CDynLinkLibrary* library) { return &library->Module() != &module; });
  std::vector<CDynLinkLibrary*> taken(firstTaken, all.libraries.end());
  all.libraries.erase(firstTaken, all.libraries.end());
  return taken;
}

}  // namespace

bool AfxInitExtensionModule(AFX_EXTENSION_MODULE& module, HINSTANCE instance) {
  const std::lock_guard lock(TheRegister().mutex);
  if (module.bInitialized) {
    return false;
  }
  module.bInitialized = true;
  module.hModule = instance;
  return true;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& module, bool /*all*/) {
  std::vector<CDynLinkLibrary*> taken;
  {
    Register& all = TheRegister();
    const std::lock_guard lock(all.mutex);
    taken = TakeLibraries(all, module);
    module.bInitialized = false;
    module.hModule = nullptr;
  }
  // Outside the lock, which their destructors take.
  for (const CDynLinkLibrary* library : taken) {
    delete library;
  }
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& module) : m_module(module) {
  Register& all = TheRegister();
  const std::lock_guard lock(all.mutex);
  all.libraries.push_back(this);
}

CDynLinkLibrary::~CDynLinkLibrary() {
  Register& all = TheRegister();
  const std::lock_guard lock(all.mutex);
  std::erase(all.libraries, this);
}

int CDynLinkLibrary::Count() {
  Register& all = TheRegister();
  const std::lock_guard lock(all.mutex);
  return static_cast<int>(all.libraries.size());
}
