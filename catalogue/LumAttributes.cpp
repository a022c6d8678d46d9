// The library's entry point: attaches the module when the operating system loads it and detaches it
// when it is unloaded. The version numbers come from the build (LUM_ATTRIBUTES_VERSION_...).
#include "catalogue/LumAttributes.h"

#include "catalogue/ModuleAttachment.h"

#define LUM_AS_TEXT(value) #value
#define LUM_DOTTED(a, b, c, d) \
  LUM_AS_TEXT(a) "." LUM_AS_TEXT(b) "." LUM_AS_TEXT(c) "." LUM_AS_TEXT(d)

namespace {

using lum::detail::CModuleAttachment;
using lum::detail::ModuleStamp;

constexpr unsigned int Packed(unsigned int major, unsigned int minor, unsigned int patch,
                              unsigned int tweak) {
  return major << 24 | minor << 16 | patch << 8 | tweak;
}

constexpr ModuleStamp kStamp = {Packed(LUM_ATTRIBUTES_VERSION_MAJOR, LUM_ATTRIBUTES_VERSION_MINOR,
                                       LUM_ATTRIBUTES_VERSION_PATCH, LUM_ATTRIBUTES_VERSION_TWEAK),
                                __FILE__, __DATE__ " " __TIME__};

constinit CModuleAttachment g_attachment;

}  // namespace

bool LumAttributesAttached() { return g_attachment.IsAttached(); }

const char* LumAttributesVersion() {
  return LUM_DOTTED(LUM_ATTRIBUTES_VERSION_MAJOR, LUM_ATTRIBUTES_VERSION_MINOR,
                    LUM_ATTRIBUTES_VERSION_PATCH, LUM_ATTRIBUTES_VERSION_TWEAK);
}

#if defined(_WIN32)

/// Called by the system for each process and thread that comes and goes; the reasons' numbers are
/// the system's. A false answer to the attach of a process refuses the load.
extern "C" int __stdcall DllMain(HINSTANCE instance, unsigned long reason, void* /*reserved*/) {
  constexpr unsigned long kProcessDetach = 0;
  constexpr unsigned long kProcessAttach = 1;
  if (reason == kProcessAttach) {
    return g_attachment.Attach(kStamp, instance) ? 1 : 0;
  }
  if (reason == kProcessDetach) {
    g_attachment.Detach();
  }
  return 1;
}

#else

namespace {

/// Attached by the library's constructor. An object rather than a pair of constructor and
/// destructor functions: those would detach after the platform's own objects are gone when the
/// process exits.
struct LoadedLibrary {
  LoadedLibrary() { g_attachment.Attach(kStamp, nullptr); }
  ~LoadedLibrary() { g_attachment.Detach(); }
  LoadedLibrary(const LoadedLibrary&) = delete;
  LoadedLibrary& operator=(const LoadedLibrary&) = delete;
};

const LoadedLibrary g_loadedLibrary;

}  // namespace

#endif
