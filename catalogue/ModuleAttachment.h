// Library-internal: what happens to this module when it is loaded and unloaded, apart from the
// operating system's way of saying so (that stands in LumAttributes.cpp).
#pragma once

#include "platform/Framework.h"

namespace lum::detail {

/// What a module tells the version check about itself. The texts have static storage.
struct ModuleStamp {
  unsigned int version;    ///< One byte per part, most significant first.
  const char* sourceFile;  ///< The module's main source file.
  const char* build;       ///< Date and time of its compilation.
};

/// The module's registration with the framework. The operating system serialises its calls.
class CModuleAttachment {
 public:
  /// Checks the version and registers the module. False, with nothing registered, when the version
  /// does not fit the platform or the framework refuses the module.
  bool Attach(const ModuleStamp& stamp, HINSTANCE instance);
  /// Takes the registration back; harmless when there is none.
  void Detach();

  /// Whether the last Attach succeeded and no Detach followed.
  bool IsAttached() const noexcept { return m_attached; }

 private:
  AFX_EXTENSION_MODULE m_module{};
  bool m_attached = false;
};

}  // namespace lum::detail
