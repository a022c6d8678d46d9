// The framework's registration of extension modules: what a library tells its host when it is
// loaded and unloaded.
#pragma once

#include "platform/PlatformExport.h"

// The module handle of the operating system; null where there is none.
struct HINSTANCE__;  // NOLINT(bugprone-reserved-identifier,cert-dcl51-cpp): the system's name
using HINSTANCE = HINSTANCE__*;

/// The framework's record of one extension module. Owned by the module, zero-initialised.
struct AFX_EXTENSION_MODULE {
  bool bInitialized = false;
  HINSTANCE hModule = nullptr;
};

/// Registers the module. False when it is registered already.
LUM_PLATFORM_API bool AfxInitExtensionModule(AFX_EXTENSION_MODULE& module, HINSTANCE instance);

/// Takes the registration back and frees the module's CDynLinkLibrary objects. Harmless for a
/// module that is not registered.
LUM_PLATFORM_API void AfxTermExtensionModule(AFX_EXTENSION_MODULE& module, bool all = false);

/// Makes a module's classes known to the host. Created with `new` by the module and owned by the
/// framework from then on, which deletes it in AfxTermExtensionModule.
///
/// Threads: modules may be registered and taken back in any thread; the register is locked.
class LUM_PLATFORM_API CDynLinkLibrary {
 public:
  explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& module);
  virtual ~CDynLinkLibrary();
  CDynLinkLibrary(const CDynLinkLibrary&) = delete;
  CDynLinkLibrary& operator=(const CDynLinkLibrary&) = delete;

  const AFX_EXTENSION_MODULE& Module() const noexcept { return m_module; }

  /// How many are registered in this process.
  static int Count();

 private:
  AFX_EXTENSION_MODULE& m_module;
};
