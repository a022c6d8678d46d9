// A platform that writes down what the library does to it while it is loaded and unloaded, and
// answers as the test says.
#pragma once

namespace lum::test {

/// What the test asks of the spy; lives in the spy's library, which exports it as "g_spy".
struct SpyPlatform {
  bool versionFits = true;
  bool moduleRegisters = true;
  bool hasMemory = true;  ///< Otherwise the library cannot make its CDynLinkLibrary.

  char events[512] = "";  ///< What happened, each followed by a blank.
  unsigned int version = 0;
  char sourceFile[64] = "";
  char build[64] = "";
  void* instance = nullptr;  ///< What the library registered as its module handle.

  // Seen in the library while it tells of its arrival and of its departure.
  bool wasCatalogueThere = false;
  bool wasUnitConverterThere = false;
  bool isCatalogueThereAtTheEnd = false;
  bool isUnitConverterThereAtTheEnd = false;
};

}  // namespace lum::test
