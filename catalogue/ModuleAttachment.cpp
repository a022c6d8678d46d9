// Registers and unregisters the module.
#include "catalogue/ModuleAttachment.h"

#include <new>

#include "platform/VersionCheck.h"

namespace lum::detail {

namespace {

/// The framework keeps the object and frees it. The module works without it, so a shortage of
/// memory does not refuse the load.
void MakeClassesKnown(AFX_EXTENSION_MODULE& module) noexcept {
  try {
    new CDynLinkLibrary(module);
  } catch (const std::bad_alloc&) {
  }
}

}  // namespace

bool CModuleAttachment::Attach(const ModuleStamp& stamp, HINSTANCE instance) {
  m_attached = CheckDllVersion(stamp.version, stamp.sourceFile, stamp.build) &&
               AfxInitExtensionModule(m_module, instance);
  if (m_attached) {
    MakeClassesKnown(m_module);
  }
  return m_attached;
}

void CModuleAttachment::Detach() {
  AfxTermExtensionModule(m_module, false);
  m_attached = false;
}

}  // namespace lum::detail
