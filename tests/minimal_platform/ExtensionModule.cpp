// The registered modules' CDynLinkLibrary objects.
#include <algorithm>
#include <vector>

#include "platform/Framework.h"

namespace {

// Never destroyed: modules go after the objects of the process.
std::vector<CDynLinkLibrary*>& Libraries() {
  static auto& libraries = *new std::vector<CDynLinkLibrary*>;
  return libraries;
}

}  // namespace

bool AfxInitExtensionModule(AFX_EXTENSION_MODULE& module, HINSTANCE instance) {
  if (module.bInitialized) {
    return false;
  }
  module = {true, instance};
  return true;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& module, bool /*all*/) {
  std::erase_if(Libraries(), [&module](const CDynLinkLibrary* library) {
    const bool belongs = &library->Module() == &module;
    if (belongs) {
      delete library;
    }
    return belongs;
  });
  module = {};
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& module) : m_module(module) {
  Libraries().push_back(this);
}

int CDynLinkLibrary::Count() { return static_cast<int>(Libraries().size()); }
