#include "tests/windows/SpyPlatform.h"

#include <windows.h>
#include <cstring>
#include <new>

#include "platform/Framework.h"
#include "platform/LumBase.h"
#include "platform/VersionCheck.h"

extern "C" __declspec(dllexport) lum::test::SpyPlatform g_spy;
lum::test::SpyPlatform g_spy;

namespace {

template <typename T>
const T* Exported(const char* name) {
  const HMODULE library = ::GetModuleHandleW(L"LumAttributes.dll");
  return reinterpret_cast<const T*>(reinterpret_cast<const void*>(::GetProcAddress(library, name)));
}

bool IsCatalogueThere() {
  const CString* name = Exported<CString>("ATTR_ABOVECOLOR");
  return name != nullptr && *name == L"AboveColor";
}

bool IsUnitConverterThere() {
  const CLumUnitCnv* converter = Exported<CLumUnitCnv>("_ZN8CLumType9m_unitCnvE");
  return converter != nullptr && *converter == CLumUnitCnv();
}

template <std::size_t size>
void Append(char (&list)[size], const char* text) {
  std::strncat(list, text, size - std::strlen(list) - 1);
}

void Note(const char* event) {
  Append(g_spy.events, event);
  Append(g_spy.events, " ");
}

}  // namespace

bool CheckDllVersion(unsigned int version, const char* sourceFile, const char* buildStamp) {
  Note("check");
  g_spy.version = version;
  Append(g_spy.sourceFile, sourceFile);
  Append(g_spy.build, buildStamp);
  g_spy.wasCatalogueThere = IsCatalogueThere();
  g_spy.wasUnitConverterThere = IsUnitConverterThere();
  return g_spy.versionFits;
}

bool AfxInitExtensionModule(AFX_EXTENSION_MODULE& module, HINSTANCE instance) {
  Note("register");
  g_spy.instance = instance;
  module.bInitialized = g_spy.moduleRegisters;
  return g_spy.moduleRegisters;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& module, bool all) {
  Note(all ? "unregister-all" : "unregister");
  g_spy.isCatalogueThereAtTheEnd = IsCatalogueThere();
  g_spy.isUnitConverterThereAtTheEnd = IsUnitConverterThere();
  module.bInitialized = false;
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& module) : m_module(module) {
  Note("classes");
  if (!g_spy.hasMemory) {
    throw std::bad_alloc();
  }
}

CDynLinkLibrary::~CDynLinkLibrary() = default;

int CDynLinkLibrary::Count() { return 0; }
